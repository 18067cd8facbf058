// The fast LZG encoder.
//
// Compression keeps the input in a linear buffer (a 4 KiB history plus a
// 64 KiB block) instead of the 2,048-byte ring, and replaces the per-byte
// position lists by a hash chain over the first three bytes. The tokens stay
// exactly those of the window classes because only candidates that match at
// least three bytes can be chosen, and such a candidate is reached in the same
// newest-first order; the per-byte "last 40 codings" limit is kept with a
// running count of each byte value's codings.
//
// The coding steps run in `CodeSteps`, whose state lives in registers: a
// stretch of steps far from the end of the input (the steady case, where the
// lookahead is full and the window is the last 1,921 coded bytes) runs with
// those bounds as constants; near the end, and when a progress hook wants a
// call after every step, a general version takes one bounded stretch at a time.
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "quill/compress/internal/lzblocks.h"
#include "quill/compress/internal/lzcoder.h"

namespace quill::Gcompress::internal {
namespace {

constexpr int64_t kHistory = 4096;      // input kept before the coding position
constexpr int64_t kSlack = 128;         // readable bytes past the data (word loads, run copies)
constexpr int64_t kOutBlock = 1 << 16;  // output gathered per write
constexpr int64_t kOutRoom = 512;       // room past kOutBlock: one step's tokens and a run's wide copy
constexpr int kHashBits = 15;
constexpr uint32_t kRingMask = 4095;    // chain entries kept: > the window
// With a full lookahead the window reaches this far behind the coding position.
constexpr int32_t kSteadyReach = kWindowSize - kLookahead;

// The first three bytes at p as a number. Reads four bytes: callers keep one
// readable byte beyond the three.
inline uint32_t Load3(const uint8_t* p) {
  uint32_t v;
  std::memcpy(&v, p, 4);
  if constexpr (std::endian::native == std::endian::little) return v & 0xFFFFFFu;
  return v >> 8;
}

inline uint32_t Hash3(uint32_t key) { return (key * 2654435761u) >> (32 - kHashBits); }

// The index of the first nonzero byte of x != 0, as loaded by Load64.
inline int32_t FirstNonzeroByte(uint64_t x) {
  return (std::endian::native == std::endian::little ? std::countr_zero(x) : std::countl_zero(x)) >> 3;
}

// The bits of the first n bytes (n <= 8) of a word loaded by Load64.
inline uint64_t LeadingBytesMask(int32_t n) {
  if (n >= 8) return ~uint64_t{0};
  if constexpr (std::endian::native == std::endian::little) return (uint64_t{1} << (8 * n)) - 1;
  return ~(~uint64_t{0} >> (8 * n));
}

// Length of the common prefix of `a` and `b`, at most `limit` (<= 24). Reads
// whole words, so up to 24 bytes of each must be readable.
inline int32_t MatchLength(const uint8_t* a, const uint8_t* b, int32_t limit) {
  for (int32_t i = 0; i < limit; i += 8) {
    const uint64_t x = Load64(a + i) ^ Load64(b + i);
    if (x != 0) {
      return std::min(i + FirstNonzeroByte(x), limit);
    }
  }
  return limit;
}

// Per ring slot of a coded position, kept together since the search reads
// both for a candidate.
struct Link {
  int32_t prev;    // previous position in the same chain
  uint32_t order;  // which coding of its byte value the position was
};

// The match index. Positions are 32-bit, counted from the run's epoch.
struct MatchIndex {
  int32_t* head;      // newest position per hash of three bytes, or below any window
  Link* link;         // kRingMask + 1 slots, plus kMaxMatch spill slots past the end
  uint32_t* codings;  // codings of each byte value so far
};

// Where the coding steps stand: the first uncoded byte, the first byte of the
// pending literal run (== p when there is none), and the output end.
struct Cursor {
  const uint8_t* p;
  const uint8_t* lit;
  uint8_t* o;
};

// The bounds of one stretch of steps. `origin` is where position 0 of the
// epoch would lie in the buffer.
struct Stretch {
  const uint8_t* origin;
  const uint8_t* stop;   // no step starts at or after this byte
  const uint8_t* end;    // end of the input
  uint8_t* out_stop;     // no step starts once the output reaches this
  int64_t max_steps;     // general stretches only
};

// Writes a literal run of n (1..127) bytes from `from`. Moves a fixed 128
// bytes instead of calling memcpy: the output has room past its block and
// the input has slack past its data.
inline uint8_t* EmitLiterals(uint8_t* o, const uint8_t* from, int64_t n) {
  o[0] = static_cast<uint8_t>(n * 2);
  std::memcpy(o + 1, from, kMaxLiteralRun + 1);
  return o + 1 + n;
}

// Enters the coded position q (epoch-relative `rel`) in the index through
// its ring slot `l`. Positions within two bytes of the end enter a chain too:
// no later search reaches them, since a search needs three bytes of lookahead.
inline void EnterAt(const MatchIndex& ix, Link& l, const uint8_t* q, int32_t rel) {
  l.order = ++ix.codings[q[0]];
  const uint32_t h = Hash3(Load3(q));
  l.prev = ix.head[h];
  ix.head[h] = rel;
}

// Runs coding steps from `c` while the stretch allows. kSteady: the stretch
// ends at least 127 bytes before the end of the input, so every step has a
// full lookahead; otherwise the lookahead and window are cut at the end and
// at most `max_steps` steps run.
template <bool kSteady>
Cursor CodeSteps(Cursor c, const Stretch& s, const MatchIndex& ix) {
  const uint8_t* p = c.p;
  const uint8_t* lit = c.lit;
  uint8_t* o = c.o;
  const uint8_t* const origin = s.origin;
  int64_t steps = kSteady ? 0 : s.max_steps;
  // Near the end the window's front stops moving with the coding position.
  const int32_t tail_from = static_cast<int32_t>((s.end - origin) - kWindowSize);
  const uint64_t key_mask = LeadingBytesMask(kMinMatch);

  while (p < s.stop && o < s.out_stop) {
    if constexpr (!kSteady) {
      if (steps-- == 0) break;
    }
    const int32_t rel = static_cast<int32_t>(p - origin);
    int32_t window_from = rel - kSteadyReach;
    int32_t limit = kMaxMatch;
    if constexpr (!kSteady) {
      window_from = std::min(window_from, tail_from);
      limit = static_cast<int32_t>(std::min<int64_t>(kMaxMatch, s.end - p));
    }
    // Position 0 is the first byte: "no position" entries lie below it.
    window_from = std::max(window_from, 0);

    int32_t best = 0;
    const uint8_t* best_q = p;
    if (kSteady || limit >= kMinMatch) {
      const uint64_t head_word = Load64(p);  // p has slack: 8 bytes are readable
      // A candidate must be strictly longer than `best` to win, so it must
      // agree in the first best + 1 bytes (all 8 at most; the length check
      // below covers the rest).
      uint64_t reject_mask = 0;
      const uint32_t codings_of_first = ix.codings[p[0]];
      for (int32_t cand = ix.head[Hash3(Load3(p))]; cand >= window_from;) {
        const Link& l = ix.link[cand & kRingMask];
        const uint8_t* q = origin + cand;
        cand = l.prev;
        const uint64_t diff = Load64(q) ^ head_word;
        if ((diff & key_mask) != 0) continue;  // another key in the same hash slot
        // Only the last 40 codings of a byte value are remembered; older
        // candidates in this chain are older still.
        if (codings_of_first - l.order >= static_cast<uint32_t>(kPositionsPerByte)) break;
        if ((diff & reject_mask) != 0) continue;
        const int32_t len = diff != 0 ? std::min(FirstNonzeroByte(diff), limit)
                                      : 8 + MatchLength(q + 8, p + 8, limit - 8);
        if (len > best) {
          best = len;
          best_q = q;
          if (best >= kGoodEnough || best == limit) break;
          reject_mask = LeadingBytesMask(best + 1);
        }
      }
    }

    if (best >= kMinMatch) {
      if (p > lit) o = EmitLiterals(o, lit, p - lit);
      EncodeCopy(o, static_cast<uint32_t>(p - best_q), static_cast<uint32_t>(best));
      o += 2;
      // Every position of the copy joins the index.
      Link* lk = ix.link + (rel & kRingMask);
      const uint8_t* q = p;
      p += best;
      int32_t r = rel;
      // The slots run on past the ring's end instead of wrapping.
      do EnterAt(ix, *lk++, q++, r++);
      while (q != p);
      // Slots past the ring's end belong at its start.
      if (lk > ix.link + kRingMask + 1) std::copy(ix.link + kRingMask + 1, lk, ix.link);
      lit = p;
    } else {
      if (p - lit == kMaxLiteralRun) {
        o = EmitLiterals(o, lit, kMaxLiteralRun);
        lit = p;
      }
      EnterAt(ix, ix.link[rel & kRingMask], p, rel);
      ++p;
    }
  }
  return Cursor{p, lit, o};
}

}  // namespace

void LZEncode(TStream& src, TStream& dst, const LZProgress& progress, int64_t rebase_every) {
  const int64_t start = src.Position();
  const int64_t size = src.Size();
  int64_t total = std::max<int64_t>(0, size - start);

  std::vector<uint8_t> in(kHistory + kInBlock + kSlack);
  int64_t base = 0;    // input index of in[0]
  int64_t loaded = 0;  // input index of the first byte not read yet

  // Positions are counted from `epoch` (a multiple of the ring size, so a
  // position's ring slot is the same either way); `epoch` moves up every
  // `rebase_every` bytes of input (1 GiB by default), and entries that fall
  // below it become "none".
  int64_t epoch = 0;
  std::vector<int32_t> head_store(size_t{1} << kHashBits, -1);
  std::vector<Link> link_store(kRingMask + 1 + kMaxMatch);
  std::array<uint32_t, 256> codings{};
  const MatchIndex index{head_store.data(), link_store.data(), codings.data()};

  // Tokens gather in `block`; a batch leaves the block before it is written,
  // so a failed write is never repeated.
  std::unique_ptr<uint8_t[]> block(new uint8_t[kOutBlock + kOutRoom]);
  uint8_t* o = block.get();
  auto flush = [&] {
    const int64_t n = o - block.get();
    o = block.get();
    if (n > 0) dst.WriteBuffer(block.get(), n);
  };

  int64_t cur = 0;  // input index of the first uncoded byte
  int64_t lit = 0;  // input index of the first byte of the pending literal run
  try {
    // The first position at which the buffer needs a refill or the index a
    // rebase; below it a coding step skips both checks.
    int64_t next_check = 0;
    while (cur < total) {
      if (cur >= next_check) {
        if (loaded < std::min(cur + kLookahead, total)) {
          // Slide: keep the history the window and the pending literals need.
          const int64_t new_base = std::max(base, cur - kHistory);
          if (new_base > base) {
            std::memmove(in.data(), in.data() + (new_base - base), static_cast<size_t>(loaded - new_base));
            base = new_base;
          }
          const int64_t want = std::min(kHistory + kInBlock - (loaded - base), total - loaded);
          const int64_t got = ReadFully(src, in.data() + (loaded - base), want);
          loaded += got;
          if (got < want) total = loaded;  // the source ended early
          std::memset(in.data() + (loaded - base), 0, kSlack);
          if (cur >= total) break;
        }
        if (cur - epoch >= rebase_every) {
          const int32_t shift = static_cast<int32_t>((cur - epoch - 2 * kHistory) & ~int64_t{kRingMask});
          auto rebase = [shift](int32_t& e) { e = e >= shift ? e - shift : -1; };
          for (auto& e : head_store) rebase(e);
          for (auto& e : link_store) rebase(e.prev);
          epoch += shift;
        }
        const int64_t refill_at = loaded < total ? loaded - kLookahead + 1 : std::numeric_limits<int64_t>::max();
        // A rebase that could not move the epoch yet (a short `rebase_every`)
        // is tried again after the next step.
        next_check = std::max(std::min(refill_at, epoch + rebase_every), cur + 1);
      }

      auto at = [&](int64_t i) { return in.data() + (i - base); };  // input index i in the buffer
      Stretch s{at(epoch), at(std::min(next_check, total)), at(total), block.get() + kOutBlock, 1};
      Cursor c{at(cur), at(lit), o};
      if (progress.report == nullptr) {
        const int64_t steady_stop = std::min(next_check, total - kLookahead);
        if (cur < steady_stop) {
          s.stop = at(steady_stop);
          c = CodeSteps<true>(c, s, index);
        } else {
          s.max_steps = std::numeric_limits<int64_t>::max();
          c = CodeSteps<false>(c, s, index);
        }
        cur = base + (c.p - in.data());
        lit = base + (c.lit - in.data());
        o = c.o;
      } else {
        // One step, then its report: the position the 127-byte lookahead
        // reader would have reached before the step.
        const int64_t reader = std::min(cur + kLookahead, total);
        c = CodeSteps<false>(c, s, index);
        cur = base + (c.p - in.data());
        lit = base + (c.lit - in.data());
        o = c.o;
        progress(start + reader, size);
      }
      if (o >= block.get() + kOutBlock) flush();
    }
    if (cur > lit) o = EmitLiterals(o, in.data() + (lit - base), cur - lit);
    flush();
  } catch (...) {
    // Tokens completed so far reach the destination; the pending literal run
    // does not, as with the window classes.
    flush();
    throw;
  }
}

}  // namespace quill::Gcompress::internal
