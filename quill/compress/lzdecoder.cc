// The fast LZG decoder.
//
// Expansion keeps the output in a linear buffer whose first 2,048 bytes stand
// for the ring (zero before anything is written), so a copy is a plain
// backwards copy; the one case where the ring's write-back differs from a
// plain copy (distance + length above 2,048) takes a slow path.
#include <algorithm>
#include <cstring>
#include <memory>

#include "quill/compress/internal/lzblocks.h"
#include "quill/compress/internal/lzcoder.h"

namespace quill::Gcompress::internal {
namespace {

// For a copy distance d below 8: the smallest multiple of d that is at least 8.
constexpr uint8_t kPeriodStep[8] = {0, 8, 8, 9, 8, 10, 12, 14};

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

}  // namespace quill::Gcompress::internal
