// Gstrings: matching a string against a template with "*" wildcards.
//
//   FitToTemplate(u"Readme.TXT", u"*.txt", false);   // true
//   FitToTemplate(u"a.txt.txt", u"*.txt", true);     // true
//   FitToTemplate(u"abcd", u"a*c", true);            // false: must end at the template's end
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// True when `s` matches `templ`.
//
// "*" stands for any run of characters, possibly empty; every other character
// matches itself exactly. Without `CaseSensitive` both strings are lowered
// first by the user's locale (AnsiLowerCase). `s` must begin with the
// template's leading literal text and end exactly at the template's end or at
// a trailing "*". The template "*" matches everything, and two empty strings
// match.
//
// A "*" that is followed directly by another wildcard ("**", "*?") and is not
// the last character never matches.
//
// WARNING: "?" is reserved and not supported. A template whose matching
// reaches a "?" makes this routine loop forever; it never returns. Pass
// templates made of literal text and "*" only.
//
// Cost: polynomial in the lengths; a sub-match that failed once is not tried
// again, so no template makes the search exponential.
[[nodiscard]] QUILL_API bool FitToTemplate(std::string_view s, std::string_view templ,
                                           bool CaseSensitive);
[[nodiscard]] QUILL_API bool FitToTemplate(std::u16string_view s, std::u16string_view templ,
                                           bool CaseSensitive);

}  // namespace quill::Gstrings
