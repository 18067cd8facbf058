// FormatDateTime: writing a TDateTime with the runtime's format letters.
#include <cstdint>

#include "quill/rtl/datetext.h"
#include "quill/rtl/datetime.h"

namespace quill {
namespace {

char16_t UpperAscii(char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; }

bool StartsWithIgnoringCase(std::u16string_view s, size_t pos, std::u16string_view word) {
  if (s.size() - pos < word.size()) return false;
  for (size_t i = 0; i < word.size(); ++i) {
    if (UpperAscii(s[pos + i]) != UpperAscii(word[i])) return false;
  }
  return true;
}

// Any AM/PM token outside quotes makes hours use the 12-hour clock.
bool UsesTwelveHourClock(std::u16string_view f) {
  for (size_t i = 0; i < f.size(); ++i) {
    const char16_t c = f[i];
    if (c == u'"' || c == u'\'') {
      const size_t close = f.find(c, i + 1);
      if (close == std::u16string_view::npos) return false;
      i = close;
    } else if (c == u'a' || c == u'A') {
      if (StartsWithIgnoringCase(f, i, u"am/pm") || StartsWithIgnoringCase(f, i, u"a/p") ||
          StartsWithIgnoringCase(f, i, u"ampm")) {
        return true;
      }
    }
  }
  return false;
}

class DateWriter {
 public:
  DateWriter(TDateTime value, const TFormatSettings& fs) : value_(value), fs_(fs) {
    DecodeDate(value, year_, month_, day_);
    DecodeTime(value, hour_, min_, sec_, msec_);
  }

  void Write(std::u16string_view f, int depth) {
    // The inner formats may name each other ("c" inside ShortDateFormat);
    // two levels are enough for every real format and stop any loop.
    if (depth > 2) return;
    const bool twelve = UsesTwelveHourClock(f);
    char16_t last_token = 0;
    size_t i = 0;
    while (i < f.size()) {
      const char16_t c = f[i];
      const char16_t token = UpperAscii(c);
      size_t count = 1;
      if (token >= u'A' && token <= u'Z') {
        while (i + count < f.size() && UpperAscii(f[i + count]) == token) ++count;
      }
      switch (token) {
        case u'Y':
          if (count <= 2) Number(year_ % 100, 2);
          else Number(year_, 4);
          break;
        case u'M':
          if (last_token == u'H' && count <= 2) {
            Number(min_, count);
          } else if (count <= 2) {
            Number(month_, count);
          } else if (month_ >= 1 && month_ <= 12) {
            out_ += count == 3 ? fs_.ShortMonthNames[month_ - 1] : fs_.LongMonthNames[month_ - 1];
          }
          break;
        case u'D':
          if (count <= 2) {
            Number(day_, count);
          } else if (count <= 4) {
            const uint16_t dow = DayOfWeek(value_);
            out_ += count == 3 ? fs_.ShortDayNames[dow - 1] : fs_.LongDayNames[dow - 1];
          } else {
            Write(count == 5 ? fs_.ShortDateFormat : fs_.LongDateFormat, depth + 1);
          }
          break;
        case u'H': {
          uint16_t h = hour_;
          if (twelve) {
            h = h % 12;
            if (h == 0) h = 12;
          }
          Number(h, count >= 2 ? 2 : 1);
          break;
        }
        case u'N': Number(min_, count >= 2 ? 2 : 1); break;
        case u'S': Number(sec_, count >= 2 ? 2 : 1); break;
        case u'Z': Number(msec_, count >= 2 ? 3 : 1); break;
        case u'T': Write(count == 1 ? fs_.ShortTimeFormat : fs_.LongTimeFormat, depth + 1); break;
        case u'C':
          count = 1;
          Write(fs_.ShortDateFormat, depth + 1);
          if (hour_ != 0 || min_ != 0 || sec_ != 0 || msec_ != 0) {
            out_ += u' ';
            Write(fs_.LongTimeFormat, depth + 1);
          }
          break;
        case u'A':
          count = AmPm(f, i);
          break;
        case u'/':
          if (fs_.DateSeparator != 0) out_ += fs_.DateSeparator;
          break;
        case u':':
          if (fs_.TimeSeparator != 0) out_ += fs_.TimeSeparator;
          break;
        case u'"':
        case u'\'': {
          const size_t close = f.find(c, i + 1);
          const size_t end = close == std::u16string_view::npos ? f.size() : close;
          out_.append(f.substr(i + 1, end - i - 1));
          count = (close == std::u16string_view::npos ? f.size() : close + 1) - i;
          break;
        }
        default:
          out_.append(f.substr(i, count));
          break;
      }
      if (token >= u'A' && token <= u'Z') last_token = token;
      i += count;
    }
  }

  UnicodeString Take() { return std::move(out_); }

 private:
  // Writes `n` with at least `digits` digits.
  void Number(uint32_t n, size_t digits) {
    char16_t buf[10];
    size_t len = 0;
    do {
      buf[len++] = static_cast<char16_t>(u'0' + n % 10);
      n /= 10;
    } while (n != 0);
    for (size_t k = len; k < digits; ++k) out_ += u'0';
    while (len > 0) out_ += buf[--len];
  }

  // The AM/PM token at f[i]; returns how many format characters it used.
  size_t AmPm(std::u16string_view f, size_t i) {
    const bool pm = hour_ >= 12;
    if (StartsWithIgnoringCase(f, i, u"am/pm")) {
      out_.append(f.substr(pm ? i + 3 : i, 2));  // the letters in the case written
      return 5;
    }
    if (StartsWithIgnoringCase(f, i, u"a/p")) {
      out_ += f[pm ? i + 2 : i];
      return 3;
    }
    if (StartsWithIgnoringCase(f, i, u"ampm")) {
      out_ += pm ? fs_.TimePMString : fs_.TimeAMString;
      return 4;
    }
    out_ += f[i];
    return 1;
  }

  TDateTime value_;
  const TFormatSettings& fs_;
  uint16_t year_ = 0, month_ = 0, day_ = 0, hour_ = 0, min_ = 0, sec_ = 0, msec_ = 0;
  UnicodeString out_;
};

}  // namespace

UnicodeString FormatDateTime(std::u16string_view format, TDateTime value, const TFormatSettings& fs) {
  DateWriter w(value, fs);
  w.Write(format.empty() ? std::u16string_view(u"c") : format, 0);
  return w.Take();
}

UnicodeString FormatDateTime(std::u16string_view format, TDateTime value) {
  return FormatDateTime(format, value, FormatSettings());
}

UnicodeString DateToStr(TDateTime value, const TFormatSettings& fs) { return FormatDateTime(u"ddddd", value, fs); }
UnicodeString TimeToStr(TDateTime value, const TFormatSettings& fs) { return FormatDateTime(u"tt", value, fs); }
UnicodeString DateTimeToStr(TDateTime value, const TFormatSettings& fs) { return FormatDateTime(u"c", value, fs); }

}  // namespace quill
