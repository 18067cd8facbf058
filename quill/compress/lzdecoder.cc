// The fast LZG decoder.
//
// Expansion keeps the output in a linear buffer whose 2,048 bytes before the
// current end stand for the ring (zero before anything is written), so a copy
// is a plain backwards copy; the one case where the ring's write-back differs
// from a plain copy (distance 0, or distance + length above 2,048) takes a
// slow path.
//
// The linear buffer is one of two things:
//  - window mode: a local block; finished output is written to the
//    destination in large pieces and the last 2,048 bytes slide to the front
//    when the block fills;
//  - direct mode: the destination's own memory, when it is a TMemoryStream
//    being appended to. The destination is grown (uninitialised) ahead of the
//    decoder and trimmed to the real end when decoding stops, so the output
//    is written once, in place. Direct mode starts only after 2,048 bytes of
//    this run's output exist (the bytes the destination held before are not
//    history) and only while the history equals what was written out; a copy
//    that shows its own overwrite breaks that equality, so it sends the rest
//    of the run back to window mode.
// Tokens are likewise read either from a local block refilled from the
// source, or in place from a TMemoryStream source's memory.
//
// One token loop serves all of these: it works on `in` / `out` pointers and
// limits that the mode switches re-aim.
#include <algorithm>
#include <cstring>
#include <memory>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#elif defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "quill/compress/internal/lzblocks.h"
#include "quill/compress/internal/lzcoder.h"
#include "quill/rtl/internal/cpu.h"
#include "quill/rtl/internal/memorystream_access.h"

namespace quill::Gcompress::internal {
namespace {

using quill::internal::MemoryStreamAccess;

// Copies with a period d below 8 are built arithmetically: the last d output
// bytes, as a number, times kPeriodRepeat[d] (one bit at every multiple of d
// bytes) give 16 bytes of the repeated pattern, stored again every
// 16 - 16 mod d bytes (a multiple of d, so the phase stays) up to the copy's
// length.
__extension__ using Repeat16 = unsigned __int128;

constexpr Repeat16 RepeatEvery(int d) {
  Repeat16 r = 0;
  for (int k = 0; k < 16; k += d) r |= Repeat16{1} << (8 * k);
  return r;
}

constexpr Repeat16 kPeriodRepeat[8] = {0,
                                       RepeatEvery(1),
                                       RepeatEvery(2),
                                       RepeatEvery(3),
                                       RepeatEvery(4),
                                       RepeatEvery(5),
                                       RepeatEvery(6),
                                       RepeatEvery(7)};

// Room kept writable past the output limit: a literal run's fast move writes
// 128 bytes, a copy's 24.
constexpr int64_t kOutSlack = kTokenRoom + 32;
// Window-mode block: the 2,048-byte history plus room for output.
constexpr int64_t kOutCap = kWindowSize + (1 << 17);
// Direct mode grows the destination by this much (plus the slack) at a time;
// the stream's own capacity grows geometrically underneath.
constexpr int64_t kDirectChunk = 1 << 18;

// What the decoder needs to know of a token, worked out ahead for every
// position of a piece of input as if a token started there (the decoder
// then only looks at the positions where tokens do start).
struct TokenTable {
  static constexpr int64_t kPiece = 2048;
  // Entries past the last one asked for: Fill's vector steps overshoot by up
  // to 31, and FillPairs makes 64 more entries than it is asked for.
  static constexpr int64_t kSlack = 128;
  // Size of the token (2 for a copy, 1 + length for a literal run); 0 for
  // the tokens the decoder handles apart: runs above 24 bytes and copies
  // with d outside 8 .. 2,030.
  alignas(64) uint8_t advance[kPiece + kSlack];
  // Bytes of output: the copy's or the run's length.
  alignas(64) uint8_t length[kPiece + kSlack];
  // 0xFF for a copy, 0 for a literal run.
  alignas(64) int8_t copy[kPiece + kSlack];
  // Size of the token and the one after it, when both are common tokens;
  // else 0. Made by FillPairs only: with it the decoder finds every second
  // token through one load, halving the chain of dependent loads that
  // bounds a stream of short tokens.
  alignas(64) uint8_t advance2[kPiece + kSlack];

  // Entries are made a chunk at a time, as the tokens reach them, so that
  // the bytes of long literal runs (which the decoder jumps over) cost
  // nothing: incompressible data is all such runs.
  static constexpr int64_t kChunk = 512;

  // Fills the entries [from, end) for the piece starting at p (and up to 31
  // more). Reads up to 32 bytes past p[end - 1].
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
  // Fill with AVX2: 32 entries a step.
  __attribute__((target("avx2"))) void FillAvx2(const uint8_t* p, int64_t from, int64_t end) noexcept {
    const __m256i one = _mm256_set1_epi8(1);
    const __m256i zero = _mm256_setzero_si256();
    for (int64_t k = from; k < end; k += 32) {
      const __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + k));
      const __m256i y = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + k + 1));
      const __m256i is_copy = _mm256_cmpeq_epi8(_mm256_and_si256(x, one), one);
      const __m256i half = _mm256_and_si256(_mm256_srli_epi16(x, 1), _mm256_set1_epi8(0x7F));
      const __m256i high = _mm256_and_si256(y, _mm256_set1_epi8(0x0F));
      const __m256i copy_len = _mm256_add_epi8(
          _mm256_and_si256(_mm256_srli_epi16(y, 4), _mm256_set1_epi8(0x0F)), _mm256_set1_epi8(kMinMatch));
      const __m256i d_small = _mm256_and_si256(_mm256_cmpeq_epi8(high, zero),
                                               _mm256_cmpgt_epi8(_mm256_set1_epi8(8), half));
      const __m256i d_large = _mm256_and_si256(_mm256_cmpeq_epi8(high, _mm256_set1_epi8(0x0F)),
                                               _mm256_cmpgt_epi8(half, _mm256_set1_epi8(110)));
      const __m256i rare =
          _mm256_or_si256(_mm256_and_si256(is_copy, _mm256_or_si256(d_small, d_large)),
                          _mm256_andnot_si256(is_copy, _mm256_cmpgt_epi8(half, _mm256_set1_epi8(24))));
      const __m256i size = _mm256_or_si256(_mm256_and_si256(is_copy, _mm256_set1_epi8(2)),
                                           _mm256_andnot_si256(is_copy, _mm256_add_epi8(half, one)));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(advance + k), _mm256_andnot_si256(rare, size));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(length + k),
                          _mm256_or_si256(_mm256_and_si256(is_copy, copy_len), _mm256_andnot_si256(is_copy, half)));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(copy + k), is_copy);
    }
  }
#endif

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
  // Whether FillPairs runs here (AVX-512 VBMI: a lookup into 128 bytes).
  static bool PairsAvailable() noexcept {
    return quill::internal::CpuHasAvx512Vbmi();
  }

  // Fill, and advance2 for [from, end): entry j adds advance[j] and the
  // entry it points to (at most 25 further), 64 entries a step through a
  // byte permutation over 128 entries. Reads up to 97 bytes past
  // p[end - 1].
  __attribute__((target("avx2,avx512f,avx512bw,avx512vbmi"))) void FillPairs(const uint8_t* p, int64_t from,
                                                                            int64_t end) noexcept {
    FillAvx2(p, from, end + 64);
    const __m512i lanes = _mm512_set_epi8(63, 62, 61, 60, 59, 58, 57, 56, 55, 54, 53, 52, 51, 50, 49, 48, 47, 46, 45,
                                          44, 43, 42, 41, 40, 39, 38, 37, 36, 35, 34, 33, 32, 31, 30, 29, 28, 27, 26,
                                          25, 24, 23, 22, 21, 20, 19, 18, 17, 16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6,
                                          5, 4, 3, 2, 1, 0);
    for (int64_t j = from; j < end; j += 64) {
      const __m512i a = _mm512_loadu_si512(advance + j);
      const __m512i ahead = _mm512_loadu_si512(advance + j + 64);
      const __m512i next = _mm512_permutex2var_epi8(a, _mm512_add_epi8(lanes, a), ahead);
      const __mmask64 both = _mm512_test_epi8_mask(a, a) & _mm512_test_epi8_mask(next, next);
      _mm512_storeu_si512(advance2 + j, _mm512_maskz_add_epi8(both, a, next));
    }
  }
#else
  static bool PairsAvailable() noexcept { return false; }
  void FillPairs(const uint8_t* p, int64_t from, int64_t end) noexcept { Fill(p, from, end); }
#endif

  void Fill(const uint8_t* p, int64_t from, int64_t end) noexcept {
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    if (quill::internal::CpuHasAvx2()) {
      FillAvx2(p, from, end);
      return;
    }
#endif
    int64_t k = from;
    const int64_t n = end;
#if defined(__SSE2__)
    const __m128i one = _mm_set1_epi8(1);
    const __m128i zero = _mm_setzero_si128();
    for (; k < n; k += 16) {
      const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k));
      const __m128i y = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k + 1));
      const __m128i is_copy = _mm_cmpeq_epi8(_mm_and_si128(x, one), one);
      const __m128i half = _mm_and_si128(_mm_srli_epi16(x, 1), _mm_set1_epi8(0x7F));  // run length
      const __m128i high = _mm_and_si128(y, _mm_set1_epi8(0x0F));  // d's top 4 bits
      const __m128i copy_len = _mm_add_epi8(_mm_and_si128(_mm_srli_epi16(y, 4), _mm_set1_epi8(0x0F)),
                                            _mm_set1_epi8(kMinMatch));
      // d = high * 128 + half: below 8 when both are small, above 2,030
      // when high is 15 and half above 110.
      const __m128i d_small = _mm_and_si128(_mm_cmpeq_epi8(high, zero), _mm_cmplt_epi8(half, _mm_set1_epi8(8)));
      const __m128i d_large = _mm_and_si128(_mm_cmpeq_epi8(high, _mm_set1_epi8(0x0F)),
                                            _mm_cmpgt_epi8(half, _mm_set1_epi8(110)));
      const __m128i rare = _mm_or_si128(_mm_and_si128(is_copy, _mm_or_si128(d_small, d_large)),
                                        _mm_andnot_si128(is_copy, _mm_cmpgt_epi8(half, _mm_set1_epi8(24))));
      const __m128i size = _mm_or_si128(_mm_and_si128(is_copy, _mm_set1_epi8(2)),
                                        _mm_andnot_si128(is_copy, _mm_add_epi8(half, one)));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(advance + k), _mm_andnot_si128(rare, size));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(length + k),
                      _mm_or_si128(_mm_and_si128(is_copy, copy_len), _mm_andnot_si128(is_copy, half)));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(copy + k), is_copy);
    }
#else
    for (; k < n; ++k) {
      const uint32_t word = p[k] | (uint32_t{p[k + 1]} << 8);
      const uint32_t d = (word & 0x0FFFu) >> 1;
      const uint32_t half = p[k] >> 1;
      const bool is_copy = (word & 1) != 0;
      const bool rare = is_copy ? d - 8 > static_cast<uint32_t>(kWindowSize) - 8 - kMaxMatch : half > 24;
      advance[k] = rare ? 0 : static_cast<uint8_t>(is_copy ? 2 : half + 1);
      length[k] = static_cast<uint8_t>(is_copy ? (word >> 12) + kMinMatch : half);
      copy[k] = static_cast<int8_t>(is_copy ? -1 : 0);
    }
#endif
  }
};

}  // namespace

void LZDecode(TStream& src, TStream& dst, const LZProgress& progress) {
  const int64_t start = src.Position();
  const int64_t size = src.Size();
  int64_t total = std::max<int64_t>(0, size - start);

  // In-place access only when no progress hook runs in between (a hook could
  // look at or change the streams while their memory is in use), and never
  // for a stream that is both source and destination: writing would move the
  // memory the tokens are read from.
  const bool in_place = progress.report == nullptr && &src != &dst;
  TMemoryStream* const msrc =
      (in_place && total > 0 && start >= 0) ? MemoryStreamAccess::PlainMemoryStream(src) : nullptr;
  TMemoryStream* mdst = in_place ? MemoryStreamAccess::PlainMemoryStream(dst) : nullptr;
  if (mdst != nullptr && mdst->Position() != mdst->Size()) mdst = nullptr;

  // Tokens not decoded yet: in[in_pos .. in_end).
  std::unique_ptr<uint8_t[]> in_block;
  const uint8_t* in = nullptr;
  int64_t in_pos = 0;
  int64_t in_end = 0;
  int64_t fetched = 0;   // token bytes available from the source so far
  int64_t consumed = 0;  // bytes decoded
  if (msrc != nullptr) {
    in = msrc->Memory() + start;
    in_end = fetched = total;
  } else {
    in_block.reset(new uint8_t[kInBlock]);
    in = in_block.get();
  }

  // out[w - 2,048 .. w) is the history; in window mode out[0 .. 2,048)
  // stands for the ring before the first output byte.
  std::unique_ptr<uint8_t[]> win(new uint8_t[kOutCap + 64]);
  std::memset(win.get(), 0, kWindowSize);
  uint8_t* out = win.get();
  int64_t w = kWindowSize;        // end of the output
  int64_t pending = kWindowSize;  // window mode: first output byte not written yet
  bool direct = false;
  // While direct mode may still begin, window mode stops at 2,048 output
  // bytes to switch; otherwise it runs to the end of its block.
  bool may_go_direct = mdst != nullptr;
  int64_t limit = may_go_direct ? 2 * kWindowSize - 1 : kOutCap - kOutSlack;  // tokens start at w <= limit

  // A destination that writes into the source's memory stream (a wrapper
  // around it) may move that memory: read the tokens from where it is now.
  auto reload_source = [&] {
    if (msrc != nullptr) in = msrc->Memory() + start;
  };
  auto write_pending = [&] {
    const int64_t from = pending;
    pending = w;
    if (w > from) {
      dst.WriteBuffer(win.get() + from, w - from);
      reload_source();
    }
  };
  // Puts the output and the source where a caller expects them: everything
  // decoded is in the destination, which ends (and stands) at its real end.
  auto finish = [&] {
    if (msrc != nullptr) msrc->SetPosition(start + consumed);
    if (direct) {
      MemoryStreamAccess::Trim(*mdst, w);
      mdst->SetPosition(w);
    } else {
      write_pending();
    }
  };
  auto grow_destination = [&] {
    const int64_t new_size = w + kDirectChunk + kOutSlack;
    out = MemoryStreamAccess::GrowUninitialised(*mdst, new_size);
    limit = new_size - kOutSlack;
  };

  // Fast run: whole tokens while the input holds a complete token and the
  // output has room, without per-token buffer checks; returns the token bytes
  // decoded. Copies that need the ring's special cases (distance 0, or
  // distance + length above 2,048) are left to the general step. kReport
  // tells whether a progress hook listens (one instance each way, so the
  // common case carries no test for it).
  auto fast_run = [&]<bool kReport>() -> int64_t {
    const uint8_t* ip = in + in_pos;
    const uint8_t* const ip_first = ip;
    const uint8_t* const ip_limit = in + in_end - kTokenRoom;
    uint8_t* op = out + w;
    uint8_t* const op_limit = out + limit;
    const int64_t consumed_before = consumed;
    // The tokens that leave the common path: literal runs above 24 bytes,
    // copies with d below 8 and the ring's special cases (d == 0 or
    // d + len above 2,048). Returns false for a copy that needs the general
    // step (nothing decoded then).
    auto rare_token = [&](uint32_t word) -> bool {
      if ((word & 1) == 0) {
        // A literal run: a fixed-size move of 128 bytes (both buffers have
        // room past the run). Incompressible data is a stream of long runs,
        // broken now and then by a chance copy or a short run: all of them
        // are taken here token by token, within the limits, until four
        // tokens in a row are not long runs (the table serves those better)
        // or a copy needs the rare path.
        uint32_t quiet = 0;  // tokens since the last long run
        do {
          const uint32_t b = ip[0];
          if ((b & 1) == 0) {
            const uint32_t n = b >> 1;
            std::memcpy(op, ip + 1, 128);
            ip += n + 1;
            op += n;
            quiet = n > 24 ? 0 : quiet + 1;
          } else {
            const uint32_t copy_word = b | (uint32_t{ip[1]} << 8);
            const uint32_t d = (copy_word & 0x0FFFu) >> 1;
            if (d - 8 > static_cast<uint32_t>(kWindowSize) - 8 - kMaxMatch) break;
            const uint8_t* const s = op - d;
            std::memcpy(op, s, 8);
            std::memcpy(op + 8, s + 8, 8);
            std::memcpy(op + 16, s + 16, 8);
            ip += 2;
            op += (copy_word >> 12) + kMinMatch;
            ++quiet;
          }
        } while (!kReport && quiet < 4 && ip <= ip_limit && op <= op_limit);
        return true;
      }
      const uint32_t d = (word & 0x0FFFu) >> 1;
      const uint32_t len = (word >> 12) + kMinMatch;
      if (d - 1 > static_cast<uint32_t>(kWindowSize) - len - 1) return false;
      if (d >= 8) {
        // A far copy that stays inside the window.
        const uint8_t* const s = op - d;
        std::memcpy(op, s, 8);
        std::memcpy(op + 8, s + 8, 8);
        std::memcpy(op + 16, s + 16, 8);
        ip += 2;
        op += len;
        return true;
      }
      // A short period (d below 8): the copy repeats the last d bytes.
      // Spread them over 16 bytes with one multiplication (the d-byte pieces
      // land side by side, so nothing carries) and store the pattern as
      // words, instead of a chain of byte copies that each wait for the one
      // before.
      uint64_t last;
      std::memcpy(&last, op - 8, 8);
      const uint64_t unit = last >> (64 - 8 * d);
      const Repeat16 q = static_cast<Repeat16>(unit) * kPeriodRepeat[d];
      const uint64_t lo = static_cast<uint64_t>(q);
      const uint64_t hi = static_cast<uint64_t>(q >> 64);
      std::memcpy(op, &lo, 8);
      std::memcpy(op + 8, &hi, 8);
      // The same token repeated continues the same period: one fill for the
      // whole run (one repeated byte, or a short pattern, gives long streams
      // of identical tokens). Every token of the run starts within the
      // limits, as the loop's test would require.
      uint32_t run = 1;
      if constexpr (!kReport) {
        const uint32_t max_in = static_cast<uint32_t>((ip_limit - ip) / 2) + 1;
        const uint32_t max_out = static_cast<uint32_t>((op_limit - op) / len) + 1;
        const uint32_t max_run = std::min(max_in, max_out);
        while (run < max_run && ip[2 * run] == ip[0] && ip[2 * run + 1] == ip[1]) ++run;
      }
      // Pieces of 16 bytes a multiple of d apart keep the phase.
      const int64_t step = 16 - 16 % d;
      const int64_t run_bytes = static_cast<int64_t>(run) * len;
      // One 16-byte store a piece (the pattern stays in a vector register),
      // four pieces a round: one repeated byte compresses to long runs of
      // such copies, and this loop is then the whole of the work.
      uint8_t pattern[16];
      std::memcpy(pattern, &lo, 8);
      std::memcpy(pattern + 8, &hi, 8);
      int64_t k = step;
      for (; k + 3 * step < run_bytes; k += 4 * step) {
        std::memcpy(op + k, pattern, 16);
        std::memcpy(op + k + step, pattern, 16);
        std::memcpy(op + k + 2 * step, pattern, 16);
        std::memcpy(op + k + 3 * step, pattern, 16);
      }
      for (; k < run_bytes; k += step) std::memcpy(op + k, pattern, 16);
      ip += 2 * run;
      op += run_bytes;
      return true;
    };
    // True for the tokens rare_token handles: a copy with d outside
    // 8 .. 2,030 (one comparison against a constant), a run above 24 bytes.
    auto is_rare = [](uint32_t word) {
      const uint32_t d = (word & 0x0FFFu) >> 1;
      return (word & 1) != 0 ? d - 8 > static_cast<uint32_t>(kWindowSize) - 8 - kMaxMatch
                             : (word & 0xFF) > 2 * 24 + 1;
    };

    if constexpr (kReport) {
      // One token at a time, reporting after each.
      while (ip <= ip_limit && op <= op_limit) {
        const uint32_t word = ip[0] | (uint32_t{ip[1]} << 8);
        if (is_rare(word)) {
          if (!rare_token(word)) break;  // general step
        } else if ((word & 1) != 0) {
          const uint8_t* const s = op - ((word & 0x0FFFu) >> 1);
          std::memcpy(op, s, 8);
          std::memcpy(op + 8, s + 8, 8);
          std::memcpy(op + 16, s + 16, 8);
          ip += 2;
          op += (word >> 12) + kMinMatch;
        } else {
          std::memcpy(op, ip + 1, 8);
          std::memcpy(op + 8, ip + 9, 8);
          std::memcpy(op + 16, ip + 17, 8);
          ip += ((word & 0xFF) >> 1) + 1;
          op += (word & 0xFF) >> 1;
        }
        // So that an error from the callback keeps this token.
        w = op - out;
        consumed = consumed_before + (ip - ip_first);
        progress(start + consumed, size);
      }
    } else {
      // Without a listener the kinds are told apart without a branch: they
      // alternate too irregularly for prediction (in text, a literal run
      // follows about every second copy), and a wrong guess costs more than
      // a token. Both kinds move 24 bytes, a copy from op - d and a run from
      // ip + 1, and the pointers advance by amounts selected arithmetically.
      // What remains serial is finding the next token; a table of each
      // input byte's token size (as if a token started there), made ahead
      // for a piece of the input at a time, shortens that to one load and
      // an add.
      TokenTable table;
      bool general = false;
      const uint8_t* piece = ip;  // the input the table describes
      // Moves the token at piece[kk] (a common one) to o.
      auto move_token = [&](int64_t kk, uint8_t* o) {
        const uint8_t* const t = piece + kk;
        const uint64_t kind = static_cast<uint64_t>(static_cast<int64_t>(table.copy[kk]));
        const uint64_t d = (t[0] | (uint32_t{t[1]} << 8)) >> 1 & 0x7FFu;
        const auto from_copy = reinterpret_cast<uintptr_t>(o - d);
        const auto from_run = reinterpret_cast<uintptr_t>(t + 1);
        const auto* const s = reinterpret_cast<const uint8_t*>((from_copy & kind) | (from_run & ~kind));
        // Word moves: a copy reads at least 8 bytes behind what it writes.
        std::memcpy(o, s, 8);
        std::memcpy(o + 8, s + 8, 8);
        std::memcpy(o + 16, s + 16, 8);
      };
      // Two common tokens a step where the table has their joint size: the
      // second one's place comes off the first one's entry, outside the
      // chain from one step to the next.
      auto run_piece = [&]<bool kPairs>() {
        while (!general && ip <= ip_limit && op <= op_limit) {
          piece = ip;
          const int64_t span = std::min<int64_t>(TokenTable::kPiece, ip_limit - ip + 1);
          int64_t k = 0;
          int64_t filled = 0;  // table entries made: [.., filled)
          while (k < span && op <= op_limit) {
            if constexpr (kPairs) {
              // Entries are made ahead, so that a pair's second token has
              // its entry (it starts at most 25 bytes on).
              if (k + 26 > filled && filled < span) {
                const int64_t from = std::max(filled, k);
                filled = std::min(span, from + TokenTable::kChunk);
                table.FillPairs(piece, from, filled);
              }
              if (k + 26 <= filled && op + 24 <= op_limit) {
                const int64_t step2 = table.advance2[k];
                if (step2 != 0) {
                  const int64_t k1 = k + table.advance[k];
                  move_token(k, op);
                  op += table.length[k];
                  move_token(k1, op);
                  op += table.length[k1];
                  k += step2;
                  continue;
                }
              }
            } else if (k >= filled) {
              filled = std::min(span, k + TokenTable::kChunk);
              table.Fill(piece, k, filled);
            }
            const uint8_t* const t = piece + k;
            const int64_t step = table.advance[k];
            if (step == 0) [[unlikely]] {
              ip = t;
              if (!rare_token(t[0] | (uint32_t{t[1]} << 8))) {
                general = true;
                break;
              }
              k = ip - piece;
              continue;
            }
            move_token(k, op);
            op += table.length[k];
            k += step;
          }
          if (!general) ip = piece + k;
        }
      };
      if (TokenTable::PairsAvailable()) {
        run_piece.template operator()<true>();
      } else {
        run_piece.template operator()<false>();
      }
    }
    const int64_t done = ip - ip_first;
    consumed = consumed_before + done;
    in_pos += done;
    w = op - out;
    return done;
  };

  try {
    while (consumed < total) {
      if (in_end - in_pos < kTokenRoom && fetched < total) {
        uint8_t* const block = in_block.get();
        std::memmove(block, block + in_pos, static_cast<size_t>(in_end - in_pos));
        in_end -= in_pos;
        in_pos = 0;
        const int64_t want = std::min(kInBlock - in_end, total - fetched);
        const int64_t got = ReadFully(src, block + in_end, want);
        fetched += got;
        in_end += got;
        if (got < want) total = fetched;  // the source ended early
        if (in_pos == in_end) break;
      }
      if (w > limit) {
        if (direct) {
          grow_destination();
        } else if (may_go_direct) {
          // 2,048 bytes of output exist and the history is exactly what was
          // written: continue in the destination's memory.
          write_pending();
          may_go_direct = false;
          w = mdst->Size();
          grow_destination();
          direct = true;
        } else {
          write_pending();
          std::memmove(win.get(), win.get() + (w - kWindowSize), kWindowSize);
          w = kWindowSize;
          pending = w;
        }
      }

      if (in_end - in_pos >= kTokenRoom) {
        const int64_t done = progress.report != nullptr ? fast_run.template operator()<true>()
                                                        : fast_run.template operator()<false>();
        if (done != 0) continue;
      }

      const uint8_t b = in[in_pos++];
      ++consumed;
      uint8_t* o = out + w;
      if (b & 1) {
        uint32_t c = 0;  // a stream cut inside the token reads as 0
        if (in_pos < in_end) {
          c = in[in_pos++];
          ++consumed;
        }
        uint32_t d = 0;
        uint32_t len = 0;
        DecodeCopy(b | (c << 8), d, len);
        // Distance 0 copies each ring slot onto itself: the byte 2,048 back.
        if (d == 0) d = kWindowSize;
        if (d + len > static_cast<uint32_t>(kWindowSize)) {
          // From here on the history differs from the output, which only the
          // window can hold: leave direct mode for the rest of the run.
          may_go_direct = false;
          if (direct) {
            std::memcpy(win.get(), out + (w - kWindowSize), kWindowSize);
            MemoryStreamAccess::Trim(*mdst, w);
            mdst->SetPosition(w);
            direct = false;
            out = win.get();
            w = kWindowSize;
            pending = w;
            o = out + w;
          }
          limit = kOutCap - kOutSlack;
          // The copy runs over the front of its own source in the ring, and
          // what is written out is read back from there after the copy.
          for (uint32_t k = 0; k < len; ++k) o[k] = o[static_cast<int64_t>(k) - d];
          write_pending();
          uint8_t shown[kMaxMatch];
          const uint32_t overwritten = len + d - kWindowSize;
          for (uint32_t k = 0; k < len; ++k)
            shown[k] = k < overwritten ? o[k + kWindowSize - d] : o[static_cast<int64_t>(k) - d];
          pending = w + len;
          w += len;
          dst.WriteBuffer(shown, len);
          reload_source();
        } else {
          const uint8_t* s = o - d;
          if (d >= 8) {
            // Word copies: each reads at least 8 bytes behind what it writes.
            std::memcpy(o, s, 8);
            std::memcpy(o + 8, s + 8, 8);
            std::memcpy(o + 16, s + 16, 8);
          } else {
            for (uint32_t k = 0; k < len; ++k) o[k] = s[k];
          }
          w += len;
        }
      } else {
        const int64_t n = b >> 1;
        const int64_t got = std::min(n, in_end - in_pos);
        std::memcpy(o, in + in_pos, static_cast<size_t>(got));
        in_pos += got;
        consumed += got;
        // A run cut short leaves the ring's old bytes in the missing places.
        // (n < 2,048, so the two ranges never overlap.)
        if (got < n) std::memcpy(o + got, o + got - kWindowSize, static_cast<size_t>(n - got));
        w += n;
      }
      progress(start + consumed, size);
    }
    finish();
  } catch (...) {
    finish();
    throw;
  }
}

}  // namespace quill::Gcompress::internal
