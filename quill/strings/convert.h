// Gstrings: tolerant conversions between text and numbers, booleans,
// floating-point and currency values.
//
// Each conversion has a fixed answer for empty or bad text: a default, zero,
// or a raised failure, as stated per routine. The X float and currency
// routines always use '.' as the decimal separator, whatever the user's
// locale says: they work on a private copy of the system default locale's
// settings (locale 2048) with the decimal separator overwritten; the
// process's settings are never touched.
//
//   using namespace quill::Gstrings;
//   ZStrToInt(u" 7 ");          // 7
//   HexToInt(u"ff");            // 255
//   XFloatToStr(1.5);           // u"1.5", also under a comma-decimal locale
//   NStrToBool(u"");            // true (XStrToBool gives false)
//
// This header also brings in the file-name and path routines.
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/frame/errors.h"
#include "quill/rtl/currency.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/strings/paths.h"

namespace quill::Gstrings {

// 0 when `s` trimmed of codes <= 32 is empty; otherwise the untrimmed text by
// the runtime's integer grammar (StrToInt). Bad text raises EConvertError;
// so trailing blanks fail ("7 ") while an all-blank text gives 0.
[[nodiscard]] QUILL_API int32_t XStrToInt(std::u16string_view s);

// The trimmed text by the integer grammar; empty or bad text gives 0. Never
// raises.
[[nodiscard]] QUILL_API int32_t ZStrToInt(std::u16string_view s) noexcept;

// The trimmed text by the integer grammar. The empty text gives 0. Any other
// text that does not convert raises EConvertError, also when it starts with
// digits ("12abc" fails, it does not give 12) and when it is all blanks.
// Callers depend on the failure.
[[nodiscard]] QUILL_API int32_t SafeStrToInt(std::u16string_view s);

// The value of hexadecimal digits, last character weight 1. Sum and weight
// wrap modulo 2^32, so a ninth digit silently overflows ("100000000" is 0).
// A digit is judged by the low 8 bits of its code only, so U+0141 counts as
// 'A'. Empty text gives 0. No prefix, sign or blank: any other character
// raises EGStringsError "<c> is not a hex digit".
[[nodiscard]] QUILL_API int32_t HexToInt(std::u16string_view s);

// As HexToInt in base 8 with digits '0'..'7'; other characters raise
// EGStringsError "<c> is not an oct digit".
[[nodiscard]] QUILL_API int32_t OctToInt(std::u16string_view s);

// `def` for the empty text (only then); otherwise the text by the float
// grammar with '.' as the decimal separator. Bad text raises EConvertError.
[[nodiscard]] QUILL_API double XStrToFloat(std::u16string_view s, double def);

// The trimmed text by the float grammar under the process's current settings
// (the user's decimal separator); empty or bad text gives 0. Never raises.
[[nodiscard]] QUILL_API double ZStrToFloat(std::u16string_view s) noexcept;

// General format, up to 15 significant digits, no thousands separators, '.'
// as decimal separator: 1.5 gives "1.5", 1E15 gives "1E15".
[[nodiscard]] QUILL_API UnicodeString XFloatToStr(double v);

// The currency's value with up to four decimals, no trailing zeros, no
// thousands separators and '.' as decimal separator.
[[nodiscard]] QUILL_API UnicodeString XCurrToStr(Currency c);

// "0" for false, "1" for true.
[[nodiscard]] QUILL_API UnicodeString BoolToStr(bool b);

// False for the empty text, for "false" in any ASCII case and for exactly
// "0"; true for everything else ("no", " false", "00").
[[nodiscard]] QUILL_API bool XStrToBool(std::u16string_view s) noexcept;

// As XStrToBool, except that the empty text gives true.
[[nodiscard]] QUILL_API bool NStrToBool(std::u16string_view s) noexcept;

}  // namespace quill::Gstrings
