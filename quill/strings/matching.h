// Gstrings: list membership, comparisons that ignore symbols, whole-word
// containment and null-terminated buffer helpers.
//
//   const UnicodeString kinds[] = {u"X", u"ABC"};
//   StrInList(u"abc", kinds, 1);          // true (ASCII case ignored)
//   EqualToSpaces("a b", "ab");           // true
//   ContainsAsWholeWord(u"x-1", u"x");    // true
//
// Also included: template matching (templates.h) and line-break
// normalisation (linebreaks.h).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/strings/linebreaks.h"
#include "quill/strings/templates.h"

namespace quill::Gstrings {

// True when `s` equals one of list[0..last], examined in ascending order.
// `last` is the index of the last entry to examine (-1: none); entries beyond
// the end of `list` are never read. Nothing is trimmed. The three differ only
// in the comparison:
//  * StrInList folds the ASCII letters only (CompareText);
//  * StrInListA ignores case by the user's locale, on 8-bit strings
//    (AnsiSameText);
//  * StrInListW ignores case by the user's locale, on UTF-16 strings.
[[nodiscard]] QUILL_API bool StrInList(std::u16string_view s, std::span<const UnicodeString> list,
                                       int32_t last);
[[nodiscard]] QUILL_API bool StrInListA(std::string_view s, std::span<const AnsiString> list,
                                        int32_t last);
[[nodiscard]] QUILL_API bool StrInListW(std::u16string_view s, std::span<const UnicodeString> list,
                                        int32_t last);

// Appends `s` (up to its first NUL, if any) and a terminating NUL to the
// null-terminated text in `buffer`; returns `buffer`.
// REQUIRES: `buffer` is null-terminated and has room for the result; no length
// check is made.
QUILL_API char* StrPCat(char* buffer, std::string_view s);

// Writes zero into elements 0 .. size - 1 of `buffer`. The last index is
// computed in 16 bits, so a `size` of 0 clears 65536 elements (deliberately).
// REQUIRES: `buffer` holds that many elements.
QUILL_API void ClearPChar(char* buffer, uint16_t size);
QUILL_API void ClearPChar(char16_t* buffer, uint16_t size);

// True when `s1` and `s2` are equal once every character that occurs in
// `symbols` is ignored, wherever it stands ("1-2" equals "12" under "-").
// Characters are compared exactly (case-sensitive).
// The forms differ at the ends, deliberately:
//  * 8-bit: trailing symbols are ignored too: " a b " equals "ab" under " ".
//  * UTF-16: when skipping symbols runs either string to its end the result
//    is false, so a string that ends in a symbol equals nothing ("ab " is not
//    even equal to "ab "), and "" equals only "".
[[nodiscard]] QUILL_API bool EqualToSymbols(std::string_view s1, std::string_view s2,
                                            std::string_view symbols);
[[nodiscard]] QUILL_API bool EqualToSymbols(std::u16string_view s1, std::u16string_view s2,
                                            std::u16string_view symbols);

// EqualToSymbols(s1, s2, " ").
[[nodiscard]] QUILL_API bool EqualToSpaces(std::string_view s1, std::string_view s2);
[[nodiscard]] QUILL_API bool EqualToSpaces(std::u16string_view s1, std::u16string_view s2);

// True when the FIRST occurrence of `word` in `s` stands as a whole word: the
// characters before and after it (where present) are not identifier
// characters (IsAlpha: ASCII letters and digits, "_" and "`"). Later
// occurrences are not considered: "abc bc" does not contain "bc" as a whole
// word. Non-ASCII letters separate words. An empty `word` is never found.
[[nodiscard]] QUILL_API bool ContainsAsWholeWord(std::string_view s, std::string_view word);
[[nodiscard]] QUILL_API bool ContainsAsWholeWord(std::u16string_view s, std::u16string_view word);

}  // namespace quill::Gstrings
