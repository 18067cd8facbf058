// Delimited text and block editing: DelimitedText, ComposeText,
// ComposeCommaText, IndexOfString, InsertToStrings, DeleteFromStrings.
#include "quill/strings/delimited.h"

#include <gtest/gtest.h>

#include <vector>

#include "quill/rtl/exception.h"

namespace quill::Gstrings {
namespace {

std::vector<UnicodeString> Items(const TStrings& l) {
  std::vector<UnicodeString> v;
  for (int32_t i = 0; i < l.Count(); ++i) v.push_back(l.Get(i));
  return v;
}

void Fill(TStrings& l, std::initializer_list<const char16_t*> items) {
  l.Clear();
  for (auto* s : items) l.Add(s);
}

using V = std::vector<UnicodeString>;

TEST(DelimitedText, QuotesEveryItem) {
  TStringList l;
  Fill(l, {u"ab", u"c'd"});
  EXPECT_EQ(DelimitedText(l, u',', u'\''), u"'ab','c''d'");
}

TEST(DelimitedText, OneEmptyItemAndEmptyList) {
  TStringList l;
  EXPECT_EQ(DelimitedText(l, u',', u'\''), u"");  // empty list
  l.Add(u"");
  EXPECT_EQ(DelimitedText(l, u',', u'\''), u"''");  // one empty item
  l.Add(u"");
  EXPECT_EQ(DelimitedText(l, u';', u'"'), u"\"\";\"\"");
}

TEST(DelimitedText, ControlCharactersBecomeCodes) {
  TStringList l;
  Fill(l, {u"a\tb", u"x\r\n"});
  EXPECT_EQ(DelimitedText(l, u',', u'\''), u"'a'#9'b','x'#13#10");
}

TEST(ComposeText, QuotedFieldKeepsDelimiter) {
  TStringList l;
  ComposeText(u"a, 'b,c' ,d", u',', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"a", u"b,c", u"d"}));
}

TEST(ComposeText, ClearsTheListFirst) {
  TStringList l;
  Fill(l, {u"old"});
  ComposeText(u"x", u',', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"x"}));
}

TEST(ComposeText, TrailingDelimiterGivesLastEmptyField) {
  TStringList l;
  ComposeText(u"a,", u',', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"a", u""}));
}

TEST(ComposeText, UnquotedFieldComesBackTrimmed) {
  TStringList l;
  ComposeText(u"  a b  ;\tc", u';', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"a b", u"c"}));
}

TEST(ComposeText, DoubledQuoteStaysInside) {
  TStringList l;
  ComposeText(u"'a'',b',c", u',', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"a',b", u"c"}));
}

TEST(ComposeText, EmptyLiteralFieldFallsBackToItself) {
  // UnquotedString("''") gives "''": the fallback shows through.
  TStringList l;
  ComposeText(u"'',x", u',', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"''", u"x"}));
}

TEST(ComposeText, CodesInFieldsAreDecoded) {
  TStringList l;
  ComposeText(u"'a'#9'b',#65", u',', u'\'', l);
  EXPECT_EQ(Items(l), (V{u"a\tb", u"A"}));
}

TEST(ComposeText, OversizedCodeRaisesNotACharacter) {
  TStringList l;
  EXPECT_THROW(ComposeText(u"a,#70000", u',', u'\'', l), Exception);
}

TEST(ComposeText, RoundTripOfDelimitedText) {
  TStringList a, b;
  Fill(a, {u"x", u"it's", u"a,b", u" lead", u"tab\there", u"end\r\n"});
  ComposeText(DelimitedText(a, u',', u'\''), u',', u'\'', b);
  // Every item survives: the quotes protect blanks from the field trim.
  EXPECT_EQ(Items(b), (V{u"x", u"it's", u"a,b", u" lead", u"tab\there", u"end\r\n"}));
}

TEST(ComposeCommaText, BlankTextLeavesListEmpty) {
  TStringList l;
  Fill(l, {u"old"});
  ComposeCommaText(u"  ", l);
  EXPECT_EQ(l.Count(), 0);
  ComposeCommaText(u"", l);
  EXPECT_EQ(l.Count(), 0);
}

TEST(ComposeCommaText, EmptyMiddleField) {
  TStringList l;
  ComposeCommaText(u"a,,b", l);
  EXPECT_EQ(Items(l), (V{u"a", u"", u"b"}));
}

TEST(ComposeCommaText, DoubleQuotedField) {
  // 1 , " x , y "  -> 1 and x,y
  TStringList l;
  ComposeCommaText(u"1,\"x,y\"", l);
  EXPECT_EQ(Items(l), (V{u"1", u"x,y"}));
}

TEST(ComposeCommaText, BlanksDoNotSeparate) {
  // Unlike the list's own CommaText, only the delimiter separates.
  TStringList l;
  ComposeCommaText(u"a b, c", l);
  EXPECT_EQ(Items(l), (V{u"a b", u"c"}));
}

TEST(IndexOfString, IgnoresAsciiCaseOnly) {
  TStringList l;
  Fill(l, {u" abc", u"ABC", u"abc"});
  EXPECT_EQ(IndexOfString(l, u"abc"), 1);     // "ABC" found, " abc" not
  EXPECT_EQ(IndexOfString(l, u"x"), -1);
  TStringList u;
  Fill(u, {u"\u00C4"});
  EXPECT_EQ(IndexOfString(u, u"\u00E4"), -1);  // no locale folding
}

TEST(IndexOfString, NotTrimmed) {
  TStringList l;
  Fill(l, {u" abc"});
  EXPECT_EQ(IndexOfString(l, u"abc"), -1);
  EXPECT_EQ(IndexOfString(l, u" ABC"), 0);
}

TEST(InsertToStrings, Columns) {
  TStringList l;
  Fill(l, {u"abcd"});
  InsertToStrings(l, 0, 3, u"XY");
  EXPECT_EQ(l.Get(0), u"abXYcd");
  InsertToStrings(l, 0, 0, u"<");  // below 1: front
  EXPECT_EQ(l.Get(0), u"<abXYcd");
  InsertToStrings(l, 0, 99, u">");  // past the end: appended
  EXPECT_EQ(l.Get(0), u"<abXYcd>");
  InsertToStrings(l, 0, 9, u"!");  // exactly one past the end
  EXPECT_EQ(l.Get(0), u"<abXYcd>!");
}

TEST(InsertToStrings, BadIndexRaisesListError) {
  TStringList l;
  Fill(l, {u"a"});
  EXPECT_THROW(InsertToStrings(l, 1, 1, u"x"), EStringListError);
  EXPECT_THROW(InsertToStrings(l, -1, 1, u"x"), EStringListError);
}

TEST(DeleteFromStrings, WithinOneLine) {
  TStringList l;
  Fill(l, {u"abcdef"});
  DeleteFromStrings(l, 0, 3, 0, 5);
  EXPECT_EQ(Items(l), (V{u"abef"}));
}

TEST(DeleteFromStrings, TwoLinesJoin) {
  TStringList l;
  Fill(l, {u"hello", u"world", u"tail"});
  DeleteFromStrings(l, 0, 3, 1, 2);
  EXPECT_EQ(Items(l), (V{u"heorld", u"tail"}));
}

TEST(DeleteFromStrings, AscendingDeletionSkipsLinesThenRaises) {
  // L0..L4 with (0,1,3,1): item 0 becomes L3; index 1 (old L1) and index 2
  // (old L3) are deleted; index 3 raises: only three items remain.
  TStringList l;
  Fill(l, {u"L0", u"L1", u"L2", u"L3", u"L4"});
  EXPECT_THROW(DeleteFromStrings(l, 0, 1, 3, 1), EStringListError);
  EXPECT_EQ(Items(l), (V{u"L3", u"L2", u"L4"}));
}

TEST(DeleteFromStrings, ThreeLineBlockKeepsMiddleLine) {
  // (0, 1, 2, 1) on L0..L4: item 0 becomes L2, then indexes 1 and 2 go
  // (old L1 and old L3); old L2 stays.
  TStringList l;
  Fill(l, {u"L0", u"L1", u"L2", u"L3", u"L4"});
  DeleteFromStrings(l, 0, 1, 2, 1);
  EXPECT_EQ(Items(l), (V{u"L2", u"L2", u"L4"}));
}

TEST(DeleteFromStrings, Line2BeforeLine1DoesNothing) {
  TStringList l;
  Fill(l, {u"a", u"b"});
  DeleteFromStrings(l, 1, 1, 0, 1);
  EXPECT_EQ(Items(l), (V{u"a", u"b"}));
}

TEST(DeleteFromStrings, ColumnsOutsideLine) {
  TStringList l;
  Fill(l, {u"abc"});
  DeleteFromStrings(l, 0, 0, 0, 99);  // everything goes
  EXPECT_EQ(Items(l), (V{u""}));
  Fill(l, {u"abc"});
  DeleteFromStrings(l, 0, 99, 0, 1);  // keeps the line, appends it again
  EXPECT_EQ(Items(l), (V{u"abcabc"}));
}

}  // namespace
}  // namespace quill::Gstrings
