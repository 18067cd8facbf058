// Walking the source: FirstToken, NextToken, the extra token after a short
// source, EOS, positions and NextTokenAsTemplate.
#include <string>

#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::Described;
using testing::SetLines;
using testing::Walk;
using testing::WalkDescribed;

using Strings = std::vector<std::string>;

// Edge case: x:=1; in the Pascal style.
TEST(FirstToken, PascalAssignment) {
  TGScanner sc;
  SetLines(sc, {u"x:=1;"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'x'", "ttSeparator 0:2-4 ':='", "ttNumber 0:4-5 '1'",
                                        "ttSeparator 0:5-6 ';'"}));
}

// Edge case (required): three tokens, then one empty token, then EOS.
TEST(NextToken, ShortSourceEndsWithOneEmptyToken) {
  TGScanner sc;
  SetLines(sc, {u"a b c"});
  sc.FirstToken();
  std::vector<UnicodeString> seen;
  for (int step = 0; step < 10 && !sc.EOS(); ++step) {
    seen.push_back(sc.RealStr());
    sc.NextToken();
  }
  EXPECT_EQ(seen, (std::vector<UnicodeString>{u"a", u"b", u"c", u""}));
  EXPECT_TRUE(sc.EOS());
  const std::vector<TGToken> walk = Walk(sc);
  ASSERT_EQ(walk.size(), 4u);
  EXPECT_EQ(walk[3], TGToken{});
}

// The extra token is whatever the slot after the last one holds: after a
// longer source was walked, a stale token of that walk.
TEST(NextToken, ExtraTokenIsTheSlotsContent) {
  TGScanner sc;
  SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 t11"});
  sc.FirstToken();  // slots 0..10 hold t0..t10
  SetLines(sc, {u"a"});
  const std::vector<TGToken> walk = Walk(sc);
  ASSERT_EQ(walk.size(), 2u);
  EXPECT_EQ(walk[0].RealStr, u"a");
  EXPECT_EQ(walk[1].RealStr, u"t1");
}

TEST(NextToken, ElevenTokensHaveNoExtraToken) {
  TGScanner sc;
  SetLines(sc, {u"a b c d e f g h i j k"});
  const std::vector<TGToken> walk = Walk(sc);
  ASSERT_EQ(walk.size(), 11u);
  EXPECT_EQ(walk.back().RealStr, u"k");
}

TEST(NextToken, LongSourceHasNoExtraToken) {
  TGScanner sc;
  std::u16string line;
  for (int i = 0; i < 50; ++i) line += u"w" + std::u16string(1, static_cast<char16_t>(u'A' + i % 26)) + u" ";
  SetLines(sc, {line, line});
  const std::vector<TGToken> walk = Walk(sc);
  ASSERT_EQ(walk.size(), 100u);
  EXPECT_EQ(walk.back().RealStr, u"wX");
  EXPECT_EQ(walk.back().TokLine, 1);
}

// Over many rotations of the ring every slot holds the token the walk shows
// that many steps before or after.
TEST(NextToken, SlotsFollowTheWalk) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  std::u16string line;
  for (int i = 0; i < 300; ++i) line += u"id" + std::u16string(1, static_cast<char16_t>(u'a' + i % 26)) + u"(1, \"s\"); ";
  SetLines(sc, {line, line, line});
  const std::vector<TGToken> walk = Walk(sc);
  ASSERT_EQ(walk.size(), 3u * 300u * 7u);
  sc.FirstToken();
  for (size_t step = 0; step < walk.size(); ++step) {
    for (int32_t k = -10; k <= 10; ++k) {
      const int64_t at = static_cast<int64_t>(step) + k;
      if (at < 0 || at >= static_cast<int64_t>(walk.size())) continue;
      ASSERT_EQ(sc.GetToken(k), walk[static_cast<size_t>(at)]) << "step " << step << " slot " << k;
    }
    sc.NextToken();
  }
  EXPECT_TRUE(sc.EOS());
}

TEST(NextToken, AfterEosNothingChanges) {
  TGScanner sc;
  SetLines(sc, {u"a"});
  Walk(sc);
  ASSERT_TRUE(sc.EOS());
  const TGScannerBookmark at_end = sc.GetBookmark();
  sc.NextToken();
  sc.NextToken();
  EXPECT_TRUE(sc.EOS());
  EXPECT_EQ(sc.GetBookmark().LastTokenIndex, at_end.LastTokenIndex);
  EXPECT_TRUE(sc.GetBookmark().TokenQueue == at_end.TokenQueue);
}

// With no lines FirstToken stops at once: the index keeps its value, so a
// new scanner is not at EOS and presents its empty slot 0.
TEST(FirstToken, EmptySourceKeepsTheIndex) {
  TGScanner sc;
  sc.FirstToken();
  EXPECT_FALSE(sc.EOS());
  EXPECT_EQ(sc.TokType(), ttUnknown);
  sc.NextToken();  // nothing to scan: the queue shifts down to EOS
  EXPECT_TRUE(sc.EOS());
  // After a walk to the end, an emptied source leaves EOS as it was.
  sc.FirstToken();
  EXPECT_TRUE(sc.EOS());
}

TEST(FirstToken, BlankAndCommentLinesOnly) {
  TGScanner sc;
  SetLines(sc, {u"", u"   ", u"// nothing", u"{ still nothing }"});
  const std::vector<TGToken> walk = Walk(sc);
  ASSERT_EQ(walk.size(), 1u);  // the extra empty token only
  EXPECT_EQ(walk[0], TGToken{});
}

TEST(FirstToken, RestartsAtTheTop) {
  TGScanner sc;
  SetLines(sc, {u"a b", u"c"});
  Walk(sc);
  sc.FirstToken();
  EXPECT_EQ(sc.RealStr(), u"a");
  EXPECT_EQ(sc.TokPos(), 0);
  EXPECT_EQ(sc.GetToken(2).TokPos, 5);
}

// Edge case: TokPos counts every line break as two characters.
TEST(TokPos, LineBreaksCountAsTwo) {
  TGScanner sc;
  SetLines(sc, {u"abcde", u"  x"});
  sc.FirstToken();
  sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"x");
  EXPECT_EQ(sc.TokStart(), 3);
  EXPECT_EQ(sc.TokPos(), 7 + sc.TokStart() - 1);
}

TEST(TokPos, OverEmptyAndCommentLines) {
  TGScanner sc;
  SetLines(sc, {u"a", u"", u"{ c }", u"b"});
  sc.FirstToken();
  // Lines of 1, 0 and 5 characters before b: 3 + 2 + 7 = 12.
  EXPECT_EQ(sc.GetToken(1).RealStr, u"b");
  EXPECT_EQ(sc.GetToken(1).TokPos, 12);
  EXPECT_EQ(sc.GetToken(1).TokLine, 3);
}

TEST(TokPos, LineCountsEveryStyle) {
  for (TSourceStyle style : {ssNone, ssPascal, ssC, ssSQL, ssPerl}) {
    TGScanner sc;
    sc.SetSourceStyle(style);
    SetLines(sc, {u"ab cd", u"", u"  ef"});
    const std::vector<TGToken> walk = Walk(sc);
    ASSERT_EQ(walk.size(), 4u) << int(style);
    EXPECT_EQ(walk[1].TokPos, 3) << int(style);
    EXPECT_EQ(walk[2].TokPos, 7 + 2 + 2) << int(style);
    EXPECT_EQ(walk[2].TokLine, 2) << int(style);
  }
}

TEST(TokenFields, AllFilledFromTheScan) {
  TGScanner sc;
  SetLines(sc, {u"  Alpha"});
  sc.FirstToken();
  const TGToken t = sc.GetToken(0);
  EXPECT_EQ(t.TokType, ttIdent);
  EXPECT_EQ(t.RealStr, u"Alpha");
  EXPECT_EQ(t.TokStr, u"alpha");
  EXPECT_EQ(t.TokLine, 0);
  EXPECT_EQ(t.TokStart, 3);
  EXPECT_EQ(t.TokEnd, 8);
  EXPECT_EQ(t.TokPos, 2);
  EXPECT_TRUE(t.TokLocalize);
  EXPECT_EQ(sc.TokLength(), 5);
}

// TokStr is computed from slot 0's RealStr on each read, not taken from the
// slot's TokStr field.
TEST(TokStr, ComputedFromRealStr) {
  TGScanner sc;
  TGToken t;
  t.RealStr = u"ABC";
  t.TokStr = u"something else";
  sc.SetToken(0, t);
  EXPECT_EQ(sc.TokStr(), u"abc");
  EXPECT_EQ(sc.GetToken(0).TokStr, u"something else");
}

// The source may change between calls; the next scan uses the new lines.
TEST(NextToken, SourceChangesTakeEffectAtTheNextScan) {
  TGScanner sc;
  SetLines(sc, {u"a b c d e f g h i j k l m"});
  sc.FirstToken();
  sc.Source().Put(0, u"a b c d e f g h i j k Z m");
  sc.NextToken();
  EXPECT_EQ(sc.GetToken(10).RealStr, u"Z");
}

// NextTokenAsTemplate: the token after the last one in the queue becomes the
// current token; a separator as first character quotes it.
TEST(NextTokenAsTemplate, SeparatorQuotesTheTemplate) {
  TGScanner sc;
  SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 /abc def/ z1 z2"});
  sc.FirstToken();
  sc.NextTokenAsTemplate();
  EXPECT_EQ(sc.TokType(), ttString);
  EXPECT_EQ(sc.RealStr(), u"abc def");
  EXPECT_EQ(sc.TokStart(), 35);
  EXPECT_EQ(sc.TokEnd(), 44);
  EXPECT_EQ(sc.GetToken(-1).RealStr, u"t0");
  // Deliberate: the look-ahead t2..t10 is dropped and scanned anew after the
  // template token.
  EXPECT_EQ(sc.GetToken(1).RealStr, u"z1");
  EXPECT_EQ(sc.GetToken(2).RealStr, u"z2");
  // The string quote is back to normal.
  EXPECT_EQ(sc.StrQuote(), u'\'');
  sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"z1");
  sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"z2");
  sc.NextToken();  // the slot after z2: a stale token of the earlier queue
  EXPECT_EQ(sc.RealStr(), u"t4");
  sc.NextToken();
  EXPECT_TRUE(sc.EOS());
}

TEST(NextTokenAsTemplate, WordIsScannedAsUsual) {
  TGScanner sc;
  SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 Word/x/ y"});
  sc.FirstToken();
  sc.NextTokenAsTemplate();
  EXPECT_EQ(sc.TokType(), ttIdent);
  EXPECT_EQ(sc.RealStr(), u"Word");
  EXPECT_EQ(sc.GetToken(1).RealStr, u"/");
  EXPECT_EQ(sc.GetToken(2).RealStr, u"x");
}

TEST(NextTokenAsTemplate, EveryStyleReadsItsOwnWay) {
  for (TSourceStyle style : {ssNone, ssPascal, ssC, ssSQL, ssPerl}) {
    TGScanner sc;
    sc.SetSourceStyle(style);
    SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10", u"/a b/"});
    sc.FirstToken();
    sc.NextTokenAsTemplate();
    EXPECT_EQ(sc.TokType(), ttString) << int(style);
    EXPECT_EQ(sc.RealStr(), u"a b") << int(style);
    EXPECT_EQ(sc.TokLine(), 1) << int(style);
    // Nothing follows: one further slot, then the end.
    sc.NextToken();
    EXPECT_FALSE(sc.EOS()) << int(style);
    sc.NextToken();
    EXPECT_TRUE(sc.EOS()) << int(style);
  }
}

TEST(NextTokenAsTemplate, NonSeparatorStartIsAWord) {
  TGScanner sc;
  sc.SetSeps(u"+");
  SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 |a b|"});
  sc.FirstToken();
  sc.NextTokenAsTemplate();
  EXPECT_EQ(sc.TokType(), ttUnknown);  // "|a" is neither identifier nor number
  EXPECT_EQ(sc.RealStr(), u"|a");
}

TEST(NextTokenAsTemplate, UnterminatedTemplateIsUnknown) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 /abc"});
  sc.FirstToken();
  sc.NextTokenAsTemplate();
  EXPECT_EQ(sc.TokType(), ttUnknown);
  EXPECT_EQ(sc.RealStr(), u"abc");
  EXPECT_EQ(sc.StrQuote(), u'"');
}

TEST(NextTokenAsTemplate, QuoteRestoredWhenScanningRaises) {
  TGScanner sc;
  SetLines(sc, {u"t0 t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 #99999"});
  sc.FirstToken();
  // In template mode the '#' is its own quote; the Pascal reader still reads
  // the code first and raises.
  EXPECT_THROW(sc.NextTokenAsTemplate(), Exception);
  EXPECT_EQ(sc.StrQuote(), u'\'');
  // Template mode is over: the next ordinary scan reads a normal token.
  SetLines(sc, {u"'x'"});
  sc.FirstToken();
  EXPECT_EQ(sc.TokType(), ttString);
}

TEST(NextTokenAsTemplate, AtTheEndOfTheSource) {
  TGScanner sc;
  SetLines(sc, {u"a b"});
  sc.FirstToken();
  sc.NextTokenAsTemplate();
  // Nothing follows: the queue shifts, no template token is filled, and the
  // look-ahead refill finds nothing, so one more slot is presented.
  EXPECT_EQ(sc.RealStr(), u"b");
  EXPECT_FALSE(sc.EOS());
  sc.NextToken();
  EXPECT_FALSE(sc.EOS());
  EXPECT_EQ(sc.GetToken(0), TGToken{});
  sc.NextToken();
  EXPECT_TRUE(sc.EOS());
}

TEST(EOS, TrueOnceTheIndexDropsBelowZero) {
  TGScanner sc;
  SetLines(sc, {u"a"});
  sc.FirstToken();
  EXPECT_FALSE(sc.EOS());
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, 1);
  sc.NextToken();
  EXPECT_FALSE(sc.EOS());
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, 0);
  sc.NextToken();
  EXPECT_TRUE(sc.EOS());
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, -1);
}

}  // namespace
}  // namespace quill::Gscanner
