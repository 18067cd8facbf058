// Shared templates behind the 8-bit and UTF-16 forms of Gstrings routines.
// Not installed: include only from quill/strings/*.cc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "quill/strings/internal/anchorscan.h"

namespace quill::Gstrings::internal {

template <class C>
using View = std::basic_string_view<C>;
template <class C>
using Str = std::basic_string<C>;

inline constexpr std::size_t npos = std::string_view::npos;

// Code value of a character as an unsigned number (char is signed here).
template <class C>
constexpr uint32_t Code(C c) noexcept {
  if constexpr (sizeof(C) == 1) {
    return static_cast<unsigned char>(c);
  } else {
    return static_cast<uint32_t>(c);
  }
}

// Clamps a size to the library's 32-bit positions. Strings longer than
// 2^31 - 1 characters are outside what the 32-bit interface can describe.
constexpr int32_t ToPos(std::size_t zeroBasedIndex) noexcept {
  return static_cast<int32_t>(zeroBasedIndex + 1);
}

// `s` without characters of code 32 or below at either end (a view: the
// allocation-free counterpart of the runtime's Trim).
template <class C>
constexpr View<C> TrimControls(View<C> s) noexcept {
  std::size_t b = 0;
  std::size_t e = s.size();
  while (b < e && Code(s[b]) <= 32) ++b;
  while (e > b && Code(s[e - 1]) <= 32) --e;
  return s.substr(b, e - b);
}

// 0-based index of the n-th occurrence of `pattern` in `text` at or after
// `from`, overlapping occurrences counted; npos when there is none or n <= 0.
// REQUIRES: `pattern` non-empty.
template <class C>
std::size_t FindNth(View<C> pattern, View<C> text, std::size_t from, int32_t n) noexcept {
  if (n <= 0) return npos;
  const ExactFinder<C> finder(pattern);
  std::size_t p = finder.Find(text, from);
  while (p != npos && --n > 0) p = finder.Find(text, p + 1);
  return p;
}

// Backward counterpart: the n-th occurrence starting at or before `from`.
template <class C>
std::size_t RFindNth(View<C> pattern, View<C> text, std::size_t from, int32_t n) noexcept {
  if (n <= 0) return npos;
  const ExactFinder<C> finder(pattern);
  std::size_t p = finder.RFind(text, from);
  while (p != npos && --n > 0) {
    if (p == 0) return npos;
    p = finder.RFind(text, p - 1);
  }
  return p;
}

}  // namespace quill::Gstrings::internal
