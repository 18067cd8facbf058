// Block sizes and byte helpers shared by the LZG encoder and decoder.
#pragma once

#include <cstdint>
#include <cstring>

#include "quill/compress/internal/lzformat.h"
#include "quill/rtl/streams.h"

namespace quill::Gcompress::internal {

inline constexpr int64_t kInBlock = 1 << 16;  // input read per refill
// Room for the longest token: a run header and 127 bytes (a copy needs 2).
inline constexpr int64_t kTokenRoom = 2 + kMaxLiteralRun;

// Reads until `count` bytes arrived or the stream delivers nothing more.
inline int64_t ReadFully(TStream& stream, uint8_t* buffer, int64_t count) {
  int64_t got = 0;
  while (got < count) {
    const int64_t n = stream.Read(buffer + got, count - got);
    if (n <= 0) break;
    got += n;
  }
  return got;
}

inline uint64_t Load64(const uint8_t* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  return v;
}

}  // namespace quill::Gcompress::internal
