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

#include "quill/compress/internal/lzblocks.h"
#include "quill/compress/internal/lzcoder.h"
#include "quill/rtl/internal/memorystream_access.h"

namespace quill::Gcompress::internal {
namespace {

using quill::internal::MemoryStreamAccess;

// Copies with a period d below 8 are built arithmetically: the last d output
// bytes, as a number, times kPeriodRepeat[d] (one bit at every multiple of d
// bytes) give 16 bytes of the repeated pattern; bytes 16 to 23 are the same
// pattern from its phase 16 mod d, a shift of kPeriodTailShift[d] bits.
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
constexpr uint8_t kPeriodTailShift[8] = {0, 0, 0, 8, 0, 8, 32, 16};  // 8 * (16 mod d)

// Room kept writable past the output limit: a literal run's fast move writes
// 128 bytes, a copy's 24.
constexpr int64_t kOutSlack = kTokenRoom + 32;
// Window-mode block: the 2,048-byte history plus room for output.
constexpr int64_t kOutCap = kWindowSize + (1 << 17);
// Direct mode grows the destination by this much (plus the slack) at a time;
// the stream's own capacity grows geometrically underneath.
constexpr int64_t kDirectChunk = 1 << 18;

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
    while (ip <= ip_limit && op <= op_limit) {
      const uint32_t b = ip[0];
      const uint32_t word = b | (uint32_t{ip[1]} << 8);
      if (b & 1) {
        const uint32_t d = (word & 0x0FFFu) >> 1;
        const uint32_t len = (word >> 12) + kMinMatch;
        const uint8_t* const s = op - d;
        // The uncommon copies: d below 8, and the ring's special cases
        // (d == 0 or d + len above 2,048). A comparison against a constant
        // (d outside 8 .. 2,030) lets the common copies through first.
        if (d - 8 > static_cast<uint32_t>(kWindowSize) - 8 - kMaxMatch &&
            (d < 8 || d + len > static_cast<uint32_t>(kWindowSize))) [[unlikely]] {
          if (d - 1 > static_cast<uint32_t>(kWindowSize) - len - 1) break;  // general step
          // A short period (d below 8): the copy repeats the last d bytes.
          // Spread them over 16 bytes with one multiplication (the d-byte
          // pieces land side by side, so nothing carries) and store the
          // pattern as words, instead of a chain of byte copies that each
          // wait for the one before.
          uint64_t last;
          std::memcpy(&last, op - 8, 8);
          const uint64_t unit = last >> (64 - 8 * d);
          const Repeat16 q = static_cast<Repeat16>(unit) * kPeriodRepeat[d];
          const uint64_t lo = static_cast<uint64_t>(q);
          const uint64_t hi = static_cast<uint64_t>(q >> 64);
          const uint64_t tail = static_cast<uint64_t>(q >> kPeriodTailShift[d]);
          std::memcpy(op, &lo, 8);
          std::memcpy(op + 8, &hi, 8);
          std::memcpy(op + 16, &tail, 8);
        } else {
          // Word copies: each reads at least 8 bytes behind what it writes.
          std::memcpy(op, s, 8);
          std::memcpy(op + 8, s + 8, 8);
          std::memcpy(op + 16, s + 16, 8);
        }
        ip += 2;
        op += len;
      } else {
        const uint32_t n = b >> 1;
        // Fixed-size moves (three words, or 128 bytes) compile to plain or
        // vector moves instead of a call; both buffers have room past the run.
        if (n <= 24) {
          std::memcpy(op, ip + 1, 8);
          std::memcpy(op + 8, ip + 9, 8);
          std::memcpy(op + 16, ip + 17, 8);
        } else {
          std::memcpy(op, ip + 1, 128);
        }
        ip += n + 1;
        op += n;
      }
      if constexpr (kReport) {
        // So that an error from the callback keeps this token.
        w = op - out;
        consumed = consumed_before + (ip - ip_first);
        progress(start + consumed, size);
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
