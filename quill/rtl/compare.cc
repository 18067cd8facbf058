#include "quill/rtl/compare.h"

#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <memory>
#include <string>

#include "quill/rtl/internal/converter.h"
#include "quill/rtl/internal/localecache.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace quill {
namespace {

// ---- Ordinal comparison -------------------------------------------------

template <typename Char>
constexpr uint32_t Unit(Char c) {
  return static_cast<std::make_unsigned_t<Char>>(c);
}

template <typename Char>
constexpr uint32_t FoldAscii(Char c) {
  const uint32_t u = Unit(c);
  return (u >= 'a' && u <= 'z') ? u - ('a' - 'A') : u;
}

// The difference of the first differing units (after `map`), else of the
// lengths: a prefix is less than the longer string.
template <typename Char, typename Map>
int Ordinal(std::basic_string_view<Char> a, std::basic_string_view<Char> b, Map map) {
  const size_t n = a.size() < b.size() ? a.size() : b.size();
  for (size_t i = 0; i < n; ++i) {
    const uint32_t x = map(a[i]);
    const uint32_t y = map(b[i]);
    if (x != y) return static_cast<int>(x) - static_cast<int>(y);
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

// ---- Linguistic comparison ----------------------------------------------

struct CollatorCloser {
  void operator()(UCollator* c) const { ucol_close(c); }
};
using CollatorPtr = std::unique_ptr<UCollator, CollatorCloser>;

// The user locale's collators, built per thread and rebuilt after
// ResetLocaleCache(). `exact` tells case apart (tertiary strength);
// `ignore_case` does not (secondary strength: accents still count).
struct Collators {
  uint64_t generation = 0;
  CollatorPtr exact;
  CollatorPtr ignore_case;
  // Turkish and Azeri tell I from i at the primary level, so ASCII case
  // folding does not predict their answers.
  bool ascii_folding_agrees = true;
  bool acp_utf8 = false;
  bool acp_ascii = false;
};

CollatorPtr OpenCollator(const char* locale, UCollationStrength strength) {
  UErrorCode err = U_ZERO_ERROR;
  UCollator* c = ucol_open(locale, &err);
  if (U_FAILURE(err)) {
    ucol_close(c);
    err = U_ZERO_ERROR;
    c = ucol_open("", &err);  // the root collation
  }
  if (c != nullptr) ucol_setStrength(c, strength);
  return CollatorPtr(c);
}

const Collators& CurrentCollators() {
  static thread_local std::unique_ptr<Collators> cache;
  const uint64_t gen = internal::LocaleCacheGeneration();
  if (!cache || cache->generation != gen) {
    auto fresh = std::make_unique<Collators>();
    fresh->generation = gen;
    const std::string tag = UserDefaultLocaleTag();
    char id[ULOC_FULLNAME_CAPACITY] = {};
    UErrorCode err = U_ZERO_ERROR;
    uloc_forLanguageTag(tag.c_str(), id, sizeof id, nullptr, &err);
    if (U_FAILURE(err)) id[0] = '\0';
    fresh->exact = OpenCollator(id, UCOL_TERTIARY);
    fresh->ignore_case = OpenCollator(id, UCOL_SECONDARY);
    char lang[ULOC_LANG_CAPACITY] = {};
    err = U_ZERO_ERROR;
    uloc_getLanguage(id, lang, sizeof lang, &err);
    const std::string l = lang;
    fresh->ascii_folding_agrees = l != "tr" && l != "az";
    const TCodePage acp = GetACP();
    fresh->acp_utf8 = acp == CP_UTF8;
    fresh->acp_ascii = internal::ConverterFor(acp).ascii_compatible;
    cache = std::move(fresh);
  }
  return *cache;
}

int Sign(UCollationResult r) { return r == UCOL_LESS ? -1 : r == UCOL_GREATER ? 1 : 0; }

int Collate(const UCollator* c, std::u16string_view a, std::u16string_view b) {
  return Sign(ucol_strcoll(c, a.data(), static_cast<int32_t>(a.size()), b.data(),
                           static_cast<int32_t>(b.size())));
}

template <typename Char>
bool IsPrintableAscii(std::basic_string_view<Char> s) {
  for (Char c : s) {
    if (Unit(c) < 0x20 || Unit(c) > 0x7E) return false;
  }
  return true;
}

template <typename Char>
bool AsciiFoldEqual(std::basic_string_view<Char> a, std::basic_string_view<Char> b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
  }
  return true;
}

// 8-bit text in the ANSI code page. ASCII (on an ASCII-compatible page) and
// UTF-8 text go to the collator as UTF-8 without a conversion.
int Collate(const Collators& cs, const UCollator* c, std::string_view a, std::string_view b) {
  auto is_ascii = [](std::string_view s) {
    for (char ch : s) {
      if (static_cast<unsigned char>(ch) >= 0x80) return false;
    }
    return true;
  };
  if (cs.acp_utf8 || (cs.acp_ascii && is_ascii(a) && is_ascii(b))) {
    UErrorCode err = U_ZERO_ERROR;
    const UCollationResult r = ucol_strcollUTF8(c, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                                static_cast<int32_t>(b.size()), &err);
    if (U_SUCCESS(err)) return Sign(r);
  }
  return Collate(c, AnsiToUnicode(a), AnsiToUnicode(b));
}

// Case-insensitive equality. Printable ASCII characters all carry primary
// weight, so on two printable ASCII strings secondary equality is ASCII case
// folding; that answer is taken without the collator where it agrees.
template <typename Char>
bool SameTextLinguistic(std::basic_string_view<Char> a, std::basic_string_view<Char> b) {
  const Collators& cs = CurrentCollators();
  if (cs.ascii_folding_agrees && IsPrintableAscii(a) && IsPrintableAscii(b)) return AsciiFoldEqual(a, b);
  if constexpr (sizeof(Char) == 1) {
    return Collate(cs, cs.ignore_case.get(), a, b) == 0;
  } else {
    return Collate(cs.ignore_case.get(), a, b) == 0;
  }
}

}  // namespace

int CompareStr(std::string_view a, std::string_view b) { return Ordinal(a, b, Unit<char>); }
int CompareStr(std::u16string_view a, std::u16string_view b) { return Ordinal(a, b, Unit<char16_t>); }
int CompareText(std::string_view a, std::string_view b) { return Ordinal(a, b, FoldAscii<char>); }
int CompareText(std::u16string_view a, std::u16string_view b) { return Ordinal(a, b, FoldAscii<char16_t>); }
bool SameText(std::string_view a, std::string_view b) { return AsciiFoldEqual(a, b); }
bool SameText(std::u16string_view a, std::u16string_view b) { return AsciiFoldEqual(a, b); }

int AnsiCompareStr(std::string_view a, std::string_view b) {
  const Collators& cs = CurrentCollators();
  return Collate(cs, cs.exact.get(), a, b);
}

int AnsiCompareStr(std::u16string_view a, std::u16string_view b) {
  return Collate(CurrentCollators().exact.get(), a, b);
}

int AnsiCompareText(std::string_view a, std::string_view b) {
  const Collators& cs = CurrentCollators();
  return Collate(cs, cs.ignore_case.get(), a, b);
}

int AnsiCompareText(std::u16string_view a, std::u16string_view b) {
  return Collate(CurrentCollators().ignore_case.get(), a, b);
}

bool AnsiSameText(std::string_view a, std::string_view b) { return SameTextLinguistic(a, b); }
bool AnsiSameText(std::u16string_view a, std::u16string_view b) { return SameTextLinguistic(a, b); }

// Identical text is always equal; otherwise the collator decides (it treats
// some different spellings, such as composed and decomposed accents, as equal).
bool AnsiSameStr(std::string_view a, std::string_view b) { return a == b || AnsiCompareStr(a, b) == 0; }
bool AnsiSameStr(std::u16string_view a, std::u16string_view b) { return a == b || AnsiCompareStr(a, b) == 0; }

}  // namespace quill
