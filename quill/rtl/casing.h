// Case mapping in both string forms.
//
// LowerCase/UpperCase change only ASCII letters. AnsiLowerCase/AnsiUpperCase
// are locale-aware (ICU, user locale) and keep the length: one code unit in,
// one code unit out, so positions found in a lowered copy apply to the
// original text. A character whose full mapping would change the length (such
// as U+00DF, U+0130) keeps its simple one-to-one mapping or stays as it is.
// The 8-bit forms map through the ANSI code page: each byte (or multi-byte
// character) whose mapped form does not fit in the same bytes stays unchanged.
// Characters map one at a time, without context: a final capital sigma lowers
// to U+03C3 and Greek accents stay on capitals. Turkish, Azeri and Lithuanian
// user locales use their own letter pairs (I <-> U+0131, U+0130 <-> i).
// ASCII text takes a fast path that never calls ICU (outside those three
// locales); single-byte code pages map through 256-entry tables built once.
#pragma once

#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

[[nodiscard]] QUILL_API AnsiString LowerCase(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString LowerCase(std::u16string_view s);
[[nodiscard]] QUILL_API AnsiString UpperCase(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString UpperCase(std::u16string_view s);

[[nodiscard]] QUILL_API AnsiString AnsiLowerCase(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString AnsiLowerCase(std::u16string_view s);
[[nodiscard]] QUILL_API AnsiString AnsiUpperCase(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString AnsiUpperCase(std::u16string_view s);

// One character, same rules.
[[nodiscard]] QUILL_API WideChar AnsiLowerChar(WideChar c);
[[nodiscard]] QUILL_API WideChar AnsiUpperChar(WideChar c);
[[nodiscard]] QUILL_API AnsiChar AnsiLowerChar(AnsiChar c);
[[nodiscard]] QUILL_API AnsiChar AnsiUpperChar(AnsiChar c);

}  // namespace quill
