// Gstrings: moving text between one line and a string list, and editing a
// string list as a block of text addressed by (line, column).
//
//   TStringList sl;
//   ComposeText(u"a, 'b,c' ,d", u',', u'\'', sl);   // a | b,c | d
//   DelimitedText(sl, u',', u'\'');                 // u"'a','b,c','d'"
//
// These routines work on the caller's TStrings (UTF-16 strings); they exist
// in the UTF-16 form only. List indexes are 0-based, columns 1-based. Item
// comparisons fold ASCII letters only (CompareText), never by locale; "trim"
// removes characters of code 0..32 at both ends. Index errors are the list's
// own EStringListError.
//
// Also included: the section readers (sections.h) and the name/value split
// (namevalue.h).
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/types.h"
#include "quill/strings/namevalue.h"
#include "quill/strings/sections.h"

namespace quill::Gstrings {

// The items of `list`, each in quote-doubling notation (QuotedString with
// `quote`), joined by `delimiter`. Every item is quoted, also one that needs no
// quoting; control characters become "#" codes. An empty list gives "".
// Linear in the total length.
[[nodiscard]] QUILL_API UnicodeString DelimitedText(const TStrings& list, WideChar delimiter,
                                                    WideChar quote);

// Clears `list` and fills it with the fields of `text`.
//
// Fields are separated by `delimiter` outside quotes (a doubled quote toggles
// twice, so it stays inside); each field is trimmed and then decoded with
// UnquotedString(field, quote), so an unquoted field comes back as it is,
// trimmed. A text that is empty after trimming leaves the list empty; a text
// ending in a delimiter gives a last empty field.
// Raises what UnquotedString raises (an oversized "#" code in a field).
// Linear in the length of `text`.
QUILL_API void ComposeText(std::u16string_view text, WideChar delimiter, WideChar quote,
                           TStrings& list);

// ComposeText(text, ',', '"', list).
QUILL_API void ComposeCommaText(std::u16string_view text, TStrings& list);

// Index of the first item equal to `s` ignoring ASCII case, or -1. Nothing is
// trimmed: " abc" does not match "abc".
[[nodiscard]] QUILL_API int32_t IndexOfString(const TStrings& list, std::u16string_view s);

// Inserts `s` into item `index` so that it begins at column `col`: a column
// below 1 inserts at the front, one past the end appends.
// Raises EStringListError for an index outside the list.
QUILL_API void InsertToStrings(TStrings& list, int32_t index, int32_t col, std::u16string_view s);

// Deletes the text from (line1, col1) up to, not including, (line2, col2).
//
// Item line1 becomes its first col1 - 1 characters followed by item line2 from
// col2 on; then the items at indexes line1 + 1, line1 + 2, ..., line2 are
// deleted IN THAT ORDER, each deletion shifting the later items up. So for a
// block of three or more lines this removes every other line of the block
// (old line1 + 1, line1 + 3, ...), keeps the others, and raises the list's
// EStringListError once the index passes the end of the shrunken list. This
// is the behaviour callers observe and is kept deliberately. Nothing happens
// when line2 < line1.
QUILL_API void DeleteFromStrings(TStrings& list, int32_t line1, int32_t col1, int32_t line2,
                                 int32_t col2);

}  // namespace quill::Gstrings
