// Helpers of the case-insensitive searches: the locale check and the
// vectorised candidate scans.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <unicode/uchar.h>

#include "quill/rtl/casing.h"
#include "quill/rtl/internal/converter.h"
#include "quill/rtl/syslocale.h"
#include "quill/strings/internal/anchorscan.h"
#include "quill/strings/internal/caseless.h"
#include "quill/strings/internal/scan.h"

namespace quill::Gstrings::internal {

bool UserLocaleFoldsAsciiPlainly() {
  const std::string tag = UserDefaultLocaleTag();
  const std::string lang = tag.substr(0, tag.find_first_of("-_"));
  return lang != "tr" && lang != "az" && lang != "lt";
}

bool AnsiCodePageHasAsciiTrailBytes() {
  switch (GetACP()) {
    case 932:
    case 936:
    case 949:
    case 950:
    case 1361:
      return true;
    default:
      return false;
  }
}

bool HighUnitLowersTo(char c) {
  // The ASCII characters some unit from U+0080 up lowers to. u_tolower
  // (what the library's lowering uses outside Turkish, Azerbaijani and
  // Lithuanian) narrows the units down; the library's own lowering decides.
  static const std::array<bool, 128> targets = [] {
    std::array<bool, 128> t{};
    for (UChar32 u = 0x80; u <= 0xFFFF; ++u) {
      if (u >= 0xD800 && u <= 0xDFFF) continue;
      if (u_tolower(u) >= 0x80) continue;
      const WideChar lowered = AnsiLowerChar(static_cast<WideChar>(u));
      if (lowered < 0x80) t[lowered] = true;
    }
    return t;
  }();
  const auto code = static_cast<unsigned char>(c);
  return code < 128 && targets[code];
}

bool AnsiCodePageIsSingleByte() {
  const quill::internal::CodePageConverter& cp = quill::internal::ConverterFor(GetACP());
  return cp.conv == nullptr || cp.single_byte;
}

ByteCaselessSearch::ByteCaselessSearch(std::string_view lpat, std::string_view text)
    : lpat_(lpat), text_(text) {
  char all[256];
  for (int b = 0; b < 256; ++b) all[b] = static_cast<char>(b);
  const std::string lowered = AnsiLowerCase(std::string_view(all, 256));
  for (int b = 0; b < 256; ++b) lower_[b] = static_cast<unsigned char>(lowered[b]);
  // Each pattern character stands for the bytes that lower to it (itself
  // among them); one standing for more than two cannot be an anchor. With
  // no anchor at all the scan is a plain loop.
  vector_ = ChooseAnchors<char>(lpat_.size(), [&](std::size_t j, char* pair) {
    int count = 0;
    for (int b = 0; b < 256; ++b) {
      if (lower_[b] != static_cast<unsigned char>(lpat_[j])) continue;
      if (count < 2) pair[count] = static_cast<char>(b);
      ++count;
    }
    if (count == 1) pair[1] = pair[0];
    return count <= 2;
  }, anchors_);
}

bool ByteCaselessSearch::MatchesAt(const char* p) const noexcept {
  for (std::size_t j = 0; j < lpat_.size(); ++j) {
    if (lower_[static_cast<unsigned char>(p[j])] != static_cast<unsigned char>(lpat_[j])) return false;
  }
  return true;
}

std::size_t ByteCaselessSearch::Find(std::size_t from) const noexcept {
  const std::size_t n = text_.size();
  const std::size_t m = lpat_.size();
  if (m == 0 || from >= n || n - from < m) return npos;
  const std::size_t count = n - from - m + 1;  // candidate starts
  const char* const base = text_.data() + from;
  if (!vector_) {
    for (std::size_t i = 0; i < count; ++i) {
      if (MatchesAt(base + i)) return from + i;
    }
    return npos;
  }
  const std::size_t i = ScanForward(base, count, anchors_, [&](std::size_t c) { return MatchesAt(base + c); });
  return i == count ? npos : from + i;
}

std::size_t FindPairOrHigh(const char* p, std::size_t n, char a, char b) noexcept {
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi8(a);
  const __m128i vb = _mm_set1_epi8(b);
  for (; i + 16 <= n; i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    const __m128i eq = _mm_or_si128(_mm_cmpeq_epi8(v, va), _mm_cmpeq_epi8(v, vb));
    // movemask of the bytes themselves gives their high bits: bytes >= 128.
    const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(eq) | _mm_movemask_epi8(v));
    if (mask != 0) return i + static_cast<std::size_t>(__builtin_ctz(mask));
  }
#endif
  for (; i < n; ++i) {
    const char c = p[i];
    if (c == a || c == b || static_cast<unsigned char>(c) >= 128) return i;
  }
  return n;
}

std::size_t FindPairOrHigh(const char16_t* p, std::size_t n, char16_t a, char16_t b) noexcept {
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi16(static_cast<int16_t>(a));
  const __m128i vb = _mm_set1_epi16(static_cast<int16_t>(b));
  const __m128i high = _mm_set1_epi16(static_cast<int16_t>(0xFF80));
  const __m128i zero = _mm_setzero_si128();
  for (; i + 8 <= n; i += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    const __m128i eq = _mm_or_si128(_mm_cmpeq_epi16(v, va), _mm_cmpeq_epi16(v, vb));
    // Units with any bit above bit 6 set are non-ASCII.
    const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(v, high), zero);
    const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(eq)) |
                          (static_cast<unsigned>(_mm_movemask_epi8(ascii)) ^ 0xFFFFu);
    if (mask != 0) return i + static_cast<std::size_t>(__builtin_ctz(mask)) / 2;
  }
#endif
  for (; i < n; ++i) {
    const char16_t c = p[i];
    if (c == a || c == b || c >= 128) return i;
  }
  return n;
}

std::size_t FindEndsOrHigh(const char* p, std::size_t n, std::size_t off, char a, char b, char c,
                           char d) noexcept {
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi8(a);
  const __m128i vb = _mm_set1_epi8(b);
  const __m128i vc = _mm_set1_epi8(c);
  const __m128i vd = _mm_set1_epi8(d);
  for (; i + 16 <= n; i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i + off));
    const __m128i both = _mm_and_si128(_mm_or_si128(_mm_cmpeq_epi8(v, va), _mm_cmpeq_epi8(v, vb)),
                                       _mm_or_si128(_mm_cmpeq_epi8(w, vc), _mm_cmpeq_epi8(w, vd)));
    const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(both) | _mm_movemask_epi8(v) |
                                                _mm_movemask_epi8(w));
    if (mask != 0) return i + static_cast<std::size_t>(__builtin_ctz(mask));
  }
#endif
  for (; i < n; ++i) {
    const char x = p[i];
    const char y = p[i + off];
    if (((x == a || x == b) && (y == c || y == d)) || static_cast<unsigned char>(x) >= 128 ||
        static_cast<unsigned char>(y) >= 128) {
      return i;
    }
  }
  return n;
}

std::size_t FindEndsOrHigh(const char16_t* p, std::size_t n, std::size_t off, char16_t a,
                           char16_t b, char16_t c, char16_t d) noexcept {
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi16(static_cast<int16_t>(a));
  const __m128i vb = _mm_set1_epi16(static_cast<int16_t>(b));
  const __m128i vc = _mm_set1_epi16(static_cast<int16_t>(c));
  const __m128i vd = _mm_set1_epi16(static_cast<int16_t>(d));
  const __m128i high = _mm_set1_epi16(static_cast<int16_t>(0xFF80));
  const __m128i zero = _mm_setzero_si128();
  for (; i + 8 <= n; i += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i + off));
    const __m128i both =
        _mm_and_si128(_mm_or_si128(_mm_cmpeq_epi16(v, va), _mm_cmpeq_epi16(v, vb)),
                      _mm_or_si128(_mm_cmpeq_epi16(w, vc), _mm_cmpeq_epi16(w, vd)));
    const __m128i ascii = _mm_and_si128(_mm_cmpeq_epi16(_mm_and_si128(v, high), zero),
                                        _mm_cmpeq_epi16(_mm_and_si128(w, high), zero));
    const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(both)) |
                          (static_cast<unsigned>(_mm_movemask_epi8(ascii)) ^ 0xFFFFu);
    if (mask != 0) return i + static_cast<std::size_t>(__builtin_ctz(mask)) / 2;
  }
#endif
  for (; i < n; ++i) {
    const char16_t x = p[i];
    const char16_t y = p[i + off];
    if (((x == a || x == b) && (y == c || y == d)) || x >= 128 || y >= 128) return i;
  }
  return n;
}

}  // namespace quill::Gstrings::internal
