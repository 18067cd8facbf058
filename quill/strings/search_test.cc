// Forward, backward and case-insensitive searches; prefixes, suffixes and
// counting, in both forms and on non-ASCII text.
#include "quill/strings/search.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "quill/rtl/casing.h"
#include "quill/rtl/syslocale.h"

namespace quill::Gstrings {
namespace {

struct PosCase {
  std::u16string pattern;
  std::u16string text;
  int32_t start;
  int32_t n;
  int32_t expected;
};

std::string Narrow(const std::u16string& s) { return std::string(s.begin(), s.end()); }

// ASCII table run through both forms.
TEST(XPos, Table) {
  const PosCase cases[] = {
      {u"aa", u"aaaa", 1, 2, 2},  // overlapping occurrences count
      {u"aa", u"aaaa", 1, 3, 3},
      {u"aa", u"aaaa", 1, 4, 0},
      {u"b", u"abcb", 3, 1, 4},
      {u"b", u"abcb", 0, 1, 2},   // a start below 1 counts as 1
      {u"b", u"abcb", -5, 2, 4},
      {u"b", u"abcb", 4, 1, 4},
      {u"b", u"abcb", 5, 1, 0},   // start beyond the text
      {u"b", u"abcb", 1, 0, 0},   // n of 0 never matches
      {u"b", u"abcb", 1, -1, 0},
      {u"", u"abc", 1, 1, 0},     // empty pattern
      {u"a", u"", 1, 1, 0},       // empty text
      {u"abcd", u"abc", 1, 1, 0}, // pattern longer than the text
      {u"bc", u"abc", 3, 1, 0},   // the match must lie within the text
      {u"abc", u"abc", 1, 1, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(XPos(c.pattern, c.text, c.start, c.n), c.expected)
        << Narrow(c.pattern) << " in " << Narrow(c.text) << " from " << c.start << " n " << c.n;
    EXPECT_EQ(XPos(Narrow(c.pattern), Narrow(c.text), c.start, c.n), c.expected);
  }
}

TEST(XPos, NonAsciiAndSurrogates) {
  EXPECT_EQ(XPos(u"\u00E9", u"caf\u00E9 caf\u00E9", 1, 2), 9);
  // A surrogate pair is two positions.
  EXPECT_EQ(XPos(u"x", u"\U0001F600x", 1, 1), 3);
  EXPECT_EQ(XPos(u"\U0001F600", u"a\U0001F600\U0001F600", 1, 2), 4);
  // Latin-1 bytes in the 8-bit form.
  EXPECT_EQ(XPos("\xE9", "caf\xE9", 1, 1), 4);
}

TEST(PosNum, CountsFromOneOverlapping) {
  EXPECT_EQ(PosNum(u"aa", u"aaaa", 2), 2);
  EXPECT_EQ(PosNum("aa", "aaaa", 3), 3);
  EXPECT_EQ(PosNum(u"ab", u"abab", 3), 0);
  EXPECT_EQ(PosNum(u"ab", u"abab", 0), 0);
  EXPECT_EQ(PosNum(u"", u"abab", 1), 0);
  EXPECT_EQ(PosNum("x", "", 1), 0);
}

TEST(BXPos, Table) {
  const PosCase cases[] = {
      {u"ab", u"abab", 4, 1, 3},   // a start equal to the length searches from the end
      {u"ab", u"abab", 3, 1, 3},
      {u"ab", u"abab", 2, 1, 1},
      {u"ab", u"abab", 1, 1, 1},
      {u"ab", u"abab", 0, 1, 3},   // a start below 1 searches from the end
      {u"ab", u"abab", 99, 1, 3},
      {u"ab", u"abab", 4, 2, 1},
      {u"ab", u"abab", 4, 3, 0},
      {u"ab", u"abab", 4, 0, 0},
      {u"aa", u"aaaa", 0, 2, 2},   // overlapping, backwards
      {u"abc", u"ab", 0, 1, 0},    // beginning position below 1
      {u"", u"ab", 1, 1, 0},
      {u"a", u"", 1, 1, 0},
      {u"ba", u"abab", 3, 1, 2},   // a given start near the end: no match past the end
      {u"b", u"abab", 3, 1, 2},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(BXPos(c.pattern, c.text, c.start, c.n), c.expected)
        << Narrow(c.pattern) << " in " << Narrow(c.text) << " from " << c.start << " n " << c.n;
    EXPECT_EQ(BXPos(Narrow(c.pattern), Narrow(c.text), c.start, c.n), c.expected);
  }
}

// The rule for a given start close to the end: the pattern must fit.
TEST(BXPos, GivenStartWherePatternWouldRunPastTheEnd) {
  // start 3 in "abab" for "ab": position 3 holds "ab" and fits.
  EXPECT_EQ(BXPos(u"ab", u"abab", 3, 1), 3);
  // start 3 in "abcab" for "ab": position 3 is "ca", going back finds 1.
  EXPECT_EQ(BXPos(u"ab", u"abcab", 3, 1), 1);
  // start 4 in "abcab" (less than the length 5) for "ab": 4 matches.
  EXPECT_EQ(BXPos("ab", "abcab", 4, 1), 4);
  // start 4 in "abcaX": "aX" no, then 1.
  EXPECT_EQ(BXPos(u"ab", u"abcaX", 4, 1), 1);
  EXPECT_EQ(BXPos(u"\U0001F600", u"\U0001F600a\U0001F600", 0, 2), 1);
}

TEST(CXPos, IgnoresCaseBothForms) {
  EXPECT_EQ(CXPos(u"AB", u"xxabAB", 1, 1), 3);
  EXPECT_EQ(CXPos(u"AB", u"xxabAB", 1, 2), 5);
  EXPECT_EQ(CXPos(u"AB", u"xxabAB", 4, 1), 5);
  EXPECT_EQ(CXPos("ab", "XXABab", 1, 2), 5);
  EXPECT_EQ(CXPos("ab", "XXABab", 1, 3), 0);
  EXPECT_EQ(CXPos("ab", "XXABab", 7, 1), 0);
  EXPECT_EQ(CXPos("ab", "XXABab", 1, 0), 0);
  EXPECT_EQ(CXPos("", "XXABab", 1, 1), 0);
  EXPECT_EQ(CXPos(u"AA", u"aaaa", 1, 3), 3);  // overlapping
}

TEST(CPos, FirstOccurrenceIgnoringCase) {
  EXPECT_EQ(CPos(u"\u00C4", u"x\u00E4"), 2);
  EXPECT_EQ(CPos(u"\u00E4", u"x\u00C4"), 2);
  EXPECT_EQ(CPos("\xC4", "x\xE4"), 2);  // Latin-1 in the 8-bit form
  EXPECT_EQ(CPos(u"\u0394\u0395", u"\u03B1\u03B4\u03B5"), 2);
  EXPECT_EQ(CPos(u"WORLD", u"hello world"), 7);
  EXPECT_EQ(CPos("WORLD", "hello world"), 7);
  EXPECT_EQ(CPos("", "abc"), 0);
  EXPECT_EQ(CPos(u"", u"abc"), 0);
  EXPECT_EQ(CPos(u"abc", u""), 0);
  // Surrogate pairs: Deseret capital and small letter long I.
  EXPECT_EQ(CPos(u"\U00010400", u"ab\U00010428"), 3);
}

// The on-the-fly search must answer exactly like searching the lowered
// copies, also when non-ASCII characters lower to ASCII ones (KELVIN SIGN to
// 'k', capital I with dot above to 'i') or sit next to matches.
TEST(CXPos, SameAnswersAsLoweredCopies) {
  const std::vector<std::u16string> texts = {
      u"Kelvin \u212A and k and K",
      u"\u0130stanbul istanbul ISTANBUL",
      u"stra\u00DFe STRASSE stra\u00DFe",
      u"\u039F\u03A3\u03A3\u0391 \u03C3\u03C2 abc",
      std::u16string(u"\U00010400x\U00010428X") + char16_t{0xD800} + u"xx" + char16_t{0xDC00},
      u"caf\u00C9 CAF\u00E9 caf\u00E9 cafe",
      u"aaAAaAaaA",
      u"",
  };
  const std::vector<std::u16string> patterns = {
      u"k", u"K", u"i", u"IS", u"stanbul", u"ss", u"\u00DF", u"\u03C3", u"x", u"xx",
      u"\u00E9", u"CAF", u"aa", u"Aa", u"\U00010428", u"e ", u"\u212A",
  };
  for (const auto& t : texts) {
    const std::u16string lt = AnsiLowerCase(t);
    for (const auto& p : patterns) {
      const std::u16string lp = AnsiLowerCase(p);
      for (int32_t start : {0, 1, 2, 5}) {
        for (int32_t n : {1, 2, 3}) {
          EXPECT_EQ(CXPos(p, t, start, n), XPos(lp, lt, start, n))
              << Narrow(p) << " / " << Narrow(t) << " " << start << " " << n;
        }
      }
    }
  }
}

// Same equivalence for the 8-bit form with Latin-1 bytes.
TEST(CXPos, AnsiSameAnswersAsLoweredCopies) {
  const std::vector<std::string> texts = {"Caf\xC9 caf\xE9 CAFE", "\xC4\xE4\xC4 abc ABC",
                                          "plain ASCII text, Text, TEXT", ""};
  const std::vector<std::string> patterns = {"caf", "\xE9", "\xC4", "ABC", "text", "e", "T"};
  for (const auto& t : texts) {
    const std::string lt = AnsiLowerCase(t);
    for (const auto& p : patterns) {
      const std::string lp = AnsiLowerCase(p);
      for (int32_t n : {1, 2, 3}) {
        EXPECT_EQ(CXPos(p, t, 1, n), XPos(lp, lt, 1, n)) << p << " / " << t << " " << n;
      }
    }
  }
}

// Random texts long enough for the vectorised scans (16 bytes / 8 units per
// step), mixing ASCII letters with characters whose lowering matters.
TEST(CXPos, RandomTextsSameAnswersAsLoweredCopies) {
  const std::u16string alphabet = std::u16string(u"aAkKiIsS -\u212A\u0130\u00E9\u00C9\u03A3\u00DF") +
                                  char16_t{0xD801} + char16_t{0xDC00};
  std::mt19937 rng(7);
  auto pick = [&](std::size_t len, std::size_t asciiOnlyUpTo) {
    std::u16string s;
    for (std::size_t i = 0; i < len; ++i) {
      s += alphabet[rng() % (asciiOnlyUpTo ? asciiOnlyUpTo : alphabet.size())];
    }
    return s;
  };
  for (int round = 0; round < 3000; ++round) {
    // Mostly ASCII texts with an occasional non-ASCII character.
    std::u16string t = pick(1 + rng() % 90, 10);
    if (round % 3 == 0 && !t.empty()) t[rng() % t.size()] = alphabet[10 + rng() % 8];
    const std::u16string p = pick(1 + rng() % 4, round % 2 ? 10 : 0);
    const std::u16string lt = AnsiLowerCase(t);
    const std::u16string lp = AnsiLowerCase(p);
    for (int32_t n : {1, 2, 3}) {
      ASSERT_EQ(CXPos(p, t, 1, n), XPos(lp, lt, 1, n)) << round;
    }
    const std::string a = Narrow(t.substr(0, t.find_first_of(alphabet.substr(10))));
    const std::string ap = Narrow(p.substr(0, p.find_first_of(alphabet.substr(10))));
    ASSERT_EQ(CXPos(ap, a, 1, 1), XPos(AnsiLowerCase(ap), AnsiLowerCase(a), 1, 1)) << round;
  }
}

// Sets the default ANSI code page for one test and restores it.
class PinnedCodePage {
 public:
  explicit PinnedCodePage(const char* cp) {
    if (const char* v = std::getenv("QUILL_ANSI_CODEPAGE")) saved_ = v;
    setenv("QUILL_ANSI_CODEPAGE", cp, 1);
    ResetLocaleCache();
  }
  ~PinnedCodePage() {
    if (saved_) {
      setenv("QUILL_ANSI_CODEPAGE", saved_->c_str(), 1);
    } else {
      unsetenv("QUILL_ANSI_CODEPAGE");
    }
    ResetLocaleCache();
  }

 private:
  std::optional<std::string> saved_;
};

// 8-bit text in UTF-8 and in a double-byte code page: the answers are those
// of the lowered copies, whatever bytes follow a lead byte.
TEST(CXPos, AnsiMultiByteCodePagesSameAnswersAsLoweredCopies) {
  const std::vector<std::string> texts = {
      "\xC3\x89t\xC3\xA9 ETE \xC3\xA9t\xC3\xA9 and some padding to pass sixteen bytes",
      "\x82\x41\x82\x61 A a \x82\x41 and some padding to pass sixteen bytes AA",
      "plain ascii only, no high bytes at all, Aa aA",
  };
  const std::vector<std::string> patterns = {"a", "A", "ete", "\xC3\xA9", "aa", "\x82\x41"};
  for (const char* cp : {"65001", "932", "1252"}) {
    PinnedCodePage pin(cp);
    for (const auto& t : texts) {
      const std::string lt = AnsiLowerCase(t);
      for (const auto& p : patterns) {
        const std::string lp = AnsiLowerCase(p);
        // A start on a second byte must not make it a character of its own.
        for (int32_t start : {1, 2, 3, 4}) {
          for (int32_t n : {1, 2, 3}) {
            EXPECT_EQ(CXPos(p, t, start, n), XPos(lp, lt, start, n))
                << cp << " " << p << " / " << t << " from " << start;
          }
        }
      }
    }
  }
}

TEST(StartsWith, ExactPrefix) {
  EXPECT_FALSE(StartsWith("FI", "file"));
  EXPECT_FALSE(StartsWith(u"FI", u"file"));
  EXPECT_TRUE(StartsWith("fi", "file"));
  EXPECT_TRUE(StartsWith(u"", u"file"));
  EXPECT_TRUE(StartsWith("", ""));
  EXPECT_FALSE(StartsWith(u"files", u"file"));
  EXPECT_TRUE(StartsWith(u"\u00E9t", u"\u00E9t\u00E9"));
}

TEST(XStartsWith, FlagFalseIgnoresCase) {
  EXPECT_TRUE(XStartsWith(u"FI", u"file", false));
  EXPECT_TRUE(XStartsWith("FI", "file", false));
  EXPECT_TRUE(XStartsWith(u"\u00C9T", u"\u00E9t\u00E9", false));
  EXPECT_TRUE(XStartsWith("\xC9T", "\xE9t\xE9", false));
  EXPECT_FALSE(XStartsWith(u"fx", u"file", false));
  EXPECT_TRUE(XStartsWith(u"", u"file", false));
  EXPECT_TRUE(XStartsWith(u"", u"", false));
  // An empty text with a non-empty prefix gives false.
  EXPECT_FALSE(XStartsWith(u"a", u"", false));
  EXPECT_FALSE(XStartsWith("a", "", false));
  EXPECT_FALSE(XStartsWith(u"files", u"file", false));
}

// With the flag true the answer is always true, whatever the strings.
TEST(XStartsWith, FlagTrueAlwaysTrue) {
  EXPECT_TRUE(XStartsWith(u"zz", u"abc", true));
  EXPECT_TRUE(XStartsWith("zz", "abc", true));
  EXPECT_TRUE(XStartsWith(u"longer than the text", u"", true));
  EXPECT_TRUE(XStartsWith("FI", "file", true));
}

TEST(EndsBy, IgnoresCase) {
  EXPECT_TRUE(EndsBy(".TXT", "file.txt"));
  EXPECT_TRUE(EndsBy(u".TXT", u"file.txt"));
  EXPECT_TRUE(EndsBy("", "file"));
  EXPECT_TRUE(EndsBy(u"", u""));
  EXPECT_FALSE(EndsBy(".doc", "file.txt"));
  // A suffix longer than the text is compared with the whole text.
  EXPECT_TRUE(EndsBy(u"FILE.TXT", u"file.txt"));
  EXPECT_FALSE(EndsBy(u"a.txt", u".txt"));
}

// The 8-bit form folds ASCII only; the UTF-16 form is locale-aware.
TEST(EndsBy, AsciiOnlyIn8BitLocaleAwareInUtf16) {
  EXPECT_FALSE(EndsBy("\xC9", "caf\xE9"));
  EXPECT_TRUE(EndsBy(u"\u00C9", u"caf\u00E9"));
  EXPECT_TRUE(EndsBy("\xE9", "caf\xE9"));
}

TEST(CharCount, CountsPlaces) {
  EXPECT_EQ(CharCount("a,b,,c", ','), 3);
  EXPECT_EQ(CharCount(u"a,b,,c", u','), 3);
  EXPECT_EQ(CharCount("", ','), 0);
  EXPECT_EQ(CharCount(u"\u00E9\u00E9e", u'\u00E9'), 2);
  EXPECT_EQ(CharCount("\xE9\xE9\x65", '\xE9'), 2);
}

}  // namespace
}  // namespace quill::Gstrings
