// Vectorised scans used by the case-insensitive searches. Not installed.
#pragma once

#include <cstddef>

namespace quill::Gstrings::internal {

// Index of the first element of [p, p + n) that equals `a` or `b` or has a
// code of 128 or more; `n` when there is none. SSE2 on x86-64, a plain loop
// elsewhere. Never reads outside [p, p + n).
std::size_t FindPairOrHigh(const char* p, std::size_t n, char a, char b) noexcept;
std::size_t FindPairOrHigh(const char16_t* p, std::size_t n, char16_t a, char16_t b) noexcept;

}  // namespace quill::Gstrings::internal
