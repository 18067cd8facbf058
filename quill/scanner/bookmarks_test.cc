// Bookmarks and ExtractPiece.
#include <climits>
#include <string>

#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::SetLines;

TEST(GetBookmark, CopiesTheIndexAndAllSlots) {
  TGScanner sc;
  SetLines(sc, {u"a b c"});
  sc.FirstToken();
  const TGScannerBookmark bm = sc.GetBookmark();
  EXPECT_EQ(bm.LastTokenIndex, 3);
  for (int32_t i = -10; i <= 10; ++i) EXPECT_EQ(bm.TokenQueue[i], sc.GetToken(i)) << i;
  sc.NextToken();
  EXPECT_EQ(bm.TokenQueue[0].RealStr, u"a");  // a copy, not a view
}

// Edge case: take a bookmark, advance twice, restore: the current token and
// the next NextToken result are those seen right after taking it.
TEST(SetBookmark, RestoresTheWalk) {
  TGScanner sc;
  SetLines(sc, {u"a0 a1 a2 a3 a4 a5", u"b0 b1 b2 b3 b4 b5", u"c0 c1 c2 c3 c4 c5"});
  sc.FirstToken();
  sc.NextToken();
  const TGScannerBookmark bm = sc.GetBookmark();
  const TGToken current = sc.GetToken(0);
  sc.NextToken();
  const TGToken next = sc.GetToken(0);
  sc.NextToken();
  sc.SetBookmark(bm);
  EXPECT_EQ(sc.GetToken(0), current);
  sc.NextToken();
  EXPECT_EQ(sc.GetToken(0), next);
  // The rest of the walk follows in order.
  std::u16string rest;
  for (; !sc.EOS(); sc.NextToken()) rest += sc.RealStr() + u" ";
  EXPECT_EQ(rest, u"a2 a3 a4 a5 b0 b1 b2 b3 b4 b5 c0 c1 c2 c3 c4 c5 ");
}

// Deliberate: the line offset for TokPos is not restored; tokens scanned after
// the jump use the offset the scanning had reached.
TEST(SetBookmark, LineOffsetIsNotRestored) {
  TGScanner sc;
  SetLines(sc, {u"a0 a1 a2 a3 a4 a5", u"b0 b1 b2 b3 b4 b5", u"c0 c1 c2 c3 c4 c5", u"d0 d1 d2 d3 d4 d5"});
  sc.FirstToken();  // slots 0..10: a0..a5, b0..b4; the scan stands on line 1
  const TGScannerBookmark bm = sc.GetBookmark();
  for (int k = 0; k < 12; ++k) sc.NextToken();  // the scan reaches line 3
  ASSERT_EQ(sc.GetToken(10).TokLine, 3);
  sc.SetBookmark(bm);
  sc.NextToken();
  const TGToken b5 = sc.GetToken(10);
  EXPECT_EQ(b5.RealStr, u"b5");
  EXPECT_EQ(b5.TokLine, 1);
  EXPECT_EQ(b5.TokStart, 16);
  // Offset of line 3 (three lines of 17 characters plus CR LF) instead of
  // that of line 1.
  EXPECT_EQ(b5.TokPos, 3 * 19 + 16 - 1);
  EXPECT_NE(b5.TokPos, 19 + 16 - 1);
}

TEST(SetBookmark, IndexOutsideTheQueueRaises) {
  TGScanner sc;
  TGScannerBookmark bm;
  bm.LastTokenIndex = -11;
  try {
    sc.SetBookmark(bm);
    FAIL() << "no exception";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Token -11 is not available");
  }
  bm.LastTokenIndex = 11;
  EXPECT_THROW(sc.SetBookmark(bm), Exception);
}

// A bookmark taken at the end of the source restores the end.
TEST(SetBookmark, AtTheEnd) {
  TGScanner sc;
  SetLines(sc, {u"a b"});
  sc.FirstToken();
  while (!sc.EOS()) sc.NextToken();
  const TGScannerBookmark end = sc.GetBookmark();
  sc.FirstToken();
  sc.SetBookmark(end);
  EXPECT_TRUE(sc.EOS());
  sc.NextToken();
  EXPECT_TRUE(sc.EOS());
}

// Bookmarks cross styles: the slots are plain data.
TEST(SetBookmark, RestoresIntoAnotherScanner) {
  TGScanner a;
  TGScanner b;
  SetLines(a, {u"x y z"});
  SetLines(b, {u"x y z"});
  a.FirstToken();
  a.NextToken();
  b.SetBookmark(a.GetBookmark());
  EXPECT_EQ(b.RealStr(), u"y");
  b.NextToken();
  EXPECT_EQ(b.RealStr(), u"z");
}

// Edge case: both bookmarks on the same token, Inclusive: that token's text.
TEST(ExtractPiece, SameTokenInclusive) {
  TGScanner sc;
  SetLines(sc, {u"  name := 'va''lue' ;  "});
  sc.FirstToken();
  sc.NextToken();
  sc.NextToken();
  ASSERT_EQ(sc.TokType(), ttString);
  const TGScannerBookmark bm = sc.GetBookmark();
  // The source text, quotes and doubled quote included.
  EXPECT_EQ(sc.ExtractPiece(bm, bm, true), u"'va''lue'");
  // Not inclusive: up to the token before, which lies before the start.
  EXPECT_EQ(sc.ExtractPiece(bm, bm, false), u"");
}

// Edge case: second bookmark on the next token, not inclusive: the first
// token's text.
TEST(ExtractPiece, NextTokenNotInclusive) {
  TGScanner sc;
  SetLines(sc, {u"alpha   beta gamma"});
  sc.FirstToken();
  const TGScannerBookmark b1 = sc.GetBookmark();
  sc.NextToken();
  const TGScannerBookmark b2 = sc.GetBookmark();
  EXPECT_EQ(sc.ExtractPiece(b1, b2, false), u"alpha");
  EXPECT_EQ(sc.ExtractPiece(b1, b2, true), u"alpha   beta");
}

// Edge case: over three lines the CR LF pairs stay; only the ends are
// trimmed. Comments and blank lines are part of the piece.
TEST(ExtractPiece, ThreeLinesKeepTheirBreaks) {
  TGScanner sc;
  SetLines(sc, {u"begin  x := 1; { one }", u"", u"  y := 2;  end"});
  sc.FirstToken();
  sc.NextToken();  // x
  const TGScannerBookmark b1 = sc.GetBookmark();
  while (sc.RealStr() != u"end") sc.NextToken();
  const TGScannerBookmark b2 = sc.GetBookmark();
  EXPECT_EQ(sc.ExtractPiece(b1, b2, false), u"x := 1; { one }\r\n\r\n  y := 2;");
  EXPECT_EQ(sc.ExtractPiece(b1, b2, true), u"x := 1; { one }\r\n\r\n  y := 2;  end");
}

TEST(ExtractPiece, TrimsControlCharactersAtTheEnds) {
  TGScanner sc;
  SetLines(sc, {u"a", u"\t", u"\x01 b"});
  sc.FirstToken();
  const TGScannerBookmark b1 = sc.GetBookmark();
  while (sc.RealStr() != u"b") sc.NextToken();
  const TGScannerBookmark b2 = sc.GetBookmark();
  EXPECT_EQ(sc.ExtractPiece(b1, b2, true), u"a\r\n\t\r\n\x01 b");
  // From the control-character token to b: the character is trimmed away.
  sc.FirstToken();
  sc.NextToken();
  ASSERT_EQ(sc.RealStr(), u"\x01");
  EXPECT_EQ(sc.ExtractPiece(sc.GetBookmark(), b2, true), u"b");
}

TEST(ExtractPiece, FirstBookmarkAtTheEndGivesEmpty) {
  TGScanner sc;
  SetLines(sc, {u"a b"});
  sc.FirstToken();
  const TGScannerBookmark start = sc.GetBookmark();
  while (!sc.EOS()) sc.NextToken();
  const TGScannerBookmark end = sc.GetBookmark();
  EXPECT_EQ(sc.ExtractPiece(end, start, true), u"");
}

// A second bookmark at the end reaches to the end of the last line.
TEST(ExtractPiece, SecondBookmarkAtTheEndTakesTheRest) {
  TGScanner sc;
  SetLines(sc, {u"a b", u"c // tail  "});
  sc.FirstToken();
  sc.NextToken();
  const TGScannerBookmark b = sc.GetBookmark();
  while (!sc.EOS()) sc.NextToken();
  EXPECT_EQ(sc.ExtractPiece(b, sc.GetBookmark(), false), u"b\r\nc // tail");
}

TEST(ExtractPiece, EndBeforeStartGivesEmpty) {
  TGScanner sc;
  SetLines(sc, {u"a", u"b"});
  sc.FirstToken();
  const TGScannerBookmark first = sc.GetBookmark();
  sc.NextToken();
  const TGScannerBookmark second = sc.GetBookmark();
  EXPECT_EQ(sc.ExtractPiece(second, first, true), u"");
  // Same line, end before start: empty too.
  SetLines(sc, {u"a b"});
  sc.FirstToken();
  const TGScannerBookmark x = sc.GetBookmark();
  sc.NextToken();
  EXPECT_EQ(sc.ExtractPiece(sc.GetBookmark(), x, true), u"");
}

// On an empty source the bookmark names line 0, which does not exist,
// so reading it raises the string list's own error.
TEST(ExtractPiece, EmptySourceRaisesTheListError) {
  TGScanner sc;
  sc.FirstToken();
  const TGScannerBookmark bm = sc.GetBookmark();
  EXPECT_THROW((void)sc.ExtractPiece(bm, bm, true), EStringListError);
}

TEST(ExtractPiece, ChangedSourceLinesMustExist) {
  TGScanner sc;
  SetLines(sc, {u"a", u"b"});
  sc.FirstToken();
  const TGScannerBookmark b1 = sc.GetBookmark();
  sc.NextToken();
  const TGScannerBookmark b2 = sc.GetBookmark();
  SetLines(sc, {u"only"});
  EXPECT_THROW((void)sc.ExtractPiece(b1, b2, true), EStringListError);
}

// Bookmarks built by hand with extreme positions give empty or clamped text,
// never a read outside the line.
TEST(ExtractPiece, ExtremePositionsAreClamped) {
  TGScanner sc;
  SetLines(sc, {u"abc"});
  TGScannerBookmark b1;
  TGScannerBookmark b2;
  b1.TokenQueue[0].TokStart = INT32_MAX;
  b2.TokenQueue[0].TokEnd = INT32_MIN;
  EXPECT_EQ(sc.ExtractPiece(b1, b2, true), u"");
  b1.TokenQueue[0].TokStart = INT32_MIN;
  b2.TokenQueue[0].TokEnd = INT32_MAX;
  EXPECT_EQ(sc.ExtractPiece(b1, b2, true), u"abc");
}

}  // namespace
}  // namespace quill::Gscanner
