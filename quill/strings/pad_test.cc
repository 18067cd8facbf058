// Runs of blanks, characters and strings; padding to a width.
#include "quill/strings/pad.h"

#include <gtest/gtest.h>

#include <string>

namespace quill::Gstrings {
namespace {

TEST(Padl, PadsLeftCutsKeepingTheBeginning) {
  EXPECT_EQ(Padl("ab", 4, '*'), "**ab");
  EXPECT_EQ(Padl(u"ab", 4, u'*'), u"**ab");
  // A longer string keeps its left end, like Padr: deliberate.
  EXPECT_EQ(Padl("abcdef", 3, '*'), "abc");
  EXPECT_EQ(Padl(u"abcdef", 3, u'*'), u"abc");
  EXPECT_EQ(Padl("abc", 3, '*'), "abc");
  EXPECT_EQ(Padl("abc", 0, '*'), "");
  EXPECT_EQ(Padl(u"abc", -2, u'*'), u"");
  EXPECT_EQ(Padl(u"", 2, u'\u00B7'), u"\u00B7\u00B7");
  EXPECT_EQ(Padl("\xE9", 2, '\xB7'), "\xB7\xE9");
}

TEST(Padr, PadsRightCutsKeepingTheBeginning) {
  EXPECT_EQ(Padr("abcdef", 3, '*'), "abc");
  EXPECT_EQ(Padr(u"abcdef", 3, u'*'), u"abc");
  EXPECT_EQ(Padr("ab", 4, '*'), "ab**");
  EXPECT_EQ(Padr(u"ab", 4, u'-'), u"ab--");
  EXPECT_EQ(Padr("ab", 0, '*'), "");
  EXPECT_EQ(Padr(u"\u00E9", 3, u' '), u"\u00E9  ");
}

TEST(SpaceA, CountsBelowOneGiveEmpty) {
  EXPECT_EQ(SpaceA(3), "   ");
  EXPECT_EQ(SpaceA(0), "");
  EXPECT_EQ(SpaceA(-1), "");
  EXPECT_EQ(SpaceW(2), u"  ");
  EXPECT_EQ(SpaceW(-7), u"");
}

TEST(Replicate, CharacterRuns) {
  EXPECT_EQ(Replicate('x', 3), "xxx");
  EXPECT_EQ(Replicate(u'\u00E9', 2), u"\u00E9\u00E9");
  EXPECT_EQ(Replicate('x', 0), "");
  EXPECT_EQ(Replicate(u'x', -1), u"");
}

TEST(ReplicateStr, StringRuns) {
  EXPECT_EQ(ReplicateStr("ab", 3), "ababab");
  EXPECT_EQ(ReplicateStr("ab", 0), "");
  EXPECT_EQ(ReplicateStr("ab", -4), "");
  EXPECT_EQ(ReplicateStr("", 4), "");
}

TEST(ConcatWChar, AppendsOneCharacter) {
  EXPECT_EQ(ConcatWChar(u"ab", u'c'), u"abc");
  EXPECT_EQ(ConcatWChar(u"", u'\u00E9'), u"\u00E9");
}

}  // namespace
}  // namespace quill::Gstrings
