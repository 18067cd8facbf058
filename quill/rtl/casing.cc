#include "quill/rtl/casing.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/uloc.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "quill/rtl/internal/converter.h"
#include "quill/rtl/internal/localecache.h"
#include "quill/rtl/syslocale.h"

namespace quill {
namespace {

enum class Direction { kLower, kUpper };

template <typename Char>
constexpr Char AsciiMap(Char c, Direction d) {
  if (d == Direction::kLower) return (c >= 'A' && c <= 'Z') ? static_cast<Char>(c + ('a' - 'A')) : c;
  return (c >= 'a' && c <= 'z') ? static_cast<Char>(c - ('a' - 'A')) : c;
}

template <typename Char>
std::basic_string<Char> AsciiMapString(std::basic_string_view<Char> s, Direction d) {
  std::basic_string<Char> out(s);
  for (Char& c : out) c = AsciiMap(c, d);
  return out;
}

// What case mapping needs to know about the user locale and the ANSI code
// page. Built per thread and rebuilt after ResetLocaleCache().
struct CaseContext {
  uint64_t generation = 0;
  std::string icu_locale;  // "tr_TR"
  // Turkish, Azeri and Lithuanian map some letters (ASCII I and i among them)
  // differently from the default; their mapping goes through ICU per character.
  bool linguistic = false;
  TCodePage acp = 0;
  bool acp_single_byte = false;
  bool acp_ascii = false;
  // Byte tables of a single-byte ANSI code page.
  std::array<unsigned char, 256> lower{};
  std::array<unsigned char, 256> upper{};
};

// The mapping of one code point under the context's locale. Only a one-to-one
// result is used: when the locale's full mapping yields several characters
// the default simple mapping is taken instead.
UChar32 MapCodePoint(const CaseContext& ctx, UChar32 c, Direction d) {
  if (!ctx.linguistic) return d == Direction::kLower ? u_tolower(c) : u_toupper(c);
  UChar src[2];
  int32_t n = 0;
  U16_APPEND_UNSAFE(src, n, c);
  UChar dst[8];
  UErrorCode err = U_ZERO_ERROR;
  const int32_t len = d == Direction::kLower
                          ? u_strToLower(dst, 8, src, n, ctx.icu_locale.c_str(), &err)
                          : u_strToUpper(dst, 8, src, n, ctx.icu_locale.c_str(), &err);
  if (U_SUCCESS(err) && len > 0) {
    UChar32 m = 0;
    int32_t i = 0;
    U16_NEXT(dst, i, len, m);
    if (i == len) return m;
  }
  return d == Direction::kLower ? u_tolower(c) : u_toupper(c);
}

// Maps `c` keeping its UTF-16 length; returns `c` when the mapping would not.
UChar32 MapSameLength(const CaseContext& ctx, UChar32 c, Direction d) {
  const UChar32 m = MapCodePoint(ctx, c, d);
  return U16_LENGTH(m) == U16_LENGTH(c) ? m : c;
}

void BuildByteTables(CaseContext& ctx) {
  for (int b = 0; b < 256; ++b) {
    ctx.lower[b] = static_cast<unsigned char>(b);
    ctx.upper[b] = static_cast<unsigned char>(b);
  }
  const internal::CodePageConverter& cp = internal::ConverterFor(ctx.acp);
  if (cp.conv == nullptr) {
    for (int b = 0; b < 128; ++b) {
      ctx.lower[b] = static_cast<unsigned char>(AsciiMap(char(b), Direction::kLower));
      ctx.upper[b] = static_cast<unsigned char>(AsciiMap(char(b), Direction::kUpper));
    }
    return;
  }
  for (int b = 0; b < 256; ++b) {
    const char byte = static_cast<char>(b);
    UChar u[4];
    UErrorCode err = U_ZERO_ERROR;
    ucnv_reset(cp.conv);
    const int32_t n = ucnv_toUChars(cp.conv, u, 4, &byte, 1, &err);
    if (U_FAILURE(err) || n != 1 || u[0] == 0xFFFD || U16_IS_SURROGATE(u[0])) continue;
    for (Direction d : {Direction::kLower, Direction::kUpper}) {
      const UChar32 m = MapSameLength(ctx, u[0], d);
      if (m == u[0]) continue;
      const UChar mu = static_cast<UChar>(m);
      char out[8];
      err = U_ZERO_ERROR;
      ucnv_reset(cp.conv);
      const int32_t k = ucnv_fromUChars(cp.conv, out, 8, &mu, 1, &err);
      if (U_FAILURE(err) || k != 1) continue;
      // Accept only an exact round trip: a substitute '?' or a best-fit
      // fallback is not the mapped letter.
      UChar back[4];
      err = U_ZERO_ERROR;
      ucnv_reset(cp.conv);
      if (ucnv_toUChars(cp.conv, back, 4, out, 1, &err) != 1 || U_FAILURE(err) || back[0] != mu) continue;
      (d == Direction::kLower ? ctx.lower : ctx.upper)[b] = static_cast<unsigned char>(out[0]);
    }
  }
  ucnv_reset(cp.conv);
}

const CaseContext& Context() {
  static thread_local std::unique_ptr<CaseContext> ctx;
  const uint64_t gen = internal::LocaleCacheGeneration();
  if (!ctx || ctx->generation != gen) {
    auto fresh = std::make_unique<CaseContext>();
    fresh->generation = gen;
    const std::string tag = UserDefaultLocaleTag();
    char id[ULOC_FULLNAME_CAPACITY] = {};
    UErrorCode err = U_ZERO_ERROR;
    uloc_forLanguageTag(tag.c_str(), id, sizeof id, nullptr, &err);
    fresh->icu_locale = U_SUCCESS(err) ? id : "";
    char lang[ULOC_LANG_CAPACITY] = {};
    err = U_ZERO_ERROR;
    uloc_getLanguage(fresh->icu_locale.c_str(), lang, sizeof lang, &err);
    const std::string l = lang;
    fresh->linguistic = l == "tr" || l == "az" || l == "lt";
    fresh->acp = GetACP();
    const internal::CodePageConverter& cp = internal::ConverterFor(fresh->acp);
    fresh->acp_single_byte = cp.conv == nullptr || cp.single_byte;
    fresh->acp_ascii = cp.conv == nullptr || cp.ascii_compatible;
    if (fresh->acp_single_byte) BuildByteTables(*fresh);
    ctx = std::move(fresh);
  }
  return *ctx;
}

UnicodeString MapWide(std::u16string_view s, Direction d) {
  UnicodeString out(s);
  const CaseContext* ctx = nullptr;
  const size_t n = out.size();
  size_t i = 0;
  while (i < n) {
    const char16_t c = out[i];
    // ASCII fast path: no ICU call outside the linguistic locales.
    if (c < 0x80) {
      if (ctx == nullptr) ctx = &Context();
      if (!ctx->linguistic) {
        out[i] = AsciiMap(c, d);
        ++i;
        continue;
      }
    }
    if (ctx == nullptr) ctx = &Context();
    if (U16_IS_LEAD(c) && i + 1 < n && U16_IS_TRAIL(out[i + 1])) {
      const UChar32 cp = U16_GET_SUPPLEMENTARY(c, out[i + 1]);
      const UChar32 m = MapSameLength(*ctx, cp, d);
      out[i] = U16_LEAD(m);
      out[i + 1] = U16_TRAIL(m);
      i += 2;
      continue;
    }
    // A lone surrogate maps to itself.
    if (!U16_IS_SURROGATE(c)) out[i] = static_cast<char16_t>(MapSameLength(*ctx, c, d));
    ++i;
  }
  return out;
}

// Multi-byte ANSI code pages (UTF-8, Shift_JIS, GBK, ...): decode with source
// offsets, map each character, and write it back only when its encoding has
// the same number of bytes.
AnsiString MapMultiByte(const CaseContext& ctx, std::string_view s, Direction d) {
  AnsiString out(s);
  const internal::CodePageConverter& cp = internal::ConverterFor(ctx.acp);
  std::vector<UChar> units(s.size() * 2 + 2);
  std::vector<int32_t> offsets(units.size());
  UChar* target = units.data();
  const char* source = s.data();
  UErrorCode err = U_ZERO_ERROR;
  ucnv_toUnicode(cp.conv, &target, units.data() + units.size(), &source, s.data() + s.size(),
                 offsets.data(), true, &err);
  if (U_FAILURE(err)) return out;
  const int32_t count = static_cast<int32_t>(target - units.data());
  int32_t i = 0;
  while (i < count) {
    const int32_t start = i;
    UChar32 c = 0;
    U16_NEXT(units.data(), i, count, c);
    // The character's bytes run from its offset to the next character's.
    int32_t next = i;
    while (next < count && offsets[next] == offsets[start]) ++next;
    const int32_t from = offsets[start];
    const int32_t to = next < count ? offsets[next] : static_cast<int32_t>(s.size());
    i = next;
    if (c == 0xFFFD || from < 0 || to <= from) continue;
    const UChar32 m = MapSameLength(ctx, c, d);
    if (m == c) continue;
    UChar mu[2];
    int32_t mn = 0;
    U16_APPEND_UNSAFE(mu, mn, m);
    char bytes[16];
    err = U_ZERO_ERROR;
    ucnv_reset(cp.conv);
    const int32_t k = ucnv_fromUChars(cp.conv, bytes, sizeof bytes, mu, mn, &err);
    if (U_SUCCESS(err) && k == to - from) out.replace(static_cast<size_t>(from), static_cast<size_t>(k), bytes, static_cast<size_t>(k));
  }
  ucnv_reset(cp.conv);
  return out;
}

AnsiString MapNarrow(std::string_view s, Direction d) {
  const CaseContext& ctx = Context();
  if (ctx.acp_single_byte) {
    const auto& table = d == Direction::kLower ? ctx.lower : ctx.upper;
    AnsiString out(s.size(), '\0');
    for (size_t i = 0; i < s.size(); ++i) {
      out[i] = static_cast<char>(table[static_cast<unsigned char>(s[i])]);
    }
    return out;
  }
  // ASCII fast path for multi-byte pages.
  if (ctx.acp_ascii && !ctx.linguistic) {
    bool ascii = true;
    for (char c : s) {
      if (static_cast<unsigned char>(c) >= 0x80) {
        ascii = false;
        break;
      }
    }
    if (ascii) return AsciiMapString(s, d);
  }
  if (internal::ConverterFor(ctx.acp).conv == nullptr) return AsciiMapString(s, d);
  return MapMultiByte(ctx, s, d);
}

}  // namespace

AnsiString LowerCase(std::string_view s) { return AsciiMapString(s, Direction::kLower); }
UnicodeString LowerCase(std::u16string_view s) { return AsciiMapString(s, Direction::kLower); }
AnsiString UpperCase(std::string_view s) { return AsciiMapString(s, Direction::kUpper); }
UnicodeString UpperCase(std::u16string_view s) { return AsciiMapString(s, Direction::kUpper); }

AnsiString AnsiLowerCase(std::string_view s) { return MapNarrow(s, Direction::kLower); }
UnicodeString AnsiLowerCase(std::u16string_view s) { return MapWide(s, Direction::kLower); }
AnsiString AnsiUpperCase(std::string_view s) { return MapNarrow(s, Direction::kUpper); }
UnicodeString AnsiUpperCase(std::u16string_view s) { return MapWide(s, Direction::kUpper); }

WideChar AnsiLowerChar(WideChar c) { return MapWide(std::u16string_view(&c, 1), Direction::kLower)[0]; }
WideChar AnsiUpperChar(WideChar c) { return MapWide(std::u16string_view(&c, 1), Direction::kUpper)[0]; }
AnsiChar AnsiLowerChar(AnsiChar c) { return MapNarrow(std::string_view(&c, 1), Direction::kLower)[0]; }
AnsiChar AnsiUpperChar(AnsiChar c) { return MapNarrow(std::string_view(&c, 1), Direction::kUpper)[0]; }

}  // namespace quill
