// Gstrings: splitting a "name=value" line.
//
//   AnsiString n, v;
//   GetNameAndValue("key=val", n, v);               // n == "key", v == "val"
//   GetNameAndValueSep("::", "key::val", n, v);     // n == "key", v == "val"
//   UnicodeString un, uv;
//   GetNameAndValueSep(u"::", u"key::val", un, uv); // un == u"key", uv == u":val"
//
// Note the separator comes first and the text second.
#pragma once

#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// Splits `s` at the first occurrence of `sep` into `name` (the text before
// it) and `value`. Nothing is trimmed. When `sep` does not occur, `name` is
// `s` and `value` is empty.
//
// The two forms differ on purpose, and callers rely on both:
//  * 8-bit: `value` is the text after the whole separator; an empty `sep`
//    counts as not found.
//  * UTF-16: `value` is the text after exactly ONE character at the match,
//    whatever the length of `sep` (so "::" on "key::val" leaves ":val"); an
//    empty `sep` matches at position 1 of a non-empty `s`, giving an empty
//    `name` and `s` without its first character as `value`.
// `s` may alias `name` or `value`.
QUILL_API void GetNameAndValueSep(std::string_view sep, std::string_view s, AnsiString& name,
                                  AnsiString& value);
QUILL_API void GetNameAndValueSep(std::u16string_view sep, std::u16string_view s,
                                  UnicodeString& name, UnicodeString& value);

// GetNameAndValueSep with "=" as the separator.
QUILL_API void GetNameAndValue(std::string_view s, AnsiString& name, AnsiString& value);
QUILL_API void GetNameAndValue(std::u16string_view s, UnicodeString& name, UnicodeString& value);

}  // namespace quill::Gstrings
