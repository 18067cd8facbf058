// Converting between lines of text and one comma-separated line.
//
// StringToComma joins the lines of a text into one line, quoting the lines
// that hold blanks, control characters, double quotes or commas;
// CommaToString splits such a line back into CR LF separated lines. Both run
// in one pass, linear in the length of the text.
//
//   StringToComma(u"a\r\nb c\r\n") == u"a,\"b c\",";
//   CommaToString(u"a,\"b,c\"")    == u"a\r\nb,c";
#pragma once

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// One comma-separated line made of the lines of `S`.
// - A line ends at the first CR of the remaining text, or when there is no CR
//   left, at the first LF: "a" LF "b" CR "c" gives the lines "a" LF "b" and
//   "c". CR LF and LF CR pairs count as one break.
// - A line is quoted (surrounded by double quotes, inner quotes doubled) when
//   one of its units has a low byte of 0..32, 34 or 44. Only the low byte is
//   tested, so U+012C and U+0409 also cause quoting.
// - Each break adds a comma: empty lines give empty fields ("a,,b") and a
//   final break gives a final comma ("a,"). An empty text gives "".
[[nodiscard]] QUILL_API UnicodeString StringToComma(const UnicodeString& S);

// The lines of the comma-separated line `S`, joined by CR LF.
// - Units whose low byte is 1..32 are skipped before and after each field and
//   after each comma; a unit 0 ends the text.
// - A field starting with a double quote runs to the next single quote, a
//   doubled quote giving one quote (an unclosed field runs to the end);
//   otherwise a field runs up to the first unit below 33 or a comma.
// - Each comma gives a CR LF (so a final comma gives a final CR LF). Text
//   after a field that is neither a comma nor the end is joined to it without
//   a break: "ab cd" gives "abcd".
[[nodiscard]] QUILL_API UnicodeString CommaToString(const UnicodeString& S);

}  // namespace quill::Gutils
