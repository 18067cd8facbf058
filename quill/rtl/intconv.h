// Integer <-> text conversions with the runtime's grammar.
//
// Accepted text: leading blanks (code 32 only; a tab is not a blank here); an optional sign '+' or '-';
// then decimal digits, or a hexadecimal number introduced by '$', 'x', 'X',
// "0x" or "0X" (digits in either case); nothing after the digits (no trailing
// blank). Decimal values must lie in -2147483648..2147483647; hexadecimal text
// is read as a 32-bit pattern (up to 32 significant bits, so "$FFFFFFFF" is -1)
// and the sign then applies ("-$FFFFFFFF" is 1). Everything else fails: inner
// or trailing blanks, separators, exponents, an empty or sign-only text, a
// prefix without digits. The 64-bit forms use the Int64 range and 64-bit
// patterns.
//
//   StrToInt(u"x56e") == 1390;  StrToInt(u"-$10") == -16;  TryStrToInt(u"12 ", v) == false
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

// True and the value in `value` when `s` follows the grammar; false (value
// unchanged) otherwise. Never raises.
[[nodiscard]] QUILL_API bool TryStrToInt(std::u16string_view s, int32_t& value) noexcept;
[[nodiscard]] QUILL_API bool TryStrToInt(std::string_view s, int32_t& value) noexcept;
// The 64-bit forms: the same grammar with the Int64 range and 64-bit hex.
[[nodiscard]] QUILL_API bool TryStrToInt64(std::u16string_view s, int64_t& value) noexcept;
[[nodiscard]] QUILL_API bool TryStrToInt64(std::string_view s, int64_t& value) noexcept;

// The value of `s`; raises EConvertError "'%s' is not a valid integer value"
// with `s` exactly as given.
[[nodiscard]] QUILL_API int32_t StrToInt(std::u16string_view s);
[[nodiscard]] QUILL_API int32_t StrToInt(std::string_view s);
[[nodiscard]] QUILL_API int64_t StrToInt64(std::u16string_view s);
[[nodiscard]] QUILL_API int64_t StrToInt64(std::string_view s);

// The value of `s`, or `def` when it does not convert.
[[nodiscard]] QUILL_API int32_t StrToIntDef(std::u16string_view s, int32_t def) noexcept;
[[nodiscard]] QUILL_API int32_t StrToIntDef(std::string_view s, int32_t def) noexcept;

// Decimal text of a value ("-5", "0"); IntToStrA gives the 8-bit form.
[[nodiscard]] QUILL_API UnicodeString IntToStr(int64_t value);
[[nodiscard]] QUILL_API AnsiString IntToStrA(int64_t value);
// Upper-case hexadecimal with at least `digits` digits (zero-padded). A
// negative value shows its two's-complement pattern in the width of the
// argument's type: IntToHex(-1, 2) is "FFFFFFFF" for an int32_t argument and
// sixteen 'F's for an int64_t one.
[[nodiscard]] QUILL_API UnicodeString IntToHex(int64_t value, int digits);
[[nodiscard]] QUILL_API UnicodeString IntToHex(int32_t value, int digits);

}  // namespace quill
