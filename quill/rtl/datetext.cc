// Reading dates and times under format settings, and FormatDateTime.
//
// The readers never allocate: they walk a view of the text with a position
// and look at the settings in place. The current year is read from the clock
// only when a date needs it (two numbers, or a year of one or two digits).
#include "quill/rtl/datetext.h"

#include <cstdint>

#include "quill/rtl/casing.h"
#include "quill/rtl/datetime.h"
#include "quill/rtl/exception.h"

namespace quill {
namespace {

enum TDateOrder : uint8_t { doMDY, doDMY, doYMD };

// The first of the letters d, m, y (or the era letter e, read as y) in the
// short date format decides the order; none found means month first.
TDateOrder GetDateOrder(std::u16string_view format) {
  for (char16_t c : format) {
    switch (c) {
      case u'd': case u'D': return doDMY;
      case u'm': case u'M': return doMDY;
      case u'y': case u'Y': case u'e': case u'E': return doYMD;
      default: break;
    }
  }
  return doMDY;
}

bool SameCharIgnoringCase(char16_t a, char16_t b) {
  if (a == b) return true;
  if (a < 0x80 && b < 0x80) {
    if (a >= u'a' && a <= u'z') a = static_cast<char16_t>(a - 32);
    if (b >= u'a' && b <= u'z') b = static_cast<char16_t>(b - 32);
    return a == b;
  }
  return AnsiUpperChar(a) == AnsiUpperChar(b);
}

// A cursor over the text being read.
class TextScanner {
 public:
  explicit TextScanner(std::u16string_view s) : s_(s) {}

  [[nodiscard]] bool AtEnd() const { return pos_ >= s_.size(); }

  void SkipBlanks() {
    while (pos_ < s_.size() && s_[pos_] == u' ') ++pos_;
  }

  // Blanks, then the character `c`.
  bool ScanChar(char16_t c) {
    SkipBlanks();
    if (pos_ < s_.size() && s_[pos_] == c) {
      ++pos_;
      return true;
    }
    return false;
  }

  // Blanks, then `word` in any case. An empty word never matches.
  bool ScanWord(std::u16string_view word) {
    SkipBlanks();
    if (word.empty() || s_.size() - pos_ < word.size()) return false;
    for (size_t i = 0; i < word.size(); ++i) {
      if (!SameCharIgnoringCase(s_[pos_ + i], word[i])) return false;
    }
    pos_ += word.size();
    return true;
  }

  // Blanks, then at least one digit; digits are taken while the value is
  // below 1000. `digits` counts the digits taken, leading zeros included.
  bool ScanNumber(uint16_t& value, uint16_t& digits) {
    SkipBlanks();
    const size_t start = pos_;
    uint32_t n = 0;
    while (pos_ < s_.size() && s_[pos_] >= u'0' && s_[pos_] <= u'9' && n < 1000) {
      n = n * 10 + (s_[pos_] - u'0');
      ++pos_;
    }
    if (pos_ == start) return false;
    value = static_cast<uint16_t>(n);
    const size_t count = pos_ - start;
    digits = static_cast<uint16_t>(count > 0xFFFF ? 0xFFFF : count);
    return true;
  }

  size_t pos_ = 0;

 private:
  std::u16string_view s_;
};

// Lazily read current year, so that most texts never touch the clock.
class YearSource {
 public:
  uint16_t Get() {
    if (year_ == 0) year_ = CurrentYear();
    return year_;
  }

 private:
  uint16_t year_ = 0;
};

bool ScanDate(TextScanner& sc, const TFormatSettings& fs, YearSource& now, TDateTime& date) {
  const TDateOrder order = GetDateOrder(fs.ShortDateFormat);
  uint16_t n1 = 0, n2 = 0, n3 = 0, l1 = 0, l2 = 0, l3 = 0;
  if (!(sc.ScanNumber(n1, l1) && sc.ScanChar(fs.DateSeparator) && sc.ScanNumber(n2, l2))) {
    return false;
  }
  uint16_t y = 0, m = 0, d = 0;
  if (sc.ScanChar(fs.DateSeparator)) {
    if (!sc.ScanNumber(n3, l3)) return false;
    uint16_t year_digits = 0;
    switch (order) {
      case doMDY: y = n3; year_digits = l3; m = n1; d = n2; break;
      case doDMY: y = n3; year_digits = l3; m = n2; d = n1; break;
      case doYMD: y = n1; year_digits = l1; m = n2; d = n3; break;
    }
    if (y <= 99 && year_digits <= 2) {
      const int32_t pivot = static_cast<int32_t>(now.Get()) - fs.TwoDigitYearCenturyWindow;
      int32_t full = y + pivot / 100 * 100;
      if (fs.TwoDigitYearCenturyWindow > 0 && full < pivot) full += 100;
      // A window larger than the current year leaves a pivot below 1; the
      // year then stays impossible rather than wrapping.
      y = full >= 1 && full <= 9999 ? static_cast<uint16_t>(full) : 0;
    }
  } else {
    y = now.Get();
    if (order == doDMY) {
      d = n1;
      m = n2;
    } else {
      m = n1;
      d = n2;
    }
  }
  sc.ScanChar(fs.DateSeparator);
  sc.SkipBlanks();
  return TryEncodeDate(y, m, d, date);
}

// 0 for AM, 12 for PM, -1 when no AM/PM word is at the cursor.
int ScanAmPm(TextScanner& sc, const TFormatSettings& fs) {
  if (sc.ScanWord(fs.TimeAMString) || sc.ScanWord(u"AM")) return 0;
  if (sc.ScanWord(fs.TimePMString) || sc.ScanWord(u"PM")) return 12;
  return -1;
}

bool ScanTime(TextScanner& sc, const TFormatSettings& fs, TDateTime& time) {
  int base_hour = ScanAmPm(sc, fs);
  uint16_t hour = 0, min = 0, sec = 0, msec = 0, len = 0;
  if (!sc.ScanNumber(hour, len)) return false;
  if (sc.ScanChar(fs.TimeSeparator)) {
    if (!sc.ScanNumber(min, len)) return false;
    if (sc.ScanChar(fs.TimeSeparator)) {
      if (!sc.ScanNumber(sec, len)) return false;
      if (sc.ScanChar(fs.DecimalSeparator) && !sc.ScanNumber(msec, len)) return false;
    }
  }
  if (base_hour < 0) base_hour = ScanAmPm(sc, fs);
  if (base_hour >= 0) {
    if (hour == 0 || hour > 12) return false;
    if (hour == 12) hour = 0;
    hour = static_cast<uint16_t>(hour + base_hour);
  }
  sc.SkipBlanks();
  return TryEncodeTime(hour, min, sec, msec, time);
}

}  // namespace

bool TryStrToDate(std::u16string_view s, TDateTime& value, const TFormatSettings& fs) {
  TextScanner sc(s);
  YearSource now;
  TDateTime date = 0;
  if (!ScanDate(sc, fs, now, date) || !sc.AtEnd()) return false;
  value = date;
  return true;
}

bool TryStrToTime(std::u16string_view s, TDateTime& value, const TFormatSettings& fs) {
  TextScanner sc(s);
  TDateTime time = 0;
  if (!ScanTime(sc, fs, time) || !sc.AtEnd()) return false;
  value = time;
  return true;
}

bool TryStrToDateTime(std::u16string_view s, TDateTime& value, const TFormatSettings& fs) {
  TextScanner sc(s);
  YearSource now;
  TDateTime date = 0;
  if (!ScanDate(sc, fs, now, date)) return TryStrToTime(s, value, fs);
  TDateTime time = 0;
  if (!sc.AtEnd()) {
    // Deliberately strict: text left over after the time is an error, so
    // "25/12/2023 10:20 x" does not silently read as 10:20.
    if (!ScanTime(sc, fs, time) || !sc.AtEnd()) return false;
  }
  value = date >= 0 ? date + time : date - time;
  return true;
}

bool TryStrToDate(std::u16string_view s, TDateTime& value) { return TryStrToDate(s, value, FormatSettings()); }
bool TryStrToTime(std::u16string_view s, TDateTime& value) { return TryStrToTime(s, value, FormatSettings()); }
bool TryStrToDateTime(std::u16string_view s, TDateTime& value) {
  return TryStrToDateTime(s, value, FormatSettings());
}

TDateTime StrToDate(std::u16string_view s, const TFormatSettings& fs) {
  TDateTime v = 0;
  if (!TryStrToDate(s, v, fs)) throw EConvertError(rtlmsg::SInvalidDate, {s});
  return v;
}

TDateTime StrToTime(std::u16string_view s, const TFormatSettings& fs) {
  TDateTime v = 0;
  if (!TryStrToTime(s, v, fs)) throw EConvertError(rtlmsg::SInvalidTime, {s});
  return v;
}

TDateTime StrToDateTime(std::u16string_view s, const TFormatSettings& fs) {
  TDateTime v = 0;
  if (!TryStrToDateTime(s, v, fs)) throw EConvertError(rtlmsg::SInvalidDateTime, {s});
  return v;
}

TDateTime StrToDate(std::u16string_view s) { return StrToDate(s, FormatSettings()); }
TDateTime StrToTime(std::u16string_view s) { return StrToTime(s, FormatSettings()); }
TDateTime StrToDateTime(std::u16string_view s) { return StrToDateTime(s, FormatSettings()); }

}  // namespace quill
