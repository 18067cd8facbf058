// Ordinal and linguistic string comparison in both forms.
#include "quill/rtl/compare.h"

#include <gtest/gtest.h>

#include <string>

#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill {
namespace {

using testing::ScopedEnv;

ScopedEnv Locale(const char* posix_name, const char* page = "1252") {
  return ScopedEnv{{"LC_ALL", posix_name}, {"QUILL_ANSI_CODEPAGE", page}};
}

TEST(CompareText, FoldsOnlyLowerAsciiToUpper) {
  // Deliberate: letters fold to upper case, so '_' (95) sorts after 'Z' (90).
  EXPECT_GT(CompareText("a_", "aZ"), 0);
  EXPECT_GT(CompareText(u"a_", u"aZ"), 0);
  EXPECT_LT(CompareText("abc", "ABD"), 0);
  EXPECT_LT(CompareText(u"abc", u"ABD"), 0);
  // Edge case: a prefix is less than the longer string.
  EXPECT_GT(CompareText("abc", "ab"), 0);
  EXPECT_LT(CompareText(u"", u"a"), 0);
  EXPECT_EQ(CompareText("", ""), 0);
  EXPECT_EQ(CompareText(u"HeLLo", u"hello"), 0);
}

TEST(CompareText, AllByteValues) {
  // Byte class: a byte equals its case-flipped partner only for ASCII letters.
  for (int b = 0; b < 256; ++b) {
    const std::string x(1, static_cast<char>(b));
    const std::string y(1, static_cast<char>(b ^ 0x20));
    const bool letter = (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z');
    EXPECT_EQ(CompareText(x, y) == 0, letter) << b;
    EXPECT_EQ(SameText(x, y), letter) << b;
    EXPECT_EQ(CompareText(x, x), 0) << b;
  }
  // Bytes compare unsigned: 0xE4 is above 'z'.
  EXPECT_GT(CompareText("\xE4", "z"), 0);
}

TEST(CompareStr, OrdinalAndCaseSensitive) {
  EXPECT_GT(CompareStr("a", "B"), 0);  // 0x61 > 0x42
  EXPECT_LT(CompareStr(u"B", u"a"), 0);
  EXPECT_NE(CompareStr("a", "A"), 0);
  EXPECT_EQ(CompareStr(u"\u00E4", u"\u00E4"), 0);
  EXPECT_GT(CompareStr(u"\uFFFF", u"\U00010000"), 0);  // code units, not code points
}

TEST(SameText, NonAsciiNeverFolds) {
  auto env = Locale("en_US.UTF-8");
  // Deliberate: SameText is ASCII-only, AnsiSameText is linguistic.
  EXPECT_FALSE(SameText(u"\u00C4", u"\u00E4"));
  EXPECT_FALSE(SameText("\xC4", "\xE4"));
  EXPECT_TRUE(AnsiSameText(u"\u00C4", u"\u00E4"));
  EXPECT_TRUE(AnsiSameText("\xC4", "\xE4"));
}

TEST(AnsiCompareText, PunctuationBeforeLetters) {
  auto env = Locale("en_US.UTF-8");
  EXPECT_LT(AnsiCompareText("_", "a"), 0);
  EXPECT_LT(AnsiCompareText(u"_", u"a"), 0);
  // Ordinal order says the opposite ('_' = 95 > 'A' = 65 after folding).
  EXPECT_GT(CompareText("_", "a"), 0);
  EXPECT_LT(AnsiCompareText(u"1", u"a"), 0);
}

TEST(AnsiCompareText, CaseIgnoredAccentsCount) {
  auto env = Locale("en_US.UTF-8");
  EXPECT_EQ(AnsiCompareText(u"Stra\u00DFe", u"STRA\u00DFE"), 0);
  EXPECT_NE(AnsiCompareText(u"resume", u"r\u00E9sum\u00E9"), 0);
  EXPECT_LT(AnsiCompareText(u"r\u00E9sum\u00E9", u"rf"), 0);
  EXPECT_FALSE(AnsiSameText(u"e", u"\u00E9"));
  EXPECT_LT(AnsiCompareText(u"\u00E4", u"b"), 0);
  EXPECT_GT(CompareStr(u"\u00E4", u"b"), 0);
}

TEST(AnsiCompareStr, CaseCountsLowerFirst) {
  auto env = Locale("en_US.UTF-8");
  EXPECT_LT(AnsiCompareStr(u"a", u"A"), 0);
  EXPECT_LT(AnsiCompareStr("a", "A"), 0);
  EXPECT_LT(AnsiCompareStr(u"A", u"b"), 0);  // ordinal would put 'A' first too, but:
  EXPECT_LT(AnsiCompareStr(u"a", u"B"), 0);  // ... here ordinal order is reversed
  EXPECT_FALSE(AnsiSameStr(u"a", u"A"));
  EXPECT_TRUE(AnsiSameStr(u"abc", u"abc"));
  // Composed and decomposed e-acute are the same text.
  EXPECT_TRUE(AnsiSameStr(u"\u00E9", u"e\u0301"));
  EXPECT_TRUE(AnsiSameText(u"\u00C9", u"e\u0301"));
}

TEST(AnsiSameText, AsciiShortcutAgreesWithCollator) {
  // The printable-ASCII shortcut must give the collator's answer on every
  // pair of printable characters.
  auto env = Locale("en_US.UTF-8");
  for (char16_t a = 0x20; a < 0x7F; ++a) {
    for (char16_t b = 0x20; b < 0x7F; ++b) {
      const std::u16string x(1, a);
      const std::u16string y(1, b);
      ASSERT_EQ(AnsiSameText(x, y), AnsiCompareText(x, y) == 0) << int(a) << " " << int(b);
      const std::string nx(1, static_cast<char>(a));
      const std::string ny(1, static_cast<char>(b));
      ASSERT_EQ(AnsiSameText(nx, ny), AnsiCompareText(nx, ny) == 0) << int(a) << " " << int(b);
    }
  }
}

TEST(AnsiCompareText, FollowsUserLocale) {
  {
    auto env = Locale("de_DE.UTF-8");
    EXPECT_LT(AnsiCompareText(u"\u00E4", u"z"), 0);  // German: a-umlaut with a
  }
  {
    auto env = Locale("sv_SE.UTF-8");
    EXPECT_GT(AnsiCompareText(u"\u00E4", u"z"), 0);  // Swedish: after z
  }
}

TEST(AnsiSameText, TurkishTellsDottedFromDotless) {
  {
    auto env = Locale("tr_TR.UTF-8", "1254");
    EXPECT_FALSE(AnsiSameText(u"I", u"i"));
    EXPECT_FALSE(AnsiSameText("ISTANBUL", "istanbul"));
    EXPECT_TRUE(AnsiSameText(u"\u0130stanbul", u"istanbul"));
  }
  auto env = Locale("en_US.UTF-8");
  EXPECT_TRUE(AnsiSameText(u"I", u"i"));
  EXPECT_TRUE(AnsiSameText("ISTANBUL", "istanbul"));
}

TEST(AnsiCompareText, EightBitFormUsesAnsiPage) {
  {
    auto env = Locale("en_US.UTF-8", "1251");
    // 1251: C0 = CYRILLIC A, E0 = small a.
    EXPECT_TRUE(AnsiSameText("\xC0", "\xE0"));
    EXPECT_LT(AnsiCompareText("\xE0", "\xE1"), 0);
  }
  auto env = Locale("en_US.UTF-8", "65001");
  EXPECT_TRUE(AnsiSameText("\xC3\x84", "\xC3\xA4"));
  EXPECT_LT(AnsiCompareText("\xC3\xA4", "b"), 0);
}

}  // namespace
}  // namespace quill
