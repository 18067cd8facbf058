#include "quill/rtl/floatconv.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "quill/rtl/exception.h"
#include "quill/rtl/internal/floattext.h"
#include "quill/rtl/internal/intparse.h"

namespace quill {
namespace {

// Significant digits kept from the text. Any double is decided by its first
// 768 significant digits; the rest only matter as "something non-zero
// follows", which one extra sticky digit records.
constexpr int kMaxDigits = 800;

// Exponents are saturated here while reading: far beyond any double, so the
// saturated value still overflows or underflows correctly.
constexpr int64_t kExponentCap = 1000000;

// A decimal number as read from text: value = digits x 10^exp10.
struct Decimal {
  bool negative = false;
  int count = 0;  // significant digits, no leading zeros
  int64_t exp10 = 0;
  char digit[kMaxDigits + 1];
};

using internal::Code;

// Reads the float grammar: [blanks][sign]digits[sep digits][(E|e)[sign][digits]][blanks].
// Blanks are code 32. The mantissa needs at least one digit; the exponent's
// digits are optional ("1e" is 1).
template <class CharT>
bool Scan(const CharT* p, const CharT* end, char16_t sep, Decimal& d) noexcept {
  while (p < end && *p == CharT(' ')) ++p;
  while (end > p && end[-1] == CharT(' ')) --end;
  if (p == end) return false;
  if (*p == CharT('+') || *p == CharT('-')) {
    d.negative = *p == CharT('-');
    ++p;
  }
  bool any = false;
  bool sticky = false;
  int64_t shift = 0;
  auto keep = [&](char c, bool fraction) {
    any = true;
    if (d.count == 0 && c == '0') {
      if (fraction) --shift;
      return;
    }
    if (d.count < kMaxDigits) {
      d.digit[d.count++] = c;
      if (fraction) --shift;
    } else {
      sticky |= c != '0';
      if (!fraction) ++shift;
    }
  };
  for (; p < end && Code(*p) - '0' <= 9; ++p) keep(static_cast<char>(*p), false);
  if (p < end && Code(*p) == sep) {
    for (++p; p < end && Code(*p) - '0' <= 9; ++p) keep(static_cast<char>(*p), true);
  }
  if (!any) return false;
  int64_t e = 0;
  if (p < end && (*p == CharT('e') || *p == CharT('E'))) {
    ++p;
    bool eneg = false;
    if (p < end && (*p == CharT('+') || *p == CharT('-'))) {
      eneg = *p == CharT('-');
      ++p;
    }
    for (; p < end && Code(*p) - '0' <= 9; ++p) {
      if (e < kExponentCap) e = e * 10 + (Code(*p) - '0');
    }
    if (eneg) e = -e;
  }
  if (p != end) return false;
  if (sticky) {
    d.digit[d.count++] = '1';
    --shift;
  }
  d.exp10 = e + shift;
  return true;
}

// Correctly rounded double of `d`; false when it overflows. Underflow gives
// zero of the right sign.
bool ToDouble(const Decimal& d, double& value) noexcept {
  if (d.count == 0) {
    value = d.negative ? -0.0 : 0.0;
    return true;
  }
  char buf[kMaxDigits + 32];
  char* q = buf;
  if (d.negative) *q++ = '-';
  for (int i = 0; i < d.count; ++i) *q++ = d.digit[i];
  *q++ = 'e';
  q = std::to_chars(q, buf + sizeof buf, d.exp10).ptr;
  double v = 0;
  auto r = std::from_chars(buf, q, v);
  if (r.ec == std::errc::result_out_of_range) {
    if (d.count + d.exp10 > 0) return false;  // too large for a double
    v = d.negative ? -0.0 : 0.0;
  } else if (r.ec != std::errc()) {
    return false;
  }
  value = v;
  return true;
}

// Exact currency count of `d` (ten-thousandths), halves to even; false when
// out of the 64-bit range.
bool ToCurrency(const Decimal& d, int64_t& raw) noexcept {
  if (d.count == 0) {
    raw = 0;
    return true;
  }
  const int64_t k = d.exp10 + 4;     // value in ten-thousandths = digits x 10^k
  const int64_t whole = d.count + k;  // digits before the rounding point
  if (whole > 19) return false;
  uint64_t mag = 0;
  const int64_t take = whole < d.count ? whole : d.count;
  for (int64_t i = 0; i < take; ++i) mag = mag * 10 + static_cast<uint64_t>(d.digit[i] - '0');
  for (int64_t i = d.count; i < whole; ++i) mag *= 10;
  if (whole >= 0 && whole < d.count) {
    const char first = d.digit[whole];
    bool rest = false;
    for (int64_t i = whole + 1; i < d.count && !rest; ++i) rest = d.digit[i] != '0';
    if (first > '5' || (first == '5' && (rest || (mag & 1) != 0))) ++mag;
  }
  const uint64_t limit = static_cast<uint64_t>(std::numeric_limits<int64_t>::max()) + (d.negative ? 1 : 0);
  if (mag > limit) return false;
  raw = d.negative ? static_cast<int64_t>(0 - mag) : static_cast<int64_t>(mag);
  return true;
}

template <class CharT>
bool TryFloat(std::basic_string_view<CharT> s, double& value, const TFormatSettings& fs) noexcept {
  Decimal d;
  return Scan(s.data(), s.data() + s.size(), fs.DecimalSeparator, d) && ToDouble(d, value);
}

template <class CharT>
double FloatOrRaise(std::basic_string_view<CharT> s, const TFormatSettings& fs) {
  double v = 0;
  if (!TryFloat(s, v, fs)) throw EConvertError(rtlmsg::SInvalidFloat, {s});
  return v;
}

template <class CharT>
bool TryCurr(std::basic_string_view<CharT> s, Currency& value, const TFormatSettings& fs) noexcept {
  Decimal d;
  int64_t raw = 0;
  if (!Scan(s.data(), s.data() + s.size(), fs.DecimalSeparator, d) || !ToCurrency(d, raw)) return false;
  value = Currency::FromRaw(raw);
  return true;
}

template <class CharT>
Currency CurrOrRaise(std::basic_string_view<CharT> s, const TFormatSettings& fs) {
  Currency c;
  if (!TryCurr(s, c, fs)) throw EConvertError(rtlmsg::SInvalidFloat, {s});
  return c;
}

// Copies number layout text, '.' becoming the settings' decimal separator.
UnicodeString WithSeparator(std::string_view text, const TFormatSettings& fs) {
  UnicodeString out;
  out.reserve(text.size());
  for (char c : text) out.push_back(c == '.' ? fs.DecimalSeparator : static_cast<char16_t>(c));
  return out;
}

}  // namespace

bool TryStrToFloat(std::u16string_view s, double& value, const TFormatSettings& settings) noexcept {
  return TryFloat(s, value, settings);
}
bool TryStrToFloat(std::string_view s, double& value, const TFormatSettings& settings) noexcept {
  return TryFloat(s, value, settings);
}
bool TryStrToFloat(std::u16string_view s, double& value) noexcept {
  return TryFloat(s, value, FormatSettings());
}
bool TryStrToFloat(std::string_view s, double& value) noexcept {
  return TryFloat(s, value, FormatSettings());
}

double StrToFloat(std::u16string_view s, const TFormatSettings& settings) { return FloatOrRaise(s, settings); }
double StrToFloat(std::string_view s, const TFormatSettings& settings) { return FloatOrRaise(s, settings); }
double StrToFloat(std::u16string_view s) { return FloatOrRaise(s, FormatSettings()); }
double StrToFloat(std::string_view s) { return FloatOrRaise(s, FormatSettings()); }

UnicodeString FloatToStr(double v, const TFormatSettings& settings) {
  internal::NumText text;
  internal::GeneralText(v, 15, text);
  return WithSeparator(text.View(), settings);
}
UnicodeString FloatToStr(double v) { return FloatToStr(v, FormatSettings()); }

UnicodeString CurrToStr(Currency c, const TFormatSettings& settings) {
  internal::NumText text;
  internal::CurrencyText(c.Raw(), text);
  return WithSeparator(text.View(), settings);
}
UnicodeString CurrToStr(Currency c) { return CurrToStr(c, FormatSettings()); }

bool TryStrToCurr(std::u16string_view s, Currency& value, const TFormatSettings& settings) noexcept {
  return TryCurr(s, value, settings);
}
bool TryStrToCurr(std::string_view s, Currency& value, const TFormatSettings& settings) noexcept {
  return TryCurr(s, value, settings);
}

Currency StrToCurr(std::u16string_view s, const TFormatSettings& settings) { return CurrOrRaise(s, settings); }
Currency StrToCurr(std::string_view s, const TFormatSettings& settings) { return CurrOrRaise(s, settings); }

}  // namespace quill
