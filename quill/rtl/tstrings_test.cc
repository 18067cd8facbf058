// TStrings / TStringList: storage, lookup, sorting, ownership, names and
// values, text and files. The delimited forms are in commatext_test.cc.
#include "quill/rtl/tstrings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "quill/rtl/exception.h"

namespace quill {
namespace {

template <typename E, typename F>
std::string MessageOf(F&& f) {
  try {
    f();
  } catch (const E& e) {
    return e.what();
  }
  return "<no exception>";
}

// An object that counts its destructions, to observe ownership.
struct Tracked : TObject {
  explicit Tracked(int* counter) : counter_(counter) {}
  ~Tracked() override { ++*counter_; }
  int* counter_;
};

// A unique path below /tmp for file tests.
std::string TempPath(const char* name) {
  return "/tmp/quill_rtla_" + std::to_string(::getpid()) + "_" + name;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
}

TEST(TStringListDefaults, MatchTheRuntime) {
  TStringList sl;
  EXPECT_EQ(sl.Count(), 0);
  EXPECT_FALSE(sl.Sorted());
  EXPECT_EQ(sl.Duplicates(), dupIgnore);
  EXPECT_FALSE(sl.CaseSensitive());
  EXPECT_EQ(sl.Delimiter(), u',');
  EXPECT_EQ(sl.QuoteChar(), u'"');
  EXPECT_EQ(sl.NameValueSeparator(), u'=');
  EXPECT_FALSE(sl.StrictDelimiter());
  EXPECT_FALSE(sl.OwnsObjects());
  EXPECT_TRUE(sl.UseLocale());
  EXPECT_EQ(sl.LineBreak(), u"\n");
  TStringList owning(true);
  EXPECT_TRUE(owning.OwnsObjects());
}

TEST(TStringListAdd, AppendsStringsAndObjects) {
  TStringList sl;
  int dummy = 0;
  Tracked obj(&dummy);
  EXPECT_EQ(sl.Add(u"a"), 0);
  EXPECT_EQ(sl.AddObject(u"b", &obj), 1);
  EXPECT_EQ(sl.Add(u""), 2);
  ASSERT_EQ(sl.Count(), 3);
  EXPECT_EQ(sl.Get(0), u"a");
  EXPECT_EQ(sl[1], u"b");
  EXPECT_EQ(sl.Strings(2), u"");
  EXPECT_EQ(sl.Objects(0), nullptr);
  EXPECT_EQ(sl.Objects(1), &obj);
  EXPECT_EQ(sl.IndexOfObject(&obj), 1);
  EXPECT_EQ(sl.IndexOfObject(nullptr), 0);
}

TEST(TStringListInsert, FrontMiddleEnd) {
  TStringList sl;
  sl.Add(u"b");
  sl.Insert(0, u"a");
  sl.Insert(2, u"d");  // index == Count appends
  sl.Insert(2, u"c");
  EXPECT_EQ(sl.Text(), u"a\nb\nc\nd\n");
}

TEST(TStringListPut, ReplacesStringAndObject) {
  TStringList sl;
  int dummy = 0;
  Tracked obj(&dummy);
  sl.Add(u"a");
  sl.Put(0, u"z");
  sl.SetObjects(0, &obj);
  EXPECT_EQ(sl[0], u"z");
  EXPECT_EQ(sl.Objects(0), &obj);
  sl.SetStrings(0, u"y");
  EXPECT_EQ(sl[0], u"y");
  EXPECT_EQ(sl.Objects(0), &obj);  // the object stays with its line
}

TEST(TStringListDelete, ShiftsAndClearEmpties) {
  TStringList sl;
  sl.SetText(u"a\nb\nc");
  sl.Delete(1);
  EXPECT_EQ(sl.Text(), u"a\nc\n");
  sl.Clear();
  EXPECT_EQ(sl.Count(), 0);
}

TEST(TStringListIndexError, ExactMessages) {
  TStringList sl;
  sl.Add(u"a");
  sl.Add(u"b");
  // Edge cases: index == Count, negative, and Insert beyond Count.
  EXPECT_EQ(MessageOf<EStringListError>([&] { (void)sl.Get(2); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { (void)sl[5]; }), "List index out of bounds (5)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { (void)sl.Get(-1); }), "List index out of bounds (-1)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Put(2, u"x"); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { (void)sl.Objects(3); }), "List index out of bounds (3)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.SetObjects(-2, nullptr); }),
            "List index out of bounds (-2)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Delete(2); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Insert(3, u"x"); }), "List index out of bounds (3)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Insert(-1, u"x"); }), "List index out of bounds (-1)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Exchange(0, 2); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Move(0, 2); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EStringListError>([&] { (void)sl.Names(4); }), "List index out of bounds (4)");
  // The failed calls changed nothing.
  EXPECT_EQ(sl.Text(), u"a\nb\n");
  // A string-list index error is a runtime Exception, not a pointer-list one.
  try {
    (void)sl.Get(9);
    ADD_FAILURE() << "no exception";
  } catch (const Exception& e) {
    EXPECT_NE(dynamic_cast<const EStringListError*>(&e), nullptr);
    EXPECT_EQ(dynamic_cast<const EListError*>(&e), nullptr);
  }
}

TEST(TStringListCapacity, ReservesButNeverBelowCount) {
  TStringList sl;
  sl.SetCapacity(100);
  EXPECT_GE(sl.Capacity(), 100);
  sl.Add(u"a");
  sl.Add(u"b");
  sl.SetCapacity(2);
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.SetCapacity(1); }), "List capacity out of bounds (1)");
  EXPECT_EQ(sl.Count(), 2);
}

TEST(TStringListIndexOf, IgnoresCaseByDefault) {
  TStringList sl;
  sl.Add(u"Hello");
  sl.Add(u"world");
  sl.Add(u"hello");
  EXPECT_EQ(sl.IndexOf(u"HELLO"), 0);  // first match
  EXPECT_EQ(sl.IndexOf(u"WORLD"), 1);
  EXPECT_EQ(sl.IndexOf(u"hell"), -1);
  EXPECT_EQ(sl.IndexOf(u" hello"), -1);  // nothing is trimmed
  EXPECT_EQ(sl.IndexOf(u""), -1);
}

TEST(TStringListIndexOf, CaseSensitiveWhenAsked) {
  TStringList sl;
  sl.Add(u"Hello");
  sl.Add(u"hello");
  sl.SetCaseSensitive(true);
  EXPECT_EQ(sl.IndexOf(u"hello"), 1);
  EXPECT_EQ(sl.IndexOf(u"HELLO"), -1);
}

TEST(TStringListIndexOf, NonAsciiLettersFoldThroughTheLocaleComparison) {
  TStringList sl;
  sl.Add(u"\u00C4rger");  // Ärger
  EXPECT_EQ(sl.IndexOf(u"\u00E4RGER"), 0);
  // Accents count: a plain "A" is a different letter.
  EXPECT_EQ(sl.IndexOf(u"ARGER"), -1);
}

TEST(TStringListIndexOf, WithoutLocaleFoldsOnlyAscii) {
  TStringList sl;
  EXPECT_TRUE(sl.UseLocale());
  sl.Add(u"\u00C4rger");
  sl.Add(u"Zebra");
  sl.SetUseLocale(false);
  EXPECT_EQ(sl.IndexOf(u"zEBRA"), 1);
  // Only 'a'..'z' fold: the umlaut's case now matters.
  EXPECT_EQ(sl.IndexOf(u"\u00E4rger"), -1);
  EXPECT_EQ(sl.IndexOf(u"\u00C4RGER"), 0);
}

TEST(TStringListSorted, OrdinalOrderWithoutLocale) {
  TStringList sl;
  sl.SetSorted(true);
  sl.SetCommaText(u"b,\u00E9,a,Z");
  // Locale order: a, b, e-acute, Z.
  EXPECT_EQ(sl.CommaText(), u"a,b,\u00E9,Z");
  sl.SetUseLocale(false);
  // Ordinal order with ASCII folding: a, b, Z, then e-acute (U+00E9).
  EXPECT_EQ(sl.CommaText(), u"a,b,Z,\u00E9");
  EXPECT_EQ(sl.IndexOf(u"z"), 2);
}

TEST(TStringListSorted, InsertsInOrder) {
  TStringList sl;
  sl.SetSorted(true);
  EXPECT_EQ(sl.Add(u"pear"), 0);
  EXPECT_EQ(sl.Add(u"Apple"), 0);
  EXPECT_EQ(sl.Add(u"fig"), 1);
  EXPECT_EQ(sl.Add(u"zucchini"), 3);
  EXPECT_EQ(sl.Text(), u"Apple\nfig\npear\nzucchini\n");
  EXPECT_EQ(sl.IndexOf(u"PEAR"), 2);
  EXPECT_EQ(sl.IndexOf(u"plum"), -1);
}

TEST(TStringListSorted, SettingSortedSortsExistingLines) {
  TStringList sl;
  sl.SetText(u"c\nA\nb");
  sl.SetSorted(true);
  EXPECT_EQ(sl.Text(), u"A\nb\nc\n");
  // Leaving sorted mode keeps the order and allows Insert again.
  sl.SetSorted(false);
  sl.Insert(0, u"z");
  EXPECT_EQ(sl[0], u"z");
}

TEST(TStringListSorted, InsertAndPutRaise) {
  TStringList sl;
  sl.SetSorted(true);
  sl.Add(u"a");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Insert(0, u"b"); }),
            "Operation not allowed on sorted list");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Put(0, u"b"); }),
            "Operation not allowed on sorted list");
  // Move is a delete plus an insert: refused before anything is removed.
  sl.Add(u"b");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Move(0, 1); }),
            "Operation not allowed on sorted list");
  EXPECT_EQ(sl.Text(), u"a\nb\n");
}

TEST(TStringListDuplicates, IgnoreKeepsTheFirst) {
  TStringList sl;
  sl.SetSorted(true);
  int dummy = 0;
  Tracked obj(&dummy);
  sl.Add(u"b");
  sl.Add(u"a");
  // A duplicate (also one differing only in case) is dropped; its index is
  // that of the existing line, whose object is unchanged.
  EXPECT_EQ(sl.AddObject(u"B", &obj), 1);
  EXPECT_EQ(sl.Count(), 2);
  EXPECT_EQ(sl[1], u"b");
  EXPECT_EQ(sl.Objects(1), nullptr);
}

TEST(TStringListDuplicates, AcceptKeepsAll) {
  TStringList sl;
  sl.SetSorted(true);
  sl.SetDuplicates(dupAccept);
  sl.Add(u"b");
  sl.Add(u"a");
  sl.Add(u"b");
  sl.Add(u"b");
  EXPECT_EQ(sl.Count(), 4);
  // Find reports the first of equal lines.
  int32_t index = -1;
  EXPECT_TRUE(sl.Find(u"b", index));
  EXPECT_EQ(index, 1);
  EXPECT_EQ(sl.IndexOf(u"B"), 1);
}

TEST(TStringListDuplicates, ErrorRaises) {
  TStringList sl;
  sl.SetSorted(true);
  sl.SetDuplicates(dupError);
  sl.Add(u"a");
  EXPECT_EQ(MessageOf<EStringListError>([&] { sl.Add(u"A"); }), "String list does not allow duplicates");
  EXPECT_EQ(sl.Count(), 1);
}

TEST(TStringListDuplicates, OnlyActWhenSorted) {
  TStringList sl;
  sl.SetDuplicates(dupError);
  sl.Add(u"a");
  sl.Add(u"a");
  EXPECT_EQ(sl.Count(), 2);
}

TEST(TStringListFind, ReportsInsertionPoint) {
  TStringList sl;
  sl.SetSorted(true);
  sl.SetText(u"b\nd\nf");
  int32_t index = -1;
  EXPECT_FALSE(sl.Find(u"a", index));
  EXPECT_EQ(index, 0);
  EXPECT_FALSE(sl.Find(u"e", index));
  EXPECT_EQ(index, 2);
  EXPECT_FALSE(sl.Find(u"g", index));
  EXPECT_EQ(index, 3);
  EXPECT_TRUE(sl.Find(u"D", index));
  EXPECT_EQ(index, 1);
  TStringList empty;
  EXPECT_FALSE(empty.Find(u"x", index));
  EXPECT_EQ(index, 0);
}

TEST(TStringListSort, SortsUnsortedListOnce) {
  TStringList sl;
  sl.SetText(u"b\nC\na");
  sl.Sort();
  EXPECT_EQ(sl.Text(), u"a\nb\nC\n");
  EXPECT_FALSE(sl.Sorted());  // Sort does not switch the list to sorted mode
  sl.Add(u"0");
  EXPECT_EQ(sl[3], u"0");
}

TEST(TStringListSort, CaseSensitivityChangeResorts) {
  TStringList sl;
  sl.SetSorted(true);
  sl.SetDuplicates(dupAccept);
  sl.Add(u"b");
  sl.Add(u"B");
  sl.Add(u"a");
  sl.SetCaseSensitive(true);
  // The locale order puts lower case before upper case for the same letter.
  EXPECT_EQ(sl.Text(), u"a\nb\nB\n");
  EXPECT_EQ(sl.IndexOf(u"B"), 2);
  EXPECT_EQ(sl.IndexOf(u"A"), -1);
}

TEST(TStringListOwnsObjects, FreesOnDeleteClearAndDestruction) {
  int freed = 0;
  {
    TStringList sl(true);
    sl.AddObject(u"a", new Tracked(&freed));
    sl.AddObject(u"b", new Tracked(&freed));
    sl.AddObject(u"c", new Tracked(&freed));
    sl.AddObject(u"d", new Tracked(&freed));
    sl.Add(u"no object");
    sl.Delete(0);
    EXPECT_EQ(freed, 1);
    sl.Clear();
    EXPECT_EQ(freed, 4);
    sl.AddObject(u"e", new Tracked(&freed));
  }
  EXPECT_EQ(freed, 5);
}

TEST(TStringListOwnsObjects, NotOwningLeavesObjectsAlone) {
  int freed = 0;
  Tracked a(&freed);
  {
    TStringList sl;
    sl.AddObject(u"a", &a);
    sl.Delete(0);
    sl.AddObject(u"a", &a);
    sl.Clear();
    sl.AddObject(u"a", &a);
  }
  EXPECT_EQ(freed, 0);
}

TEST(TStringListOwnsObjects, MoveAndExchangeKeepObjectsAlive) {
  int freed = 0;
  TStringList sl(true);
  auto* a = new Tracked(&freed);
  auto* b = new Tracked(&freed);
  sl.AddObject(u"a", a);
  sl.AddObject(u"b", b);
  sl.Move(0, 1);
  sl.Exchange(0, 1);
  EXPECT_EQ(freed, 0);
  EXPECT_EQ(sl.Objects(0), a);
  EXPECT_EQ(sl.Objects(1), b);
}

TEST(TStringsExchange, SwapsStringsAndObjects) {
  TStringList sl;
  int dummy = 0;
  Tracked a(&dummy);
  sl.AddObject(u"a", &a);
  sl.Add(u"b");
  sl.Exchange(0, 1);
  EXPECT_EQ(sl[0], u"b");
  EXPECT_EQ(sl.Objects(0), nullptr);
  EXPECT_EQ(sl[1], u"a");
  EXPECT_EQ(sl.Objects(1), &a);
}

TEST(TStringsMove, KeepsOtherLinesInOrder) {
  TStringList sl;
  sl.SetText(u"0\n1\n2\n3");
  sl.Move(0, 2);
  EXPECT_EQ(sl.Text(), u"1\n2\n0\n3\n");
  sl.Move(3, 0);
  EXPECT_EQ(sl.Text(), u"3\n1\n2\n0\n");
  sl.Move(1, 1);
  EXPECT_EQ(sl.Text(), u"3\n1\n2\n0\n");
}

TEST(TStringsAssign, CopiesLinesPointersAndSettings) {
  int freed = 0;
  TStringList src;
  auto* obj = new Tracked(&freed);
  src.AddObject(u"b", obj);
  src.Add(u"a");
  src.SetDelimiter(u';');
  src.SetQuoteChar(u'\'');
  src.SetNameValueSeparator(u':');
  src.SetStrictDelimiter(true);
  src.SetLineBreak(u"\r\n");

  TStringList dst;
  dst.Add(u"old");
  dst.Assign(src);
  EXPECT_EQ(dst.Count(), 2);
  EXPECT_EQ(dst[0], u"b");
  EXPECT_EQ(dst.Objects(0), obj);  // the same object, not a copy
  EXPECT_EQ(dst.Delimiter(), u';');
  EXPECT_EQ(dst.QuoteChar(), u'\'');
  EXPECT_EQ(dst.NameValueSeparator(), u':');
  EXPECT_TRUE(dst.StrictDelimiter());
  EXPECT_EQ(dst.LineBreak(), u"\r\n");
  delete obj;
}

TEST(TStringsAssign, SortedDestinationKeepsItsOwnRules) {
  TStringList src;
  src.SetText(u"b\na\nB");
  TStringList dst;
  dst.SetSorted(true);  // dupIgnore
  dst.Assign(src);
  EXPECT_TRUE(dst.Sorted());
  EXPECT_EQ(dst.Text(), u"a\nb\n");
  // The source's own sorting settings are not copied.
  TStringList plain;
  plain.Assign(dst);
  EXPECT_FALSE(plain.Sorted());
}

TEST(TStringsAssign, SelfAssignChangesNothing) {
  TStringList sl;
  sl.SetText(u"a\nb");
  sl.Assign(sl);
  EXPECT_EQ(sl.Text(), u"a\nb\n");
}

TEST(TStringsAddStrings, AppendsAndMayAddItself) {
  TStringList a;
  a.SetText(u"1\n2");
  TStringList b;
  b.Add(u"0");
  b.AddStrings(a);
  EXPECT_EQ(b.Text(), u"0\n1\n2\n");
  // Edge case: adding a list to itself doubles it once.
  a.AddStrings(a);
  EXPECT_EQ(a.Text(), u"1\n2\n1\n2\n");
}

TEST(TStringsText, EachLineFollowedByLineBreak) {
  TStringList sl;
  EXPECT_EQ(sl.Text(), u"");
  sl.Add(u"");
  EXPECT_EQ(sl.Text(), u"\n");  // one empty line still ends with a break
  sl.Add(u"x");
  EXPECT_EQ(sl.Text(), u"\nx\n");
  sl.SetLineBreak(u"\r\n");
  EXPECT_EQ(sl.Text(), u"\r\nx\r\n");
}

TEST(TStringsSetText, SplitsAtCrLfAndCrLf) {
  TStringList sl;
  sl.SetText(u"a\rb\nc\r\nd");
  EXPECT_EQ(sl.Count(), 4);
  EXPECT_EQ(sl.Text(), u"a\nb\nc\nd\n");
  // A final break adds no empty line; two breaks in a row give one.
  sl.SetText(u"a\n");
  EXPECT_EQ(sl.Count(), 1);
  sl.SetText(u"a\n\n");
  EXPECT_EQ(sl.Count(), 2);
  EXPECT_EQ(sl[1], u"");
  // LF CR is two breaks, not one.
  sl.SetText(u"a\n\rb");
  EXPECT_EQ(sl.Count(), 3);
  sl.SetText(u"");
  EXPECT_EQ(sl.Count(), 0);
  sl.SetText(u"\n");
  ASSERT_EQ(sl.Count(), 1);
  EXPECT_EQ(sl[0], u"");
}

TEST(TStringsSetText, RoundTripsWithText) {
  TStringList sl;
  sl.SetText(u"one\r\ntwo\r\n\r\nfour");
  TStringList copy;
  copy.SetText(sl.Text());
  EXPECT_EQ(copy.Text(), sl.Text());
  EXPECT_EQ(copy.Count(), 4);
}

TEST(TStringsSetText, CustomLineBreakSplitsOnlyThere) {
  TStringList sl;
  sl.SetLineBreak(u"||");
  sl.SetText(u"a||b\nc||");
  ASSERT_EQ(sl.Count(), 2);
  EXPECT_EQ(sl[0], u"a");
  EXPECT_EQ(sl[1], u"b\nc");
  // Embedded #0 is an ordinary character in line text.
  TStringList z;
  z.SetText(std::u16string(u"a\0b\nc", 5));
  ASSERT_EQ(z.Count(), 2);
  EXPECT_EQ(z[0], std::u16string(u"a\0b", 3));
}

TEST(TStringsNamesValues, SplitAtFirstSeparator) {
  TStringList sl;
  sl.SetText(u"key=value\nempty=\nnovalue\na=b=c\n=lead");
  EXPECT_EQ(sl.Names(0), u"key");
  EXPECT_EQ(sl.ValueFromIndex(0), u"value");
  EXPECT_EQ(sl.Names(1), u"empty");
  EXPECT_EQ(sl.ValueFromIndex(1), u"");
  // A line without separator has neither name nor value.
  EXPECT_EQ(sl.Names(2), u"");
  EXPECT_EQ(sl.ValueFromIndex(2), u"");
  EXPECT_EQ(sl.Names(3), u"a");
  EXPECT_EQ(sl.ValueFromIndex(3), u"b=c");
  EXPECT_EQ(sl.Names(4), u"");
  EXPECT_EQ(sl.ValueFromIndex(4), u"lead");
  // A negative index is "not found": empty value, no error.
  EXPECT_EQ(sl.ValueFromIndex(-1), u"");
}

TEST(TStringsNamesValues, LookupIgnoresCase) {
  TStringList sl;
  sl.SetText(u"Key=1\nother=2\nkey=3");
  EXPECT_EQ(sl.IndexOfName(u"KEY"), 0);
  EXPECT_EQ(sl.Values(u"key"), u"1");
  EXPECT_EQ(sl.Values(u"OTHER"), u"2");
  EXPECT_EQ(sl.Values(u"missing"), u"");
  EXPECT_EQ(sl.IndexOfName(u"missing"), -1);
  EXPECT_EQ(sl.IndexOfName(u"Key=1"), -1);  // the name is only the part before '='
}

TEST(TStringsNamesValues, SetValuesAddsReplacesAndDeletes) {
  TStringList sl;
  sl.SetValues(u"a", u"1");
  sl.SetValues(u"b", u"2");
  EXPECT_EQ(sl.Text(), u"a=1\nb=2\n");
  sl.SetValues(u"A", u"3");  // replaces the line, with the name as given
  EXPECT_EQ(sl.Text(), u"A=3\nb=2\n");
  sl.SetValues(u"a", u"");  // an empty value deletes the line
  EXPECT_EQ(sl.Text(), u"b=2\n");
  sl.SetValues(u"zzz", u"");  // deleting an absent name changes nothing
  EXPECT_EQ(sl.Text(), u"b=2\n");
}

TEST(TStringsNamesValues, OtherSeparator) {
  TStringList sl;
  sl.SetNameValueSeparator(u':');
  sl.Add(u"host:example.org=1");
  EXPECT_EQ(sl.Names(0), u"host");
  EXPECT_EQ(sl.Values(u"HOST"), u"example.org=1");
  sl.SetValues(u"port", u"80");
  EXPECT_EQ(sl[1], u"port:80");
}

TEST(TStringsFiles, SaveWritesUtf8AndLoadReadsItBack) {
  const std::string path = TempPath("lines.txt");
  TStringList sl;
  sl.Add(u"caf\u00E9");
  sl.Add(u"\u20AC 5");
  sl.SaveToFile(path);
  EXPECT_EQ(ReadBytes(path), "caf\xC3\xA9\n\xE2\x82\xAC 5\n");
  TStringList back;
  back.Add(u"replaced");
  back.LoadFromFile(path);
  EXPECT_EQ(back.Text(), sl.Text());
  std::remove(path.c_str());
}

TEST(TStringsFiles, LoadSkipsUtf8ByteOrderMarkAndSplitsCrLf) {
  const std::string path = TempPath("bom.txt");
  WriteBytes(path, "\xEF\xBB\xBFone\r\ntwo\r\n");
  TStringList sl;
  sl.LoadFromFile(path);
  ASSERT_EQ(sl.Count(), 2);
  EXPECT_EQ(sl[0], u"one");
  EXPECT_EQ(sl[1], u"two");
  std::remove(path.c_str());
}

TEST(TStringsFiles, MissingFileRaisesOpenError) {
  const std::string path = TempPath("missing/none.txt");
  TStringList sl;
  sl.Add(u"kept");
  EXPECT_EQ(MessageOf<EFOpenError>([&] { sl.LoadFromFile(path); }),
            "Cannot open file \"" + path + "\". No such file or directory");
  EXPECT_EQ(sl.Count(), 1);  // the failed load left the list alone
  EXPECT_EQ(MessageOf<EFCreateError>([&] { sl.SaveToFile(path); }),
            "Cannot create file \"" + path + "\". No such file or directory");
}

// A minimal list on other storage, to check that the TStrings layer works
// through the storage operations alone.
class ArrayStrings : public TStrings {
 public:
  int32_t Count() const override { return static_cast<int32_t>(s_.size()); }
  const UnicodeString& Get(int32_t i) const override { Check(i); return s_[static_cast<size_t>(i)]; }
  void Put(int32_t i, const UnicodeString& s) override { Check(i); s_[static_cast<size_t>(i)] = s; }
  TObject* GetObject(int32_t i) const override { Check(i); return o_[static_cast<size_t>(i)]; }
  void PutObject(int32_t i, TObject* obj) override { Check(i); o_[static_cast<size_t>(i)] = obj; }
  void InsertObject(int32_t i, const UnicodeString& s, TObject* obj) override {
    if (i < 0 || i > Count()) Error(rtlmsg::SListIndexError, i);
    s_.insert(s_.begin() + i, s);
    o_.insert(o_.begin() + i, obj);
  }
  void Delete(int32_t i) override {
    Check(i);
    s_.erase(s_.begin() + i);
    o_.erase(o_.begin() + i);
  }
  void Clear() override {
    s_.clear();
    o_.clear();
  }

 private:
  void Check(int32_t i) const {
    if (i < 0 || i >= Count()) Error(rtlmsg::SListIndexError, i);
  }
  std::vector<UnicodeString> s_;
  std::vector<TObject*> o_;
};

TEST(TStringsBase, WorksThroughStorageOperations) {
  ArrayStrings list;
  int dummy = 0;
  Tracked obj(&dummy);
  EXPECT_EQ(list.Add(u"x=1"), 0);
  EXPECT_EQ(list.AddObject(u"Y=2", &obj), 1);
  EXPECT_EQ(list.Objects(1), &obj);
  EXPECT_EQ(list.IndexOf(u"y=2"), 1);
  EXPECT_EQ(list.Values(u"y"), u"2");
  list.SetCommaText(u"a,\"b c\"");
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.CommaText(), u"a,\"b c\"");
  list.Move(1, 0);
  EXPECT_EQ(list.Text(), u"b c\na\n");
  EXPECT_EQ(MessageOf<EStringListError>([&] { (void)list.Get(2); }), "List index out of bounds (2)");
}

}  // namespace
}  // namespace quill
