#include "quill/rtl/formatsettings.h"

#include <unicode/datefmt.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/smpdtfmt.h>

#include <memory>
#include <string>

#include "quill/rtl/internal/icudata.h"
#include "quill/rtl/internal/icupattern.h"
#include "quill/rtl/localefacts.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace quill {
namespace {

UnicodeString ToU16(const icu::UnicodeString& s) { return internal::FromIcuString(s); }

bool HasLanguageData(const char* language) { return internal::IcuHasLanguageData(language); }

// The ICU locale for a language tag, always with the Gregorian calendar: the
// runtime's dates are Gregorian whatever calendar a locale prefers.
icu::Locale IcuLocale(std::string tag) {
  // Sort-order names ("de-DE_phoneb") carry the locale before the underscore.
  if (const auto us = tag.find('_'); us != std::string::npos) tag.resize(us);
  UErrorCode err = U_ZERO_ERROR;
  icu::Locale loc = icu::Locale::forLanguageTag(tag, err);
  // ICU would fall back from an unknown language to the process's default
  // locale, which depends on the machine; the root locale is used instead.
  if (U_FAILURE(err) || loc.isBogus() || !HasLanguageData(loc.getLanguage())) loc = icu::Locale::getRoot();
  err = U_ZERO_ERROR;
  loc.setKeywordValue("calendar", "gregorian", err);
  return loc;
}

std::u16string IcuPattern(icu::DateFormat* fmt) {
  std::u16string out;
  if (auto* simple = dynamic_cast<icu::SimpleDateFormat*>(fmt)) {
    icu::UnicodeString p;
    simple->toPattern(p);
    out = ToU16(p);
  }
  delete fmt;
  return out;
}

// Time patterns in recent locale data put a narrow no-break space before the
// AM/PM marker; the runtime's formats use an ordinary space there, so text
// written with them can be read back by code that expects one.
std::u16string PlainSpaces(std::u16string s) {
  for (char16_t& c : s) {
    if (c == u'\u202F' || c == u'\u00A0') c = u' ';
  }
  return s;
}

// Short dates always show four-digit years, as desktop systems show them.
std::u16string FourDigitYears(std::u16string icu) {
  std::u16string out;
  size_t i = 0;
  bool quoted = false;
  while (i < icu.size()) {
    const char16_t c = icu[i];
    if (c == u'\'') quoted = !quoted;
    if (!quoted && c == u'y') {
      size_t n = 0;
      while (i + n < icu.size() && icu[i + n] == u'y') ++n;
      out += u"yyyy";
      i += n;
      continue;
    }
    out.push_back(c);
    ++i;
  }
  return out;
}

WideChar FirstUnit(const icu::UnicodeString& s, WideChar fallback) {
  return s.length() > 0 ? static_cast<WideChar>(s.charAt(0)) : fallback;
}

void FillNumbers(const icu::Locale& loc, TFormatSettings& fs) {
  UErrorCode err = U_ZERO_ERROR;
  icu::DecimalFormatSymbols sym(loc, err);
  if (U_FAILURE(err)) return;
  fs.DecimalSeparator = FirstUnit(sym.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol), u'.');
  // The grouping separator is taken as the locale gives it: French uses
  // U+202F (narrow no-break space), Swiss German an apostrophe.
  fs.ThousandSeparator = FirstUnit(sym.getSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol), u',');
  fs.CurrencyString = ToU16(sym.getSymbol(icu::DecimalFormatSymbols::kCurrencySymbol));
  // Lists of numbers need a separator other than the decimal one.
  fs.ListSeparator = fs.DecimalSeparator == u',' ? u';' : u',';

  err = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> cur(icu::NumberFormat::createCurrencyInstance(loc, err));
  auto* dec = dynamic_cast<icu::DecimalFormat*>(cur.get());
  if (U_FAILURE(err) || dec == nullptr) return;
  fs.CurrencyDecimals = static_cast<uint8_t>(dec->getMaximumFractionDigits());
  icu::UnicodeString pattern;
  dec->toPattern(pattern);
  const std::u16string p = ToU16(pattern);
  // Position of the currency sign relative to the number, with or without a
  // space: 0 = "$1", 1 = "1$", 2 = "$ 1", 3 = "1 $".
  const std::u16string pos = p.substr(0, p.find(u';'));
  const size_t sign = pos.find(u'\u00A4');
  const size_t digit = pos.find_first_of(u"#0");
  if (sign == std::u16string::npos || digit == std::u16string::npos) return;
  const bool before = sign < digit;
  const std::u16string between = before ? pos.substr(sign + 1, digit - sign - 1)
                                        : pos.substr(pos.find_last_of(u"#0") + 1, sign - pos.find_last_of(u"#0") - 1);
  const bool spaced = between.find_first_of(u" \u00A0\u202F") != std::u16string::npos;
  fs.CurrencyFormat = static_cast<uint8_t>((before ? 0 : 1) + (spaced ? 2 : 0));
  // Negative amounts put a minus sign in front: "-$1", "-1$", "-$ 1", "-1 $".
  static constexpr uint8_t kNegative[4] = {1, 5, 9, 8};
  fs.NegCurrFormat = kNegative[fs.CurrencyFormat];
}

void FillDates(const icu::Locale& loc, TFormatSettings& fs) {
  UErrorCode err = U_ZERO_ERROR;
  icu::DateFormatSymbols sym(loc, err);
  if (U_SUCCESS(err)) {
    int32_t n = 0;
    using S = icu::DateFormatSymbols;
    // Format-context names ("Januar", "janvier"): the forms used inside a date.
    const icu::UnicodeString* months = sym.getMonths(n, S::FORMAT, S::WIDE);
    for (int32_t i = 0; i < 12 && i < n; ++i) fs.LongMonthNames[i] = ToU16(months[i]);
    months = sym.getMonths(n, S::FORMAT, S::ABBREVIATED);
    for (int32_t i = 0; i < 12 && i < n; ++i) fs.ShortMonthNames[i] = ToU16(months[i]);
    // Weekday arrays are indexed by UCAL_SUNDAY (1) .. UCAL_SATURDAY (7).
    const icu::UnicodeString* days = sym.getWeekdays(n, S::FORMAT, S::WIDE);
    for (int32_t i = 1; i <= 7 && i < n; ++i) fs.LongDayNames[i - 1] = ToU16(days[i]);
    days = sym.getWeekdays(n, S::FORMAT, S::ABBREVIATED);
    for (int32_t i = 1; i <= 7 && i < n; ++i) fs.ShortDayNames[i - 1] = ToU16(days[i]);
    const icu::UnicodeString* ampm = sym.getAmPmStrings(n);
    if (n >= 2) {
      fs.TimeAMString = ToU16(ampm[0]);
      fs.TimePMString = ToU16(ampm[1]);
    }
  }
  using DF = icu::DateFormat;
  const std::u16string short_date = FourDigitYears(IcuPattern(DF::createDateInstance(DF::kShort, loc)));
  // The full pattern: the long date with the weekday name, as in
  // "dddd, mmmm d, yyyy".
  const std::u16string long_date = IcuPattern(DF::createDateInstance(DF::kFull, loc));
  const std::u16string short_time = PlainSpaces(IcuPattern(DF::createTimeInstance(DF::kShort, loc)));
  const std::u16string long_time = PlainSpaces(IcuPattern(DF::createTimeInstance(DF::kMedium, loc)));
  if (!short_date.empty()) {
    fs.ShortDateFormat = internal::TranslateIcuPattern(short_date);
    fs.DateSeparator = internal::PatternSeparator(short_date, u"yMLd", u'/');
  }
  if (!long_date.empty()) fs.LongDateFormat = internal::TranslateIcuPattern(long_date);
  if (!short_time.empty()) {
    fs.ShortTimeFormat = internal::TranslateIcuPattern(short_time);
    fs.TimeSeparator = internal::PatternSeparator(short_time, u"HhKkms", u':');
  }
  if (!long_time.empty()) fs.LongTimeFormat = internal::TranslateIcuPattern(long_time);
}

TFormatSettings ForTag(const std::string& tag) {
  TFormatSettings fs;
  const icu::Locale loc = IcuLocale(tag);
  FillNumbers(loc, fs);
  FillDates(loc, fs);
  fs.TwoDigitYearCenturyWindow = 50;
  return fs;
}

struct Current {
  bool valid = false;
  TFormatSettings settings;
};

Current& CurrentSettings() {
  static Current current;
  return current;
}

}  // namespace

TFormatSettings TFormatSettings::Create(LCID locale) {
  std::string tag = LCIDToTag(locale);
  if (tag.empty()) tag = SystemDefaultLocaleTag();
  return ForTag(tag);
}

TFormatSettings TFormatSettings::Create(const UnicodeString& tag) { return ForTag(UnicodeToUtf8(tag)); }

TFormatSettings TFormatSettings::Create() { return ForTag(UserDefaultLocaleTag()); }

TFormatSettings& FormatSettings() {
  Current& c = CurrentSettings();
  if (!c.valid) {
    c.settings = TFormatSettings::Create();
    c.valid = true;
  }
  return c.settings;
}

void ResetFormatSettings() {
  // Rebuilt on the next FormatSettings() call; references stay valid.
  CurrentSettings().valid = false;
}

}  // namespace quill
