// The fast LZG coder.
//
// Compression keeps the input in a linear buffer (a 4 KiB history plus a
// 64 KiB block) instead of the 2,048-byte ring, and replaces the per-byte
// position lists by a hash chain over the first three bytes. The tokens stay
// exactly those of the window classes because only candidates that match at
// least three bytes can be chosen, and such a candidate is reached in the same
// newest-first order; the per-byte "last 40 codings" limit is kept with a
// running count of each byte value's codings.
//
// Expansion keeps the output in a linear buffer whose first 2,048 bytes stand
// for the ring (zero before anything is written), so a copy is a plain
// backwards copy; the one case where the ring's write-back differs from a
// plain copy (distance + length above 2,048) takes a slow path.
#include "quill/compress/internal/lzcoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace quill::Gcompress::internal {
namespace {

constexpr int64_t kHistory = 4096;      // input kept before the coding position
constexpr int64_t kInBlock = 1 << 16;   // input read per refill
constexpr int64_t kSlack = 128;         // readable bytes past the data (word loads, run copies)
constexpr int64_t kOutBlock = 1 << 16;  // output gathered per write
constexpr int kHashBits = 15;
constexpr uint32_t kRingMask = 4095;    // chain entries kept: > the window
constexpr int64_t kTokenRoom = 2 + kMaxLiteralRun;

// For a copy distance d below 8: the smallest multiple of d that is at least 8.
constexpr uint8_t kPeriodStep[8] = {0, 8, 8, 9, 8, 10, 12, 14};

// Reads until `count` bytes arrived or the stream delivers nothing more.
int64_t ReadFully(TStream& stream, uint8_t* buffer, int64_t count) {
  int64_t got = 0;
  while (got < count) {
    const int64_t n = stream.Read(buffer + got, count - got);
    if (n <= 0) break;
    got += n;
  }
  return got;
}

// The first three bytes at p as a number. Reads four bytes: callers keep one
// readable byte beyond the three.
inline uint32_t Load3(const uint8_t* p) {
  uint32_t v;
  std::memcpy(&v, p, 4);
  if constexpr (std::endian::native == std::endian::little) return v & 0xFFFFFFu;
  return v >> 8;
}

inline uint32_t Hash3(uint32_t key) { return (key * 2654435761u) >> (32 - kHashBits); }

inline uint64_t Load64(const uint8_t* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  return v;
}

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

void LZDecode(TStream& src, TStream& dst, const LZProgress& progress) {
  const int64_t start = src.Position();
  const int64_t size = src.Size();
  int64_t total = std::max<int64_t>(0, size - start);

  std::unique_ptr<uint8_t[]> in(new uint8_t[kInBlock]);
  int64_t in_pos = 0;
  int64_t in_end = 0;
  int64_t fetched = 0;   // bytes read from the source
  int64_t consumed = 0;  // bytes decoded

  // win[0 .. kWindowSize) stands for the ring before the first output byte.
  constexpr int64_t kOutCap = kWindowSize + (1 << 17);
  std::unique_ptr<uint8_t[]> win(new uint8_t[kOutCap + 64]());
  int64_t w = kWindowSize;        // end of the output
  int64_t pending = kWindowSize;  // first output byte not written yet

  auto write_pending = [&] {
    const int64_t from = pending;
    pending = w;
    if (w > from) dst.WriteBuffer(win.get() + from, w - from);
  };

  try {
    while (consumed < total) {
      if (in_end - in_pos < kTokenRoom && fetched < total) {
        std::memmove(in.get(), in.get() + in_pos, static_cast<size_t>(in_end - in_pos));
        in_end -= in_pos;
        in_pos = 0;
        const int64_t want = std::min(kInBlock - in_end, total - fetched);
        const int64_t got = ReadFully(src, in.get() + in_end, want);
        fetched += got;
        in_end += got;
        if (got < want) total = fetched;  // the source ended early
        if (in_pos == in_end) break;
      }
      if (w + kTokenRoom + 32 > kOutCap) {
        write_pending();
        std::memmove(win.get(), win.get() + (w - kWindowSize), kWindowSize);
        w = kWindowSize;
        pending = w;
      }

      // Fast run: whole tokens while the input holds a complete token and the
      // output has room, without per-token buffer checks. Copies that need
      // the ring's special cases (distance 0, or distance + length above
      // 2,048) are left to the general step below.
      {
        const uint8_t* ip = in.get() + in_pos;
        const uint8_t* const ip_first = ip;
        const uint8_t* const ip_limit = in.get() + in_end - kTokenRoom;
        uint8_t* op = win.get() + w;
        uint8_t* const op_limit = win.get() + kOutCap - kTokenRoom - 32;
        while (ip <= ip_limit && op <= op_limit) {
          const uint32_t b = ip[0];
          if (b & 1) {
            const uint32_t word = b | (uint32_t{ip[1]} << 8);
            const uint32_t d = (word & 0x0FFFu) >> 1;
            const uint32_t len = (word >> 12) + kMinMatch;
            // d == 0 or d + len > 2,048, as one unsigned comparison.
            if (d - 1 > static_cast<uint32_t>(kWindowSize) - len - 1) break;
            ip += 2;
            const uint8_t* s = op - d;
            if (d >= 8) {
              std::memcpy(op, s, 8);
              std::memcpy(op + 8, s + 8, 8);
              std::memcpy(op + 16, s + 16, 8);
            } else {
              // A short period: lay down the first 8 bytes one by one, then
              // copy words from a whole number of periods back (8 to 14
              // bytes), which no longer overlaps a word's own source.
              for (int k = 0; k < 8; ++k) op[k] = s[k];
              const uint8_t* t = op + 8 - kPeriodStep[d];
              std::memcpy(op + 8, t, 8);
              std::memcpy(op + 16, t + 8, 8);
            }
            op += len;
          } else {
            const uint32_t n = b >> 1;
            ++ip;
            // Fixed-size moves (16 or 128 bytes) compile to vector moves
            // instead of a call; both buffers have room past the run.
            if (n <= 16) {
              std::memcpy(op, ip, 16);
            } else {
              std::memcpy(op, ip, 128);
            }
            ip += n;
            op += n;
          }
          if (progress.report != nullptr) {
            w = op - win.get();  // so that an error from the callback writes this token
            progress(start + consumed + (ip - ip_first), size);
          }
        }
        const int64_t done = ip - ip_first;
        consumed += done;
        in_pos += done;
        w = op - win.get();
        if (done != 0) continue;
      }

      const uint8_t b = in[in_pos++];
      ++consumed;
      uint8_t* o = win.get() + w;
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
        std::memcpy(o, in.get() + in_pos, static_cast<size_t>(got));
        in_pos += got;
        consumed += got;
        // A run cut short leaves the ring's old bytes in the missing places.
        // (n < 2,048, so the two ranges never overlap.)
        if (got < n)
          std::memcpy(o + got, win.get() + (w + got - kWindowSize), static_cast<size_t>(n - got));
        w += n;
      }
      progress(start + consumed, size);
    }
    write_pending();
  } catch (...) {
    write_pending();
    throw;
  }
}

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
