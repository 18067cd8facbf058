// The token vocabulary: token types and their set, the token record, the
// ring queue, bookmarks and a new scanner's defaults.
#include <type_traits>

#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::SetLines;

TEST(TGTokenType, OrdinalsAreFixedAndOneByte) {
  static_assert(sizeof(TGTokenType) == 1);
  static_assert(sizeof(TSourceStyle) == 1);
  EXPECT_EQ(ttUnknown, 0);
  EXPECT_EQ(ttIdent, 1);
  EXPECT_EQ(ttReservedWord, 2);
  EXPECT_EQ(ttSeparator, 3);
  EXPECT_EQ(ttChar, 4);
  EXPECT_EQ(ttString, 5);
  EXPECT_EQ(ttLString, 6);
  EXPECT_EQ(ttNumber, 7);
  EXPECT_EQ(ttVariable, 8);
  EXPECT_EQ(ttFunction, 9);
  EXPECT_EQ(ttStrTemplate, 10);
  EXPECT_EQ(ssNone, 0);
  EXPECT_EQ(ssPascal, 1);
  EXPECT_EQ(ssC, 2);
  EXPECT_EQ(ssSQL, 3);
  EXPECT_EQ(ssPerl, 4);
}

TEST(TGTokenTypes, MembershipUnionDifferenceIntersection) {
  TGTokenTypes none;
  EXPECT_TRUE(none.Empty());
  for (int t = ttUnknown; t <= ttStrTemplate; ++t) EXPECT_FALSE(none.Contains(static_cast<TGTokenType>(t)));

  TGTokenTypes words{ttIdent, ttReservedWord};
  EXPECT_TRUE(words.Contains(ttIdent));
  EXPECT_TRUE(words.Contains(ttReservedWord));
  EXPECT_FALSE(words.Contains(ttUnknown));
  EXPECT_EQ(words.Bits(), (1u << ttIdent) | (1u << ttReservedWord));

  const TGTokenTypes all = words + TGTokenTypes{ttStrTemplate, ttUnknown};
  EXPECT_TRUE(all.Contains(ttStrTemplate));
  EXPECT_TRUE(all.Contains(ttUnknown));
  EXPECT_EQ(all - words, (TGTokenTypes{ttStrTemplate, ttUnknown}));
  EXPECT_EQ(all * words, words);
  words.Exclude(ttIdent).Include(ttNumber);
  EXPECT_EQ(words, (TGTokenTypes{ttReservedWord, ttNumber}));
  // A value outside the enumeration is never a member.
  EXPECT_FALSE(all.Contains(static_cast<TGTokenType>(11)));
}

TEST(TGToken, DefaultIsAnEmptyUnknownToken) {
  const TGToken t;
  EXPECT_EQ(t.TokType, ttUnknown);
  EXPECT_TRUE(t.TokStr.empty());
  EXPECT_TRUE(t.RealStr.empty());
  EXPECT_EQ(t.TokLine, 0);
  EXPECT_EQ(t.TokStart, 0);
  EXPECT_EQ(t.TokEnd, 0);
  EXPECT_EQ(t.TokPos, 0);
  EXPECT_FALSE(t.TokLocalize);
}

TEST(TGTokenQueue, IndexesMinusTenToTenAndRotatesTowardsThePast) {
  TGTokenQueue q;
  for (int32_t i = -10; i <= 10; ++i) q[i].TokLine = i;
  q.Rotate();
  // Slot i now holds what slot i+1 held; the old slot -10 reappears at 10.
  for (int32_t i = -10; i <= 9; ++i) EXPECT_EQ(q[i].TokLine, i + 1) << i;
  EXPECT_EQ(q[10].TokLine, -10);
  // 21 rotations bring every slot back.
  for (int k = 0; k < 20; ++k) q.Rotate();
  for (int32_t i = -10; i <= 10; ++i) EXPECT_EQ(q[i].TokLine, i);
}

TEST(TGTokenQueue, EqualityComparesSlotsNotLayout) {
  TGTokenQueue a;
  TGTokenQueue b;
  for (int32_t i = -10; i <= 10; ++i) a[i].TokStart = i;
  b.Rotate();  // a different physical layout
  for (int32_t i = -10; i <= 10; ++i) b[i].TokStart = i;
  EXPECT_TRUE(a == b);
  b[3].RealStr = u"x";
  EXPECT_FALSE(a == b);
}

TEST(TGScannerBookmark, HoldsTheIndexAndAWholeQueueByValue) {
  TGScannerBookmark bm;
  EXPECT_EQ(bm.LastTokenIndex, 0);
  bm.TokenQueue[5].RealStr = u"kept";
  TGScannerBookmark copy = bm;
  bm.TokenQueue[5].RealStr = u"changed";
  EXPECT_EQ(copy.TokenQueue[5].RealStr, u"kept");
}

// Edge case: a new scanner reports the Pascal defaults and Localize true.
TEST(TGScannerCreate, StartsInThePascalStyle) {
  TGScanner sc;
  EXPECT_EQ(sc.SourceStyle(), ssPascal);
  EXPECT_EQ(sc.StrQuote(), u'\'');
  EXPECT_EQ(sc.CharQuote(), u'\'');
  EXPECT_EQ(sc.ExtraCharSymbol(), u'#');
  EXPECT_EQ(sc.BlockComments(), u"(*-*),{-}");
  EXPECT_EQ(sc.GetBlockComments(), u"(*-*),{-}");
  EXPECT_TRUE(sc.Localize());
  EXPECT_EQ(sc.Seps(), u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= <> { } // (* *) #");
}

TEST(TGScannerCreate, OwnedListsStartEmptyWithListDefaults) {
  TGScanner sc;
  for (const TStringList* l : {&sc.Source(), &sc.Vars(), &sc.Funcs(), &sc.RWords()}) {
    EXPECT_EQ(l->Count(), 0);
    EXPECT_FALSE(l->Sorted());
    EXPECT_FALSE(l->CaseSensitive());
  }
}

TEST(TGScannerCreate, QueueHoldsEmptyTokensAndIndexIsZero) {
  TGScanner sc;
  for (int32_t i = -10; i <= 10; ++i) EXPECT_EQ(sc.GetToken(i), TGToken{}) << i;
  // Last-token index 0: not at end of source.
  EXPECT_FALSE(sc.EOS());
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, 0);
  EXPECT_EQ(sc.TokType(), ttUnknown);
  EXPECT_EQ(sc.TokLength(), 0);
}

TEST(TGScannerLists, SettersCopyTheContentNotTheObject) {
  TGScanner sc;
  TStringList words;
  words.Add(u"begin");
  words.Add(u"end");
  sc.SetWords(words);
  sc.SetVars(words);
  sc.SetFuncs(words);
  sc.SetSource(words);
  words.Clear();
  words.Add(u"other");
  for (const TStringList* l : {&sc.Source(), &sc.Vars(), &sc.Funcs(), &sc.RWords()}) {
    ASSERT_EQ(l->Count(), 2);
    EXPECT_EQ(l->Get(0), u"begin");
    EXPECT_EQ(l->Get(1), u"end");
  }
}

}  // namespace
}  // namespace quill::Gscanner
