// The runtime's basic types.
//
// Quill passes text in two forms: an 8-bit string in a code page (AnsiString,
// the bytes of std::string) and a UTF-16 string (UnicodeString, the code units
// of std::u16string). Positions in strings are 1-based with 0 for "not found";
// list indexes are 0-based with -1 for "not found".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quill {

using AnsiString = std::string;
using UnicodeString = std::u16string;
using WideString = std::u16string;
using AnsiChar = char;
using WideChar = char16_t;
using RawByteString = std::string;

// Days since 30 December 1899; the fraction is the time of day.
using TDateTime = double;

// Windows locale identifier.
using LCID = uint32_t;

// Windows-style code page number (1252, 65001, ...).
using TCodePage = uint32_t;

using Byte = uint8_t;
using Word = uint16_t;
using LongWord = uint32_t;
using Cardinal = uint32_t;
using Int64 = int64_t;

}  // namespace quill
