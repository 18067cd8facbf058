// Tolerant number, float, currency and boolean conversions.
#include "quill/strings/convert.h"

#include <string>
#include <string_view>

#include "quill/rtl/compare.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/floatconv.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/syslocale.h"
#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace {

using internal::TrimControls;

// The settings of the system default locale with '.' as decimal separator,
// used by the X float and currency routines. Rebuilt whenever the system
// default locale changes; the process's own settings are never touched.
const TFormatSettings& FixedPointSettings() {
  thread_local std::string tag;
  thread_local TFormatSettings settings;
  thread_local bool built = false;
  std::string current = SystemDefaultLocaleTag();
  if (!built || current != tag) {
    settings = TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT);
    settings.DecimalSeparator = u'.';
    tag = std::move(current);
    built = true;
  }
  return settings;
}

// Digits of base 16 or 8, judged by the low 8 bits of the code only (so a
// character above 255 whose low byte is a digit counts as that digit).
// Sum and weight wrap modulo 2^32.
int32_t DigitsToInt(std::u16string_view s, uint32_t base, const char16_t* complaint) {
  uint32_t sum = 0;
  uint32_t weight = 1;
  for (std::size_t i = s.size(); i-- > 0;) {
    const char16_t c = s[i];
    const unsigned low = c & 0xFFu;
    uint32_t digit = 0;
    if (low >= '0' && low <= '9') {
      digit = low - '0';
    } else if (base == 16 && low >= 'A' && low <= 'F') {
      digit = low - 'A' + 10;
    } else if (base == 16 && low >= 'a' && low <= 'f') {
      digit = low - 'a' + 10;
    } else {
      digit = base;  // not a digit
    }
    if (digit >= base) {
      UnicodeString msg(1, c);
      msg += complaint;
      throw EGStringsError(msg);
    }
    sum += digit * weight;
    weight *= base;
  }
  return static_cast<int32_t>(sum);
}

// Fast path for the most common integer text: an optional sign and one to
// nine decimal digits, which the runtime's grammar always accepts and which
// always fit. Anything else (blanks, hexadecimal, ten or more digits) is left
// to the runtime's conversion.
bool TryShortDecimal(std::u16string_view s, int32_t& value) noexcept {
  std::size_t i = 0;
  const bool negative = !s.empty() && s[0] == u'-';
  if (!s.empty() && (s[0] == u'-' || s[0] == u'+')) i = 1;
  const std::size_t digits = s.size() - i;
  if (digits == 0 || digits > 9) return false;
  int32_t v = 0;
  for (; i < s.size(); ++i) {
    const char16_t c = s[i];
    if (c < u'0' || c > u'9') return false;
    v = v * 10 + (c - u'0');
  }
  value = negative ? -v : v;
  return true;
}

bool MeansFalse(std::u16string_view s) noexcept {
  if (s == u"0") return true;
  if (s.size() != 5) return false;
  constexpr std::u16string_view word = u"false";
  for (std::size_t i = 0; i < 5; ++i) {
    char16_t c = s[i];
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
    if (c != word[i]) return false;
  }
  return true;
}

}  // namespace

int32_t XStrToInt(std::u16string_view s) {
  if (TrimControls(s).empty()) return 0;
  int32_t v = 0;
  if (TryShortDecimal(s, v)) return v;
  // The untrimmed text: trailing blanks fail on purpose.
  return StrToInt(s);
}

int32_t ZStrToInt(std::u16string_view s) noexcept {
  const std::u16string_view t = TrimControls(s);
  int32_t v = 0;
  if (TryShortDecimal(t, v)) return v;
  return TryStrToInt(t, v) ? v : 0;
}

int32_t SafeStrToInt(std::u16string_view s) {
  int32_t v = 0;
  if (TryStrToInt(TrimControls(s), v)) return v;
  if (s.empty()) return 0;
  // The fallback that was meant to keep the leading digits converts an
  // empty working copy and so always fails: "12abc" and "   " raise, they
  // never give 12 or 0. Callers rely on the failure.
  throw EConvertError(rtlmsg::SInvalidInteger, {UnicodeString()});
}

int32_t HexToInt(std::u16string_view s) { return DigitsToInt(s, 16, u" is not a hex digit"); }

int32_t OctToInt(std::u16string_view s) { return DigitsToInt(s, 8, u" is not an oct digit"); }

double XStrToFloat(std::u16string_view s, double def) {
  if (s.empty()) return def;
  return StrToFloat(s, FixedPointSettings());
}

double ZStrToFloat(std::u16string_view s) noexcept {
  try {
    double v = 0;
    return TryStrToFloat(TrimControls(s), v, FormatSettings()) ? v : 0.0;
  } catch (...) {
    return 0.0;
  }
}

UnicodeString XFloatToStr(double v) { return FloatToStr(v, FixedPointSettings()); }

UnicodeString XCurrToStr(Currency c) { return CurrToStr(c, FixedPointSettings()); }

UnicodeString BoolToStr(bool b) { return b ? u"1" : u"0"; }

bool XStrToBool(std::u16string_view s) noexcept { return !s.empty() && !MeansFalse(s); }

bool NStrToBool(std::u16string_view s) noexcept { return s.empty() || !MeansFalse(s); }

}  // namespace quill::Gstrings
