// Replacing all occurrences, with and without case; erasing a character.
#include "quill/strings/replace.h"

#include <gtest/gtest.h>

#include <string>

namespace quill::Gstrings {
namespace {

struct ReplaceCase {
  std::u16string text, oldPattern, newText, expected;
};

std::string Narrow(const std::u16string& s) { return std::string(s.begin(), s.end()); }

TEST(ReplaceStr, Table) {
  const ReplaceCase cases[] = {
      {u"aaaa", u"aa", u"b", u"bb"},         // occurrences do not overlap
      {u"aaa", u"aa", u"b", u"ba"},
      {u"abcabc", u"b", u"XYZ", u"aXYZcaXYZc"},
      {u"abc", u"", u"x", u"abc"},           // empty pattern: unchanged
      {u"abc", u"d", u"x", u"abc"},          // no occurrence: unchanged
      {u"", u"a", u"x", u""},
      {u"abc", u"abc", u"", u""},
      {u"aXa", u"a", u"aa", u"aaXaa"},       // the new text is never searched again
      {u"ABab", u"ab", u"x", u"ABx"},        // case-sensitive
      {u"aaa", u"a", u"", u""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ReplaceStr(c.text, c.oldPattern, c.newText), c.expected) << Narrow(c.text);
    EXPECT_EQ(ReplaceStr(Narrow(c.text), Narrow(c.oldPattern), Narrow(c.newText)),
              Narrow(c.expected));
  }
}

TEST(ReplaceStr, NonAscii) {
  EXPECT_EQ(ReplaceStr(u"\u00E9t\u00E9", u"\u00E9", u"e"), u"ete");
  EXPECT_EQ(ReplaceStr(u"a\U0001F600b\U0001F600", u"\U0001F600", u"-"), u"a-b-");
  EXPECT_EQ(ReplaceStr("\xE9t\xE9", "\xE9", "e"), "ete");
}

TEST(ReplaceStr, LongTextManyMatches) {
  std::u16string text;
  std::u16string expected;
  for (int i = 0; i < 5000; ++i) {
    text += u"ab-";
    expected += u"XYZ-";
  }
  EXPECT_EQ(ReplaceStr(text, u"ab", u"XYZ"), expected);
  EXPECT_EQ(ReplaceStr(Narrow(text), "ab", "XYZ"), Narrow(expected));
}

TEST(XReplaceStr, FlagFalseIgnoresCaseAndKeepsUnmatchedText) {
  EXPECT_EQ(XReplaceStr(u"abAB", u"AB", u"x", false), u"xx");
  EXPECT_EQ(XReplaceStr("abAB", "AB", "x", false), "xx");
  EXPECT_EQ(XReplaceStr(u"Hello WORLD world", u"world", u"There", false), u"Hello There There");
  EXPECT_EQ(XReplaceStr(u"AAAA", u"aa", u"b", false), u"bb");
  EXPECT_EQ(XReplaceStr(u"Caf\u00C9 caf\u00E9", u"\u00E9", u"e", false), u"Cafe cafe");
  EXPECT_EQ(XReplaceStr("Caf\xC9 caf\xE9", "\xE9", "e", false), "Cafe cafe");
  EXPECT_EQ(XReplaceStr(u"x\U00010400y\U00010428", u"\U00010428", u"-", false), u"x-y-");
  // The new text is inserted as given.
  EXPECT_EQ(XReplaceStr(u"aBc", u"b", u"Q", false), u"aQc");
  EXPECT_EQ(XReplaceStr(u"abc", u"", u"Q", false), u"abc");
}

// With the flag true nothing is ever replaced.
TEST(XReplaceStr, FlagTrueNeverReplaces) {
  EXPECT_EQ(XReplaceStr(u"abAB", u"AB", u"x", true), u"abAB");
  EXPECT_EQ(XReplaceStr("abAB", "AB", "x", true), "abAB");
  EXPECT_EQ(XReplaceStr("abAB", "ab", "x", true), "abAB");
}

TEST(EraseSymbol, RemovesEveryOccurrence) {
  EXPECT_EQ(EraseSymbol("a,b,,c", ','), "abc");
  EXPECT_EQ(EraseSymbol(u"a,b,,c", u','), u"abc");
  EXPECT_EQ(EraseSymbol(u"", u','), u"");
  EXPECT_EQ(EraseSymbol(u"\u00E9a\u00E9", u'\u00E9'), u"a");
  EXPECT_EQ(EraseSymbol("\xE9" "a\xE9", '\xE9'), "a");
  EXPECT_EQ(EraseSymbol(u"abc", u'x'), u"abc");
}

}  // namespace
}  // namespace quill::Gstrings
