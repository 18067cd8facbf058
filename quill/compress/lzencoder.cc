// The fast LZG encoder.
//
// Compression keeps the input in a linear buffer (a 4 KiB history plus a
// 64 KiB block) instead of the 2,048-byte ring, and replaces the per-byte
// position lists by a hash chain over the first three bytes. The tokens stay
// exactly those of the window classes because only candidates that match at
// least three bytes can be chosen, and such a candidate is reached in the same
// newest-first order; the per-byte "last 40 codings" limit is kept with a
// running count of each byte value's codings.
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
constexpr int kHashBits = 15;
constexpr uint32_t kRingMask = 4095;    // chain entries kept: > the window

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

// Output tokens gathered in a fixed block. A batch leaves the block before it
// is written, so a failed write is never repeated.
class TokenSink {
 public:
  explicit TokenSink(TStream& dst) : dst_(dst), buf_(new uint8_t[kOutBlock + kTokenRoom]) {}
  uint8_t* Reserve() { return buf_.get() + len_; }
  void Commit(int64_t n) {
    len_ += n;
    if (len_ >= kOutBlock) Flush();
  }
  void Flush() {
    const int64_t n = len_;
    len_ = 0;
    if (n > 0) dst_.WriteBuffer(buf_.get(), n);
  }

 private:
  TStream& dst_;
  std::unique_ptr<uint8_t[]> buf_;
  int64_t len_ = 0;
};

}  // namespace

void LZEncode(TStream& src, TStream& dst, const LZProgress& progress, int64_t rebase_every) {
  const int64_t start = src.Position();
  const int64_t size = src.Size();
  int64_t total = std::max<int64_t>(0, size - start);

  std::vector<uint8_t> in(kHistory + kInBlock + kSlack);
  int64_t base = 0;    // input index of in[0]
  int64_t loaded = 0;  // input index of the first byte not read yet

  // Chain positions are 32-bit, counted from `epoch` (a multiple of the ring
  // size, so a position's ring slot is the same either way); `epoch` moves
  // up every `rebase_every` bytes of input (1 GiB by default), and entries that fall below it become "none".
  int64_t epoch = 0;
  std::vector<int32_t> head_store(size_t{1} << kHashBits, -1);
  int32_t* const head = head_store.data();
  // Per ring slot, kept together since the search reads both for a candidate.
  struct Link {
    int32_t prev;    // previous position in the same chain
    uint32_t order;  // which coding of its byte value the position was
  };
  std::vector<Link> link_store(kRingMask + 1);
  Link* const link = link_store.data();
  std::array<uint32_t, 256> codings{};  // codings of each byte value so far

  const auto report = progress.report;
  TokenSink out(dst);
  int32_t literal_count = 0;
  int64_t literal_start = 0;

  // Enters coded position `pos` in the match index. Positions within two bytes
  // of the end can never start a 3-byte match and stay out of the chains.
  auto enter = [&](int64_t pos) {
    const uint8_t* q = in.data() + (pos - base);
    Link& l = link[pos & kRingMask];
    l.order = ++codings[q[0]];
    if (pos + 2 < total) {
      const uint32_t h = Hash3(Load3(q));
      l.prev = head[h];
      head[h] = static_cast<int32_t>(pos - epoch);
    }
  };
  auto emit_literals = [&] {
    uint8_t* o = out.Reserve();
    o[0] = static_cast<uint8_t>(literal_count * 2);
    // A fixed-size move (128 bytes) instead of a call: the output block has
    // room for a whole token past its end, the input its slack.
    std::memcpy(o + 1, in.data() + (literal_start - base), kMaxLiteralRun + 1);
    out.Commit(1 + literal_count);
    literal_count = 0;
  };

  try {
    int64_t cur = 0;  // input index of the first uncoded byte
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
        next_check = std::min(refill_at, epoch + rebase_every);
      }
      // Where the 127-byte lookahead reader would stand, and the oldest
      // position still inside its 2,048-byte window.
      const int64_t reader = std::min(cur + kLookahead, total);
      const int64_t window_start = std::max<int64_t>(0, reader - kWindowSize);
      const int32_t avail = static_cast<int32_t>(std::min<int64_t>(kLookahead, total - cur));
      const uint8_t* p = in.data() + (cur - base);
      const int32_t window_from = static_cast<int32_t>(window_start - epoch);
      const int64_t epoch_in_buffer = epoch - base;

      int32_t best = 0;
      int64_t best_distance = 0;
      if (avail >= kMinMatch) {
        const int32_t limit = std::min(avail, kMaxMatch);
        const uint32_t key = Load3(p);
        const uint64_t head_word = Load64(p);  // p has slack: 8 bytes are readable
        const uint64_t key_mask = LeadingBytesMask(kMinMatch);
        // A candidate must be strictly longer than `best` to win, so it must
        // agree in the first best + 1 bytes (all 8 at most; the length check
        // below covers the rest).
        uint64_t reject_mask = 0;
        const uint32_t codings_of_first = codings[p[0]];
        const uint8_t* const in_epoch = in.data() + epoch_in_buffer;
        for (int32_t cand = head[Hash3(key)]; cand >= window_from;) {
          const Link& l = link[cand & kRingMask];
          const uint8_t* q = in_epoch + cand;
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
            best_distance = p - q;
            if (best >= kGoodEnough || best == limit) break;
            reject_mask = LeadingBytesMask(best + 1);
          }
        }
      }

      if (best >= kMinMatch) {
        if (literal_count > 0) emit_literals();
        EncodeCopy(out.Reserve(), static_cast<uint32_t>(best_distance), static_cast<uint32_t>(best));
        out.Commit(2);
        // Every position of the copy joins the index; only those at least
        // three bytes before the end join a chain.
        const int64_t copy_end = cur + best;
        const int64_t chained_end = std::min(copy_end, total - 2);
        const uint8_t* q = in.data() + (cur - base);
        int64_t pos = cur;
        for (; pos < chained_end; ++pos, ++q) {
          Link& l = link[pos & kRingMask];
          l.order = ++codings[q[0]];
          const uint32_t h = Hash3(Load3(q));
          l.prev = head[h];
          head[h] = static_cast<int32_t>(pos - epoch);
        }
        for (; pos < copy_end; ++pos, ++q) link[pos & kRingMask].order = ++codings[q[0]];
        cur += best;
      } else {
        if (literal_count == kMaxLiteralRun) emit_literals();
        if (literal_count == 0) literal_start = cur;
        ++literal_count;
        enter(cur);
        ++cur;
      }
      if (report != nullptr) progress(start + reader, size);
    }
    if (literal_count > 0) emit_literals();
    out.Flush();
  } catch (...) {
    // Tokens completed so far reach the destination; the pending literal run
    // does not, as with the window classes.
    out.Flush();
    throw;
  }
}

}  // namespace quill::Gcompress::internal
