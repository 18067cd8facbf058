// Case-insensitive search over the caller's text. Not installed.
//
// The answers are those of a plain search of the locale-aware lowered pattern
// in the locale-aware lowered text (lowering keeps the length, so positions
// apply to the caller's text). A lowered copy of the text is built only when
// needed: when the lowered pattern is ASCII, ASCII text is folded on the fly,
// and in the UTF-16 form non-ASCII characters are lowered one at a time, so
// no memory proportional to the text is taken. The 8-bit form builds the
// lowered copy as soon as it meets a byte above 127, because a byte there may
// be part of a multi-byte character whose lowering only the whole text can
// tell; in double-byte code pages it always uses the copy. Locales whose
// lowering of ASCII letters depends on the surrounding text (Turkish,
// Azerbaijani, Lithuanian) always use the copy.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/strings/internal/scan.h"
#include "quill/strings/internal/textops.h"

namespace quill::Gstrings::internal {

// False in the locales named above, whose lowering of ASCII letters is not
// the plain ASCII folding.
bool UserLocaleFoldsAsciiPlainly();

// True when the ANSI code page is a double-byte one (932, 936, 949, 950,
// 1361), whose second bytes may look like ASCII letters: 8-bit text there is
// only ever searched in its lowered copy.
bool AnsiCodePageHasAsciiTrailBytes();

template <class C>
constexpr C AsciiLower(C c) noexcept {
  return (c >= C('A') && c <= C('Z')) ? static_cast<C>(c + 32) : c;
}

template <class C>
constexpr C AsciiUpper(C c) noexcept {
  return (c >= C('a') && c <= C('z')) ? static_cast<C>(c - 32) : c;
}

template <class C>
constexpr bool IsAscii(View<C> s) noexcept {
  for (C c : s) {
    if (Code(c) >= 128) return false;
  }
  return true;
}

template <class C>
class CaselessFinder {
 public:
  CaselessFinder(View<C> pattern, View<C> text)
      : lpat_(AnsiLowerCase(pattern)), text_(text) {
    onTheFly_ = IsAscii<C>(lpat_) && UserLocaleFoldsAsciiPlainly();
    if constexpr (sizeof(C) == 1) onTheFly_ = onTheFly_ && !AnsiCodePageHasAsciiTrailBytes();
    if (!onTheFly_) BuildCopy();
  }

  // 0-based index of the first occurrence at or after `from`; npos if none.
  std::size_t Find(std::size_t from) {
    if (lpat_.empty()) return npos;
    if (!onTheFly_) return View<C>(ltext_).find(lpat_, from);
    const std::size_t n = text_.size();
    const std::size_t m = lpat_.size();
    const C first = lpat_[0];
    const C last = lpat_[m - 1];
    while (from < n && n - from >= m) {
      // Candidates: the first and the last character in either case, or any
      // non-ASCII character (which may lower to an ASCII one, like U+212A
      // KELVIN SIGN).
      const std::size_t count = n - from - m + 1;
      const std::size_t i =
          from + (m == 1 ? FindPairOrHigh(text_.data() + from, count, first, AsciiUpper(first))
                         : FindEndsOrHigh(text_.data() + from, count, m - 1, first,
                                          AsciiUpper(first), last, AsciiUpper(last)));
      if (i > n - m) return npos;
      bool match = true;
      for (std::size_t j = 0; j < m; ++j) {
        C c = text_[i + j];
        if (Code(c) >= 128) {
          if constexpr (sizeof(C) == 1) {
            // A byte above 127: only the lowered whole text can tell.
            BuildCopy();
            return Find(from);
          } else {
            c = LowerWide(c);
          }
        } else {
          c = AsciiLower(c);
        }
        if (c != lpat_[j]) {
          match = false;
          break;
        }
      }
      if (match) return i;
      from = i + 1;
    }
    return npos;
  }

  [[nodiscard]] std::size_t PatternLength() const noexcept { return lpat_.size(); }

 private:
  void BuildCopy() {
    ltext_ = AnsiLowerCase(text_);
    onTheFly_ = false;
  }

  // One UTF-16 unit lowered as in the lowered whole text, as far as the
  // answer can matter for an ASCII pattern: a surrogate never lowers to ASCII.
  static C LowerWide(C c) {
    if (c >= 0xD800 && c <= 0xDFFF) return c;
    return AnsiLowerChar(static_cast<WideChar>(c));
  }

  Str<C> lpat_;
  View<C> text_;
  Str<C> ltext_;
  bool onTheFly_ = false;
};

}  // namespace quill::Gstrings::internal
