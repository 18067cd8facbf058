// Case-insensitive search over the caller's text. Not installed.
//
// The answers are those of a plain search of the locale-aware lowered pattern
// in the locale-aware lowered text (lowering keeps the length, so positions
// apply to the caller's text). A lowered copy of the text is built only when
// needed: when the lowered pattern is ASCII, ASCII text is folded on the fly,
// and in the UTF-16 form non-ASCII characters are lowered one at a time, so
// no memory proportional to the text is taken (the UTF-16 form finds its
// candidates by two pattern letters in either case, so text in other
// scripts is passed over by the vector scan). In a single-byte ANSI code
// page the 8-bit form never copies: lowering there maps each byte on its own
// (through the code page's table, in every locale), so any pattern is
// searched byte-wise (ByteCaselessSearch). In multi-byte code pages the 8-bit
// form builds the lowered copy as soon as it meets a byte above 127, because
// a byte there may be part of a multi-byte character whose lowering only the
// whole text can tell; in double-byte code pages it always uses the copy.
// Locales whose lowering of ASCII letters depends on the surrounding text
// (Turkish, Azerbaijani, Lithuanian) use the copy outside single-byte pages.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/strings/internal/anchorscan.h"
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

// True when the ANSI code page maps every character to one byte (or is
// unknown, in which case 8-bit lowering is the ASCII folding): lowering is
// then a per-byte table.
bool AnsiCodePageIsSingleByte();

// Case-insensitive search of 8-bit text under a single-byte ANSI code page.
// Lowering there maps each byte through a table, so the lowered text is never
// built: a vectorised scan looks for the bytes that lower to the pattern's
// two rarest characters (by the usual frequency of bytes in text and code) at
// their distance, and each candidate is checked through the table. Answers
// are those of searching the lowered pattern in the lowered text.
class ByteCaselessSearch {
 public:
  // `lpat` is the lowered pattern; `text` must outlive the object.
  ByteCaselessSearch(std::string_view lpat, std::string_view text);

  // 0-based index of the first occurrence at or after `from`; npos if none.
  [[nodiscard]] std::size_t Find(std::size_t from) const noexcept;

 private:
  [[nodiscard]] bool MatchesAt(const char* p) const noexcept;

  std::string lpat_;
  std::string_view text_;
  std::array<unsigned char, 256> lower_{};
  // The bytes that lower to the two anchor characters.
  Anchors<char> anchors_;
  bool vector_ = false;  // false: every pattern character has 3 or more such bytes
};

// True when some non-ASCII UTF-16 unit lowers to the ASCII character `c`
// (as U+212A KELVIN SIGN to 'k'), under locales that fold ASCII plainly.
// The units are found once, through the library's own lowering.
bool HighUnitLowersTo(char c);

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
    if constexpr (sizeof(C) == 1) {
      if (!lpat_.empty() && AnsiCodePageIsSingleByte()) {
        bytes_.emplace(lpat_, text_);
        return;
      }
    }
    onTheFly_ = IsAscii<C>(lpat_) && UserLocaleFoldsAsciiPlainly();
    if constexpr (sizeof(C) == 1) onTheFly_ = onTheFly_ && !AnsiCodePageHasAsciiTrailBytes();
    if (!onTheFly_) {
      BuildCopy();
      return;
    }
    if constexpr (sizeof(C) == 2) {
      // Anchors: pattern characters whose UTF-16 units lowering to them are
      // at most two (the letter's cases; 'i' and 'k' also have a non-ASCII
      // unit lowering to them and are left out).
      anchored_ = ChooseAnchors<C>(lpat_.size(), [&](std::size_t j, C* pair) {
        const C c = lpat_[j];
        if (HighUnitLowersTo(static_cast<char>(c))) return false;
        pair[0] = c;
        pair[1] = AsciiUpper(c);
        return true;
      }, anchors_);
    }
  }

  // 0-based index of the first occurrence at or after `from`; npos if none.
  std::size_t Find(std::size_t from) {
    if (lpat_.empty()) return npos;
    if constexpr (sizeof(C) == 1) {
      if (bytes_) return bytes_->Find(from);
    }
    if (!onTheFly_) return View<C>(ltext_).find(lpat_, from);
    const std::size_t n = text_.size();
    const std::size_t m = lpat_.size();
    if constexpr (sizeof(C) == 2) {
      if (anchored_) {
        // Non-ASCII units are then only looked at inside candidates.
        if (from >= n || n - from < m) return npos;
        const std::size_t count = n - from - m + 1;
        const C* const base = text_.data() + from;
        const std::size_t i = ScanForward(base, count, anchors_, [&](std::size_t c) {
          for (std::size_t j = 0; j < m; ++j) {
            const C u = base[c + j];
            if ((Code(u) >= 128 ? LowerWide(u) : AsciiLower(u)) != lpat_[j]) return false;
          }
          return true;
        });
        return i == count ? npos : from + i;
      }
    }
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
  bool anchored_ = false;  // UTF-16 on the fly: scan by anchors_
  Anchors<C> anchors_;
  std::optional<ByteCaselessSearch> bytes_;  // 8-bit text, single-byte code page
};

}  // namespace quill::Gstrings::internal
