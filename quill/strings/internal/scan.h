// Vectorised scans used by the case-insensitive searches. Not installed.
#pragma once

#include <cstddef>

namespace quill::Gstrings::internal {

// Index of the first element of [p, p + n) that equals `a` or `b` or has a
// code of 128 or more; `n` when there is none. SSE2 on x86-64, a plain loop
// elsewhere. Never reads outside [p, p + n).
std::size_t FindPairOrHigh(const char* p, std::size_t n, char a, char b) noexcept;
std::size_t FindPairOrHigh(const char16_t* p, std::size_t n, char16_t a, char16_t b) noexcept;

// Index of the first position i of [0, n) where p[i] is `a` or `b` and
// p[i + off] is `c` or `d`, or where p[i] or p[i + off] has a code of 128 or
// more; `n` when there is none. Filtering on a pattern's first and last
// characters at once skips most false starts. REQUIRES: p[0 .. n - 1 + off]
// is readable; never reads beyond it.
std::size_t FindEndsOrHigh(const char* p, std::size_t n, std::size_t off, char a, char b, char c,
                           char d) noexcept;
std::size_t FindEndsOrHigh(const char16_t* p, std::size_t n, std::size_t off, char16_t a,
                           char16_t b, char16_t c, char16_t d) noexcept;

}  // namespace quill::Gstrings::internal
