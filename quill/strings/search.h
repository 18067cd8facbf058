// Gstrings: searching (n-th occurrence forwards and backwards, with and
// without case), prefix and suffix tests, counting.
//
// Every search takes the pattern first and the searched text second, works on
// 1-based positions and answers 0 for "not found". Matches may overlap: the
// scan moves on by one position after a match.
//
//   using namespace quill::Gstrings;
//   XPos(u"aa", u"aaaa", 1, 2);    // 2 (overlapping)
//   BXPos("ab", "abab", 4, 1);     // 3 (a start equal to the length searches from the end)
//   CPos(u"Ä", u"xä");             // 2
//
// The case-insensitive routines (C*, XStartsWith with false) compare the
// locale-aware lowered forms of pattern and text. Lowering keeps the length,
// so a position found applies to the caller's text.
//
// This header also brings in the slicing, padding and replacing routines.
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/strings/pad.h"
#include "quill/strings/replace.h"
#include "quill/strings/slicing.h"

namespace quill::Gstrings {

// Position of the n-th occurrence of `pattern` in `text` at or after `start`
// (below 1 counts as 1), overlapping occurrences counted. 0 when either
// string is empty, when start is beyond the text, when n <= 0 or when there
// are fewer than n occurrences. O(len(text)) for n == 1 on typical text.
[[nodiscard]] QUILL_API int32_t XPos(std::string_view pattern, std::string_view text,
                                     int32_t start, int32_t n) noexcept;
[[nodiscard]] QUILL_API int32_t XPos(std::u16string_view pattern, std::u16string_view text,
                                     int32_t start, int32_t n) noexcept;

// XPos from position 1.
[[nodiscard]] QUILL_API int32_t PosNum(std::string_view pattern, std::string_view text,
                                       int32_t n) noexcept;
[[nodiscard]] QUILL_API int32_t PosNum(std::u16string_view pattern, std::u16string_view text,
                                       int32_t n) noexcept;

// Position of the n-th occurrence searching backwards. The search begins at
// `start` when 1 <= start < length of the text; otherwise (start below 1, or
// start equal to or beyond the length: on purpose, a start equal to the
// length searches from the end) at length(text) - length(pattern) + 1. An
// occurrence that would run past the end is never a match. 0 for empty
// strings, n <= 0, or fewer than n occurrences.
[[nodiscard]] QUILL_API int32_t BXPos(std::string_view pattern, std::string_view text,
                                      int32_t start, int32_t n) noexcept;
[[nodiscard]] QUILL_API int32_t BXPos(std::u16string_view pattern, std::u16string_view text,
                                      int32_t start, int32_t n) noexcept;

// XPos ignoring case (locale-aware lowering of both strings).
[[nodiscard]] QUILL_API int32_t CXPos(std::string_view pattern, std::string_view text,
                                      int32_t start, int32_t n);
[[nodiscard]] QUILL_API int32_t CXPos(std::u16string_view pattern, std::u16string_view text,
                                      int32_t start, int32_t n);

// First occurrence ignoring case; an empty pattern gives 0.
[[nodiscard]] QUILL_API int32_t CPos(std::string_view pattern, std::string_view text);
[[nodiscard]] QUILL_API int32_t CPos(std::u16string_view pattern, std::u16string_view text);

// True when `text` begins with `prefix` exactly; an empty prefix gives true,
// a prefix longer than the text false.
[[nodiscard]] QUILL_API bool StartsWith(std::string_view prefix, std::string_view text) noexcept;
[[nodiscard]] QUILL_API bool StartsWith(std::u16string_view prefix,
                                        std::u16string_view text) noexcept;

// With `caseSensitive` false: StartsWith on the lowered strings (an empty
// prefix gives true, a shorter text false). With `caseSensitive` true the
// answer is always true, whatever the strings: callers depend on it.
[[nodiscard]] QUILL_API bool XStartsWith(std::string_view prefix, std::string_view text,
                                         bool caseSensitive);
[[nodiscard]] QUILL_API bool XStartsWith(std::u16string_view prefix, std::u16string_view text,
                                         bool caseSensitive);

// True when the last length(suffix) characters of `text` (the whole text when
// the suffix is longer) equal `suffix` ignoring case: ASCII-only folding in
// the 8-bit form, the locale-aware comparison in the UTF-16 form. An empty
// suffix gives true.
[[nodiscard]] QUILL_API bool EndsBy(std::string_view suffix, std::string_view text) noexcept;
[[nodiscard]] QUILL_API bool EndsBy(std::u16string_view suffix, std::u16string_view text);

// Number of places where `c` occurs in `s`.
[[nodiscard]] QUILL_API int32_t CharCount(std::string_view s, AnsiChar c) noexcept;
[[nodiscard]] QUILL_API int32_t CharCount(std::u16string_view s, WideChar c) noexcept;

}  // namespace quill::Gstrings
