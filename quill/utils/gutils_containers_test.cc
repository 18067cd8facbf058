// Tests of the Gutils containers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quill/frame/errors.h"
#include "quill/rtl/exception.h"
#include "quill/utils/containers.h"

namespace quill::Gutils {
namespace {

// ---- TGIntStack ----

// Edge case: twenty pushes succeed, the twenty-first raises "Stack is full";
// after one Pop, Values(0) is the nineteenth value.
TEST(TGIntStack, TwentyPushesThenFull) {
  TGIntStack s(84);
  for (int32_t i = 1; i <= 20; ++i) s.Push(i * 10);
  try {
    s.Push(999);
    FAIL() << "the 21st push did not raise";
  } catch (const EGUtilsError& e) {
    EXPECT_EQ(e.Message(), u"Stack is full");
  }
  EXPECT_EQ(s.Values(0), 200);  // the stack is unchanged by the failed push
  EXPECT_EQ(s.Pop(), 200);
  EXPECT_EQ(s.Values(0), 190);
  EXPECT_EQ(s.Values(1), 180);
}

// Edge case: the depth limit is 20 whatever the buffer size.
TEST(TGIntStack, DepthIsTwentyWithLargeBuffer) {
  TGIntStack s(4000);
  for (int32_t i = 0; i < 20; ++i) s.Push(i);
  EXPECT_THROW(s.Push(20), EGUtilsError);
}

// Edge case: Pop of an empty stack raises "Stack is empty" and leaves it empty.
TEST(TGIntStack, PopEmptyRaises) {
  TGIntStack s(84);
  EXPECT_TRUE(s.Empty());
  try {
    (void)s.Pop();
    FAIL() << "Pop of an empty stack did not raise";
  } catch (const EGUtilsError& e) {
    EXPECT_EQ(e.Message(), u"Stack is empty");
    EXPECT_STREQ(e.what(), "Stack is empty");
  }
  EXPECT_TRUE(s.Empty());
  s.Push(5);
  EXPECT_FALSE(s.Empty());
  EXPECT_EQ(s.Pop(), 5);
  EXPECT_TRUE(s.Empty());
}

// The unit's error class derives from the runtime's base class.
TEST(TGIntStack, ErrorIsAQuillException) {
  TGIntStack s(84);
  EXPECT_THROW((void)s.Pop(), Exception);
}

// Values(Index) counts down from the top: index 0 is the last pushed value.
TEST(TGIntStack, ValuesCountFromTop) {
  TGIntStack s(84);
  s.Push(-1);
  s.Push(2);
  s.Push(-3);
  EXPECT_EQ(s.GetValue(0), -3);
  EXPECT_EQ(s.GetValue(1), 2);
  EXPECT_EQ(s.GetValue(2), -1);
}

// ---- TGCurrencyArray ----

// Edge case: a new array of 3 items reads 0 in each; ResetBy(1.5) sets all three.
TEST(TGCurrencyArray, NewIsZeroResetBySetsAll) {
  TGCurrencyArray a(3);
  ASSERT_EQ(a.Count(), 3);
  for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(a.Items(i).Raw(), 0);
  a.ResetBy(Currency::FromRaw(15000));
  for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(a.Items(i), Currency::FromRaw(15000));
}

TEST(TGCurrencyArray, SetItemWritesOneSlot) {
  TGCurrencyArray a(4);
  a.SetItem(2, Currency::FromInt(-7));
  EXPECT_EQ(a.GetItem(2), Currency::FromInt(-7));
  EXPECT_EQ(a.GetItem(1).Raw(), 0);
  EXPECT_EQ(a.GetItem(3).Raw(), 0);
}

// Edge case: an empty array has count 0.
TEST(TGCurrencyArray, EmptyArray) {
  TGCurrencyArray a(0);
  EXPECT_EQ(a.Count(), 0);
  a.ResetBy(Currency::FromInt(1));  // touches nothing
}

// ---- TGObjectList ----

// An object that records its destruction.
class Tracked : public TObject {
 public:
  Tracked(std::vector<std::string>& log, std::string name) : log_(log), name_(std::move(name)) {}
  ~Tracked() override { log_.push_back("free " + name_); }

 private:
  std::vector<std::string>& log_;
  std::string name_;
};

void Listen(TGObjectList& list, std::vector<std::string>& log) {
  list.SetOnChange([&log, &list](TObject* sender) {
    EXPECT_EQ(sender, &list);
    log.push_back("change");
  });
  list.SetOnEmpty([&log, &list](TObject* sender) {
    EXPECT_EQ(sender, &list);
    log.push_back("empty");
  });
}

TEST(TGObjectList, AddAndInsertFireChange) {
  std::vector<std::string> log;
  TGObjectList list;
  Listen(list, log);
  EXPECT_EQ(list.Add(new Tracked(log, "a")), 0);
  list.Insert(0, new Tracked(log, "b"));
  EXPECT_EQ(log, (std::vector<std::string>{"change", "change"}));
  EXPECT_EQ(list.Count(), 2);
  list.SetOnChange(nullptr);
  list.SetOnEmpty(nullptr);
}

// Edge case: Erase on a list of one object frees it and fires OnChange then OnEmpty.
TEST(TGObjectList, EraseFreesAndFiresChangeThenEmpty) {
  std::vector<std::string> log;
  TGObjectList list;
  list.Add(new Tracked(log, "a"));
  Listen(list, log);
  list.Erase(0);
  EXPECT_EQ(log, (std::vector<std::string>{"free a", "change", "empty"}));
  EXPECT_EQ(list.Count(), 0);
}

// Edge case: Delete of the same item does not free it but fires the same events.
TEST(TGObjectList, DeleteKeepsObjectFiresSameEvents) {
  std::vector<std::string> log;
  TGObjectList list;
  Tracked* a = new Tracked(log, "a");
  list.Add(a);
  Listen(list, log);
  list.Delete(0);
  EXPECT_EQ(log, (std::vector<std::string>{"change", "empty"}));
  delete a;
  EXPECT_EQ(log.back(), "free a");
}

// Edge case: FreeAll leaves the count unchanged, all slots empty, no event.
TEST(TGObjectList, FreeAllKeepsCountNoEvent) {
  std::vector<std::string> log;
  TGObjectList list;
  list.Add(new Tracked(log, "a"));
  list.Add(new Tracked(log, "b"));
  Listen(list, log);
  list.FreeAll();
  EXPECT_EQ(log, (std::vector<std::string>{"free a", "free b"}));
  ASSERT_EQ(list.Count(), 2);
  EXPECT_EQ(list.Items(0), nullptr);
  EXPECT_EQ(list.Items(1), nullptr);
}

// Clear frees every object, empties the list, and fires OnChange then
// OnEmpty once.
TEST(TGObjectList, ClearFreesThenFiresOnce) {
  std::vector<std::string> log;
  TGObjectList list;
  list.Add(new Tracked(log, "a"));
  list.Add(new Tracked(log, "b"));
  Listen(list, log);
  list.Clear();
  EXPECT_EQ(log, (std::vector<std::string>{"free a", "free b", "change", "empty"}));
  EXPECT_EQ(list.Count(), 0);
}

// Edge case: Clear of an already empty list still reports both events.
TEST(TGObjectList, ClearEmptyListStillFires) {
  std::vector<std::string> log;
  TGObjectList list;
  Listen(list, log);
  list.Clear();
  EXPECT_EQ(log, (std::vector<std::string>{"change", "empty"}));
}

// OnEmpty fires only when the change leaves the list empty.
TEST(TGObjectList, EmptyOnlyWhenCountZero) {
  std::vector<std::string> log;
  TGObjectList list;
  list.Add(new Tracked(log, "a"));
  list.Add(new Tracked(log, "b"));
  Listen(list, log);
  list.Erase(1);
  EXPECT_EQ(log, (std::vector<std::string>{"free b", "change"}));
}

// Deliberate: destroying the list frees its objects and fires OnChange and
// OnEmpty during destruction.
TEST(TGObjectList, DestructionFreesAndFiresEvents) {
  std::vector<std::string> log;
  {
    TGObjectList list;
    list.Add(new Tracked(log, "a"));
    list.Add(new Tracked(log, "b"));
    list.SetOnChange([&log](TObject*) { log.push_back("change"); });
    list.SetOnEmpty([&log](TObject*) { log.push_back("empty"); });
  }
  EXPECT_EQ(log, (std::vector<std::string>{"free a", "free b", "change", "empty"}));
}

// Destruction through a base pointer reaches the same clearing.
TEST(TGObjectList, DestructionThroughBasePointer) {
  std::vector<std::string> log;
  TList* base = new TGObjectList;
  static_cast<TGObjectList*>(base)->Add(new Tracked(log, "a"));
  delete base;
  EXPECT_EQ(log, (std::vector<std::string>{"free a"}));
}

// Clear called through the pointer list dispatches to the owning override.
TEST(TGObjectList, ClearThroughBaseIsOwning) {
  std::vector<std::string> log;
  TGObjectList list;
  list.Add(new Tracked(log, "a"));
  static_cast<TList&>(list).Clear();
  EXPECT_EQ(log, (std::vector<std::string>{"free a"}));
}

// Replacing an item neither frees the old object nor fires an event.
TEST(TGObjectList, SetItemDoesNotFreeOrFire) {
  std::vector<std::string> log;
  TGObjectList list;
  Tracked* a = new Tracked(log, "a");
  list.Add(a);
  Listen(list, log);
  list.SetItem(0, new Tracked(log, "b"));
  EXPECT_TRUE(log.empty());
  delete a;
  list.SetOnChange(nullptr);
  list.SetOnEmpty(nullptr);
}

// Changed() reports directly: OnChange, then OnEmpty only for an empty list.
TEST(TGObjectList, ChangedReportsDirectly) {
  std::vector<std::string> log;
  TGObjectList list;
  Listen(list, log);
  list.Changed();
  EXPECT_EQ(log, (std::vector<std::string>{"change", "empty"}));
  list.SetOnChange(nullptr);
  list.Add(new Tracked(log, "a"));
  log.clear();
  list.Changed();  // no OnChange assigned, list not empty: nothing
  list.ListEmpty();
  EXPECT_EQ(log, (std::vector<std::string>{"empty"}));
  list.SetOnEmpty(nullptr);
}

// Index checks are the pointer list's.
TEST(TGObjectList, BadIndexRaisesListError) {
  TGObjectList list;
  EXPECT_THROW((void)list.Items(0), EListError);
  EXPECT_THROW(list.Erase(0), EListError);
  EXPECT_THROW(list.Delete(-1), EListError);
}

// ---- TGStringMap ----

TEST(TGStringMap, FindsByKeyAndValue) {
  TGStringMap map;
  map.Add(new TGStringMapEntry(u"one", u"1"));
  map.Add(new TGStringMapEntry(u"two", u"2"));
  EXPECT_EQ(map.IndexByKey(u"two"), 1);
  EXPECT_EQ(map.IndexByValue(u"1"), 0);
  ASSERT_NE(map.FindByKey(u"one"), nullptr);
  EXPECT_EQ(map.FindByKey(u"one")->Value, u"1");
  EXPECT_EQ(map.FindByValue(u"2")->Key, u"two");
  EXPECT_EQ(map.Items(1)->Key, u"two");
  EXPECT_EQ(map.IndexByKey(u"three"), -1);
  EXPECT_EQ(map.FindByValue(u"3"), nullptr);
}

// Edge case: a key that differs only in case finds nothing.
TEST(TGStringMap, LookupIsCaseSensitive) {
  TGStringMap map;
  map.Add(new TGStringMapEntry(u"Key", u"Value"));
  EXPECT_EQ(map.FindByKey(u"key"), nullptr);
  EXPECT_EQ(map.FindByKey(u"KEY"), nullptr);
  EXPECT_EQ(map.IndexByValue(u"value"), -1);
  EXPECT_NE(map.FindByKey(u"Key"), nullptr);
}

// Edge case: with duplicate keys the first entry in insertion order wins.
TEST(TGStringMap, DuplicateKeysFirstWins) {
  TGStringMap map;
  map.Add(new TGStringMapEntry(u"k", u"first"));
  map.Add(new TGStringMapEntry(u"k", u"second"));
  map.Insert(0, new TGStringMapEntry(u"k", u"inserted"));
  EXPECT_EQ(map.IndexByKey(u"k"), 0);
  EXPECT_EQ(map.FindByKey(u"k")->Value, u"inserted");
}

// Edge case: an empty map finds nothing; empty keys are ordinary keys.
TEST(TGStringMap, EmptyMapAndEmptyKey) {
  TGStringMap map;
  EXPECT_EQ(map.IndexByKey(u""), -1);
  map.Add(new TGStringMapEntry(u"", u"blank"));
  EXPECT_EQ(map.IndexByKey(u""), 0);
}

// Slots emptied by FreeAll are passed over by lookups.
TEST(TGStringMap, FreedSlotsArePassedOver) {
  TGStringMap map;
  map.Add(new TGStringMapEntry(u"a", u"1"));
  map.FreeAll();
  EXPECT_EQ(map.IndexByKey(u"a"), -1);
  map.Add(new TGStringMapEntry(u"a", u"2"));
  EXPECT_EQ(map.IndexByKey(u"a"), 1);
}

}  // namespace
}  // namespace quill::Gutils
