// Gstrings: replacing all occurrences of a pattern, erasing a character.
//
//   using namespace quill::Gstrings;
//   ReplaceStr(u"aaaa", u"aa", u"b");          // u"bb": occurrences never overlap
//   XReplaceStr("abAB", "AB", "x", false);     // "xx"
//   XReplaceStr("abAB", "AB", "x", true);      // "abAB": true never replaces
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// `text` with every occurrence of `oldPattern` replaced by `newText`,
// case-sensitive. Occurrences are found left to right and do not overlap;
// the inserted text is never searched again. An empty pattern, or no
// occurrence, gives the text unchanged. The result is allocated once.
[[nodiscard]] QUILL_API AnsiString ReplaceStr(std::string_view text, std::string_view oldPattern,
                                              std::string_view newText);
[[nodiscard]] QUILL_API UnicodeString ReplaceStr(std::u16string_view text,
                                                 std::u16string_view oldPattern,
                                                 std::u16string_view newText);

// With `caseSensitive` false: ReplaceStr with occurrences found ignoring case
// (locale-aware lowering); unmatched text keeps its case and `newText` is
// inserted as given. With `caseSensitive` true nothing is ever replaced and
// the text comes back unchanged: callers depend on it.
[[nodiscard]] QUILL_API AnsiString XReplaceStr(std::string_view text, std::string_view oldPattern,
                                               std::string_view newText, bool caseSensitive);
[[nodiscard]] QUILL_API UnicodeString XReplaceStr(std::u16string_view text,
                                                  std::u16string_view oldPattern,
                                                  std::u16string_view newText,
                                                  bool caseSensitive);

// `s` with every occurrence of `c` removed.
[[nodiscard]] QUILL_API AnsiString EraseSymbol(std::string_view s, AnsiChar c);
[[nodiscard]] QUILL_API UnicodeString EraseSymbol(std::u16string_view s, WideChar c);

}  // namespace quill::Gstrings
