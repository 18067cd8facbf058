// Gstrings: runs of blanks, characters and strings, and padding to a width.
//
//   using namespace quill::Gstrings;
//   Padl("ab", 4, '*');        // "**ab"
//   Padl("abcdef", 3, '*');    // "abc": a longer string keeps its beginning
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// `count` blanks; a count below 1 gives the empty string.
[[nodiscard]] QUILL_API AnsiString SpaceA(int32_t count);
[[nodiscard]] QUILL_API UnicodeString SpaceW(int32_t count);

// `count` copies of `c`; a count below 1 gives the empty string.
[[nodiscard]] QUILL_API AnsiString Replicate(AnsiChar c, int32_t count);
[[nodiscard]] QUILL_API UnicodeString Replicate(WideChar c, int32_t count);

// `count` copies of `s`; a count below 1 gives the empty string.
[[nodiscard]] QUILL_API AnsiString ReplicateStr(std::string_view s, int32_t count);

// `s` followed by `c`.
[[nodiscard]] QUILL_API UnicodeString ConcatWChar(std::u16string_view s, WideChar c);

// The first `width` characters of `s`, then (width - length) copies of `fill`
// when positive. A width of 0 or less gives the empty string.
[[nodiscard]] QUILL_API AnsiString Padr(std::string_view s, int32_t width, AnsiChar fill);
[[nodiscard]] QUILL_API UnicodeString Padr(std::u16string_view s, int32_t width, WideChar fill);

// (width - length) copies of `fill` when positive, then the first `width`
// characters of `s`. Deliberately, a longer string is cut at its end like
// Padr does: the left end is kept, not the right.
[[nodiscard]] QUILL_API AnsiString Padl(std::string_view s, int32_t width, AnsiChar fill);
[[nodiscard]] QUILL_API UnicodeString Padl(std::u16string_view s, int32_t width, WideChar fill);

}  // namespace quill::Gstrings
