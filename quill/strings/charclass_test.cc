// Character classes, number recognition, "yes" words, letter test and the
// position scanners, in both string forms.
#include "quill/strings/charclass.h"

#include <gtest/gtest.h>

#include <string>

#include "quill/rtl/formatsettings.h"

namespace quill::Gstrings {
namespace {

// Reference membership of each class, written out from its definition.
bool RefSpace(unsigned c) { return c == 9 || c == 10 || c == 13 || c == 32; }
bool RefDigit(unsigned c) { return c >= '0' && c <= '9'; }
bool RefHex(unsigned c) {
  return RefDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}
bool RefOct(unsigned c) { return c >= '0' && c <= '7'; }
bool RefAlpha(unsigned c) { return RefDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 95 && c <= 122); }

// Every byte value, 8-bit form.
TEST(CharClasses, AllByteValuesAnsi) {
  for (unsigned v = 0; v < 256; ++v) {
    const char c = static_cast<char>(v);
    EXPECT_EQ(IsSpace(c), RefSpace(v)) << v;
    EXPECT_EQ(IsDigit(c), RefDigit(v)) << v;
    EXPECT_EQ(IsHexDigit(c), RefHex(v)) << v;
    EXPECT_EQ(IsOctDigit(c), RefOct(v)) << v;
    EXPECT_EQ(IsAlpha(c), RefAlpha(v)) << v;
  }
}

// Every value below 256 and a few above, UTF-16 form: the same classes.
TEST(CharClasses, AllByteValuesWideAndBeyond) {
  for (unsigned v = 0; v < 256; ++v) {
    const char16_t c = static_cast<char16_t>(v);
    EXPECT_EQ(IsSpace(c), RefSpace(v)) << v;
    EXPECT_EQ(IsDigit(c), RefDigit(v)) << v;
    EXPECT_EQ(IsHexDigit(c), RefHex(v)) << v;
    EXPECT_EQ(IsOctDigit(c), RefOct(v)) << v;
    EXPECT_EQ(IsAlpha(c), RefAlpha(v)) << v;
  }
  // Codes whose low byte is a class member are not members themselves.
  for (char16_t c : {u'\u0130', u'\u0141', u'\u0161', u'\u0120', u'\u0109', u'\uFF10', char16_t{0xD800}}) {
    EXPECT_FALSE(IsSpace(c));
    EXPECT_FALSE(IsDigit(c));
    EXPECT_FALSE(IsHexDigit(c));
    EXPECT_FALSE(IsAlpha(c));
  }
}

// Vertical tab, form feed and no-break space are not spaces.
TEST(IsSpace, NotVerticalTabFormFeedOrNbsp) {
  EXPECT_FALSE(IsSpace('\v'));
  EXPECT_FALSE(IsSpace('\f'));
  EXPECT_FALSE(IsSpace(static_cast<char>(160)));
  EXPECT_FALSE(IsSpace(u'\v'));
  EXPECT_FALSE(IsSpace(u'\f'));
  EXPECT_FALSE(IsSpace(u'\u00A0'));
}

// The identifier class is deliberately wider than letters.
TEST(IsAlpha, BackQuoteAndUnderscoreYesBraceAndAccentNo) {
  EXPECT_TRUE(IsAlpha('`'));
  EXPECT_TRUE(IsAlpha('_'));
  EXPECT_TRUE(IsAlpha(u'`'));
  EXPECT_TRUE(IsAlpha(u'_'));
  EXPECT_FALSE(IsAlpha(static_cast<char>(123)));
  EXPECT_FALSE(IsAlpha(static_cast<char>(192)));
  EXPECT_FALSE(IsAlpha(u'{'));
  EXPECT_FALSE(IsAlpha(u'\u00C0'));
}

TEST(IsIdentifier, EmptyAndLeadingDigitAccepted) {
  EXPECT_TRUE(IsIdentifier(""));
  EXPECT_TRUE(IsIdentifier(u""));
  EXPECT_TRUE(IsIdentifier("9lives"));
  EXPECT_TRUE(IsIdentifier(u"9lives"));
  EXPECT_TRUE(IsIdentifier(u"_a`b"));
  EXPECT_FALSE(IsIdentifier("a-b"));
  EXPECT_FALSE(IsIdentifier(u"a-b"));
  // Latin-1 and beyond are not identifier characters.
  EXPECT_FALSE(IsIdentifier("caf\xE9"));
  EXPECT_FALSE(IsIdentifier(u"caf\u00E9"));
  EXPECT_FALSE(IsIdentifier(u"a\U0001F600"));
}

TEST(IsNumber, DigitsOnlyNonEmpty) {
  EXPECT_FALSE(IsNumber(""));
  EXPECT_FALSE(IsNumber(u""));
  EXPECT_FALSE(IsNumber("-1"));
  EXPECT_FALSE(IsNumber(u"-1"));
  EXPECT_FALSE(IsNumber(u" 1"));
  EXPECT_FALSE(IsNumber(u"1,000"));
  EXPECT_TRUE(IsNumber("007"));
  EXPECT_TRUE(IsNumber(u"007"));
  // Full-width digits are not digits here.
  EXPECT_FALSE(IsNumber(u"\uFF11"));
}

struct IntNumCase {
  const char* text;
  bool expected;
};

TEST(IsIntNum, GrammarTable) {
  const IntNumCase cases[] = {
      {"$FF", true},         {"0x1f", true},   {" 12", true},         {"-2147483648", true},
      {"2147483647", true},  {"x56e", true},   {"-$10", true},        {"+7", true},
      {"$FFFFFFFF", true},   {"12 ", false},   {"2147483648", false}, {"", false},
      {"   ", false},        {"1.0", false},   {"1e3", false},        {"- 1", false},
      {"$", false},          {"abc", false},   {"-2147483649", false}, {"$100000000", false},
  };
  for (const auto& c : cases) {
    const std::string a = c.text;
    const std::u16string w(a.begin(), a.end());
    EXPECT_EQ(IsIntNum(a), c.expected) << a;
    EXPECT_EQ(IsIntNum(w), c.expected) << a;
  }
}

// Restores the process's current format settings after a test changes them.
class PinnedDecimal {
 public:
  explicit PinnedDecimal(char16_t sep) : saved_(FormatSettings()) {
    FormatSettings().DecimalSeparator = sep;
    FormatSettings().ThousandSeparator = sep == u',' ? u'.' : u',';
  }
  ~PinnedDecimal() { FormatSettings() = saved_; }

 private:
  TFormatSettings saved_;
};

TEST(IsRealNum, PointDecimalSettings) {
  PinnedDecimal pin(u'.');
  EXPECT_TRUE(IsRealNum(u"1.5"));
  EXPECT_TRUE(IsRealNum("1.5"));
  EXPECT_TRUE(IsRealNum(u" 1.5 "));
  EXPECT_TRUE(IsRealNum(u"-1e3"));
  EXPECT_TRUE(IsRealNum(u"7"));
  EXPECT_FALSE(IsRealNum(u"1,5"));
  EXPECT_FALSE(IsRealNum(u"1,000.5"));
  EXPECT_FALSE(IsRealNum(u""));
  EXPECT_FALSE(IsRealNum(""));
  EXPECT_FALSE(IsRealNum(u"abc"));
}

// The recogniser follows the process's current decimal separator, not '.'.
TEST(IsRealNum, CommaDecimalSettingsPinned) {
  PinnedDecimal pin(u',');
  EXPECT_TRUE(IsRealNum(u"1,5"));
  EXPECT_TRUE(IsRealNum("1,5"));
  EXPECT_FALSE(IsRealNum(u"1.5"));
  EXPECT_FALSE(IsRealNum("1.5"));
}

TEST(IsPositive, YesWordsWithoutTrimming) {
  for (const char* yes : {"TRUE", "Yes", "ON", "on", "yes", "true", "1", "True"}) {
    const std::string a = yes;
    EXPECT_TRUE(IsPositive(a)) << a;
    EXPECT_TRUE(IsPositive(std::u16string(a.begin(), a.end()))) << a;
  }
  for (const char* no : {"true ", " yes", "0", "", "y", "no", "off", "01", "onn"}) {
    const std::string a = no;
    EXPECT_FALSE(IsPositive(a)) << a;
    EXPECT_FALSE(IsPositive(std::u16string(a.begin(), a.end()))) << a;
  }
}

// 8-bit: A-Z, a-z and bytes above 127. Every byte value.
TEST(AlphaExists, AllByteValuesAnsi) {
  for (unsigned v = 0; v < 256; ++v) {
    const std::string s(1, static_cast<char>(v));
    const bool expected = (v >= 'A' && v <= 'Z') || (v >= 'a' && v <= 'z') || v > 127;
    EXPECT_EQ(AlphaExists(s), expected) << v;
  }
  EXPECT_FALSE(AlphaExists(""));
  EXPECT_FALSE(AlphaExists("12_3 !"));
  EXPECT_TRUE(AlphaExists("12x"));
}

// UTF-16: everything except the ASCII non-letters 32..64, 91..96, 123..126.
TEST(AlphaExists, AllByteValuesWide) {
  for (unsigned v = 0; v < 256; ++v) {
    const std::u16string s(1, static_cast<char16_t>(v));
    const bool nonLetter = (v >= 32 && v <= 64) || (v >= 91 && v <= 96) || (v >= 123 && v <= 126);
    EXPECT_EQ(AlphaExists(s), !nonLetter) << v;
  }
  EXPECT_FALSE(AlphaExists(u""));
  EXPECT_TRUE(AlphaExists(u"\u4E2D"));
  EXPECT_TRUE(AlphaExists(u"\U0001F600"));
}

// The forms disagree on controls on purpose: a lone tab.
TEST(AlphaExists, TabAloneDiffersBetweenForms) {
  EXPECT_FALSE(AlphaExists("\t"));
  EXPECT_TRUE(AlphaExists(u"\t"));
  // and on 127..255 seen as UTF-16 codes vs bytes: 127 is a letter only in UTF-16
  EXPECT_FALSE(AlphaExists("\x7F"));
  EXPECT_TRUE(AlphaExists(u"\x7F"));
}

TEST(SkipSpaces, StopsOnFirstNonSpaceOrAfterEnd) {
  int32_t p = 1;
  SkipSpaces("  x", p);
  EXPECT_EQ(p, 3);
  p = 1;
  SkipSpaces(u"  x", p);
  EXPECT_EQ(p, 3);
  p = 1;
  SkipSpaces("   ", p);
  EXPECT_EQ(p, 4);
  p = 1;
  SkipSpaces(u"\t\r\n ", p);
  EXPECT_EQ(p, 5);
  // A position beyond the length does not move.
  p = 7;
  SkipSpaces(u"  x", p);
  EXPECT_EQ(p, 7);
  p = 4;
  SkipSpaces("  x", p);
  EXPECT_EQ(p, 4);
  // Vertical tab and no-break space stop the scan.
  p = 1;
  SkipSpaces(u" \v", p);
  EXPECT_EQ(p, 2);
  p = 1;
  SkipSpaces(u" \u00A0", p);
  EXPECT_EQ(p, 2);
  // Positions below 1 are left unchanged.
  p = 0;
  SkipSpaces(u"  x", p);
  EXPECT_EQ(p, 0);
}

TEST(SkipSymbols, AdvancesOverSetMembers) {
  int32_t p = 1;
  SkipSymbols("+-+x", p, "+-");
  EXPECT_EQ(p, 4);
  p = 2;
  SkipSymbols(u"a\u00E9\u00E9b", p, u"\u00E9");
  EXPECT_EQ(p, 4);
  p = 1;
  SkipSymbols(u"++", p, u"+");
  EXPECT_EQ(p, 3);
  // An empty symbol string never moves the position.
  p = 1;
  SkipSymbols("   ", p, "");
  EXPECT_EQ(p, 1);
  p = -3;
  SkipSymbols("++", p, "+");
  EXPECT_EQ(p, -3);
}

}  // namespace
}  // namespace quill::Gstrings
