// Tests of StringToComma and CommaToString.
#include <gtest/gtest.h>

#include "quill/utils/commatext.h"

namespace quill::Gutils {
namespace {

// Edge case: "a" CR LF "b c" CR LF gives a,"b c", with a final comma.
TEST(StringToComma, QuotesBlankLineAndKeepsFinalComma) {
  EXPECT_EQ(StringToComma(u"a\r\nb c\r\n"), u"a,\"b c\",");
}

// Edge case: an empty text gives the empty text.
TEST(StringToComma, EmptyText) { EXPECT_EQ(StringToComma(u""), u""); }

// Edge case: a line holding a comma comes back in double quotes.
TEST(StringToComma, CommaLineIsQuoted) {
  EXPECT_EQ(StringToComma(u"x,y"), u"\"x,y\"");
}

// Inner double quotes are doubled inside the quotes.
TEST(StringToComma, QuotesDoubled) {
  EXPECT_EQ(StringToComma(u"say \"hi\""), u"\"say \"\"hi\"\"\"");
  EXPECT_EQ(StringToComma(u"\""), u"\"\"\"\"");
}

// Empty lines give empty fields; a single break gives a single comma.
TEST(StringToComma, EmptyLinesGiveEmptyFields) {
  EXPECT_EQ(StringToComma(u"a\r\n\r\nb"), u"a,,b");
  EXPECT_EQ(StringToComma(u"\r\n"), u",");
  EXPECT_EQ(StringToComma(u"a\n\nb"), u"a,,b");
}

// Deliberate: a CR is looked for first even when an LF stands earlier, so
// "a" LF "b" CR "c" gives the line "a" LF "b" (quoted) and then "c".
TEST(StringToComma, CrSearchedBeforeLf) {
  EXPECT_EQ(StringToComma(u"a\nb\rc"), u"\"a\nb\",c");
}

// CR LF is one break; a lone CR or LF is one break too, and CR CR is two.
TEST(StringToComma, BreakPairs) {
  EXPECT_EQ(StringToComma(u"a\rb"), u"a,b");
  EXPECT_EQ(StringToComma(u"a\nb"), u"a,b");
  // LF CR: the CR is found first, so the LF stays in the (quoted) line.
  EXPECT_EQ(StringToComma(u"a\n\rb"), u"\"a\n\",b");
  EXPECT_EQ(StringToComma(u"a\r\rb"), u"a,,b");
  EXPECT_EQ(StringToComma(u"a\r\n"), u"a,");
}

// Deliberate: the quoting test looks at the low byte of each unit only, so
// U+012C (low byte 44) and U+0409 (low byte 9) cause quoting; U+0141 does not.
TEST(StringToComma, LowByteDecidesQuoting) {
  EXPECT_EQ(StringToComma(u"a\u012Cb"), u"\"a\u012Cb\"");
  EXPECT_EQ(StringToComma(u"\u0409"), u"\"\u0409\"");
  EXPECT_EQ(StringToComma(u"\u0122"), u"\"\u0122\"");  // low byte 34
  EXPECT_EQ(StringToComma(u"\u0141"), u"\u0141");
}

// Every unit value whose low byte is 0..32, 34 or 44 causes quoting; every
// other low byte does not (all 256 low bytes, in two high bytes).
TEST(StringToComma, AllLowBytes) {
  for (unsigned high : {0x00u, 0x7Fu}) {
    for (unsigned low = 0; low < 256; ++low) {
      const char16_t c = static_cast<char16_t>((high << 8) | low);
      if (c == u'\r' || c == u'\n') continue;  // breaks, not line content
      const UnicodeString line{u'x', c};
      const bool quoted = low <= 32 || low == 34 || low == 44;
      const UnicodeString got = StringToComma(line);
      if (quoted) {
        ASSERT_GE(got.size(), 4u) << std::hex << unsigned(c);
        EXPECT_EQ(got.front(), u'"') << std::hex << unsigned(c);
        EXPECT_EQ(got.back(), u'"') << std::hex << unsigned(c);
      } else {
        EXPECT_EQ(got, line) << std::hex << unsigned(c);
      }
    }
  }
}

// Edge case: a,"b,c" gives "a", CR LF, "b,c".
TEST(CommaToString, QuotedFieldKeepsComma) {
  EXPECT_EQ(CommaToString(u"a,\"b,c\""), u"a\r\nb,c");
}

// Deliberate: a field followed by text that is neither a comma nor the end
// is joined to it without a break: "ab cd" gives "abcd".
TEST(CommaToString, JoinsFieldsWithoutComma) {
  EXPECT_EQ(CommaToString(u"ab cd"), u"abcd");
  EXPECT_EQ(CommaToString(u"\"a\"b,c"), u"ab\r\nc");
}

// Deliberate: a final comma gives a final CR LF.
TEST(CommaToString, FinalCommaGivesFinalBreak) {
  EXPECT_EQ(CommaToString(u"a,"), u"a\r\n");
  EXPECT_EQ(CommaToString(u","), u"\r\n");
  EXPECT_EQ(CommaToString(u"a,,b"), u"a\r\n\r\nb");
}

// Blanks around fields and after commas are skipped.
TEST(CommaToString, BlanksSkipped) {
  EXPECT_EQ(CommaToString(u"  a ,\t b  "), u"a\r\nb");
  EXPECT_EQ(CommaToString(u""), u"");
  EXPECT_EQ(CommaToString(u"   "), u"");
}

// A doubled quote inside a quoted field stands for one quote; an unclosed
// quoted field runs to the end.
TEST(CommaToString, QuotedFieldRules) {
  EXPECT_EQ(CommaToString(u"\"say \"\"hi\"\"\""), u"say \"hi\"");
  EXPECT_EQ(CommaToString(u"\"open, field"), u"open, field");
  EXPECT_EQ(CommaToString(u"\"\""), u"");
}

// A unit 0 ends the text.
TEST(CommaToString, NullEndsText) {
  EXPECT_EQ(CommaToString(UnicodeString(u"a,b\0,c", 6)), u"a\r\nb");
}

// Skipping looks at the low byte (U+0120 is skipped like a blank at a field
// start) while the field end and the comma are whole units (U+012C is text).
TEST(CommaToString, LowByteSkipWholeUnitComma) {
  EXPECT_EQ(CommaToString(u"\u0120a"), u"a");
  EXPECT_EQ(CommaToString(u"a\u012Cb"), u"a\u012Cb");
  EXPECT_EQ(CommaToString(u"a\u0120b"), u"a\u0120b");
}

// Lines without blanks, quotes or commas round-trip (final break aside).
TEST(CommaText, RoundTrip) {
  const UnicodeString text = u"alpha\r\nbeta gamma\r\n\"quoted\"\r\n\r\nx,y";
  EXPECT_EQ(CommaToString(StringToComma(text)), text);
}

// Linear time: a text of many LF-only lines (which asks for a CR every line)
// converts quickly; 200,000 lines would take minutes if each search rescanned.
TEST(StringToComma, LfOnlyLinesAreLinear) {
  UnicodeString text;
  for (int i = 0; i < 200000; ++i) text += u"ab\n";
  const UnicodeString line = StringToComma(text);
  EXPECT_EQ(line.size(), 200000u * 3);
  EXPECT_EQ(line.substr(0, 6), u"ab,ab,");
}

}  // namespace
}  // namespace quill::Gutils
