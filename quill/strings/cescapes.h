// Gstrings: C-style string literals with backslash escapes.
//
// Writing: CStringEx escapes control characters, the backslash and (inside
// double quotes) the quote characters; everything of code 32 and above, DEL,
// 8-bit bytes 128..255 and all other UTF-16 units included, is copied as it is.
// Reading: GetCExtraSymbolEx decodes one character or escape; the
// XUnquotedCString family decodes a whole double-quoted literal.
//
//   QuotedCString(u"It's \"x\"\n")      // u"\"It\\'s \\\"x\\\"\\n\""
//   UnquotedCString(u"\"a\\tb\\x41\"")  // u"a\tbA"
//
// Positions are 1-based. A "pos" argument names the first character to read
// on entry and the first character not consumed on return. Nothing here
// raises: unterminated literals, unknown escapes and empty digit runs all have
// a defined result.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// `s` in C notation, between double quotes when `AddQuotes` is true.
//
// BEL BS TAB LF VT FF CR become \a \b \t \n \v \f \r; other codes below 32
// become "\x" plus two upper-case hex digits ("\x00", "\x1B"); the backslash
// becomes "\\". The double quote is escaped only when `AddQuotes` is true; the
// apostrophe only when `AddQuotes` is true and `KeepApostrophe` false. Without
// quotes neither quote character is escaped: the bare body is meant to be
// embedded by the caller. "?" and DEL are never escaped.
[[nodiscard]] QUILL_API AnsiString CStringEx(std::string_view s, bool KeepApostrophe,
                                             bool AddQuotes);
[[nodiscard]] QUILL_API UnicodeString CStringEx(std::u16string_view s, bool KeepApostrophe,
                                                bool AddQuotes);

// CStringEx(s, KeepApostrophe, true): always between double quotes.
[[nodiscard]] QUILL_API AnsiString QuotedCStringEx(std::string_view s, bool KeepApostrophe);
[[nodiscard]] QUILL_API UnicodeString QuotedCStringEx(std::u16string_view s, bool KeepApostrophe);

// QuotedCStringEx(s, false).
[[nodiscard]] QUILL_API AnsiString QuotedCString(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString QuotedCString(std::u16string_view s);

// One character of C text at `pos`: the plain character, or the escape that
// starts there; `pos` moves past what was consumed.
//
//  * Not at a backslash, or at a backslash that is the last character: the
//    character itself, `pos` + 1. A `pos` outside 1..length gives the
//    character 0 and `pos` + 1 (nothing is read).
//  * \n \r \t \v \a \b \f: the control character, `pos` + 2.
//  * \x: hex digits follow (at most `MaxDigits` of them unless it is 0); the
//    value is cut to 8 bits in both forms ("\x263A" gives code 0x3A). No
//    digit ("\xg") gives code 0 with only "\x" consumed.
//  * \0 .. \9: octal digits starting at the digit itself (at most MaxDigits);
//    8-bit form keeps 8 bits ("\777" is 255), UTF-16 form 16 bits (511).
//    "\8" and "\9" read no digit: code 0 with only the backslash consumed, so
//    the digit is read next as a plain character.
//  * anything else (\\, \", \', \?, \e, capitals ...): that character, `pos` + 2.
//  * UTF-16 form: the digit tests look at the low 8 bits of each unit only,
//    so U+0141 counts as the hex digit "A".
//  * UTF-16 form with `Utf8Pairs`: when a hex escape is directly followed by
//    another "\x" escape (at least three characters remaining), the two are
//    read as UTF-8 bytes: (first, second) if the second value is at most 0xFF,
//    else (first, high byte, low byte) of its 16 bits. The result is the
//    first UTF-16 unit of the decoded text; a byte sequence that is not
//    well-formed UTF-8 gives U+00D3. "\xC3\xA9" gives U+00E9, "\xE2\x98BA"
//    gives U+263A.
// A negative `MaxDigits` lets no digit be read.
[[nodiscard]] QUILL_API AnsiChar GetCExtraSymbolEx(std::string_view s, int32_t MaxDigits,
                                                   int32_t& pos);
[[nodiscard]] QUILL_API WideChar GetCExtraSymbolEx(std::u16string_view s, int32_t MaxDigits,
                                                   int32_t& pos, bool Utf8Pairs);

// GetCExtraSymbolEx(s, 0, pos) (UTF-16: without UTF-8 pairs).
[[nodiscard]] QUILL_API AnsiChar GetCExtraSymbol(std::string_view s, int32_t& pos);
[[nodiscard]] QUILL_API WideChar GetCExtraSymbol(std::u16string_view s, int32_t& pos);

// The text of the double-quoted C literal that starts at `pos`.
//
//  * Empty `s`: `s`, `pos` unchanged.
//  * The character at `pos` is not a double quote (or `pos` is outside the
//    text): the WHOLE of `s` is returned unchanged, not just the part from
//    `pos` on, and `pos` is unchanged. Non-literals come back as they are.
//  * Otherwise the characters up to the closing quote, escapes decoded by
//    GetCExtraSymbolEx(s, MaxDigits, pos) (UTF-16: without UTF-8 pairs);
//    `pos` ends past the closing quote. A missing closing quote is no error:
//    the literal runs to the end and `pos` ends at length + 1.
[[nodiscard]] QUILL_API AnsiString XUnquotedCStringEx(std::string_view s, int32_t MaxDigits,
                                                      int32_t& pos);
[[nodiscard]] QUILL_API UnicodeString XUnquotedCStringEx(std::u16string_view s, int32_t MaxDigits,
                                                         int32_t& pos);

// XUnquotedCStringEx(s, 0, pos).
[[nodiscard]] QUILL_API AnsiString XUnquotedCString(std::string_view s, int32_t& pos);
[[nodiscard]] QUILL_API UnicodeString XUnquotedCString(std::u16string_view s, int32_t& pos);

// The literal at the start of `s`, decoded; anything after its closing quote
// is ignored, and text that does not start with a double quote comes back
// unchanged.
[[nodiscard]] QUILL_API AnsiString UnquotedCString(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString UnquotedCString(std::u16string_view s);

}  // namespace quill::Gstrings
