// Position helpers shared by the scanner's source files (not installed).
//
// All positions are 1-based as in the scanner's interface. Reading outside the
// line gives the character 0, which matches no quote, symbol, digit or
// separator; the engine's loops rely on that to stop at the line's end.
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/rtl/types.h"

namespace quill::Gscanner::internal {

// The character at 1-based position `i`, or 0 outside 1..size.
[[nodiscard]] inline WideChar CharAt(std::u16string_view s, int32_t i) noexcept {
  return (i >= 1 && static_cast<size_t>(i) <= s.size()) ? s[static_cast<size_t>(i) - 1] : WideChar{0};
}

// True when position `i` lies inside `s` and holds `c`. A position outside the
// line matches no quote or symbol, not even the character 0.
[[nodiscard]] inline bool CharIs(std::u16string_view s, int32_t i, WideChar c) noexcept {
  return i >= 1 && static_cast<size_t>(i) <= s.size() && s[static_cast<size_t>(i) - 1] == c;
}

[[nodiscard]] inline int32_t Len(std::u16string_view s) noexcept {
  return static_cast<int32_t>(s.size());
}

// True when `t` stands at position `i` of `s`: i + |t| - 1 does not exceed |s|
// and the |t| characters from i equal t exactly. The empty text stands at every
// position from 1 to |s| + 1.
[[nodiscard]] inline bool StandsAt(std::u16string_view s, int32_t i, std::u16string_view t) noexcept {
  if (i < 1) return false;
  const size_t from = static_cast<size_t>(i) - 1;
  if (from + t.size() > s.size()) return false;
  return s.compare(from, t.size(), t) == 0;
}

// 1-based position of the first `sub` in `s` at or after `from`, 0 when there
// is none. An empty `sub` and a start outside 1..|s| find nothing, as with the
// runtime's position search.
[[nodiscard]] inline int32_t PosFrom(std::u16string_view sub, std::u16string_view s, int32_t from) noexcept {
  if (sub.empty() || from < 1 || static_cast<size_t>(from) > s.size()) return 0;
  const size_t p = s.find(sub, static_cast<size_t>(from) - 1);
  return p == std::u16string_view::npos ? 0 : static_cast<int32_t>(p) + 1;
}

// The runtime's Copy: up to `count` characters from 1-based `index`. An index
// below 1 counts as 1, an index past the end or a count below 1 gives the
// empty view.
// The count is 64-bit so that callers may pass differences of arbitrary
// 32-bit positions (such as those of tokens written by SetToken).
[[nodiscard]] inline std::u16string_view CopyView(std::u16string_view s, int64_t index, int64_t count) noexcept {
  if (index < 1) index = 1;
  if (count < 1 || static_cast<uint64_t>(index) > s.size()) return {};
  const size_t from = static_cast<size_t>(index) - 1;
  const size_t n = static_cast<size_t>(count);
  return s.substr(from, n);
}

// Replaces the text of `dst` by `src`, reusing dst's buffer. (Plain append
// after clear: cheaper than the general assign for the short texts of tokens.)
inline void SetText(UnicodeString& dst, std::u16string_view src) {
  dst.clear();
  dst.append(src.data(), src.size());
}

// `src` lower-cased into `dst` with the runtime's locale-aware lower-casing,
// reusing dst's buffer. All-ASCII text (nearly every token) is mapped in
// place, the same A-Z mapping the runtime applies to ASCII without consulting
// the locale; anything else goes through AnsiLowerCase. `src` must not be a
// view of `dst`.
void LowerInto(std::u16string_view src, UnicodeString& dst);

}  // namespace quill::Gscanner::internal
