// Small helpers shared by the Gstrings routines that are written once as a
// template over the character type (char for 8-bit text, char16_t for UTF-16).
#pragma once

#include <string>
#include <string_view>

#include "quill/rtl/types.h"
#include "quill/strings/convert.h"

namespace quill::Gstrings::internal {

// The unsigned code of a character: 0..255 for 8-bit text, 0..65535 for UTF-16.
inline unsigned Code(char c) { return static_cast<unsigned char>(c); }
inline unsigned Code(char16_t c) { return c; }

// The low 8 bits of a character, as the 8-bit character the digit tests see.
inline AnsiChar LowByte(char c) { return c; }
inline AnsiChar LowByte(char16_t c) { return static_cast<AnsiChar>(c & 0xFF); }

// UTF-16 copy of `s`, each 8-bit character taken as the code of the same
// number. Used for runs of ASCII digits and signs handed to the UTF-16-only
// converters, and for message texts made of such runs.
inline UnicodeString Widen(std::string_view s) {
  UnicodeString out(s.size(), u'\0');
  for (size_t i = 0; i < s.size(); ++i) out[i] = static_cast<char16_t>(Code(s[i]));
  return out;
}
inline UnicodeString Widen(std::u16string_view s) { return UnicodeString(s); }

// HexToInt / OctToInt of a run of digits in either form (the converters take
// UTF-16 text; an 8-bit run is widened first).
inline int32_t HexValue(std::string_view digits) { return HexToInt(Widen(digits)); }
inline int32_t HexValue(std::u16string_view digits) { return HexToInt(digits); }
inline int32_t OctValue(std::string_view digits) { return OctToInt(Widen(digits)); }
inline int32_t OctValue(std::u16string_view digits) { return OctToInt(digits); }

}  // namespace quill::Gstrings::internal
