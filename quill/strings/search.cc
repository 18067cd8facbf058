// Searching forwards and backwards, with and without case; prefixes,
// suffixes and counting.
#include "quill/strings/search.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/rtl/compare.h"
#include "quill/strings/internal/caseless.h"
#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace {

using internal::npos;
using internal::ToPos;
using internal::View;

template <class C>
int32_t XPosT(View<C> pattern, View<C> text, int32_t start, int32_t n) noexcept {
  if (text.empty() || pattern.empty() || n <= 0) return 0;
  if (start > 0 && static_cast<std::size_t>(start) > text.size()) return 0;
  const std::size_t from = start < 1 ? 0 : static_cast<std::size_t>(start - 1);
  const std::size_t p = internal::FindNth(pattern, text, from, n);
  return p == npos ? 0 : ToPos(p);
}

template <class C>
int32_t BXPosT(View<C> pattern, View<C> text, int32_t start, int32_t n) noexcept {
  if (text.empty() || pattern.empty() || n <= 0) return 0;
  const auto len = static_cast<int64_t>(text.size());
  // A start equal to the length is a search from the end, like a start
  // beyond it: kept so on purpose.
  const int64_t begin = (start >= 1 && start < len)
                            ? start
                            : len - static_cast<int64_t>(pattern.size()) + 1;
  if (begin < 1) return 0;
  const std::size_t p = internal::RFindNth(pattern, text, static_cast<std::size_t>(begin - 1), n);
  return p == npos ? 0 : ToPos(p);
}

template <class C>
int32_t CXPosT(View<C> pattern, View<C> text, int32_t start, int32_t n) {
  if (text.empty() || pattern.empty() || n <= 0) return 0;
  if (start > 0 && static_cast<std::size_t>(start) > text.size()) return 0;
  std::size_t from = start < 1 ? 0 : static_cast<std::size_t>(start - 1);
  internal::CaselessFinder<C> finder(pattern, text);
  std::size_t p = finder.Find(from);
  while (p != npos && --n > 0) p = finder.Find(p + 1);
  return p == npos ? 0 : ToPos(p);
}

template <class C>
bool StartsWithT(View<C> prefix, View<C> text) noexcept {
  return prefix.size() <= text.size() && text.substr(0, prefix.size()) == prefix;
}

template <class C>
bool XStartsWithT(View<C> prefix, View<C> text, bool caseSensitive) {
  // The flag set means "true, whatever the strings": callers rely on it.
  if (caseSensitive) return true;
  if (prefix.empty()) return true;
  if (prefix.size() > text.size()) return false;  // lowering keeps the length
  const View<C> head = text.substr(0, prefix.size());
  if (internal::IsAscii(prefix) && internal::IsAscii(head) &&
      internal::UserLocaleFoldsAsciiPlainly()) {
    return std::equal(prefix.begin(), prefix.end(), head.begin(), [](C a, C b) {
      return internal::AsciiLower(a) == internal::AsciiLower(b);
    });
  }
  // Lowering maps one character at a time, so only the head is lowered,
  // with 4 more code units: a character (up to 4 bytes, or a surrogate
  // pair) that straddles the prefix's end is then lowered whole, as in the
  // whole text.
  const auto lp = AnsiLowerCase(prefix);
  const auto lt = AnsiLowerCase(text.substr(0, std::min(text.size(), prefix.size() + 4)));
  return View<C>(lt).substr(0, lp.size()) == View<C>(lp);
}

template <class C>
int32_t CharCountT(View<C> s, C c) noexcept {
  return static_cast<int32_t>(std::count(s.begin(), s.end(), c));
}

}  // namespace

int32_t XPos(std::string_view pattern, std::string_view text, int32_t start, int32_t n) noexcept {
  return XPosT(pattern, text, start, n);
}
int32_t XPos(std::u16string_view pattern, std::u16string_view text, int32_t start,
             int32_t n) noexcept {
  return XPosT(pattern, text, start, n);
}

int32_t PosNum(std::string_view pattern, std::string_view text, int32_t n) noexcept {
  return XPosT(pattern, text, 1, n);
}
int32_t PosNum(std::u16string_view pattern, std::u16string_view text, int32_t n) noexcept {
  return XPosT(pattern, text, 1, n);
}

int32_t BXPos(std::string_view pattern, std::string_view text, int32_t start,
              int32_t n) noexcept {
  return BXPosT(pattern, text, start, n);
}
int32_t BXPos(std::u16string_view pattern, std::u16string_view text, int32_t start,
              int32_t n) noexcept {
  return BXPosT(pattern, text, start, n);
}

int32_t CXPos(std::string_view pattern, std::string_view text, int32_t start, int32_t n) {
  return CXPosT(pattern, text, start, n);
}
int32_t CXPos(std::u16string_view pattern, std::u16string_view text, int32_t start, int32_t n) {
  return CXPosT(pattern, text, start, n);
}

int32_t CPos(std::string_view pattern, std::string_view text) {
  return CXPosT(pattern, text, 1, 1);
}
int32_t CPos(std::u16string_view pattern, std::u16string_view text) {
  return CXPosT(pattern, text, 1, 1);
}

bool StartsWith(std::string_view prefix, std::string_view text) noexcept {
  return StartsWithT(prefix, text);
}
bool StartsWith(std::u16string_view prefix, std::u16string_view text) noexcept {
  return StartsWithT(prefix, text);
}

bool XStartsWith(std::string_view prefix, std::string_view text, bool caseSensitive) {
  return XStartsWithT(prefix, text, caseSensitive);
}
bool XStartsWith(std::u16string_view prefix, std::u16string_view text, bool caseSensitive) {
  return XStartsWithT(prefix, text, caseSensitive);
}

bool EndsBy(std::string_view suffix, std::string_view text) noexcept {
  if (suffix.empty()) return true;
  const std::size_t k = std::min(suffix.size(), text.size());
  // The 8-bit form folds ASCII letters only.
  const std::string_view tail = text.substr(text.size() - k);
  return tail.size() == suffix.size() &&
         std::equal(tail.begin(), tail.end(), suffix.begin(), [](char a, char b) {
           return internal::AsciiLower(a) == internal::AsciiLower(b);
         });
}

bool EndsBy(std::u16string_view suffix, std::u16string_view text) {
  if (suffix.empty()) return true;
  const std::size_t k = std::min(suffix.size(), text.size());
  // The UTF-16 form uses the locale-aware comparison.
  return AnsiSameText(text.substr(text.size() - k), suffix);
}

int32_t CharCount(std::string_view s, AnsiChar c) noexcept { return CharCountT(s, c); }
int32_t CharCount(std::u16string_view s, WideChar c) noexcept { return CharCountT(s, c); }

}  // namespace quill::Gstrings
