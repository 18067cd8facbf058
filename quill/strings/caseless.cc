// Helpers of the case-insensitive searches: the locale check and the
// vectorised candidate scans.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#define QUILL_CASELESS_AVX2 1
#endif

#include "quill/rtl/casing.h"
#include "quill/rtl/internal/converter.h"
#include "quill/rtl/syslocale.h"
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

bool AnsiCodePageIsSingleByte() {
  const quill::internal::CodePageConverter& cp = quill::internal::ConverterFor(GetACP());
  return cp.conv == nullptr || cp.single_byte;
}

namespace {

// Rough frequency of each byte in text and source code (per 10,000 bytes),
// used to pick the pattern characters whose bytes the scan looks for: the
// rarer they are, the fewer candidates need checking.
constexpr std::array<uint16_t, 256> kByteFrequency = [] {
  std::array<uint16_t, 256> f{};
  for (int b = 0; b < 256; ++b) f[b] = b < 32 ? 1 : 5;  // controls; bytes above 127
  f[0] = 20;  // binary data
  f['\n'] = 300;
  f['\t'] = 100;
  f['\r'] = 20;
  const char* const letters = "etaoinsrhldcumfpgwybvkxjqz";
  const uint16_t letterFreq[] = {900, 650, 600, 550, 550, 550, 500, 500, 350, 330, 300, 280, 250,
                                 220, 180, 170, 150, 130, 130, 110, 80, 60, 30, 20, 10, 10};
  for (int i = 0; i < 26; ++i) {
    f[static_cast<unsigned char>(letters[i])] = letterFreq[i];
    f[static_cast<unsigned char>(letters[i] - 32)] = static_cast<uint16_t>(letterFreq[i] / 8 + 5);
  }
  for (int d = '0'; d <= '9'; ++d) f[d] = 60;
  f[' '] = 1500;
  const char* const punct = ",._()-=;\"'/:*{}<>[]#$+&\\!@%|?~^`";
  const uint16_t punctFreq[] = {100, 120, 80, 80, 80, 80, 80, 60, 60, 50, 50, 50, 40, 30, 30,
                                30, 30, 30, 30, 30, 30, 20, 20, 20, 10, 10, 10, 10, 10, 5, 5, 5};
  for (int i = 0; punct[i] != '\0'; ++i) f[static_cast<unsigned char>(punct[i])] = punctFreq[i];
  return f;
}();

// The candidate scans: position i is a candidate when p[i] is one of a[0],
// a[1] and p[i + off] one of b[0], b[1]. When the two bytes of a pair differ
// in one bit (letter cases, or the same byte twice), setting that bit makes
// one comparison do.
struct PairTest {
  char a0, a1, b0, b1;
  std::size_t off;
  [[nodiscard]] bool Bits() const noexcept {
    const auto x = static_cast<unsigned char>(a0 ^ a1);
    const auto y = static_cast<unsigned char>(b0 ^ b1);
    return (x & (x - 1)) == 0 && (y & (y - 1)) == 0;
  }
};

#if defined(__SSE2__)
// Candidates among p[i .. i + 16), as a bit mask.
template <bool kBits>
inline unsigned Sse2Mask(const char* p, const PairTest& t) noexcept {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + t.off));
  __m128i ea, eb;
  if constexpr (kBits) {
    ea = _mm_cmpeq_epi8(_mm_or_si128(v, _mm_set1_epi8(static_cast<char>(t.a0 ^ t.a1))),
                        _mm_set1_epi8(static_cast<char>(t.a0 | t.a1)));
    eb = _mm_cmpeq_epi8(_mm_or_si128(w, _mm_set1_epi8(static_cast<char>(t.b0 ^ t.b1))),
                        _mm_set1_epi8(static_cast<char>(t.b0 | t.b1)));
  } else {
    ea = _mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8(t.a0)), _mm_cmpeq_epi8(v, _mm_set1_epi8(t.a1)));
    eb = _mm_or_si128(_mm_cmpeq_epi8(w, _mm_set1_epi8(t.b0)), _mm_cmpeq_epi8(w, _mm_set1_epi8(t.b1)));
  }
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(ea, eb)));
}
#endif

// Calls verify(i) for each candidate i of [0, n) in order until it answers
// true; returns that i, or n. p[0 .. n - 1 + t.off] must be readable.
template <bool kBits, class Verify>
std::size_t ScanPortable(const char* p, std::size_t n, const PairTest& t, Verify&& verify) {
  std::size_t i = 0;
#if defined(__SSE2__)
  for (; i + 32 <= n; i += 32) {
    uint32_t mask = Sse2Mask<kBits>(p + i, t) | (Sse2Mask<kBits>(p + i + 16, t) << 16);
    while (mask != 0) {
      const std::size_t c = i + static_cast<std::size_t>(__builtin_ctz(mask));
      if (verify(c)) return c;
      mask &= mask - 1;
    }
  }
#endif
  for (; i < n; ++i) {
    const char x = p[i];
    const char y = p[i + t.off];
    if ((x == t.a0 || x == t.a1) && (y == t.b0 || y == t.b1) && verify(i)) return i;
  }
  return n;
}

#if defined(QUILL_CASELESS_AVX2)
template <bool kBits>
__attribute__((target("avx2"))) inline uint32_t Avx2Mask(const char* p, const PairTest& t) noexcept {
  const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  const __m256i w = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + t.off));
  __m256i ea, eb;
  if constexpr (kBits) {
    ea = _mm256_cmpeq_epi8(_mm256_or_si256(v, _mm256_set1_epi8(static_cast<char>(t.a0 ^ t.a1))),
                           _mm256_set1_epi8(static_cast<char>(t.a0 | t.a1)));
    eb = _mm256_cmpeq_epi8(_mm256_or_si256(w, _mm256_set1_epi8(static_cast<char>(t.b0 ^ t.b1))),
                           _mm256_set1_epi8(static_cast<char>(t.b0 | t.b1)));
  } else {
    ea = _mm256_or_si256(_mm256_cmpeq_epi8(v, _mm256_set1_epi8(t.a0)),
                         _mm256_cmpeq_epi8(v, _mm256_set1_epi8(t.a1)));
    eb = _mm256_or_si256(_mm256_cmpeq_epi8(w, _mm256_set1_epi8(t.b0)),
                         _mm256_cmpeq_epi8(w, _mm256_set1_epi8(t.b1)));
  }
  return static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_and_si256(ea, eb)));
}

// ScanPortable with 64 bytes per step, on processors that have AVX2.
template <bool kBits, class Verify>
__attribute__((target("avx2"))) std::size_t ScanAvx2(const char* p, std::size_t n,
                                                     const PairTest& t, Verify&& verify) {
  std::size_t i = 0;
  for (; i + 64 <= n; i += 64) {
    uint64_t mask = Avx2Mask<kBits>(p + i, t) | (uint64_t{Avx2Mask<kBits>(p + i + 32, t)} << 32);
    while (mask != 0) {
      const std::size_t c = i + static_cast<std::size_t>(__builtin_ctzll(mask));
      if (verify(c)) return c;
      mask &= mask - 1;
    }
  }
  return i + ScanPortable<kBits>(p + i, n - i, t, [&](std::size_t c) { return verify(i + c); });
}

bool HasAvx2() noexcept {
  static const bool has = __builtin_cpu_supports("avx2") != 0;
  return has;
}
#endif

template <class Verify>
std::size_t Scan(const char* p, std::size_t n, const PairTest& t, Verify&& verify) {
  const bool bits = t.Bits();
#if defined(QUILL_CASELESS_AVX2)
  if (HasAvx2()) return bits ? ScanAvx2<true>(p, n, t, verify) : ScanAvx2<false>(p, n, t, verify);
#endif
  return bits ? ScanPortable<true>(p, n, t, verify) : ScanPortable<false>(p, n, t, verify);
}

}  // namespace

ByteCaselessSearch::ByteCaselessSearch(std::string_view lpat, std::string_view text)
    : lpat_(lpat), text_(text) {
  char all[256];
  for (int b = 0; b < 256; ++b) all[b] = static_cast<char>(b);
  const std::string lowered = AnsiLowerCase(std::string_view(all, 256));
  for (int b = 0; b < 256; ++b) lower_[b] = static_cast<unsigned char>(lowered[b]);

  // The bytes lowering to each pattern character, and how common they are.
  const std::size_t m = lpat_.size();
  std::size_t best = m;
  std::size_t next = m;
  uint32_t bestFreq = 0;
  uint32_t nextFreq = 0;
  vector_ = true;
  for (std::size_t j = 0; j < m; ++j) {
    const auto want = static_cast<unsigned char>(lpat_[j]);
    int count = 0;
    uint32_t freq = 0;
    for (int b = 0; b < 256; ++b) {
      if (lower_[b] == want) {
        ++count;
        freq += kByteFrequency[b];
      }
    }
    // count >= 1: the pattern character is itself the lowering of a byte.
    if (count > 2) vector_ = false;
    if (count > 2) continue;
    if (best == m || freq < bestFreq) {
      next = best;
      nextFreq = bestFreq;
      best = j;
      bestFreq = freq;
    } else if (next == m || freq < nextFreq) {
      next = j;
      nextFreq = freq;
    }
  }
  if (!vector_) return;
  if (next == m) next = best;  // a one-character pattern
  first_ = std::min(best, next);
  second_ = std::max(best, next);
  auto pairOf = [&](std::size_t j, char* out) {
    int k = 0;
    for (int b = 0; b < 256; ++b) {
      if (lower_[b] == static_cast<unsigned char>(lpat_[j])) out[k++] = static_cast<char>(b);
    }
    if (k == 1) out[1] = out[0];
  };
  pairOf(first_, a_);
  pairOf(second_, b_);
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
  // Scan from the first anchor; candidate i starts the pattern at base + i.
  const PairTest t{a_[0], a_[1], b_[0], b_[1], second_ - first_};
  const std::size_t i = Scan(base + first_, count, t, [&](std::size_t c) { return MatchesAt(base + c); });
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
