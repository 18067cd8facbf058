// The section text format: ReadSLSections, ReadSLSectionValues,
// XGetSLSectionIndex, XReadSLSectionValues.
#include "quill/strings/sections.h"

#include <gtest/gtest.h>

#include <vector>

#include "quill/rtl/exception.h"

namespace quill::Gstrings {
namespace {

using V = std::vector<UnicodeString>;

std::vector<UnicodeString> Items(const TStrings& l) {
  std::vector<UnicodeString> v;
  for (int32_t i = 0; i < l.Count(); ++i) v.push_back(l.Get(i));
  return v;
}

void Fill(TStrings& l, std::initializer_list<const char16_t*> items) {
  l.Clear();
  for (auto* s : items) l.Add(s);
}

TEST(ReadSLSectionValues, SkipsBlankLinesAndStopsAtMalformedHeader) {
  // [A], x, empty, "  y  ", [B (malformed), z
  TStringList l, v;
  Fill(l, {u"[A]", u"x", u"", u"  y  ", u"[B", u"z"});
  EXPECT_EQ(ReadSLSectionValues(l, u"a", v), 3);
  EXPECT_EQ(Items(v), (V{u"x", u"  y  "}));
}

TEST(ReadSLSectionValues, MissingSectionGivesCountMinusOne) {
  TStringList l, v;
  Fill(v, {u"stale"});
  Fill(l, {u"[A]", u"x"});
  EXPECT_EQ(ReadSLSectionValues(l, u"B", v), 1);
  EXPECT_EQ(v.Count(), 0);  // cleared
  TStringList empty;
  EXPECT_EQ(ReadSLSectionValues(empty, u"A", v), -1);
}

TEST(ReadSLSectionValues, LastSectionRunsToEnd) {
  TStringList l, v;
  Fill(l, {u"[A]", u"1", u" [b] ", u"2", u"\t", u"3"});
  EXPECT_EQ(ReadSLSectionValues(l, u"B", v), 5);
  EXPECT_EQ(Items(v), (V{u"2", u"3"}));
}

TEST(ReadSLSectionValues, HeaderAsLastLine) {
  TStringList l, v;
  Fill(l, {u"x", u"[A]"});
  EXPECT_EQ(ReadSLSectionValues(l, u"A", v), 1);
  EXPECT_EQ(v.Count(), 0);
}

TEST(ReadSLSectionValues, NameIsNotTrimmed) {
  // Blanks inside the brackets count; blanks around the header do not.
  TStringList l, v;
  Fill(l, {u"[ A ]", u"inner", u"  [A]  ", u"outer"});
  EXPECT_EQ(ReadSLSectionValues(l, u"A", v), 3);
  EXPECT_EQ(Items(v), (V{u"outer"}));
  EXPECT_EQ(ReadSLSectionValues(l, u" a ", v), 1);
  EXPECT_EQ(Items(v), (V{u"inner"}));
}

TEST(ReadSLSectionValues, FirstOfTwoSameNamedSections) {
  TStringList l, v;
  Fill(l, {u"[A]", u"1", u"[A]", u"2"});
  EXPECT_EQ(ReadSLSectionValues(l, u"A", v), 1);
  EXPECT_EQ(Items(v), (V{u"1"}));
}

TEST(ReadSLSections, IndentedHeaderGivesShiftedName) {
  // "  [abc]" gives " [a": cut from the stored line, not the trimmed text.
  TStringList l, s;
  Fill(s, {u"kept"});  // not cleared first
  Fill(l, {u"[one]", u"x", u"  [abc]", u"[bad", u"bad]", u"[]", u" [two] "});
  ReadSLSections(l, s);
  EXPECT_EQ(Items(s), (V{u"kept", u"one", u" [a", u"", u"[tw"}));
}

TEST(XGetSLSectionIndex, WrapsAroundToEarlierHeader) {
  TStringList l;
  Fill(l, {u"a", u"b", u"[N]", u"c", u"d", u"e", u"f"});
  EXPECT_EQ(XGetSLSectionIndex(5, l, u"n"), 2);
  EXPECT_EQ(XGetSLSectionIndex(0, l, u"N"), 2);
  EXPECT_EQ(XGetSLSectionIndex(2, l, u"N"), 2);
  EXPECT_EQ(XGetSLSectionIndex(3, l, u"N"), 2);
}

TEST(XGetSLSectionIndex, MissingGivesMinusOne) {
  TStringList l;
  Fill(l, {u"[A]", u"x"});
  EXPECT_EQ(XGetSLSectionIndex(0, l, u"B"), -1);
  EXPECT_EQ(XGetSLSectionIndex(1, l, u"B"), -1);  // after the wrap-around
  EXPECT_EQ(XGetSLSectionIndex(2, l, u"A"), 0);   // start == Count still wraps
}

TEST(XGetSLSectionIndex, StartBeyondCountIsReturnedItself) {
  // No search and no wrap-around: the start comes back.
  TStringList l;
  Fill(l, {u"[A]", u"x"});
  EXPECT_EQ(XGetSLSectionIndex(3, l, u"A"), 3);
  EXPECT_EQ(XGetSLSectionIndex(10, l, u"B"), 10);
}

TEST(XGetSLSectionIndex, NegativeStartRaisesListError) {
  TStringList l;
  Fill(l, {u"[A]"});
  EXPECT_THROW((void)XGetSLSectionIndex(-1, l, u"A"), EStringListError);
}

TEST(XReadSLSectionValues, MissingNameReturnsStart) {
  TStringList l, v;
  Fill(l, {u"[A]", u"x", u"y"});
  EXPECT_EQ(XReadSLSectionValues(1, l, u"B", v), 1);
  EXPECT_EQ(XReadSLSectionValues(0, l, u"B", v), 0);
  EXPECT_EQ(v.Count(), 0);
}

TEST(XReadSLSectionValues, StartBeyondCountReturnsItWithNoValues) {
  TStringList l, v;
  Fill(l, {u"[A]", u"x"});
  Fill(v, {u"stale"});
  EXPECT_EQ(XReadSLSectionValues(7, l, u"A", v), 7);
  EXPECT_EQ(v.Count(), 0);
}

TEST(XReadSLSectionValues, SuccessiveSectionsWrapToFirst) {
  TStringList l, v;
  Fill(l, {u"[S]", u"1", u"[T]", u"t", u"[S]", u"2", u"3"});
  int32_t last = XReadSLSectionValues(0, l, u"S", v);
  EXPECT_EQ(last, 1);
  EXPECT_EQ(Items(v), (V{u"1"}));
  last = XReadSLSectionValues(last + 1, l, u"S", v);
  EXPECT_EQ(last, 6);
  EXPECT_EQ(Items(v), (V{u"2", u"3"}));
  // Past the last: start 7 == Count, so the search wraps to the first.
  last = XReadSLSectionValues(last + 1, l, u"S", v);
  EXPECT_EQ(last, 1);
  EXPECT_EQ(Items(v), (V{u"1"}));
}

}  // namespace
}  // namespace quill::Gstrings
