// The tokens the coder chooses, on small hand-checked inputs. Each test runs
// both the fast coder and the window classes, which must agree.
#include <gtest/gtest.h>

#include "quill/compress/internal/lztestutil.h"

namespace quill::Gcompress::testing {
namespace {

// Both coders' token listing; fails the test when they differ.
std::string Tokens(const Bytes& plain) {
  const Bytes fast = EncodeBody(plain, Coder::kFast);
  const Bytes reference = EncodeBody(plain, Coder::kReference);
  EXPECT_EQ(fast, reference);
  EXPECT_EQ(DecodeBody(fast, Coder::kFast), plain);
  return Describe(fast);
}

TEST(NoRepeatsHelper, HasNoRepeatedTriple) {
  const Bytes b = NoRepeats(5000, 1);
  std::set<uint32_t> seen;
  for (size_t i = 0; i + 2 < b.size(); ++i)
    EXPECT_TRUE(seen.insert(b[i] | (b[i + 1] << 8) | (b[i + 2] << 16)).second) << i;
}

// Edge case: empty input gives no tokens.
TEST(CompressSource, EmptyInputGivesNoTokens) { EXPECT_EQ(Tokens({}), ""); }

// Edge case: one and two bytes are one literal run (a copy needs 3 bytes of lookahead).
TEST(CompressSource, OneAndTwoBytesAreOneLiteralRun) {
  EXPECT_EQ(EncodeBody(ToBytes("A"), Coder::kFast), (Bytes{0x02, 'A'}));
  EXPECT_EQ(EncodeBody(ToBytes("AA"), Coder::kFast), (Bytes{0x04, 'A', 'A'}));
  EXPECT_EQ(Tokens(ToBytes("AB")), "L2");
}

// Edge case: 300 bytes without a repeated 3-byte string: runs of 127, 127, 46.
TEST(CompressSource, ThreeHundredUniqueBytesSplitIntoRuns) {
  const Bytes plain = NoRepeats(300, 7);
  EXPECT_EQ(Tokens(plain), "L127 L127 L46");
  const Bytes body = EncodeBody(plain, Coder::kFast);
  ASSERT_EQ(body.size(), 303u);
  EXPECT_EQ(body[0], 0xFE);
  EXPECT_EQ(body[128], 0xFE);
  EXPECT_EQ(body[256], 0x5C);
}

// Edge case: 100 equal bytes: one literal, five copies (1, 18), one (1, 9).
TEST(CompressSource, HundredEqualBytes) {
  EXPECT_EQ(Tokens(Bytes(100, 'z')), "L1 C1:18 C1:18 C1:18 C1:18 C1:18 C1:9");
}

// Edge case: four equal bytes: a literal and a copy of distance 1, length 3.
TEST(CompressSource, FourEqualBytes) { EXPECT_EQ(Tokens(Bytes(4, 7)), "L1 C1:3"); }

// Edge case: three equal bytes are all literals (nothing earlier to copy from).
TEST(CompressSource, ThreeEqualBytesAreLiterals) { EXPECT_EQ(Tokens(Bytes(3, 7)), "L3"); }

// Edge case: "abc" four times: literal run 06 61 62 63, copy 07 60 (D 3, L 9).
TEST(CompressSource, AbcFourTimes) {
  EXPECT_EQ(EncodeBody(ToBytes("abcabcabcabc"), Coder::kFast),
            (Bytes{0x06, 'a', 'b', 'c', 0x07, 0x60}));
  EXPECT_EQ(Tokens(ToBytes("abcabcabcabc")), "L3 C3:9");
}

// Edge case: a literal run reaching 128 bytes is split into 127 and 1.
TEST(CompressSource, LiteralRunOf128Splits) { EXPECT_EQ(Tokens(NoRepeats(128, 3)), "L127 L1"); }

// Edge case: of two equally long matches the nearer is coded (distance 5, not 9).
TEST(FindMatch, NearerOfEqualMatchesWins) {
  EXPECT_EQ(Tokens(ToBytes("abcXabcYYabcZ")), "L4 C4:3 L2 C5:3 L1");
}

// An older candidate replaces a newer one only when strictly longer.
TEST(FindMatch, StrictlyLongerOlderMatchWins) {
  EXPECT_EQ(Tokens(ToBytes("abcdXabcYabcdZ")), "L5 C5:3 L1 C9:4 L1");
}

// Deliberate: a match of 9 or more ends the search, even when an older
// candidate would give 12.
TEST(FindMatch, StopsAtFirstMatchOfNine) {
  const std::string p = "ABCDEFGHIJKL";
  EXPECT_EQ(Tokens(ToBytes(p + "#" + p.substr(0, 9) + "%" + p)), "L13 C13:9 L1 C10:9 C23:3");
}

// A match of 8 does not stop the search: an older, longer one still wins.
TEST(FindMatch, MatchOfEightKeepsSearching) {
  const std::string p = "ABCDEFGHIJKL";
  EXPECT_EQ(Tokens(ToBytes(p + "#" + p.substr(0, 8) + "%" + p)), "L13 C13:8 L1 C22:12");
}

// Edge case: with a full lookahead a repeat is found 1,921 bytes back ...
TEST(FindMatch, RepeatAt1921IsFoundMidInput) {
  const Bytes s = NoRepeats(6000, 11);
  Bytes plain(s.begin(), s.begin() + 1921);
  plain.insert(plain.end(), s.begin(), s.begin() + 10);
  plain.insert(plain.end(), s.begin() + 3000, s.begin() + 3500);
  EXPECT_NE(Tokens(plain).find("C1921:10"), std::string::npos);
}

// ... but not 1,922 back: the 127-byte lookahead occupies the rest of the window.
TEST(FindMatch, RepeatAt1922IsMissedMidInput) {
  const Bytes s = NoRepeats(6000, 11);
  Bytes plain(s.begin(), s.begin() + 1922);
  plain.insert(plain.end(), s.begin(), s.begin() + 10);
  plain.insert(plain.end(), s.begin() + 3000, s.begin() + 3500);
  const std::string t = Tokens(plain);
  EXPECT_EQ(t.find("C1922:"), std::string::npos) << t;
}

// Edge case: while the lookahead drains at the end, the distance reaches 2,045.
TEST(FindMatch, RepeatAt2045IsFoundAtTheEnd) {
  const Bytes s = NoRepeats(3000, 5);
  Bytes plain(s.begin(), s.begin() + 2045);
  plain.insert(plain.end(), s.begin(), s.begin() + 3);
  const std::string t = Tokens(plain);
  EXPECT_EQ(t.substr(t.size() - 7), "C2045:3") << t;
}

// ... and 2,046 is beyond the window even then.
TEST(FindMatch, RepeatAt2046IsMissedAtTheEnd) {
  const Bytes s = NoRepeats(3000, 5);
  Bytes plain(s.begin(), s.begin() + 2046);
  plain.insert(plain.end(), s.begin(), s.begin() + 3);
  const std::string t = Tokens(plain);
  EXPECT_EQ(t.find("C2046"), std::string::npos) << t;
}

// Edge case: an occurrence is still found after its first byte was coded 39
// more times ...
TEST(FindMatch, OccurrenceSurvives39LaterCodings) {
  const std::string plain = "xyz" + std::string(39, 'x') + "-xyz";
  const std::string t = Tokens(ToBytes(plain));
  EXPECT_EQ(t.substr(t.size() - 5), "C43:3") << t;
}

// ... and missed after exactly 40 (the 41st entry drops it from the list).
TEST(FindMatch, OccurrenceDroppedAfter40LaterCodings) {
  const std::string plain = "xyz" + std::string(40, 'x') + "-xyz";
  const std::string t = Tokens(ToBytes(plain));
  EXPECT_EQ(t.find("C44:3"), std::string::npos) << t;
  EXPECT_EQ(t[t.rfind(' ') + 1], 'L') << t;
}

// Bytes inside a copy are entered in the dictionary too: "bcd" is found at
// distance 3, inside the copied "abcd".
TEST(EnlargeDictionary, BytesInsideACopyAreEntered) {
  EXPECT_EQ(Tokens(ToBytes("abcd-abcd+bcd")), "L5 C5:4 L1 C4:3");
}

// A copy may run on into the lookahead itself (overlapping copy).
TEST(FindMatch, CopyOverlapsItsOwnLookahead) {
  EXPECT_EQ(Tokens(ToBytes("ababababab")), "L2 C2:8");
}

}  // namespace
}  // namespace quill::Gcompress::testing
