// Constants of the "LZG00" token format and the coder's window, and the
// progress hook shared by the fast coder and the reference classes.
#pragma once

#include <cstdint>

namespace quill::Gcompress::internal {

inline constexpr int32_t kWindowSize = 2048;   // ring of the last output bytes
inline constexpr int32_t kLookahead = 127;     // bytes read ahead by the compressor
inline constexpr int32_t kMaxMatch = 18;       // longest copy
inline constexpr int32_t kMinMatch = 3;        // shortest copy
inline constexpr int32_t kMaxLiteralRun = 127; // longest literal run
inline constexpr int32_t kPositionsPerByte = 40;  // dictionary list length per byte value
inline constexpr int32_t kGoodEnough = 9;      // a match this long ends the search

inline constexpr char kMagic[5] = {'L', 'Z', 'G', '0', '0'};
inline constexpr int kHeaderSize = 9;  // magic + 32-bit version

// Builds the two bytes of a copy token, low byte first.
inline void EncodeCopy(uint8_t out[2], uint32_t distance, uint32_t length) {
  const uint32_t w = (distance << 1) | 1u | ((length - kMinMatch) << 12);
  out[0] = static_cast<uint8_t>(w);
  out[1] = static_cast<uint8_t>(w >> 8);
}

// Splits a copy token's word into distance (0..2047) and length (3..18).
inline void DecodeCopy(uint32_t w, uint32_t& distance, uint32_t& length) {
  distance = (w & 0x0FFFu) >> 1;
  length = (w >> 12) + kMinMatch;
}

// Progress sink of a coding loop: `report` may be null (no callback).
// Positions are cut to their low 32 bits before they are passed on.
struct LZProgress {
  void* context = nullptr;
  void (*report)(void* context, int32_t position, int32_t max_value) = nullptr;

  void operator()(int64_t position, int64_t size) const {
    if (report != nullptr)
      report(context, static_cast<int32_t>(static_cast<uint32_t>(position)),
             static_cast<int32_t>(static_cast<uint32_t>(size)));
  }
};

}  // namespace quill::Gcompress::internal
