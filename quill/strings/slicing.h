// Gstrings: taking tokens and parts off a string, cutting at a separator,
// trimming and capitalising.
//
//   using namespace quill::Gstrings;
//   SetSeparatorList(",");
//   AnsiString s = "  ab,cd";
//   GetToken(s);                    // "ab", s == ",cd"
//   GetBeforeSep(u"=", u" a = b");  // u"a"
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// Takes the next token off the front of `s` and returns it. Space-class
// characters before it are dropped. A token is either the longest run of
// separators (the separator set of the string's form) or a run of characters
// that are neither spaces nor separators. `s` keeps everything after the
// token, including blanks that follow it. Reads the process-wide separator
// sets; with the set empty a token is the next run of non-space characters.
[[nodiscard]] QUILL_API AnsiString GetToken(AnsiString& s);
[[nodiscard]] QUILL_API UnicodeString GetToken(UnicodeString& s);

// Cuts `s` at the first occurrence of `sep`: returns the text before it and
// leaves the text after it in `s`. Not found (or an empty `sep`): returns the
// whole string and empties `s`. No trimming.
[[nodiscard]] QUILL_API AnsiString GetNextPart(AnsiString& s, std::string_view sep);

// The text before the first occurrence of `sep`, trimmed at both ends of
// every character of code 32 or below. Not found (or an empty `sep`): the
// whole string, unchanged and deliberately untrimmed.
[[nodiscard]] QUILL_API AnsiString GetBeforeSep(std::string_view sep, std::string_view s);
[[nodiscard]] QUILL_API UnicodeString GetBeforeSep(std::u16string_view sep, std::u16string_view s);

// The text after the first occurrence of `sep`, trimmed like GetBeforeSep.
// Not found: the whole string untrimmed.
[[nodiscard]] QUILL_API AnsiString GetAfterSep(std::string_view sep, std::string_view s);
[[nodiscard]] QUILL_API UnicodeString GetAfterSep(std::u16string_view sep, std::u16string_view s);

// `s` without space-class characters (9, 10, 13, 32) at either end; other
// control characters stay.
[[nodiscard]] QUILL_API AnsiString AnsiTrim(std::string_view s);

// The whole string lowered, then its first character raised (both
// locale-aware): "hELLO wORLD" gives "Hello world". Empty gives empty.
[[nodiscard]] QUILL_API AnsiString CapitalizeFirst(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString CapitalizeFirst(std::u16string_view s);

}  // namespace quill::Gstrings
