// Floating-point and currency <-> text conversions.
//
// StrToFloat grammar: leading and trailing blanks ignored; optional sign;
// digits with at most one decimal separator (the settings' DecimalSeparator;
// '.' is then an ordinary invalid character unless it is the separator); an
// optional exponent 'E'/'e' with optional sign and digits. No thousands
// separators, no hexadecimal, no INF/NAN.
//
// FloatToStr: general format with 15 significant digits: fixed notation when
// 0.0001 <= |v| < 1E15, otherwise d.dddE[-]x with no '+' and no leading zeros
// in the exponent; trailing zeros removed; the decimal separator only when
// needed; zero is "0". Infinities and NaN give "INF", "-INF" and "NAN".
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

// Raises EConvertError "'%s' is not a valid floating point value".
[[nodiscard]] QUILL_API double StrToFloat(std::u16string_view s, const TFormatSettings& settings);
[[nodiscard]] QUILL_API double StrToFloat(std::string_view s, const TFormatSettings& settings);
[[nodiscard]] QUILL_API double StrToFloat(std::u16string_view s);
[[nodiscard]] QUILL_API double StrToFloat(std::string_view s);

[[nodiscard]] QUILL_API UnicodeString FloatToStr(double v, const TFormatSettings& settings);
[[nodiscard]] QUILL_API UnicodeString FloatToStr(double v);

[[nodiscard]] QUILL_API UnicodeString CurrToStr(Currency c, const TFormatSettings& settings);
[[nodiscard]] QUILL_API UnicodeString CurrToStr(Currency c);

// Currency text: the float grammar, at most four decimals kept (rounded), in range.
[[nodiscard]] QUILL_API bool TryStrToCurr(std::u16string_view s, Currency& value,
                                          const TFormatSettings& settings) noexcept;
[[nodiscard]] QUILL_API Currency StrToCurr(std::u16string_view s, const TFormatSettings& settings);

}  // namespace quill
