// Helpers shared by the Gcompress tests: byte vectors in and out of memory
// streams, both coders side by side, and a readable listing of tokens.
#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "quill/compress/internal/lzcoder.h"
#include "quill/compress/internal/lzreference.h"
#include "quill/rtl/streams.h"

namespace quill::Gcompress::testing {

using Bytes = std::vector<uint8_t>;

inline Bytes ToBytes(std::string_view s) { return Bytes(s.begin(), s.end()); }

inline Bytes Contents(TMemoryStream& m) {
  return Bytes(m.Memory(), m.Memory() + m.Size());
}

inline void Fill(TMemoryStream& m, const Bytes& b) {
  m.SetSize(0);
  if (!b.empty()) m.WriteBuffer(b.data(), static_cast<int64_t>(b.size()));
  m.SetPosition(0);
}

enum class Coder { kFast, kReference };

// Token bytes (no header) for `plain`.
inline Bytes EncodeBody(const Bytes& plain, Coder coder) {
  TMemoryStream in, out;
  Fill(in, plain);
  if (coder == Coder::kFast)
    internal::LZEncode(in, out, {});
  else
    internal::ReferenceCompress(in, out, {});
  return Contents(out);
}

// Output of decoding token bytes (no header).
inline Bytes DecodeBody(const Bytes& tokens, Coder coder) {
  TMemoryStream in, out;
  Fill(in, tokens);
  if (coder == Coder::kFast)
    internal::LZDecode(in, out, {});
  else
    internal::ReferenceDecompress(in, out, {});
  return Contents(out);
}

// Lists the tokens of a body: "L3" for a literal run of 3 bytes, "C1:18" for
// a copy of distance 1 and length 18, separated by spaces.
inline std::string Describe(const Bytes& tokens) {
  std::string s;
  size_t i = 0;
  while (i < tokens.size()) {
    if (!s.empty()) s += ' ';
    const uint8_t b = tokens[i];
    if (b & 1) {
      const uint32_t w = b | (i + 1 < tokens.size() ? uint32_t{tokens[i + 1]} << 8 : 0u);
      s += "C" + std::to_string((w & 0x0FFF) >> 1) + ":" + std::to_string((w >> 12) + 3);
      i += 2;
    } else {
      s += "L" + std::to_string(b >> 1);
      i += 1 + (b >> 1);
    }
  }
  return s;
}

inline Bytes RandomBytes(size_t n, uint32_t seed, int alphabet = 256) {
  std::mt19937 rng(seed);
  Bytes b(n);
  for (auto& c : b) c = static_cast<uint8_t>(rng() % static_cast<uint32_t>(alphabet));
  return b;
}

// A sequence in which no 3-byte string occurs twice.
inline Bytes NoRepeats(size_t n, uint32_t seed) {
  std::mt19937 rng(seed);
  std::set<uint32_t> seen;
  Bytes b;
  while (b.size() < n) {
    uint8_t c = static_cast<uint8_t>(rng());
    if (b.size() >= 2) {
      for (int tries = 0; tries < 256; ++tries, ++c) {
        const uint32_t key = b[b.size() - 2] | (b[b.size() - 1] << 8) | (uint32_t{c} << 16);
        if (seen.insert(key).second) break;
      }
    }
    b.push_back(c);
  }
  return b;
}

// `count` random tokens that look valid: a third are literal runs of 0 to 127
// bytes (each below `byte_range`), the rest copies of 3 to 18 bytes at any
// distance, one in `edge_every` of them right at the window's edge (2,030 to
// 2,047, where the ring's overwrite quirk lives). The last 0 to 2 bytes are
// cut off, so the stream often ends inside a token.
inline Bytes RandomTokens(std::mt19937& rng, size_t count, uint32_t byte_range, uint32_t edge_every) {
  Bytes tokens;
  for (size_t t = 0; t < count; ++t) {
    if (rng() % 3 == 0) {
      const uint8_t n = static_cast<uint8_t>(rng() % 128);
      tokens.push_back(static_cast<uint8_t>(n * 2));
      for (int i = 0; i < n; ++i) tokens.push_back(static_cast<uint8_t>(rng() % byte_range));
    } else {
      const uint32_t d = rng() % edge_every == 0 ? 2030 + rng() % 18 : rng() % 2048;
      uint8_t tok[2];
      internal::EncodeCopy(tok, d, 3 + rng() % 16);
      tokens.push_back(tok[0]);
      tokens.push_back(tok[1]);
    }
  }
  tokens.resize(tokens.size() - rng() % 3);
  return tokens;
}

}  // namespace quill::Gcompress::testing
