// ScanToPair: levels, right and wrong tokens, and where the scanner stands
// afterwards.
#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::SetLines;

const TGTokenTypes kIdents{ttIdent};

// Edge case: over ( a ( x ) x ) the inner x at level 1 is found.
TEST(ScanToPair, FindsARightTokenInANestedPair) {
  TGScanner sc;
  SetLines(sc, {u"( a ( x ) x )"});
  sc.FirstToken();
  ASSERT_EQ(sc.RealStr(), u"(");
  EXPECT_TRUE(sc.ScanToPair(u"(", u")", u"x", u"", kIdents));
  EXPECT_EQ(sc.RealStr(), u"x");
  EXPECT_EQ(sc.TokStart(), 7);  // the inner one
}

// Edge case: over ( a ; x ) the x is skipped (a wrong token was seen at level
// 0), the ) at level 0 ends the search, and the scanner is back on the (.
TEST(ScanToPair, WrongTokenBlocksItsLevel) {
  TGScanner sc;
  SetLines(sc, {u"( a ; x ) y"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"x", u";", kIdents));
  EXPECT_EQ(sc.RealStr(), u"(");
  EXPECT_EQ(sc.TokStart(), 1);
  // The walk goes on from there as before.
  sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"a");
}

// Deliberate: a blocked level stays blocked after it was left and re-entered.
TEST(ScanToPair, BlockedLevelStaysBlocked) {
  TGScanner sc;
  SetLines(sc, {u"( ( ; ) ( x ) ) x"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"x", u";", kIdents));
  EXPECT_EQ(sc.TokStart(), 1);
  // Without the wrong token the x inside is found.
  EXPECT_TRUE(sc.ScanToPair(u"(", u")", u"x", u"", kIdents));
  EXPECT_EQ(sc.TokStart(), 11);
}

// A wrong token at another level does not block.
TEST(ScanToPair, WrongTokenOnlyBlocksItsOwnLevel) {
  TGScanner sc;
  SetLines(sc, {u"( ( ; ) x )"});
  sc.FirstToken();
  EXPECT_TRUE(sc.ScanToPair(u"(", u")", u"x", u";", kIdents));
  EXPECT_EQ(sc.TokStart(), 9);
}

// The wrong token is recorded before the right test, so a token in both
// lists blocks itself.
TEST(ScanToPair, TokenInBothListsBlocksItself) {
  TGScanner sc;
  SetLines(sc, {u"( x )"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"x", u"x", kIdents));
}

TEST(ScanToPair, TypeMustBeInTheSet) {
  TGScanner sc;
  SetLines(sc, {u"( x 1 )"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"x,1", u"", TGTokenTypes{ttString}));
  EXPECT_EQ(sc.RealStr(), u"(");
  sc.FirstToken();
  EXPECT_TRUE(sc.ScanToPair(u"(", u")", u"x,1", u"", TGTokenTypes{ttNumber}));
  EXPECT_EQ(sc.RealStr(), u"1");
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"x,1", u"", TGTokenTypes{}));
  EXPECT_EQ(sc.RealStr(), u"(");
}

// The right and wrong lists are comma texts and ignore case.
TEST(ScanToPair, ListsAreCommaTextIgnoringCase) {
  TGScanner sc;
  SetLines(sc, {u"begin a; B; Then end"});
  sc.FirstToken();
  EXPECT_TRUE(sc.ScanToPair(u"begin", u"end", u"THEN, else", u"", kIdents));
  EXPECT_EQ(sc.RealStr(), u"Then");
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"begin", u"end", u"then", u"X , b", kIdents));
  EXPECT_EQ(sc.RealStr(), u"begin");
}

// Deliberate: the pair words are compared exactly with the lower-cased
// TokStr, so upper-case pair words never match.
TEST(ScanToPair, PairWordsAreComparedExactlyInLowerCase) {
  TGScanner sc;
  SetLines(sc, {u"BEGIN a END y"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"begin", u"end", u"y", u"", kIdents));
  EXPECT_EQ(sc.RealStr(), u"BEGIN");
  // "END" never equals the lower-cased "end": the search runs past it.
  EXPECT_TRUE(sc.ScanToPair(u"BEGIN", u"END", u"y", u"", kIdents));
  EXPECT_EQ(sc.RealStr(), u"y");
}

TEST(ScanToPair, EndOfSourceIsNotFound) {
  TGScanner sc;
  SetLines(sc, {u"( a b", u"c"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"z", u"", kIdents));
  EXPECT_EQ(sc.RealStr(), u"(");
  EXPECT_FALSE(sc.EOS());
}

// The search starts with the token after the current one; a closing pair word
// right after it ends the search at once.
TEST(ScanToPair, StartsAfterTheCurrentToken) {
  TGScanner sc;
  SetLines(sc, {u"x ) x"});
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"(", u")", u"x", u"", kIdents));
  EXPECT_EQ(sc.TokStart(), 1);
}

// Equal pair words: the level goes up and down on the same token, so only
// the first occurrence (at level 0) ends the search.
TEST(ScanToPair, EqualPairWords) {
  TGScanner sc;
  SetLines(sc, {u"| a x | x"});
  sc.FirstToken();
  EXPECT_TRUE(sc.ScanToPair(u"|", u"|", u"x", u"", kIdents));
  EXPECT_EQ(sc.TokStart(), 5);
  sc.FirstToken();
  EXPECT_FALSE(sc.ScanToPair(u"|", u"|", u"y", u"", kIdents));
}

TEST(ScanToPair, WorksOverLongSources) {
  TGScanner sc;
  std::u16string line = u"begin ";
  for (int i = 0; i < 40; ++i) line += u"begin q; end; ";
  line += u"target end";
  SetLines(sc, {line});
  sc.FirstToken();
  EXPECT_TRUE(sc.ScanToPair(u"begin", u"end", u"target", u"q", kIdents));
  EXPECT_EQ(sc.RealStr(), u"target");
}

}  // namespace
}  // namespace quill::Gscanner
