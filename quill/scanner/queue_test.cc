// The token queue: checked slot access, ShiftTokens and PrevToksStr.
#include <climits>
#include <functional>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::SetLines;

UnicodeString Widened(const std::string& s) { return UnicodeString(s.begin(), s.end()); }

// Runs `f` and expects the general exception class with the index in the text.
void ExpectNotAvailable(const std::function<void()>& f, int32_t index) {
  try {
    f();
    FAIL() << "no exception for " << index;
  } catch (const Exception& e) {
    EXPECT_EQ(typeid(e), typeid(Exception));  // the general class, not EScannerError
    EXPECT_EQ(e.Message(), u"Token " + Widened(std::to_string(index)) + u" is not available");
  }
}

// Edge case: after FirstToken on eleven or more tokens, slot 10 is the
// eleventh token, slot -1 is empty on a fresh scanner, slot 11 raises.
TEST(GetToken, SlotsAfterFirstToken) {
  TGScanner sc;
  SetLines(sc, {u"t1 t2 t3 t4 t5 t6 t7 t8 t9 t10 t11 t12"});
  sc.FirstToken();
  EXPECT_EQ(sc.Tokens(0).RealStr, u"t1");
  EXPECT_EQ(sc.Tokens(10).RealStr, u"t11");
  EXPECT_EQ(sc.Tokens(-1), TGToken{});
  ExpectNotAvailable([&] { (void)sc.Tokens(11); }, 11);
  ExpectNotAvailable([&] { (void)sc.GetToken(-11); }, -11);
  ExpectNotAvailable([&] { (void)sc.GetToken(INT32_MIN); }, INT32_MIN);
}

// CurrentToken is slot 0 without a copy: the same record as GetToken(0) at
// every step of a walk, past the end of the source included.
TEST(CurrentToken, IsSlotZeroThroughAWalk) {
  TGScanner sc;
  SetLines(sc, {u"Begin x := 'Text'; { c }", u"y := #65 + 1.5e3 end."});
  sc.FirstToken();
  int tokens = 0;
  for (; !sc.EOS(); sc.NextToken(), ++tokens) {
    const TGToken& cur = sc.CurrentToken();
    EXPECT_EQ(cur, sc.GetToken(0)) << "token " << tokens;
    EXPECT_EQ(cur.RealStr, sc.RealStr());
    EXPECT_EQ(cur.TokLine, sc.TokLine());
  }
  EXPECT_EQ(tokens, 14);
  EXPECT_EQ(sc.CurrentToken(), sc.GetToken(0));
}

TEST(SetToken, WritesTheSlotAndChecksTheIndex) {
  TGScanner sc;
  TGToken t;
  t.TokType = ttNumber;
  t.RealStr = u"42";
  t.TokLine = 7;
  for (int32_t i = -10; i <= 10; ++i) {
    t.TokStart = i;
    sc.SetToken(i, t);
  }
  for (int32_t i = -10; i <= 10; ++i) EXPECT_EQ(sc.GetToken(i).TokStart, i);
  EXPECT_EQ(sc.TokType(), ttNumber);
  EXPECT_EQ(sc.RealStr(), u"42");
  EXPECT_EQ(sc.TokLine(), 7);
  ExpectNotAvailable([&] { sc.SetToken(11, t); }, 11);
  ExpectNotAvailable([&] { sc.SetToken(-11, t); }, -11);
}

TEST(ShiftTokens, MovesTowardsThePastAndKeepsSlotTen) {
  TGScanner sc;
  TGToken t;
  for (int32_t i = -10; i <= 10; ++i) {
    t.TokStart = i;
    sc.SetToken(i, t);
  }
  sc.ShiftTokens();
  for (int32_t i = -10; i <= 9; ++i) EXPECT_EQ(sc.GetToken(i).TokStart, i + 1) << i;
  EXPECT_EQ(sc.GetToken(10).TokStart, 10);  // equals slot 9 now
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, -1);
  sc.ShiftTokens();
  EXPECT_EQ(sc.GetToken(8).TokStart, 10);
  EXPECT_EQ(sc.GetToken(9).TokStart, 10);
  EXPECT_EQ(sc.GetToken(10).TokStart, 10);
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, -2);
}

// Shifting does not scan: it only moves slots and lowers the index, also past
// -10, after which restoring that index would fail.
TEST(ShiftTokens, IndexKeepsFalling) {
  TGScanner sc;
  for (int k = 0; k < 12; ++k) sc.ShiftTokens();
  EXPECT_EQ(sc.Bookmark().LastTokenIndex, -12);
  EXPECT_TRUE(sc.EOS());
}

// Edge case: after three NextToken calls PrevToksStr is the lower-cased texts
// of the first three tokens run together.
TEST(PrevToksStr, LowerCasedTextsRunTogether) {
  TGScanner sc;
  SetLines(sc, {u"Alpha BETA Gamma delta x"});
  sc.FirstToken();
  EXPECT_EQ(sc.PrevToksStr(), u"");
  sc.NextToken();
  sc.NextToken();
  sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"delta");
  EXPECT_EQ(sc.PrevToksStr(), u"alphabetagamma");
  EXPECT_EQ(sc.GetPrevToksStr(), u"alphabetagamma");
}

TEST(PrevToksStr, OnlyTheTenNewestOldestFirst) {
  TGScanner sc;
  SetLines(sc, {u"a b c d e f g h i j k l m"});
  sc.FirstToken();
  for (int k = 0; k < 12; ++k) sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"m");
  EXPECT_EQ(sc.PrevToksStr(), u"cdefghijkl");
}

// The stored TokStr fields are used, as written by SetToken.
TEST(PrevToksStr, UsesTheStoredTokStr) {
  TGScanner sc;
  TGToken t;
  t.RealStr = u"REAL";
  t.TokStr = u"Stored";
  sc.SetToken(-10, t);
  sc.SetToken(-1, t);
  EXPECT_EQ(sc.PrevToksStr(), u"StoredStored");
}

}  // namespace
}  // namespace quill::Gscanner
