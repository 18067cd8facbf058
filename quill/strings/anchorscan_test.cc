// The vectorised candidate scans against plain loops, and the searches built
// on them (XPos, BXPos, PosNum, ReplaceStr) against the standard library, on
// texts long enough for every block size and its edges.
#include "quill/strings/internal/anchorscan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "quill/strings/replace.h"
#include "quill/strings/search.h"

namespace quill::Gstrings {
namespace {

using internal::Anchors;

// Text lengths around the 128-byte blocks (64 UTF-16 units), the short-text
// cut-over and the switch to AVX2.
const std::vector<std::size_t> kLengths = {0, 1, 5, 63, 64, 65, 127, 128, 129, 130, 200, 255, 256, 257, 300, 383, 384, 385, 1000};

template <class C>
std::basic_string<C> RandomText(std::mt19937& rng, std::size_t n, const std::basic_string<C>& alphabet) {
  std::basic_string<C> s;
  for (std::size_t i = 0; i < n; ++i) s += alphabet[rng() % alphabet.size()];
  return s;
}

// Every candidate, in order, as a plain loop finds them.
template <class C>
std::vector<std::size_t> PlainCandidates(const std::basic_string<C>& t, std::size_t count, const Anchors<C>& a) {
  std::vector<std::size_t> out;
  for (std::size_t i = 0; i < count; ++i) {
    const C x = t[i + a.first];
    const C y = t[i + a.second];
    if ((x == a.a0 || x == a.a1) && (y == a.b0 || y == a.b1)) out.push_back(i);
  }
  return out;
}

// The scans hand over every candidate of the plain loop, in order forwards
// and in reverse order backwards, each once; besides them, only positions
// where the rarer anchor matches (a scan by that anchor alone hands those
// over while it is cheaper). Pairs of one value, of two values one bit apart and
// of two unrelated values; texts with a common first anchor (the
// two-anchor scan takes over) and a rare one.
template <class C>
void CheckScans(const std::basic_string<C>& alphabet, uint32_t seed) {
  std::mt19937 rng(seed);
  for (std::size_t n : kLengths) {
    for (int round = 0; round < 30; ++round) {
      const std::basic_string<C> t = RandomText<C>(rng, n, alphabet.substr(0, round % 5 == 0 ? 3 : alphabet.size()));
      Anchors<C> a;
      a.first = rng() % 3;
      a.second = a.first + rng() % 5;
      if (n <= a.second) continue;
      const std::size_t count = n - a.second;
      a.a0 = alphabet[rng() % alphabet.size()];
      a.b0 = alphabet[rng() % alphabet.size()];
      switch (round % 3) {
        case 0: a.a1 = a.a0; a.b1 = a.b0; break;
        case 1: a.a1 = static_cast<C>(a.a0 ^ 0x20); a.b1 = static_cast<C>(a.b0 ^ 0x20); break;
        default: a.a1 = alphabet[rng() % alphabet.size()]; a.b1 = alphabet[rng() % alphabet.size()]; break;
      }
      a.secondIsRarer = rng() % 2 == 0;
      const std::vector<std::size_t> want = PlainCandidates(t, count, a);
      auto check = [&](const std::vector<std::size_t>& got, const char* way) {
        std::size_t w = 0;
        for (std::size_t g = 0; g < got.size(); ++g) {
          ASSERT_TRUE(g == 0 || got[g] > got[g - 1]) << way << " order, length " << n;
          const C x = t[got[g] + (a.secondIsRarer ? a.second : a.first)];
          ASSERT_TRUE(a.secondIsRarer ? (x == a.b0 || x == a.b1) : (x == a.a0 || x == a.a1))
              << way << " rarer anchor, length " << n;
          if (w < want.size() && want[w] == got[g]) ++w;
        }
        EXPECT_EQ(w, want.size()) << way << " missed a candidate, length " << n << " round " << round;
      };
      std::vector<std::size_t> got;
      EXPECT_EQ(internal::ScanForward(t.data(), count, a, [&](std::size_t i) {
                  got.push_back(i);
                  return false;
                }),
                count);
      check(got, "forward");
      got.clear();
      EXPECT_EQ(internal::ScanBackward(t.data(), count, a, [&](std::size_t i) {
                  got.push_back(i);
                  return false;
                }),
                count);
      check(std::vector<std::size_t>(got.rbegin(), got.rend()), "backward");
      // Stopping at a candidate answers that candidate.
      if (!want.empty()) {
        const std::size_t stop = want[want.size() / 2];
        EXPECT_EQ(internal::ScanForward(t.data(), count, a, [&](std::size_t i) { return i == stop; }), stop);
        EXPECT_EQ(internal::ScanBackward(t.data(), count, a, [&](std::size_t i) { return i == stop; }), stop);
      }
    }
  }
}

TEST(AnchorScan, SameCandidatesAsAPlainLoop8Bit) {
  CheckScans<char>("aAbBzZ \xE9\xC9\x80", 1);
}

TEST(AnchorScan, SameCandidatesAsAPlainLoopUtf16) {
  CheckScans<char16_t>(u"aAbBzZ \u00E9\u00C9\u0430\u0410\u4E2D\uFF21", 2);
}

// The scan by one rare byte, or by the two cases of a rare letter (aligned
// vector loads after a first unaligned one, an unaligned last one ending at
// the text's end), at every alignment of the text, with the byte at the
// first and last candidate places, around the vector and round edges, and
// nowhere; the text is allocated to its exact size, so a read past either
// end shows under the address sanitizer.
TEST(AnchorScan, RareByteAtEveryAlignmentAndEdge) {
  for (bool fold : {false, true}) {
    // fold: the anchors accept both cases of their letters, and the text has
    // both.
    Anchors<char> a;
    a.first = 0;
    a.second = 1;
    a.a0 = fold ? 'Q' : 'q';  // the capital first: either case may come first
    a.a1 = 'q';
    a.b0 = 'z';
    a.b1 = fold ? 'Z' : 'z';
    for (std::size_t misalign = 0; misalign < 64; ++misalign) {
      for (std::size_t n : {257, 258, 300, 320, 321, 322, 385, 513, 700, 1100}) {
        const std::size_t count = n - 1;
        std::vector<std::size_t> places = {0, count - 1};
        for (std::size_t edge : {31, 32, 33, 63, 64, 65, 127, 128, 129, 255, 256, 257, 319, 320, 511, 512}) {
          if (edge >= misalign && edge - misalign < count) places.push_back(edge - misalign);
        }
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        for (bool none : {false, true}) {
          std::unique_ptr<char[]> block(new char[misalign + n]);
          char* const t = block.get() + misalign;
          std::fill(t, t + n, '.');
          std::vector<std::size_t> want;
          if (!none) {
            for (std::size_t at : places) {
              t[at] = fold && at % 2 == 1 ? 'Q' : 'q';
              t[at + 1] = fold && at % 3 == 1 ? 'Z' : 'z';
              want.push_back(at);
            }
          }
          std::vector<std::size_t> got;
          ASSERT_EQ(internal::ScanForward(t, count, a, [&](std::size_t i) {
                      got.push_back(i);
                      return false;
                    }),
                    count);
          ASSERT_EQ(got, want) << "misalign " << misalign << " length " << n;
          for (std::size_t stop : want) {
            ASSERT_EQ(internal::ScanForward(t, count, a, [&](std::size_t i) { return i == stop; }), stop)
                << "misalign " << misalign << " length " << n;
          }
        }
      }
    }
  }
}

// A byte that starts rare and then fills the text: the scan by it gives up
// and the two-anchor scan finds the rest, each candidate once.
TEST(AnchorScan, RareByteThatTurnsCommon) {
  Anchors<char> a;
  a.first = 0;
  a.second = 2;
  a.a0 = a.a1 = 'q';
  a.b0 = a.b1 = 'z';
  std::string t(5000, '.');
  for (std::size_t i = 1000; i < t.size(); i += 2) t[i] = 'q';
  for (std::size_t i = 1000; i + 2 < t.size(); i += 50) t[i + 2] = 'z';
  t[10] = 'q';
  t[12] = 'z';
  const std::size_t count = t.size() - 2;
  const std::vector<std::size_t> want = PlainCandidates(t, count, a);
  std::vector<std::size_t> got;
  EXPECT_EQ(internal::ScanForward(t.data(), count, a, [&](std::size_t i) {
              if (t[i + 2] == 'z') got.push_back(i);
              return false;
            }),
            count);
  EXPECT_EQ(got, want);
  EXPECT_GT(want.size(), 50u);
}

// XPos, PosNum and BXPos answer like find and rfind, for every start and
// several n, with patterns cut from the text (so they occur) and random ones.
template <class C>
void CheckSearches(const std::basic_string<C>& alphabet, uint32_t seed) {
  using View = std::basic_string_view<C>;
  std::mt19937 rng(seed);
  for (std::size_t len : kLengths) {
    for (int round = 0; round < 12; ++round) {
      const std::basic_string<C> t = RandomText<C>(rng, len, alphabet.substr(0, round % 2 ? 3 : alphabet.size()));
      std::basic_string<C> p;
      if (!t.empty() && round % 3 != 0) {
        p = t.substr(rng() % t.size(), 1 + rng() % 6);
      } else {
        p = RandomText<C>(rng, 1 + rng() % 4, alphabet);
      }
      const View tv(t);
      for (int32_t start : {-1, 0, 1, 2, 40, 64, 65, static_cast<int32_t>(len), static_cast<int32_t>(len) + 1}) {
        for (int32_t n : {1, 2, 3}) {
          // Forwards: the n-th occurrence at or after start.
          std::size_t want = tv.find(p, start < 1 ? 0 : static_cast<std::size_t>(start - 1));
          for (int32_t k = 1; k < n && want != View::npos; ++k) want = tv.find(p, want + 1);
          const int32_t expected =
              (start > 0 && static_cast<std::size_t>(start) > len) || want == View::npos ? 0 : static_cast<int32_t>(want + 1);
          ASSERT_EQ(XPos(p, tv, start, n), expected) << "len " << len << " start " << start << " n " << n;
          // Backwards from start (the length or beyond: from the end).
          const int64_t begin = (start >= 1 && start < static_cast<int32_t>(len))
                                    ? start
                                    : static_cast<int64_t>(len) - static_cast<int64_t>(p.size()) + 1;
          std::size_t back = begin < 1 ? View::npos : tv.rfind(p, static_cast<std::size_t>(begin - 1));
          for (int32_t k = 1; k < n && back != View::npos; ++k) back = back == 0 ? View::npos : tv.rfind(p, back - 1);
          ASSERT_EQ(BXPos(p, tv, start, n), back == View::npos ? 0 : static_cast<int32_t>(back + 1))
              << "len " << len << " start " << start << " n " << n;
        }
      }
      std::size_t first = tv.find(p);
      ASSERT_EQ(PosNum(p, tv, 1), first == View::npos ? 0 : static_cast<int32_t>(first + 1));
      // ReplaceStr: every non-overlapping occurrence, left to right.
      std::basic_string<C> replaced;
      std::size_t last = 0;
      for (std::size_t at = tv.find(p); at != View::npos; at = tv.find(p, last)) {
        replaced.append(t, last, at - last);
        replaced += alphabet.substr(0, 2);
        last = at + p.size();
      }
      replaced.append(t, last);
      ASSERT_EQ(ReplaceStr(tv, View(p), View(alphabet).substr(0, 2)), replaced) << "len " << len;
    }
  }
}

TEST(XPos, LongTextsSameAnswersAsFind8Bit) { CheckSearches<char>("ab \xE9z", 3); }

TEST(XPos, LongTextsSameAnswersAsFindUtf16) { CheckSearches<char16_t>(u"ab \u00E9\u4E2D", 4); }

// A match that ends on the text's last character, and one at the very
// start, with the text just past a block edge.
TEST(XPos, MatchesAtBothEndsOfLongTexts) {
  const std::string t = "xy" + std::string(126, '.') + "xy";
  EXPECT_EQ(XPos("xy", t, 1, 2), 129);
  EXPECT_EQ(BXPos("xy", t, 0, 1), 129);
  EXPECT_EQ(BXPos("xy", t, 0, 2), 1);
  const std::u16string u = u"xy" + std::u16string(126, u'.') + u"xy";
  EXPECT_EQ(XPos(u"xy", u, 3, 1), 129);
  EXPECT_EQ(BXPos(u"xy", u, 128, 1), 1);
}

}  // namespace
}  // namespace quill::Gstrings
