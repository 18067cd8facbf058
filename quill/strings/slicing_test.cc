// Tokens, parts, cutting at a separator, trimming and capitalising.
#include "quill/strings/slicing.h"

#include <gtest/gtest.h>

#include <string>

#include "quill/strings/charclass.h"

namespace quill::Gstrings {
namespace {

// Sets both separator sets for one test and empties them afterwards.
class SeparatorsGuard {
 public:
  SeparatorsGuard(std::string_view a, std::u16string_view w) {
    SetSeparatorList(a);
    SetSeparatorList(w);
  }
  ~SeparatorsGuard() {
    SetSeparatorList(std::string_view());
    SetSeparatorList(std::u16string_view());
  }
};

TEST(GetToken, WordThenRunOfSeparators) {
  SeparatorsGuard g(",", u",");
  std::string s = "  ab,cd";
  EXPECT_EQ(GetToken(s), "ab");
  EXPECT_EQ(s, ",cd");
  EXPECT_EQ(GetToken(s), ",");
  EXPECT_EQ(s, "cd");
  EXPECT_EQ(GetToken(s), "cd");
  EXPECT_EQ(s, "");
  EXPECT_EQ(GetToken(s), "");
  EXPECT_EQ(s, "");

  std::u16string w = u"  ab,cd";
  EXPECT_EQ(GetToken(w), u"ab");
  EXPECT_EQ(w, u",cd");
  EXPECT_EQ(GetToken(w), u",");
  EXPECT_EQ(w, u"cd");
}

TEST(GetToken, LongestRunOfSeparatorsAndBlanksAfterStay) {
  SeparatorsGuard g(",;", u",;");
  std::u16string w = u"\t,;, x";
  EXPECT_EQ(GetToken(w), u",;,");
  EXPECT_EQ(w, u" x");
  std::string s = "word  rest";
  EXPECT_EQ(GetToken(s), "word");
  EXPECT_EQ(s, "  rest");
  // All blanks: an empty token, the blanks are dropped.
  s = "   ";
  EXPECT_EQ(GetToken(s), "");
  EXPECT_EQ(s, "");
}

// Each form reads only its own separator set.
TEST(GetToken, FormsReadTheirOwnSet) {
  SeparatorsGuard g(",", u";");
  std::string s = "a;b,c";
  EXPECT_EQ(GetToken(s), "a;b");
  std::u16string w = u"a;b,c";
  EXPECT_EQ(GetToken(w), u"a");
}

TEST(GetToken, NonAscii) {
  SeparatorsGuard g("\xA7", u"\u00A7");
  std::u16string w = u" \u00E9t\u00E9\u00A7\U0001F600";
  EXPECT_EQ(GetToken(w), u"\u00E9t\u00E9");
  EXPECT_EQ(GetToken(w), u"\u00A7");
  EXPECT_EQ(GetToken(w), u"\U0001F600");
  std::string s = "\xE9t\xE9\xA7x";
  EXPECT_EQ(GetToken(s), "\xE9t\xE9");
  // No-break space is not a space: it is part of the token.
  std::u16string nb = u"\u00A0a b";
  EXPECT_EQ(GetToken(nb), u"\u00A0a");
}

TEST(GetNextPart, CutsAtFirstSeparatorWithoutTrimming) {
  std::string s = " a = b = c";
  EXPECT_EQ(GetNextPart(s, "="), " a ");
  EXPECT_EQ(s, " b = c");
  EXPECT_EQ(GetNextPart(s, "= "), " b ");
  EXPECT_EQ(s, "c");
  EXPECT_EQ(GetNextPart(s, "="), "c");  // not found: all of it
  EXPECT_EQ(s, "");
  s = "abc";
  EXPECT_EQ(GetNextPart(s, ""), "abc");  // empty separator: all of it
  EXPECT_EQ(s, "");
}

TEST(GetBeforeSep, TrimsOnlyWhenFound) {
  EXPECT_EQ(GetBeforeSep("=", " a = b"), "a");
  EXPECT_EQ(GetBeforeSep(u"=", u" a = b"), u"a");
  // Not found: the whole string, deliberately untrimmed.
  EXPECT_EQ(GetBeforeSep(":", " a = b"), " a = b");
  EXPECT_EQ(GetBeforeSep(u":", u" a = b"), u" a = b");
  EXPECT_EQ(GetBeforeSep(u"", u" a = b"), u" a = b");
  // Every code 32 or below is trimmed, not only blanks.
  EXPECT_EQ(GetBeforeSep(u"=", u"\x01\t a\x1F=b"), u"a");
  EXPECT_EQ(GetBeforeSep(u"=", u"\u00A0a=b"), u"\u00A0a");
  EXPECT_EQ(GetBeforeSep(u"::", u" \u00E9 :: x"), u"\u00E9");
}

TEST(GetAfterSep, TrimsOnlyWhenFound) {
  EXPECT_EQ(GetAfterSep("=", " a = b "), "b");
  EXPECT_EQ(GetAfterSep(u"=", u" a = b = c "), u"b = c");
  EXPECT_EQ(GetAfterSep(":", " a = b "), " a = b ");
  EXPECT_EQ(GetAfterSep(u"=", u"a="), u"");
}

TEST(AnsiTrim, SpaceClassOnly) {
  EXPECT_EQ(AnsiTrim(" \t\r\nab c\n "), "ab c");
  EXPECT_EQ(AnsiTrim(""), "");
  EXPECT_EQ(AnsiTrim("   "), "");
  // Other controls and no-break space stay.
  EXPECT_EQ(AnsiTrim("\x01 a \x01"), "\x01 a \x01");
  EXPECT_EQ(AnsiTrim("\v a\f"), "\v a\f");
  EXPECT_EQ(AnsiTrim(" \xA0 "), "\xA0");
}

TEST(CapitalizeFirst, LowersAllRaisesFirst) {
  EXPECT_EQ(CapitalizeFirst(u"hELLO wORLD"), u"Hello world");
  EXPECT_EQ(CapitalizeFirst("hELLO wORLD"), "Hello world");
  EXPECT_EQ(CapitalizeFirst(u""), u"");
  EXPECT_EQ(CapitalizeFirst(""), "");
  EXPECT_EQ(CapitalizeFirst(u"\u00E9COLE"), u"\u00C9cole");
  EXPECT_EQ(CapitalizeFirst("\xE9" "COLE"), "\xC9" "cole");
  EXPECT_EQ(CapitalizeFirst(u"\U00010428\U00010400"), u"\U00010400\U00010428");
  EXPECT_EQ(CapitalizeFirst(u"1ABC"), u"1abc");
}

}  // namespace
}  // namespace quill::Gstrings
