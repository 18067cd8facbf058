// Floating-point and currency <-> text conversions.
//
// StrToFloat grammar: leading and trailing blanks (code 32 only; a tab is
// not a blank) ignored; optional sign; digits with at most one decimal
// separator (the settings' DecimalSeparator; '.' is then an ordinary invalid
// character unless it is the separator), at least one digit in all; an
// optional exponent 'E'/'e' with optional sign and optional digits ("1e" is
// 1). No thousands separators, no hexadecimal, no INF/NAN, ASCII digits only.
// The value is the correctly rounded double of the decimal text; text beyond
// the double range fails, text below the smallest denormal gives zero.
//
// FloatToStr: general format with 15 significant digits: fixed notation when
// 0.0001 <= |v| < 1E15 (after rounding), otherwise d.dddE[-]x with no '+' and
// no leading zeros in the exponent; trailing zeros removed; the decimal
// separator only when needed; no thousands separators; zero and -0 are "0".
// Rounding is to nearest, exact binary halves away from zero. Infinities and
// NaN give "INF", "-INF" and "NAN".
//
//   FloatToStr(0.1 + 0.2) == u"0.3";  FloatToStr(1e15) == u"1E15";  FloatToStr(1e-5) == u"1E-5"
//
// CurrToStr: the currency's value with up to four decimals, trailing zeros and
// the separator dropped, no exponent.
#pragma once

#include <string>
#include <string_view>

#include "quill/rtl/currency.h"
#include "quill/rtl/export.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/types.h"

namespace quill {

// True and the value in `value` when `s` follows the grammar under
// `settings` (the process's current settings when omitted). Never raises.
[[nodiscard]] QUILL_API bool TryStrToFloat(std::u16string_view s, double& value,
                                           const TFormatSettings& settings) noexcept;
[[nodiscard]] QUILL_API bool TryStrToFloat(std::string_view s, double& value,
                                           const TFormatSettings& settings) noexcept;
[[nodiscard]] QUILL_API bool TryStrToFloat(std::u16string_view s, double& value) noexcept;
[[nodiscard]] QUILL_API bool TryStrToFloat(std::string_view s, double& value) noexcept;

// The value of `s`; raises EConvertError "'%s' is not a valid floating point
// value" with `s` exactly as given.
[[nodiscard]] QUILL_API double StrToFloat(std::u16string_view s, const TFormatSettings& settings);
[[nodiscard]] QUILL_API double StrToFloat(std::string_view s, const TFormatSettings& settings);
[[nodiscard]] QUILL_API double StrToFloat(std::u16string_view s);
[[nodiscard]] QUILL_API double StrToFloat(std::string_view s);

[[nodiscard]] QUILL_API UnicodeString FloatToStr(double v, const TFormatSettings& settings);
[[nodiscard]] QUILL_API UnicodeString FloatToStr(double v);

[[nodiscard]] QUILL_API UnicodeString CurrToStr(Currency c, const TFormatSettings& settings);
[[nodiscard]] QUILL_API UnicodeString CurrToStr(Currency c);

// Currency text: the float grammar read exactly as a decimal (no detour
// through double), rounded to four decimals with halves to even, and within
// the 64-bit raw range (922337203685477.5807 is the largest). StrToCurr
// raises the floating-point message above.
[[nodiscard]] QUILL_API bool TryStrToCurr(std::u16string_view s, Currency& value,
                                          const TFormatSettings& settings) noexcept;
[[nodiscard]] QUILL_API bool TryStrToCurr(std::string_view s, Currency& value,
                                          const TFormatSettings& settings) noexcept;
[[nodiscard]] QUILL_API Currency StrToCurr(std::u16string_view s, const TFormatSettings& settings);
[[nodiscard]] QUILL_API Currency StrToCurr(std::string_view s, const TFormatSettings& settings);

}  // namespace quill
