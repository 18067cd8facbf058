// Gstrings: character classes, the separator sets and number recognition.
//
// The lowest layer of Gstrings: predicates on one character or a whole
// string, the two process-wide separator sets, recognisers for integers, reals
// and "yes" words, and two scanners that move a 1-based position forward.
// Every routine exists for 8-bit (char) and UTF-16 (char16_t) text; the
// classes are defined on code values, the same numbers in both forms.
//
//   using namespace quill::Gstrings;
//   IsAlpha('_');                 // true: identifier characters, not letters
//   IsIntNum(u"$FF");             // true
//   int32_t p = 1; SkipSpaces(u"  x", p);   // p == 3
//
// The separator sets are unit-global, unguarded state: one for 8-bit text and
// one for UTF-16 text, independent of each other, empty until a caller sets
// them (so by default nothing is a separator) and cleared by the unit's last
// stop.
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// ---------------------------------------------------------------------------
// Separator sets

// Replaces the 8-bit separator set by `list`, taken as a set of characters
// (order and repetition do not matter). The UTF-16 set is not touched.
QUILL_API void SetSeparatorList(std::string_view list);
// Replaces the UTF-16 separator set by `list`. The 8-bit set is not touched.
QUILL_API void SetSeparatorList(std::u16string_view list);
// A second name for the UTF-16 SetSeparatorList.
QUILL_API void SetSeparatorListW(std::u16string_view list);

// True when `c` occurs in the separator set of its own form: an 8-bit
// character consults only the 8-bit set, a UTF-16 character only the UTF-16
// set. False for every character while the set is empty.
[[nodiscard]] QUILL_API bool IsSeparator(AnsiChar c);
[[nodiscard]] QUILL_API bool IsSeparator(WideChar c);

// ---------------------------------------------------------------------------
// Character classes (inline: the scanner calls them per character)

// Space class: tab (9), line feed (10), carriage return (13) and blank (32)
// only; vertical tab, form feed and no-break space (160) are not spaces.
[[nodiscard]] constexpr bool IsSpace(WideChar c) noexcept {
  return c == 32 || c == 9 || c == 10 || c == 13;
}
[[nodiscard]] constexpr bool IsSpace(AnsiChar c) noexcept {
  return IsSpace(static_cast<WideChar>(static_cast<unsigned char>(c)));
}

// '0'..'9'.
[[nodiscard]] constexpr bool IsDigit(WideChar c) noexcept { return c >= u'0' && c <= u'9'; }
[[nodiscard]] constexpr bool IsDigit(AnsiChar c) noexcept { return c >= '0' && c <= '9'; }

// '0'..'9', 'A'..'F', 'a'..'f'.
[[nodiscard]] constexpr bool IsHexDigit(WideChar c) noexcept {
  return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
}
[[nodiscard]] constexpr bool IsHexDigit(AnsiChar c) noexcept {
  return IsHexDigit(static_cast<WideChar>(static_cast<unsigned char>(c)));
}

// '0'..'7'.
[[nodiscard]] constexpr bool IsOctDigit(WideChar c) noexcept { return c >= u'0' && c <= u'7'; }
[[nodiscard]] constexpr bool IsOctDigit(AnsiChar c) noexcept { return c >= '0' && c <= '7'; }

// Identifier character: '0'..'9', 'A'..'Z' and every code from 95 to 122
// ('_', the back-quote 96, 'a'..'z'). Deliberately wider than letters and
// deliberately nothing above 122 (no accented letters).
[[nodiscard]] constexpr bool IsAlpha(WideChar c) noexcept {
  return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= 95 && c <= 122);
}
[[nodiscard]] constexpr bool IsAlpha(AnsiChar c) noexcept {
  return IsAlpha(static_cast<WideChar>(static_cast<unsigned char>(c)));
}

// ---------------------------------------------------------------------------
// Whole-string recognisers. None of them raises.

// True when `s` is non-empty and every character is a digit: no sign, blank
// or separator. The empty string gives false.
[[nodiscard]] QUILL_API bool IsNumber(std::string_view s) noexcept;
[[nodiscard]] QUILL_API bool IsNumber(std::u16string_view s) noexcept;

// True when `s` converts to a 32-bit signed integer by the runtime's integer
// grammar: leading blanks, optional sign, decimal digits or a hexadecimal
// number after "$", "x", "X", "0x" or "0X", nothing after the digits, in
// range. Empty or all-blank text and trailing blanks give false. The 8-bit
// form widens its argument first.
[[nodiscard]] QUILL_API bool IsIntNum(std::string_view s);
[[nodiscard]] QUILL_API bool IsIntNum(std::u16string_view s);

// True when `s` converts to a floating-point number under the process's
// current format settings (FormatSettings(): its decimal separator, not a
// fixed '.'); surrounding blanks are tolerated, thousands separators are not.
// The 8-bit form widens its argument first.
[[nodiscard]] QUILL_API bool IsRealNum(std::string_view s);
[[nodiscard]] QUILL_API bool IsRealNum(std::u16string_view s);

// True when every character is an identifier character (IsAlpha). The empty
// string gives true and a leading digit is accepted ("9lives").
[[nodiscard]] QUILL_API bool IsIdentifier(std::string_view s) noexcept;
[[nodiscard]] QUILL_API bool IsIdentifier(std::u16string_view s) noexcept;

// True when `s` is one of "on", "yes", "true", "1" compared without case by
// the locale-aware comparison of its form (after a locale-aware lowering).
// No trimming: " yes" and "yes " give false.
[[nodiscard]] QUILL_API bool IsPositive(std::string_view s);
[[nodiscard]] QUILL_API bool IsPositive(std::u16string_view s);

// True when some character counts as a letter; the empty string gives false.
// The forms differ on purpose:
//   8-bit:  'A'..'Z', 'a'..'z' and every byte above 127.
//   UTF-16: every code except the ASCII non-letters 32..64, 91..96 and
//           123..126; so controls 0..31, 127 and 128..255 count as letters.
[[nodiscard]] QUILL_API bool AlphaExists(std::string_view s) noexcept;
[[nodiscard]] QUILL_API bool AlphaExists(std::u16string_view s) noexcept;

// ---------------------------------------------------------------------------
// Position scanners (1-based positions)

// Advances `pos` over space-class characters; it stops on the first
// non-space character or at length + 1. A position beyond the length, or
// below 1, is left unchanged.
QUILL_API void SkipSpaces(std::string_view s, int32_t& pos) noexcept;
QUILL_API void SkipSpaces(std::u16string_view s, int32_t& pos) noexcept;

// Advances `pos` over characters that occur in `symbols`. An empty symbol
// string never moves it; a position below 1 is left unchanged.
QUILL_API void SkipSymbols(std::string_view s, int32_t& pos, std::string_view symbols) noexcept;
QUILL_API void SkipSymbols(std::u16string_view s, int32_t& pos,
                           std::u16string_view symbols) noexcept;

}  // namespace quill::Gstrings
