// List membership, symbol-insensitive equality, whole-word containment and the
// null-terminated buffer helpers.
#include "quill/strings/matching.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "quill/rtl/compare.h"
#include "quill/strings/charclass.h"

namespace quill::Gstrings {
namespace {

// Entries 0..last of `list`, never past its end.
template <class T>
std::span<const T> Examined(std::span<const T> list, int32_t last) {
  if (last < 0) return {};
  return list.first(std::min(list.size(), static_cast<size_t>(last) + 1));
}

// Symbol membership: a byte table for 8-bit text, a search for UTF-16 text.
class AnsiSymbols {
 public:
  explicit AnsiSymbols(std::string_view symbols) {
    for (char c : symbols) table_[static_cast<unsigned char>(c)] = true;
  }
  bool operator()(char c) const { return table_[static_cast<unsigned char>(c)]; }

 private:
  std::array<bool, 256> table_{};
};

class WideSymbols {
 public:
  explicit WideSymbols(std::u16string_view symbols) : symbols_(symbols) {}
  bool operator()(char16_t c) const { return symbols_.find(c) != std::u16string_view::npos; }

 private:
  std::u16string_view symbols_;
};

// kTrailingSymbolsMatch: the 8-bit form's extra check after skipping symbols.
template <bool kTrailingSymbolsMatch, class Ch, class IsSymbol>
bool EqualIgnoring(std::basic_string_view<Ch> s1, std::basic_string_view<Ch> s2,
                   const IsSymbol& is_symbol) {
  size_t i = 0, j = 0;
  const size_t n1 = s1.size(), n2 = s2.size();
  for (;;) {
    if (i >= n1 && j >= n2) return true;
    while (i < n1 && is_symbol(s1[i])) ++i;
    while (j < n2 && is_symbol(s2[j])) ++j;
    if (kTrailingSymbolsMatch && i >= n1 && j >= n2) return true;
    if (i >= n1 || j >= n2) return false;
    if (s1[i] != s2[j]) return false;
    ++i;
    ++j;
  }
}

template <class Ch>
bool WholeWord(std::basic_string_view<Ch> s, std::basic_string_view<Ch> word) {
  if (word.empty()) return false;
  const size_t p = s.find(word);
  if (p == std::basic_string_view<Ch>::npos) return false;
  // Only this first occurrence is judged.
  if (p > 0 && IsAlpha(s[p - 1])) return false;
  const size_t after = p + word.size();
  if (after < s.size() && IsAlpha(s[after])) return false;
  return true;
}

}  // namespace

bool StrInList(std::u16string_view s, std::span<const UnicodeString> list, int32_t last) {
  for (const auto& entry : Examined(list, last)) {
    if (SameText(s, entry)) return true;
  }
  return false;
}

bool StrInListA(std::string_view s, std::span<const AnsiString> list, int32_t last) {
  for (const auto& entry : Examined(list, last)) {
    if (AnsiSameText(s, entry)) return true;
  }
  return false;
}

bool StrInListW(std::u16string_view s, std::span<const UnicodeString> list, int32_t last) {
  for (const auto& entry : Examined(list, last)) {
    if (AnsiSameText(s, entry)) return true;
  }
  return false;
}

char* StrPCat(char* buffer, std::string_view s) {
  const size_t used = std::strlen(buffer);
  const size_t nul = s.find('\0');
  const size_t n = nul == std::string_view::npos ? s.size() : nul;
  std::memcpy(buffer + used, s.data(), n);
  buffer[used + n] = '\0';
  return buffer;
}

void ClearPChar(char* buffer, uint16_t size) {
  // Last index size - 1 in 16 bits: 0 wraps to 65535.
  const size_t count = static_cast<size_t>(static_cast<uint16_t>(size - 1)) + 1;
  std::memset(buffer, 0, count);
}

void ClearPChar(char16_t* buffer, uint16_t size) {
  const size_t count = static_cast<size_t>(static_cast<uint16_t>(size - 1)) + 1;
  std::fill_n(buffer, count, u'\0');
}

bool EqualToSymbols(std::string_view s1, std::string_view s2, std::string_view symbols) {
  return EqualIgnoring<true>(s1, s2, AnsiSymbols(symbols));
}

bool EqualToSymbols(std::u16string_view s1, std::u16string_view s2, std::u16string_view symbols) {
  return EqualIgnoring<false>(s1, s2, WideSymbols(symbols));
}

bool EqualToSpaces(std::string_view s1, std::string_view s2) {
  return EqualToSymbols(s1, s2, " ");
}

bool EqualToSpaces(std::u16string_view s1, std::u16string_view s2) {
  return EqualToSymbols(s1, s2, u" ");
}

bool ContainsAsWholeWord(std::string_view s, std::string_view word) { return WholeWord(s, word); }

bool ContainsAsWholeWord(std::u16string_view s, std::u16string_view word) {
  return WholeWord(s, word);
}

}  // namespace quill::Gstrings
