// Expanding hand-made token streams: overlapping copies, the ring's
// write-back when a copy runs over its own source, and damaged data.
#include <gtest/gtest.h>

#include "quill/compress/internal/lztestutil.h"

namespace quill::Gcompress::testing {
namespace {

// Decodes with both expanders; fails when they differ.
Bytes Expand(const Bytes& tokens) {
  const Bytes fast = DecodeBody(tokens, Coder::kFast);
  EXPECT_EQ(fast, DecodeBody(tokens, Coder::kReference));
  return fast;
}

void AddLiterals(Bytes& tokens, const Bytes& bytes) {
  for (size_t i = 0; i < bytes.size(); i += 127) {
    const size_t n = std::min<size_t>(127, bytes.size() - i);
    tokens.push_back(static_cast<uint8_t>(n * 2));
    tokens.insert(tokens.end(), bytes.begin() + static_cast<ptrdiff_t>(i),
                  bytes.begin() + static_cast<ptrdiff_t>(i + n));
  }
}

void AddCopy(Bytes& tokens, uint32_t distance, uint32_t length) {
  uint8_t t[2];
  internal::EncodeCopy(t, distance, length);
  tokens.push_back(t[0]);
  tokens.push_back(t[1]);
}

// 2,048 bytes that differ from their neighbours.
Bytes Pattern(size_t n) {
  Bytes b(n);
  for (size_t i = 0; i < n; ++i) b[i] = static_cast<uint8_t>(i * 7 + 3);
  return b;
}

// Edge case: the 100-equal-bytes tokens expand through overlapping copies.
TEST(DecompressSource, OverlappingCopiesRepeatAPattern) {
  Bytes tokens;
  AddLiterals(tokens, {'z'});
  for (int i = 0; i < 5; ++i) AddCopy(tokens, 1, 18);
  AddCopy(tokens, 1, 9);
  EXPECT_EQ(Expand(tokens), Bytes(100, 'z'));
  Bytes abc;
  AddLiterals(abc, ToBytes("abc"));
  AddCopy(abc, 3, 9);
  EXPECT_EQ(Expand(abc), ToBytes("abcabcabcabc"));
}

// Deliberate: with a full window, a copy of distance 2,040 and length 18
// overwrites the front of its own source in the ring; what is written out is
// read back from there after the copy, while the window keeps the copied bytes.
TEST(UnpackSequence, FullWindowCopyShowsItsOwnOverwrite) {
  const Bytes p = Pattern(2048);
  Bytes tokens;
  AddLiterals(tokens, p);
  AddCopy(tokens, 2040, 18);
  AddCopy(tokens, 18, 18);  // re-reads what the window holds
  Bytes expected = p;
  // shown: p[16..25] then p[18..25]
  expected.insert(expected.end(), p.begin() + 16, p.begin() + 26);
  expected.insert(expected.end(), p.begin() + 18, p.begin() + 26);
  // held in the window: p[8..25]
  expected.insert(expected.end(), p.begin() + 8, p.begin() + 26);
  EXPECT_EQ(Expand(tokens), expected);
}

// Below the quirk's threshold (distance + length <= 2,048) the copy is plain.
TEST(UnpackSequence, CopyAtTheThresholdIsPlain) {
  const Bytes p = Pattern(2048);
  Bytes tokens;
  AddLiterals(tokens, p);
  AddCopy(tokens, 2030, 18);
  Bytes expected = p;
  expected.insert(expected.end(), p.begin() + 18, p.begin() + 36);
  EXPECT_EQ(Expand(tokens), expected);
}

// The compressor never writes such a copy: compress-then-expand is exact
// even for inputs whose repeats sit right at the window's edge.
TEST(UnpackSequence, CompressorOutputNeverTriggersTheOverwrite) {
  const Bytes s = NoRepeats(2100, 4);
  Bytes plain(s.begin(), s.begin() + 2030);
  plain.insert(plain.end(), s.begin(), s.begin() + 18);
  const Bytes body = EncodeBody(plain, Coder::kFast);
  EXPECT_EQ(Expand(body), plain);
}

// Edge case (damaged): a distance beyond the output so far reads the ring's
// unwritten bytes, which are zero.
TEST(DecompressSource, DistanceBeyondOutputReadsZeros) {
  Bytes tokens;
  AddLiterals(tokens, ToBytes("AB"));
  AddCopy(tokens, 5, 4);
  EXPECT_EQ(Expand(tokens), (Bytes{'A', 'B', 0, 0, 0, 'A'}));
}

// Distance 0 copies each ring slot onto itself: the bytes 2,048 back.
TEST(DecompressSource, DistanceZeroRepeatsTheRingsOldBytes) {
  Bytes tokens;
  AddCopy(tokens, 0, 3);
  EXPECT_EQ(Expand(tokens), Bytes(3, 0));
  const Bytes p = Pattern(2048);
  Bytes full;
  AddLiterals(full, p);
  AddCopy(full, 0, 5);
  Bytes expected = p;
  expected.insert(expected.end(), p.begin(), p.begin() + 5);
  EXPECT_EQ(Expand(full), expected);
}

// Edge case (damaged): a literal run cut short keeps the ring's old bytes.
TEST(DecompressSource, CutLiteralRunKeepsRingBytes) {
  EXPECT_EQ(Expand(Bytes{0x0A, 'a', 'b'}), (Bytes{'a', 'b', 0, 0, 0}));
  const Bytes p = Pattern(2048);
  Bytes tokens;
  AddLiterals(tokens, p);
  tokens.insert(tokens.end(), {0x08, 'x'});  // 4 announced, 1 there
  Bytes expected = p;
  expected.insert(expected.end(), {'x', p[1], p[2], p[3]});
  EXPECT_EQ(Expand(tokens), expected);
}

// Edge case (damaged): a copy token cut after its first byte reads the
// missing byte as 0 (distance from the first byte, length 3).
TEST(DecompressSource, CutCopyTokenReadsMissingByteAsZero) {
  Bytes tokens;
  AddLiterals(tokens, ToBytes("abcd"));
  tokens.push_back(0x05);  // distance 2, length 3
  EXPECT_EQ(Expand(tokens), ToBytes("abcdcdc"));
}

// A zero literal header appends nothing and decoding goes on.
TEST(DecompressSource, ZeroLiteralHeaderAppendsNothing) {
  Bytes tokens = {0x00, 0x00};
  AddLiterals(tokens, ToBytes("ok"));
  tokens.push_back(0x00);
  EXPECT_EQ(Expand(tokens), ToBytes("ok"));
}

// Foreign bytes after valid tokens are decoded as tokens too (not detected).
TEST(DecompressSource, TrailingBytesAreDecodedAsTokens) {
  Bytes tokens;
  AddLiterals(tokens, ToBytes("hi"));
  tokens.insert(tokens.end(), {0x02, '!'});
  EXPECT_EQ(Expand(tokens), ToBytes("hi!"));
}

// Long damaged streams wrap the output buffer many times without leaving it.
TEST(DecompressSource, LongStreamsOfMaximalCopies) {
  Bytes tokens;
  AddLiterals(tokens, Pattern(300));
  for (int i = 0; i < 200000; ++i) AddCopy(tokens, static_cast<uint32_t>(1 + i % 2047), 18);
  const Bytes out = Expand(tokens);
  EXPECT_EQ(out.size(), 300u + 200000u * 18u);
}

}  // namespace
}  // namespace quill::Gcompress::testing
