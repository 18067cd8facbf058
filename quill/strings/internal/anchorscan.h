// Vectorised candidate scans of the searches, exact and case-insensitive,
// forwards and backwards, over 8-bit and UTF-16 text. Not installed.
//
// A pattern is looked for through two of its characters, the "anchors"
// (usually its two rarest): position i of the text is a candidate when
// text[i + first] is a0 or a1 and text[i + second] is b0 or b1 (a0 == a1 for
// an exact search; the two cases of a letter for a case-insensitive one).
// Candidates are found 128 bytes at a time (one test when a block has none)
// with SSE2 (the x86-64 baseline) or AVX2 when the processor has it, and each
// is handed to the caller's check; other processors take a plain loop.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "quill/rtl/internal/cpu.h"

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#define QUILL_ANCHOR_SSE2 1
#define QUILL_ANCHOR_AVX2 1
#elif defined(__SSE2__)
#include <emmintrin.h>
#define QUILL_ANCHOR_SSE2 1
#endif

namespace quill::Gstrings::internal {

template <class C>
struct Anchors {
  std::size_t first = 0;   // offsets in the pattern, first <= second
  std::size_t second = 0;
  C a0{}, a1{};  // accepted at text[i + first]
  C b0{}, b1{};  // accepted at text[i + second]
  bool secondIsRarer = false;  // which of the two is the rarer

  // The rarer anchor alone.
  [[nodiscard]] Anchors Rarer() const {
    return secondIsRarer ? Anchors{second, second, b0, b1, b0, b1, false}
                         : Anchors{first, first, a0, a1, a0, a1, false};
  }
};

using quill::internal::CpuHasAvx2;
using quill::internal::CpuHasAvx512Bw;

// Rough frequency of a character in text and source code (per 10,000
// characters): what anchors are chosen by. Characters above 255 count as rare.
uint16_t CharFrequency(uint32_t code) noexcept;

// The pattern's two rarest positions as anchors, each accepting the
// characters `variants(j)` gives for position j (a pair of equal values for
// an exact search). `variants` returns false for a position that cannot be
// an anchor (more than two variants).
template <class C, class Variants>
bool ChooseAnchors(std::size_t m, Variants&& variants, Anchors<C>& out) {
  std::size_t best = m;
  std::size_t next = m;
  uint32_t bestFreq = 0;
  uint32_t nextFreq = 0;
  C bestPair[2] = {};
  C nextPair[2] = {};
  for (std::size_t j = 0; j < m; ++j) {
    C pair[2];
    if (!variants(j, pair)) continue;
    uint32_t freq = CharFrequency(static_cast<uint32_t>(static_cast<std::make_unsigned_t<C>>(pair[0])));
    if (pair[1] != pair[0]) {
      freq += CharFrequency(static_cast<uint32_t>(static_cast<std::make_unsigned_t<C>>(pair[1])));
    }
    if (best == m || freq < bestFreq) {
      next = best;
      nextFreq = bestFreq;
      nextPair[0] = bestPair[0];
      nextPair[1] = bestPair[1];
      best = j;
      bestFreq = freq;
      bestPair[0] = pair[0];
      bestPair[1] = pair[1];
    } else if (next == m || freq < nextFreq) {
      next = j;
      nextFreq = freq;
      nextPair[0] = pair[0];
      nextPair[1] = pair[1];
    }
  }
  if (best == m) return false;
  if (next == m) {  // one usable position
    next = best;
    nextPair[0] = bestPair[0];
    nextPair[1] = bestPair[1];
  }
  if (next < best) {
    out = Anchors<C>{next, best, nextPair[0], nextPair[1], bestPair[0], bestPair[1], true};
  } else {
    out = Anchors<C>{best, next, bestPair[0], bestPair[1], nextPair[0], nextPair[1], false};
  }
  return true;
}

namespace anchorscan {

// How the pairs are compared: kSame when each anchor accepts one value,
// kBit when each pair differs in one bit (letter cases: setting that bit
// makes one comparison do), kTwo otherwise.
enum class Mode { kSame, kBit, kTwo };

template <class C>
Mode ModeOf(const Anchors<C>& a) {
  if (a.a0 == a.a1 && a.b0 == a.b1) return Mode::kSame;
  const auto x = static_cast<uint32_t>(static_cast<std::make_unsigned_t<C>>(a.a0 ^ a.a1));
  const auto y = static_cast<uint32_t>(static_cast<std::make_unsigned_t<C>>(a.b0 ^ a.b1));
  return (x & (x - 1)) == 0 && (y & (y - 1)) == 0 ? Mode::kBit : Mode::kTwo;
}

// Whether element c is one of the pair (plain loop).
template <class C>
inline bool In(C c, C x0, C x1) {
  return c == x0 || c == x1;
}

#if defined(QUILL_ANCHOR_SSE2)
template <class C>
inline __m128i Splat128(C c) {
  if constexpr (sizeof(C) == 1) {
    return _mm_set1_epi8(static_cast<char>(c));
  } else {
    return _mm_set1_epi16(static_cast<short>(c));
  }
}
template <class C>
inline __m128i Eq128(__m128i v, __m128i x) {
  if constexpr (sizeof(C) == 1) {
    return _mm_cmpeq_epi8(v, x);
  } else {
    return _mm_cmpeq_epi16(v, x);
  }
}
// Elements of v in the pair: all ones where they are.
template <class C, Mode kMode>
inline __m128i Match128(__m128i v, C x0, C x1) {
  if constexpr (kMode == Mode::kSame) {
    return Eq128<C>(v, Splat128<C>(x0));
  } else if constexpr (kMode == Mode::kBit) {
    return Eq128<C>(_mm_or_si128(v, Splat128<C>(static_cast<C>(x0 ^ x1))),
                    Splat128<C>(static_cast<C>(x0 | x1)));
  } else {
    return _mm_or_si128(Eq128<C>(v, Splat128<C>(x0)), Eq128<C>(v, Splat128<C>(x1)));
  }
}
#endif

#if defined(QUILL_ANCHOR_AVX2)
template <class C>
__attribute__((target("avx2"))) inline __m256i Splat256(C c) {
  if constexpr (sizeof(C) == 1) {
    return _mm256_set1_epi8(static_cast<char>(c));
  } else {
    return _mm256_set1_epi16(static_cast<short>(c));
  }
}
template <class C>
__attribute__((target("avx2"))) inline __m256i Eq256(__m256i v, __m256i x) {
  if constexpr (sizeof(C) == 1) {
    return _mm256_cmpeq_epi8(v, x);
  } else {
    return _mm256_cmpeq_epi16(v, x);
  }
}
template <class C, Mode kMode>
__attribute__((target("avx2"))) inline __m256i Match256(__m256i v, C x0, C x1) {
  if constexpr (kMode == Mode::kSame) {
    return Eq256<C>(v, Splat256<C>(x0));
  } else if constexpr (kMode == Mode::kBit) {
    return Eq256<C>(_mm256_or_si256(v, Splat256<C>(static_cast<C>(x0 ^ x1))),
                    Splat256<C>(static_cast<C>(x0 | x1)));
  } else {
    return _mm256_or_si256(Eq256<C>(v, Splat256<C>(x0)), Eq256<C>(v, Splat256<C>(x1)));
  }
}
#endif

// Bits kept of a byte mask: one per element.
template <class C>
constexpr uint64_t kElementBits = sizeof(C) == 1 ? ~uint64_t{0} : 0x5555555555555555ull;
template <class C>
constexpr unsigned kElementShift = sizeof(C) == 1 ? 0 : 1;

// The candidates among 128 bytes of text at p (by the first anchor alone
// when kOne): false when there are none
// (one test for the whole block, the common case); otherwise m[0] and m[1]
// get them as masks of byte bits (two per UTF-16 unit; the loops keep one)
// for the first and the second 64 bytes. With SSE2 or with AVX2.
template <class C, Mode kMode, bool kOne>
struct Sse2Lanes {
#if defined(QUILL_ANCHOR_SSE2)
  static constexpr bool kVector = true;
  static __m128i Hits(const C* p, const Anchors<C>& a) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + a.first));
    if constexpr (kOne) return Match128<C, kMode>(v, a.a0, a.a1);
    const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + a.second));
    return _mm_and_si128(Match128<C, kMode>(v, a.a0, a.a1), Match128<C, kMode>(w, a.b0, a.b1));
  }
  static bool Block128(const C* p, const Anchors<C>& a, uint64_t m[2]) {
    constexpr std::size_t k = 16 / sizeof(C);  // elements in 16 bytes
    __m128i h[8];
    for (std::size_t j = 0; j < 8; ++j) h[j] = Hits(p + j * k, a);
    const __m128i any = _mm_or_si128(_mm_or_si128(_mm_or_si128(h[0], h[1]), _mm_or_si128(h[2], h[3])),
                                     _mm_or_si128(_mm_or_si128(h[4], h[5]), _mm_or_si128(h[6], h[7])));
    if (_mm_movemask_epi8(any) == 0) return false;
    for (std::size_t half = 0; half < 2; ++half) {
      m[half] = 0;
      for (std::size_t j = 0; j < 4; ++j) {
        m[half] |= uint64_t{static_cast<uint32_t>(_mm_movemask_epi8(h[4 * half + j]))} << (16 * j);
      }
    }
    return true;
  }
#else
  static constexpr bool kVector = false;
  static bool Block128(const C*, const Anchors<C>&, uint64_t*) { return false; }
#endif
};

#if defined(QUILL_ANCHOR_AVX2)
template <class C, Mode kMode, bool kOne>
struct Avx2Lanes {
  static constexpr bool kVector = true;
  __attribute__((target("avx2"))) static __m256i Hits(const C* p, const Anchors<C>& a) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + a.first));
    if constexpr (kOne) return Match256<C, kMode>(v, a.a0, a.a1);
    const __m256i w = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + a.second));
    return _mm256_and_si256(Match256<C, kMode>(v, a.a0, a.a1), Match256<C, kMode>(w, a.b0, a.b1));
  }
  __attribute__((target("avx2"))) static bool Block128(const C* p, const Anchors<C>& a, uint64_t m[2]) {
    constexpr std::size_t k = 32 / sizeof(C);  // elements in 32 bytes
    const __m256i h0 = Hits(p, a);
    const __m256i h1 = Hits(p + k, a);
    const __m256i h2 = Hits(p + 2 * k, a);
    const __m256i h3 = Hits(p + 3 * k, a);
    const __m256i any = _mm256_or_si256(_mm256_or_si256(h0, h1), _mm256_or_si256(h2, h3));
    if (_mm256_testz_si256(any, any)) return false;
    m[0] = static_cast<uint32_t>(_mm256_movemask_epi8(h0)) |
           (uint64_t{static_cast<uint32_t>(_mm256_movemask_epi8(h1))} << 32);
    m[1] = static_cast<uint32_t>(_mm256_movemask_epi8(h2)) |
           (uint64_t{static_cast<uint32_t>(_mm256_movemask_epi8(h3))} << 32);
    return true;
  }
};
#endif

// The loops hand over candidates until verify answers true (that candidate
// is returned) or none is left (`count` is returned). With a budget, they
// give up once the candidates checked exceed one per 256 characters
// scanned (plus 16; memchr, which the C library tunes for short gaps too,
// one per 64): `resume` is then set to where the scan stopped, and kGaveUp is
// returned. A scan by one anchor runs with a budget: when its character
// turns out to be common in the text, the two-anchor scan takes over.
inline constexpr std::size_t kGaveUp = ~std::size_t{0};

template <class Lanes, class C, class Verify>
[[gnu::always_inline]] inline std::size_t ForwardLoop(const C* p, std::size_t count, const Anchors<C>& a,
                                                       Verify& verify, bool budget, std::size_t& resume) {
  constexpr std::size_t kBlock = 128 / sizeof(C);
  constexpr std::size_t kHalf = kBlock / 2;
  std::size_t i = 0;
  std::size_t checked = 0;
  if constexpr (Lanes::kVector) {
    uint64_t m[2];
    for (; i + kBlock <= count; i += kBlock) {
      if (!Lanes::Block128(p + i, a, m)) continue;
      for (std::size_t half = 0; half < 2; ++half) {
        uint64_t mask = m[half] & kElementBits<C>;
        while (mask != 0) {
          const std::size_t c =
              i + half * kHalf + (static_cast<std::size_t>(__builtin_ctzll(mask)) >> kElementShift<C>);
          if (verify(c)) return c;
          ++checked;
          mask &= mask - 1;
        }
      }
      if (budget && checked > (i >> 8) + 16) {
        resume = i + kBlock;
        return kGaveUp;
      }
    }
  }
  for (; i < count; ++i) {
    if (In(p[i + a.first], a.a0, a.a1) && In(p[i + a.second], a.b0, a.b1) && verify(i)) return i;
  }
  return count;
}

template <class Lanes, class C, class Verify>
[[gnu::always_inline]] inline std::size_t BackwardLoop(const C* p, std::size_t count, const Anchors<C>& a,
                                                        Verify& verify, bool budget, std::size_t& resume) {
  constexpr std::size_t kBlock = 128 / sizeof(C);
  constexpr std::size_t kHalf = kBlock / 2;
  std::size_t end = count;  // candidates [0, end) remain
  std::size_t checked = 0;
  if constexpr (Lanes::kVector) {
    uint64_t m[2];
    while (end >= kBlock) {
      const std::size_t i = end - kBlock;
      end = i;
      if (!Lanes::Block128(p + i, a, m)) continue;
      for (std::size_t half = 2; half-- > 0;) {
        uint64_t mask = m[half] & kElementBits<C>;
        while (mask != 0) {
          const unsigned bit = 63u - static_cast<unsigned>(__builtin_clzll(mask));
          const std::size_t c = i + half * kHalf + (bit >> kElementShift<C>);
          if (verify(c)) return c;
          ++checked;
          mask &= ~(uint64_t{1} << bit);
        }
      }
      if (budget && checked > ((count - end) >> 8) + 16) {
        resume = end;
        return kGaveUp;
      }
    }
  }
  while (end > 0) {
    const std::size_t i = --end;
    if (In(p[i + a.first], a.a0, a.a1) && In(p[i + a.second], a.b0, a.b1) && verify(i)) return i;
  }
  return count;
}

template <bool kBackward, class C, Mode kMode, bool kOne, class Verify>
std::size_t RunSse2(const C* p, std::size_t count, const Anchors<C>& a, Verify& verify, std::size_t& resume) {
  if constexpr (kBackward) {
    return BackwardLoop<Sse2Lanes<C, kMode, kOne>>(p, count, a, verify, kOne, resume);
  } else {
    return ForwardLoop<Sse2Lanes<C, kMode, kOne>>(p, count, a, verify, kOne, resume);
  }
}

#if defined(QUILL_ANCHOR_AVX2)
template <bool kBackward, class C, Mode kMode, bool kOne, class Verify>
__attribute__((target("avx2"))) std::size_t RunAvx2(const C* p, std::size_t count, const Anchors<C>& a,
                                                    Verify& verify, std::size_t& resume) {
  if constexpr (kBackward) {
    return BackwardLoop<Avx2Lanes<C, kMode, kOne>>(p, count, a, verify, kOne, resume);
  } else {
    return ForwardLoop<Avx2Lanes<C, kMode, kOne>>(p, count, a, verify, kOne, resume);
  }
}
#endif

template <bool kBackward, class C, Mode kMode, bool kOne, class Verify>
std::size_t Dispatch(const C* p, std::size_t count, const Anchors<C>& a, Verify& verify, std::size_t& resume) {
#if defined(QUILL_ANCHOR_AVX2)
  // Short texts stay with SSE2: the AVX2 instance is a call away.
  if (count >= 256 && CpuHasAvx2()) return RunAvx2<kBackward, C, kMode, kOne>(p, count, a, verify, resume);
#endif
  return RunSse2<kBackward, C, kMode, kOne>(p, count, a, verify, resume);
}

#if defined(QUILL_ANCHOR_AVX2)
// The scan by one anchor of one byte value (or of the two cases of a letter,
// kFold: the bit that tells them apart is set before comparing), forwards,
// with the verification in the loop: a found byte costs a bit test rather
// than a new call (what a memchr loop pays per candidate). Loads are aligned
// after the first block, so no load straddles two cache lines; the last
// block is an unaligned load ending at the text's end with the bits already
// seen dropped, so nothing outside q[0 .. count) is read. kWide chooses
// AVX-512 (64-byte vectors, 256 bytes a round) over AVX2 (32-byte vectors,
// 128 a round). REQUIRES: count >= 256. Same budget as MemchrLoop: one
// candidate per 64 bytes.
template <bool kWide>
struct ByteVectors;

// The vectors are made inside each target-specific routine from plain
// bytes (the compiler hoists them out of the loop): a vector passed to or
// from code built without AVX would change the calling convention.
template <>
struct ByteVectors<false> {
  static constexpr std::size_t kSize = 32;
  using Mask = uint32_t;
  template <bool kFold>
  __attribute__((target("avx2"))) static __m256i Match(__m256i v, char x, char fold) {
    if constexpr (kFold) v = _mm256_or_si256(v, _mm256_set1_epi8(fold));
    return _mm256_cmpeq_epi8(v, _mm256_set1_epi8(x));
  }
  template <bool kFold>
  __attribute__((target("avx2"))) static Mask Eq(const char* q, char x, char fold) {
    return static_cast<uint32_t>(
        _mm256_movemask_epi8(Match<kFold>(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(q)), x, fold)));
  }
  // Whether any of the four aligned vectors from q has the byte.
  template <bool kFold>
  __attribute__((target("avx2"))) static bool Any4(const char* q, char x, char fold) {
    const auto* v = reinterpret_cast<const __m256i*>(q);
    const __m256i o = _mm256_or_si256(_mm256_or_si256(Match<kFold>(_mm256_load_si256(v), x, fold),
                                                      Match<kFold>(_mm256_load_si256(v + 1), x, fold)),
                                      _mm256_or_si256(Match<kFold>(_mm256_load_si256(v + 2), x, fold),
                                                      Match<kFold>(_mm256_load_si256(v + 3), x, fold)));
    return !_mm256_testz_si256(o, o);
  }
};

template <>
struct ByteVectors<true> {
  static constexpr std::size_t kSize = 64;
  using Mask = uint64_t;
  template <bool kFold>
  __attribute__((target("avx512f,avx512bw"))) static Mask Match(__m512i v, char x, char fold) {
    if constexpr (kFold) v = _mm512_or_si512(v, _mm512_set1_epi8(fold));
    return _mm512_cmpeq_epi8_mask(v, _mm512_set1_epi8(x));
  }
  template <bool kFold>
  __attribute__((target("avx512f,avx512bw"))) static Mask Eq(const char* q, char x, char fold) {
    return Match<kFold>(_mm512_loadu_si512(q), x, fold);
  }
  template <bool kFold>
  __attribute__((target("avx512f,avx512bw"))) static bool Any4(const char* q, char x, char fold) {
    return (Match<kFold>(_mm512_load_si512(q), x, fold) | Match<kFold>(_mm512_load_si512(q + 64), x, fold) |
            Match<kFold>(_mm512_load_si512(q + 128), x, fold) | Match<kFold>(_mm512_load_si512(q + 192), x, fold)) != 0;
  }
};

template <bool kWide, bool kFold, class Verify>
[[gnu::always_inline]] inline std::size_t ByteLoopBody(const char* p, std::size_t count, const Anchors<char>& one,
                                                        Verify& verify, std::size_t& resume, char x, char fold) {
  using V = ByteVectors<kWide>;
  using Mask = typename V::Mask;
  constexpr std::size_t k = V::kSize;
  const char* const q = p + one.first;  // candidate i has its anchor at q[i]
  std::size_t checked = 0;
  std::size_t hit = count;
  // Hands the candidates of mask (bit b: position base + b) to verify.
  auto take = [&](Mask mask, std::size_t base) {
    while (mask != 0) {
      const std::size_t c = base + static_cast<std::size_t>(__builtin_ctzll(mask));
      if (verify(c)) {
        hit = c;
        return true;
      }
      ++checked;
      mask &= mask - 1;
    }
    return false;
  };
  // First block, unaligned; its bits from the first aligned address on are
  // left to the aligned blocks.
  std::size_t i = k - (reinterpret_cast<uintptr_t>(q) & (k - 1));
  const Mask head = V::template Eq<kFold>(q, x, fold) & (i == k ? ~Mask{0} : (Mask{1} << i) - 1);
  if (take(head, 0)) return hit;
  for (; i + 4 * k <= count; i += 4 * k) {
    if (!V::template Any4<kFold>(q + i, x, fold)) continue;
    for (std::size_t j = 0; j < 4; ++j) {
      if (take(V::template Eq<kFold>(q + i + j * k, x, fold), i + j * k)) return hit;
    }
    if (checked > (i >> 6) + 16) {
      resume = i + 4 * k;
      return kGaveUp;
    }
  }
  for (; i + k <= count; i += k) {
    if (take(V::template Eq<kFold>(q + i, x, fold), i)) return hit;
  }
  if (i < count) {
    // The last vector ends at q + count; positions before i are done.
    const std::size_t at = count - k;
    if (take(V::template Eq<kFold>(q + at, x, fold) >> (i - at), i)) return hit;
  }
  return count;
}

// The byte (kFold false) or the pair of cases (kFold true; one.a0 and
// one.a1 differ in one bit) that one's anchor accepts.
template <bool kFold, class Verify>
__attribute__((target("avx2"))) std::size_t ByteLoopAvx2(const char* p, std::size_t count, const Anchors<char>& one,
                                                         Verify& verify, std::size_t& resume) {
  return ByteLoopBody<false, kFold>(p, count, one, verify, resume, static_cast<char>(one.a0 | one.a1),
                                    static_cast<char>(one.a0 ^ one.a1));
}

template <bool kFold, class Verify>
__attribute__((target("avx512f,avx512bw"))) std::size_t ByteLoopAvx512(const char* p, std::size_t count,
                                                                       const Anchors<char>& one, Verify& verify,
                                                                       std::size_t& resume) {
  return ByteLoopBody<true, kFold>(p, count, one, verify, resume, static_cast<char>(one.a0 | one.a1),
                                   static_cast<char>(one.a0 ^ one.a1));
}
#endif

#if defined(__GLIBC__)
// The scan by one anchor of one byte value, through memchr (memrchr
// backwards), with the loops' budget.
template <bool kBackward, class Verify>
std::size_t MemchrLoop(const char* p, std::size_t count, const Anchors<char>& one, Verify& verify,
                       std::size_t& resume) {
  const char* const q = p + one.first;  // candidate i has its anchor at q[i]
  const int byte = static_cast<unsigned char>(one.a0);
  std::size_t checked = 0;
  if constexpr (kBackward) {
    std::size_t end = count;
    while (end > 0) {
      const void* hit = memrchr(q, byte, end);
      if (hit == nullptr) return count;
      const auto c = static_cast<std::size_t>(static_cast<const char*>(hit) - q);
      if (verify(c)) return c;
      end = c;
      if (++checked > ((count - end) >> 6) + 16) {
        resume = end;
        return kGaveUp;
      }
    }
    return count;
  } else {
    std::size_t i = 0;
    while (i < count) {
      const void* hit = std::memchr(q + i, byte, count - i);
      if (hit == nullptr) return count;
      const auto c = static_cast<std::size_t>(static_cast<const char*>(hit) - q);
      if (verify(c)) return c;
      i = c + 1;
      if (++checked > (i >> 6) + 16) {
        resume = i;
        return kGaveUp;
      }
    }
    return count;
  }
}
#endif

template <bool kBackward, class C, Mode kMode, class Verify>
std::size_t ScanMode(const C* p, std::size_t count, const Anchors<C>& a, Verify& verify) {
  std::size_t resume = 0;
  if (a.first != a.second) {
    // The rarer anchor alone first: the fewest operations while its
    // character is rare in this text.
    const Anchors<C> one = a.Rarer();
    std::size_t r;
    // Backwards, on short texts and without AVX2: memrchr / memchr for one
    // byte value (the C library's routine is as fast as a plain scan gets),
    // else the block loop.
    auto other = [&] {
#if defined(__GLIBC__)
      if constexpr (sizeof(C) == 1 && kMode == Mode::kSame) return MemchrLoop<kBackward>(p, count, one, verify, resume);
#endif
      return Dispatch<kBackward, C, kMode, true>(p, count, one, verify, resume);
    };
#if defined(QUILL_ANCHOR_AVX2)
    if constexpr (sizeof(C) == 1 && !kBackward && kMode != Mode::kTwo) {
      constexpr bool kFold = kMode == Mode::kBit;
      if (count >= 256 && CpuHasAvx512Bw()) {
        r = ByteLoopAvx512<kFold>(p, count, one, verify, resume);
      } else if (count >= 256 && CpuHasAvx2()) {
        r = ByteLoopAvx2<kFold>(p, count, one, verify, resume);
      } else {
        r = other();
      }
    } else
#endif
    {
      r = other();
    }
    if (r != kGaveUp) return r;
  } else {
    resume = kBackward ? count : 0;
  }
  if constexpr (kBackward) {
    // Candidates [0, resume) remain.
    const std::size_t r = Dispatch<kBackward, C, kMode, false>(p, resume, a, verify, resume);
    return r == resume ? count : r;
  } else {
    const std::size_t from = resume;
    auto shifted = [&](std::size_t c) { return verify(from + c); };
    const std::size_t r = Dispatch<kBackward, C, kMode, false>(p + from, count - from, a, shifted, resume);
    return from + r;
  }
}

template <bool kBackward, class C, class Verify>
std::size_t Scan(const C* p, std::size_t count, const Anchors<C>& a, Verify& verify) {
  switch (ModeOf(a)) {
    case Mode::kSame:
      return ScanMode<kBackward, C, Mode::kSame>(p, count, a, verify);
    case Mode::kBit:
      return ScanMode<kBackward, C, Mode::kBit>(p, count, a, verify);
    default:
      return ScanMode<kBackward, C, Mode::kTwo>(p, count, a, verify);
  }
}

}  // namespace anchorscan

// Candidate starts i of [0, count) in ascending order, each handed once to
// verify(i) until it answers true; returns that i, or `count` when none
// does. Positions where only the first anchor matches may be handed over
// too (verify checks the whole pattern). p[0 .. count - 1 + a.second] must be readable; nothing outside it is
// read.
template <class C, class Verify>
std::size_t ScanForward(const C* p, std::size_t count, const Anchors<C>& a, Verify&& verify) {
  return anchorscan::Scan<false>(p, count, a, verify);
}

// The same in descending order.
template <class C, class Verify>
std::size_t ScanBackward(const C* p, std::size_t count, const Anchors<C>& a, Verify&& verify) {
  return anchorscan::Scan<true>(p, count, a, verify);
}

// Exact search of one pattern, forwards and backwards, through its two
// rarest characters. The pattern must outlive the object.
template <class C>
class ExactFinder {
 public:
  explicit ExactFinder(std::basic_string_view<C> pattern) : pattern_(pattern) {
    ChooseAnchors<C>(pattern.size(), [&](std::size_t j, C* pair) {
      pair[0] = pair[1] = pattern[j];
      return true;
    }, anchors_);
  }

  // 0-based index of the first occurrence at or after `from`; npos if none.
  [[nodiscard]] std::size_t Find(std::basic_string_view<C> text, std::size_t from) const {
    const std::size_t m = pattern_.size();
    if (m == 0 || from >= text.size() || text.size() - from < m) return std::string_view::npos;
    const std::size_t count = text.size() - from - m + 1;
    // Short texts: the library's search starts faster.
    if (count < kShort) return text.find(pattern_, from);
    const C* const base = text.data() + from;
    const std::size_t i = ScanForward(base, count, anchors_, [&](std::size_t c) {
      return std::char_traits<C>::compare(base + c, pattern_.data(), m) == 0;
    });
    return i == count ? std::string_view::npos : from + i;
  }

  // Calls hit(i) for each occurrence i, left to right, that does not overlap
  // the one before (what a replace-all replaces), in one scan.
  template <class Hit>
  void ForEachApart(std::basic_string_view<C> text, Hit&& hit) const {
    const std::size_t m = pattern_.size();
    if (m == 0 || text.size() < m) return;
    const std::size_t count = text.size() - m + 1;
    if (count < kShort) {
      for (std::size_t p = text.find(pattern_); p != std::string_view::npos; p = text.find(pattern_, p + m)) hit(p);
      return;
    }
    const C* const base = text.data();
    std::size_t next = 0;  // occurrences before this overlap the last one
    ScanForward(base, count, anchors_, [&](std::size_t c) {
      if (c >= next && std::char_traits<C>::compare(base + c, pattern_.data(), m) == 0) {
        hit(c);
        next = c + m;
      }
      return false;
    });
  }

  // 0-based index of the last occurrence starting at or before `from`;
  // npos if none.
  [[nodiscard]] std::size_t RFind(std::basic_string_view<C> text, std::size_t from) const {
    const std::size_t m = pattern_.size();
    if (m == 0 || text.size() < m) return std::string_view::npos;
    const std::size_t count = std::min(from, text.size() - m) + 1;
    if (count < kShort) return text.rfind(pattern_, from);
    const C* const base = text.data();
    const std::size_t i = ScanBackward(base, count, anchors_, [&](std::size_t c) {
      return std::char_traits<C>::compare(base + c, pattern_.data(), m) == 0;
    });
    return i == count ? std::string_view::npos : i;
  }

 private:
  static constexpr std::size_t kShort = 64;
  std::basic_string_view<C> pattern_;
  Anchors<C> anchors_;
};

}  // namespace quill::Gstrings::internal
