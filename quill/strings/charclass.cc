// Character classes, the separator sets and number recognition.
#include "quill/strings/charclass.h"

#include <array>
#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/rtl/compare.h"
#include "quill/rtl/floatconv.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/unicode.h"
#include "quill/strings/internal/separators.h"
#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace internal {

// Never destroyed: the unit's last stop clears them during library unload,
// which may come after the static destructors of objects created later.
AnsiString& SeparatorsA() {
  static AnsiString* const set = new AnsiString();
  return *set;
}

UnicodeString& SeparatorsW() {
  static UnicodeString* const set = new UnicodeString();
  return *set;
}

}  // namespace internal

namespace {

using internal::Code;
using internal::View;

// Membership of one character in a set, by a forward search of the
// one-character pattern; an empty set never matches.
template <class C>
bool InSet(View<C> set, C c) noexcept {
  return set.find(c) != View<C>::npos;
}

template <class C>
bool IsNumberT(View<C> s) noexcept {
  if (s.empty()) return false;
  for (C c : s) {
    if (!IsDigit(c)) return false;
  }
  return true;
}

template <class C>
bool IsIdentifierT(View<C> s) noexcept {
  for (C c : s) {
    if (!IsAlpha(c)) return false;
  }
  return true;
}

template <class C>
void SkipSymbolsT(View<C> s, int32_t& pos, View<C> symbols) noexcept {
  // Positions below 1 are left alone rather than read before the string.
  if (pos < 1 || symbols.empty()) return;
  while (static_cast<std::size_t>(pos) <= s.size() && InSet(symbols, s[pos - 1])) ++pos;
}

template <class C>
void SkipSpacesT(View<C> s, int32_t& pos) noexcept {
  if (pos < 1) return;
  while (static_cast<std::size_t>(pos) <= s.size() && IsSpace(s[pos - 1])) ++pos;
}

// Widens 8-bit text with the ordinary conversion; ASCII text is copied as it
// is, without a converter.
UnicodeString Widen(std::string_view s) {
  bool ascii = true;
  for (char c : s) ascii = ascii && static_cast<unsigned char>(c) < 128;
  if (ascii) return UnicodeString(s.begin(), s.end());
  return AnsiToUnicode(s);
}

}  // namespace

void SetSeparatorList(std::string_view list) { internal::SeparatorsA().assign(list); }
void SetSeparatorList(std::u16string_view list) { internal::SeparatorsW().assign(list); }
void SetSeparatorListW(std::u16string_view list) { SetSeparatorList(list); }

bool IsSeparator(AnsiChar c) { return InSet<char>(internal::SeparatorsA(), c); }
bool IsSeparator(WideChar c) { return InSet<char16_t>(internal::SeparatorsW(), c); }

bool IsNumber(std::string_view s) noexcept { return IsNumberT(s); }
bool IsNumber(std::u16string_view s) noexcept { return IsNumberT(s); }

bool IsIntNum(std::u16string_view s) {
  int32_t v = 0;
  return TryStrToInt(s, v);
}
bool IsIntNum(std::string_view s) { return IsIntNum(std::u16string_view(Widen(s))); }

bool IsRealNum(std::u16string_view s) {
  double v = 0;
  return TryStrToFloat(s, v, FormatSettings());
}
bool IsRealNum(std::string_view s) { return IsRealNum(std::u16string_view(Widen(s))); }

bool IsIdentifier(std::string_view s) noexcept { return IsIdentifierT(s); }
bool IsIdentifier(std::u16string_view s) noexcept { return IsIdentifierT(s); }

bool IsPositive(std::string_view s) {
  const AnsiString lowered = AnsiLowerCase(s);
  for (std::string_view word : {"on", "yes", "True", "1"}) {
    if (AnsiSameText(lowered, word)) return true;
  }
  return false;
}

bool IsPositive(std::u16string_view s) {
  const UnicodeString lowered = AnsiLowerCase(s);
  for (std::u16string_view word : {u"on", u"yes", u"True", u"1"}) {
    if (AnsiSameText(lowered, word)) return true;
  }
  return false;
}

bool AlphaExists(std::string_view s) noexcept {
  for (char ch : s) {
    const uint32_t c = Code(ch);
    if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c > 127) return true;
  }
  return false;
}

bool AlphaExists(std::u16string_view s) noexcept {
  // Everything but the ASCII non-letters 32..64, 91..96 and 123..126 counts,
  // controls and 127..255 included: wider than the 8-bit form on purpose.
  for (char16_t c : s) {
    const bool nonLetter =
        (c >= 32 && c <= 64) || (c >= 91 && c <= 96) || (c >= 123 && c <= 126);
    if (!nonLetter) return true;
  }
  return false;
}

void SkipSpaces(std::string_view s, int32_t& pos) noexcept { SkipSpacesT(s, pos); }
void SkipSpaces(std::u16string_view s, int32_t& pos) noexcept { SkipSpacesT(s, pos); }

void SkipSymbols(std::string_view s, int32_t& pos, std::string_view symbols) noexcept {
  SkipSymbolsT(s, pos, symbols);
}
void SkipSymbols(std::u16string_view s, int32_t& pos, std::u16string_view symbols) noexcept {
  SkipSymbolsT(s, pos, symbols);
}

}  // namespace quill::Gstrings
