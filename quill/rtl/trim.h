// Trim family: removes characters with codes 0 to 32 (blank and control
// characters) from the ends of a string. Code 160 and other Unicode spaces are
// kept.
#pragma once

#include <string>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

[[nodiscard]] QUILL_API AnsiString Trim(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString Trim(std::u16string_view s);
[[nodiscard]] QUILL_API AnsiString TrimLeft(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString TrimLeft(std::u16string_view s);
[[nodiscard]] QUILL_API AnsiString TrimRight(std::string_view s);
[[nodiscard]] QUILL_API UnicodeString TrimRight(std::u16string_view s);

}  // namespace quill
