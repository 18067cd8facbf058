// Line comments, block comments and the LOCALIZE markers.
#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::Probe;
using testing::SetLines;
using testing::Walk;
using testing::WalkDescribed;

using Strings = std::vector<std::string>;

TEST(LineComment, RunsToTheEndOfTheLineInEachStyle) {
  struct Case {
    TSourceStyle style;
    const char16_t* line;
  };
  for (const Case& c : {Case{ssPascal, u"a // b c"}, Case{ssC, u"a // b c"}, Case{ssSQL, u"a // b c"},
                        Case{ssPerl, u"a # b c"}}) {
    TGScanner sc;
    sc.SetSourceStyle(c.style);
    SetLines(sc, {c.line, u"d"});
    EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 1:1-2 'd'"})) << int(c.style);
  }
}

// Deliberate: the SQL style comments lines with "//", not "--".
TEST(LineComment, SqlUsesSlashesNotDashes) {
  TGScanner sc;
  sc.SetSourceStyle(ssSQL);
  SetLines(sc, {u"a -- b"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttSeparator 0:3-4 '-'",
                                        "ttSeparator 0:4-5 '-'", "ttIdent 0:6-7 'b'"}));
}

// Edge case: in the Perl style a line that begins with "#" is a comment.
TEST(LineComment, PerlHashLine) {
  TGScanner sc;
  sc.SetSourceStyle(ssPerl);
  SetLines(sc, {u"#!/usr/bin/perl -w", u"my $x;"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 1:1-3 'my'", "ttUnknown 1:4-6 '$x'", "ttSeparator 1:6-7 ';'"}));
}

// The C style's "#" is a separator, not a comment.
TEST(LineComment, CHashIsASeparator) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  SetLines(sc, {u"#define X"});
  EXPECT_EQ(WalkDescribed(sc),
            (Strings{"ttSeparator 0:1-2 '#'", "ttIdent 0:2-8 'define'", "ttIdent 0:9-10 'X'"}));
}

// Edge case: a word, a comment opened by "(*" and closed on the same line, and
// a second word yield just the two words.
TEST(BlockComment, ClosedOnTheSameLine) {
  TGScanner sc;
  SetLines(sc, {u"first (* a comment *) second"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-6 'first'", "ttIdent 0:23-29 'second'"}));
}

// Edge case (deliberate): the closer is searched from one past the opener's
// first character, so "(*)" is a whole comment.
TEST(BlockComment, OpenerFollowedByClosingParenthesisIsWhole) {
  TGScanner sc;
  SetLines(sc, {u"a (*) b"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 0:7-8 'b'"}));
  // The same holds for C: in "/*/" the opener's star and the slash after it
  // form the closer, so "b" and the later "*/" are not inside a comment.
  sc.SetSourceStyle(ssC);
  SetLines(sc, {u"a /*/ b */ c"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 0:7-8 'b'", "ttSeparator 0:9-11 '*/'",
                                        "ttIdent 0:12-13 'c'"}));
}

// Edge case: a brace opened with no closing brace in the rest of the source
// ends the scan; no token is filled for it.
TEST(BlockComment, UnclosedEndsTheScan) {
  TGScanner sc;
  SetLines(sc, {u"a { b", u"c", u"d"});
  const std::vector<TGToken> toks = Walk(sc);
  ASSERT_EQ(toks.size(), 2u);
  EXPECT_EQ(toks[0].RealStr, u"a");
  EXPECT_EQ(toks[1], TGToken{});  // the extra empty token of a short source
}

TEST(BlockComment, SpansLinesAndScanningResumesAfterTheCloser) {
  TGScanner sc;
  SetLines(sc, {u"a { b", u"c", u"d } e", u"f"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 2:5-6 'e'", "ttIdent 3:1-2 'f'"}));
  // The closer on a later line is searched from its first character.
  SetLines(sc, {u"a {", u"}b"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 1:2-3 'b'"}));
}

TEST(BlockComment, CommentsInsideAWordDoNotCutIt) {
  // Comments are only recognised where a token may start; "a{b}" is a word
  // "a" followed by the brace, which is then a comment opener.
  TGScanner sc;
  SetLines(sc, {u"a{b}c"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 0:5-6 'c'"}));
}

TEST(BlockComment, LineCommentMarkerInsideABlockCommentIsIgnored) {
  TGScanner sc;
  SetLines(sc, {u"a { // } b"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttIdent 0:10-11 'b'"}));
}

TEST(BlockComment, PerlHasNone) {
  TGScanner sc;
  sc.SetSourceStyle(ssPerl);
  SetLines(sc, {u"a /* b */"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'a'", "ttSeparator 0:3-4 '/'", "ttSeparator 0:4-5 '*'",
                                        "ttIdent 0:6-7 'b'", "ttSeparator 0:8-9 '*'", "ttSeparator 0:9-10 '/'"}));
}

// An empty closer is never found: the comment runs to the end of the source.
TEST(BlockComment, EmptyCloserIsNeverFound) {
  TGScanner sc;
  sc.SetBlockComments(u"{-");
  SetLines(sc, {u"a { b }", u"c"});
  const std::vector<TGToken> toks = Walk(sc);
  ASSERT_EQ(toks.size(), 2u);
  EXPECT_EQ(toks[0].RealStr, u"a");
  EXPECT_EQ(toks[1], TGToken{});
}

// Edge case: a comment holding LOCALIZE OFF sets Localize false for the
// following tokens; LOCALIZE ON sets it back.
TEST(Localize, MarkersSwitchTheStateAndTokensRecordIt) {
  TGScanner sc;
  SetLines(sc, {u"a // LOCALIZE OFF", u"b", u"// LOCALIZE ON", u"c"});
  const std::vector<TGToken> toks = Walk(sc);
  ASSERT_GE(toks.size(), 3u);
  EXPECT_TRUE(toks[0].TokLocalize);
  EXPECT_EQ(toks[1].RealStr, u"b");
  EXPECT_FALSE(toks[1].TokLocalize);
  EXPECT_EQ(toks[2].RealStr, u"c");
  EXPECT_TRUE(toks[2].TokLocalize);
  EXPECT_TRUE(sc.Localize());
}

// The markers are read in any letter case, with plain ASCII upper-casing.
TEST(Localize, AnyLetterCase) {
  Probe sc;
  EXPECT_TRUE(sc.isLineComment(u"//localize off", 1));
  EXPECT_FALSE(sc.Localize());
  EXPECT_TRUE(sc.isLineComment(u"//LoCaLiZe On", 1));
  EXPECT_TRUE(sc.Localize());
}

// Deliberate: the whole marker must lie in the 13 characters after the
// comment text.
TEST(Localize, ThirteenCharacterWindow) {
  struct Case {
    const char16_t* line;
    bool switches;
  };
  const Case off_cases[] = {
      {u"//LOCALIZE OFF", true},
      {u"// LOCALIZE OFF", true},
      {u"//  LOCALIZE OFF", false},   // the window ends before the last F
      {u"// LOCALIZE OFF  x", true},  // what follows the window is ignored
      {u"// LOCALIZE OFFICE", true},  // the window ends before the I
      {u"//LOCALIZE OFFICE", false},
      {u"//\tLOCALIZE OFF", true},    // the trim removes control characters too
  };
  for (const Case& c : off_cases) {
    Probe sc;
    EXPECT_TRUE(sc.isLineComment(c.line, 1));
    EXPECT_EQ(sc.Localize(), !c.switches) << testing::Escaped(c.line);
  }
  const Case on_cases[] = {
      {u"//  LOCALIZE ON", true},    // two blanks: still inside
      {u"//   LOCALIZE ON", false},  // three blanks: the N falls outside
      {u"// LOCALIZE ONE", false},   // "LOCALIZE ONE" is not the marker
      {u"//  LOCALIZE ONE", true},   // the window ends before the E
      {u"// LOCALIZE ON x", true},   // the window ends on the blank before x
      {u"// LOCALIZE ONx", false},
  };
  for (const Case& c : on_cases) {
    Probe sc;
    EXPECT_TRUE(sc.isLineComment(u"//LOCALIZE OFF", 1));
    ASSERT_FALSE(sc.Localize());
    EXPECT_TRUE(sc.isLineComment(c.line, 1));
    EXPECT_EQ(sc.Localize(), c.switches) << testing::Escaped(c.line);
  }
}

TEST(Localize, OnlyLineCommentsCarryMarkers) {
  TGScanner sc;
  SetLines(sc, {u"{ LOCALIZE OFF } a (* LOCALIZE OFF *) b"});
  const std::vector<TGToken> toks = Walk(sc);
  ASSERT_GE(toks.size(), 2u);
  EXPECT_TRUE(toks[0].TokLocalize);
  EXPECT_TRUE(toks[1].TokLocalize);
  EXPECT_TRUE(sc.Localize());
}

TEST(Localize, FirstTokenDoesNotResetIt) {
  TGScanner sc;
  SetLines(sc, {u"a //LOCALIZE OFF", u"b"});
  Walk(sc);
  EXPECT_FALSE(sc.Localize());
  sc.FirstToken();
  EXPECT_FALSE(sc.GetToken(0).TokLocalize);
  EXPECT_EQ(sc.RealStr(), u"a");
}

TEST(Localize, PerlMarkerAfterHash) {
  TGScanner sc;
  sc.SetSourceStyle(ssPerl);
  SetLines(sc, {u"# LOCALIZE OFF", u"x"});
  sc.FirstToken();
  EXPECT_EQ(sc.RealStr(), u"x");
  EXPECT_FALSE(sc.GetToken(0).TokLocalize);
}

TEST(IsLineComment, FalseWhereTheTextDoesNotStand) {
  Probe sc;
  EXPECT_FALSE(sc.isLineComment(u"a/", 2));
  EXPECT_FALSE(sc.isLineComment(u"/ /", 1));
  EXPECT_TRUE(sc.isLineComment(u"a//", 2));
  EXPECT_FALSE(sc.isLineComment(u"a//", 3));
}

TEST(IsBlockComment, FirstMatchingOpenerAndItsCloser) {
  Probe sc;
  UnicodeString closer;
  EXPECT_TRUE(sc.isBlockComment(u"x(*", 2, closer));
  EXPECT_EQ(closer, u"*)");
  EXPECT_TRUE(sc.isBlockComment(u"{", 1, closer));
  EXPECT_EQ(closer, u"}");
  closer = u"kept";
  EXPECT_FALSE(sc.isBlockComment(u"(", 1, closer));
  EXPECT_EQ(closer, u"kept");
}

}  // namespace
}  // namespace quill::Gscanner
