// Gstrings: quoting text as a literal and reading it back.
//
// Two notations are supported, each for 8-bit and UTF-16 text:
//
// * Quote doubling with "#" codes: the text stands between a quote character
//   of the caller's choice, a quote inside it is doubled, and control
//   characters (codes 0..31) stand outside the quotes as "#" plus their decimal
//   code.
//
//     QuotedString(u"ab\r\n", u'\'')          // u"'ab'#13#10"
//     UnquotedString(u"'a''b'#13#10'c'", u'\'') // u"a'b\r\nc"
//
// * C notation with backslash escapes: see cescapes.h (included here).
//
// Quoting never fails. Unquoting fails only on a "#" code that does not fit the
// character width or that is not a number.
#pragma once

#include <string>
#include <string_view>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/strings/cescapes.h"

namespace quill::Gstrings {

// `s` in quote-doubling notation with `quote` as the quote character.
//
// Characters of code 32 and above are copied (8-bit bytes 128..255 and every
// UTF-16 unit from 32 up included); `quote` itself is doubled. A run of
// control characters (codes 0..31) closes the quoted run and is written as
// "#<decimal code>" per character; the quoted run reopens after it. The format
// is deliberately asymmetric at the ends:
//   QuotedString("", '\'')       == "''"
//   QuotedString("\tx", '\'')    == "''#9'x'"     (opens with an empty run)
//   QuotedString("ab\r\n", '\'') == "'ab'#13#10"  (no closing quote)
// UnquotedString reads the result back for every non-empty `s`, provided
// `quote` is not "#", "$" or a decimal digit (the characters codes are made of).
// Linear in the length of `s`; allocates the result once in the common case.
[[nodiscard]] QUILL_API AnsiString QuotedString(std::string_view s, AnsiChar quote);
[[nodiscard]] QUILL_API UnicodeString QuotedString(std::u16string_view s, WideChar quote);

// The text that the quote-doubling notation at the start of `s` denotes.
//
// Reads quoted runs (a doubled `quote` inside stands for one) and "#" codes
// from the first character on and stops at the first character outside a run
// that is neither `quote` nor "#": UnquotedString("'abc' + 'd'", '\'') gives
// "abc". A missing closing quote simply ends the text.
//
// "#" codes: "#" then a run of decimal digits and "$" signs. "#$41" is
// hexadecimal (the digits after the "$"), "#65" decimal. Hexadecimal letters do
// not belong to the run, so "#$1F" is the code 1 followed by the text "F" (which
// then ends the reading).
//
// Fallback: when the decoded text is empty, `s` itself is returned unchanged.
// So text that is not in the notation comes back as it is, and so does the
// empty literal "''".
//
// Raises:
//  * quill::Exception (the base class, not EGStringsError) with the message
//    "\"#300\" not a character" when a code exceeds 255 (8-bit form) or 65535
//    (UTF-16 form); the quoted text runs from the "#" to the end of the run;
//  * EConvertError when a decimal run is not a valid integer ("#" followed by
//    no digit, "#1$2", a value beyond 32 bits);
//  * EGStringsError when a "$" run holds a second "$" ("#$4$1").
// A hexadecimal code that wraps past 32 bits to a negative value is not
// rejected; its low 8 or 16 bits are used.
[[nodiscard]] QUILL_API AnsiString UnquotedString(std::string_view s, AnsiChar quote);
[[nodiscard]] QUILL_API UnicodeString UnquotedString(std::u16string_view s, WideChar quote);

}  // namespace quill::Gstrings
