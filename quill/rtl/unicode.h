// Conversions between the two string forms and UTF-8.
//
// 8-bit strings are bytes in a code page. The "ordinary conversion" between an
// 8-bit string and UTF-16 uses the default ANSI code page (GetACP()); every
// routine here also takes an explicit code page. Conversions go through ICU
// converters and never raise: bytes that have no mapping become U+FFFD (to
// UTF-16) or '?' (to 8-bit), as the system's converter substitutes them.
// The five undefined bytes of code page 1252 (81 8D 8F 90 9D) decode to the C1
// controls of the same number, as on Windows. ICU's IBM-flavoured tables
// (437, 850, 852, 866, 932, ...) swap the controls 1A, 1C and 7F; here those
// bytes are the ASCII controls of the same number, as on Windows. Code page
// 65001 converts like Utf8ToUnicode/UnicodeToUtf8 (an unpaired surrogate
// becomes U+FFFD, EF BF BD). A code page with no converter passes ASCII
// through and treats every other byte or character as unmapped.
// Converters are opened once per thread and code page; ASCII text on an
// ASCII-compatible page is copied without calling ICU, and single-byte pages
// convert through 256- and 65536-entry tables built once from ICU's own.
#pragma once

#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

// Code page 0 means the default ANSI code page (GetACP()).
inline constexpr TCodePage CP_ACP = 0;
inline constexpr TCodePage CP_UTF8 = 65001;

// UTF-8 <-> UTF-16. Ill-formed input becomes U+FFFD; unpaired surrogates become
// U+FFFD in UTF-8.
[[nodiscard]] QUILL_API UnicodeString Utf8ToUnicode(std::string_view s);
[[nodiscard]] QUILL_API std::string UnicodeToUtf8(std::u16string_view s);

// 8-bit text in `codepage` -> UTF-16.
[[nodiscard]] QUILL_API UnicodeString AnsiToUnicode(std::string_view s, TCodePage codepage = CP_ACP);
// UTF-16 -> 8-bit text in `codepage`.
[[nodiscard]] QUILL_API AnsiString UnicodeToAnsi(std::u16string_view s, TCodePage codepage = CP_ACP);

// True when ICU has a converter for the Windows code page `codepage`; false
// for 0 (CP_ACP names no page of its own).
[[nodiscard]] QUILL_API bool IsValidCodePage(TCodePage codepage);

}  // namespace quill
