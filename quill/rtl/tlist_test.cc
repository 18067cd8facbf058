// TList: the runtime's pointer list.
#include "quill/rtl/tlist.h"

#include <gtest/gtest.h>

#include <string>

#include "quill/rtl/exception.h"

namespace quill {
namespace {

// Distinct addresses to store; the list never dereferences them.
int g_slots[16];
void* P(int i) { return &g_slots[i]; }

// The text carried by an exception, in UTF-8 for readable failures.
template <typename E, typename F>
std::string MessageOf(F&& f) {
  try {
    f();
  } catch (const E& e) {
    return e.what();
  }
  return "<no exception>";
}

TEST(TListAdd, AppendsAndReturnsIndex) {
  TList list;
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.Add(P(0)), 0);
  EXPECT_EQ(list.Add(P(1)), 1);
  EXPECT_EQ(list.Add(nullptr), 2);  // null entries are ordinary entries
  ASSERT_EQ(list.Count(), 3);
  EXPECT_EQ(list.Get(0), P(0));
  EXPECT_EQ(list.Items(1), P(1));
  EXPECT_EQ(list.Get(2), nullptr);
  EXPECT_EQ(list.First(), P(0));
  EXPECT_EQ(list.Last(), nullptr);
}

TEST(TListCapacity, GrowsInTheRuntimeSteps) {
  // A full list grows by 4 while its capacity is at most 8, by 16 while it
  // is at most 64, and by a quarter of its capacity beyond that.
  TList list;
  EXPECT_EQ(list.Capacity(), 0);
  list.Add(P(0));
  EXPECT_EQ(list.Capacity(), 4);
  while (list.Count() < 5) list.Add(P(0));
  EXPECT_EQ(list.Capacity(), 8);
  while (list.Count() < 9) list.Add(P(0));
  EXPECT_EQ(list.Capacity(), 12);
  while (list.Count() < 13) list.Add(P(0));
  EXPECT_EQ(list.Capacity(), 28);
  while (list.Count() < 65) list.Add(P(0));
  EXPECT_EQ(list.Capacity(), 76);
  while (list.Count() < 77) list.Add(P(0));
  EXPECT_EQ(list.Capacity(), 95);
  // Insert grows the same way.
  while (list.Count() < 95) list.Add(P(0));
  list.Insert(0, P(1));
  EXPECT_EQ(list.Capacity(), 118);
  EXPECT_EQ(list.Get(0), P(1));
}

TEST(TListCapacity, BelowCountRaises) {
  TList list;
  list.Add(P(0));
  list.Add(P(1));
  list.SetCapacity(10);
  EXPECT_EQ(list.Capacity(), 10);
  list.SetCapacity(2);  // exactly Count is fine
  EXPECT_EQ(list.Capacity(), 2);
  EXPECT_EQ(MessageOf<EListError>([&] { list.SetCapacity(1); }), "List capacity out of bounds (1)");
  // Negative capacity is below any count.
  EXPECT_EQ(MessageOf<EListError>([&] { list.SetCapacity(-1); }), "List capacity out of bounds (-1)");
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.Get(1), P(1));
}

TEST(TListCount, SetCountPadsWithNullAndTruncates) {
  TList list;
  list.Add(P(3));
  list.SetCount(3);
  ASSERT_EQ(list.Count(), 3);
  EXPECT_EQ(list.Get(0), P(3));
  EXPECT_EQ(list.Get(1), nullptr);
  EXPECT_EQ(list.Get(2), nullptr);
  EXPECT_GE(list.Capacity(), 3);
  list.SetCount(0);
  EXPECT_EQ(list.Count(), 0);
  // Edge case: a negative count raises the count error.
  EXPECT_EQ(MessageOf<EListError>([&] { list.SetCount(-2); }), "List count out of bounds (-2)");
}

TEST(TListIndexError, ExactMessages) {
  TList list;
  list.Add(P(0));
  // Edge cases: one past the end, negative, empty list.
  EXPECT_EQ(MessageOf<EListError>([&] { (void)list.Get(1); }), "List index out of bounds (1)");
  EXPECT_EQ(MessageOf<EListError>([&] { (void)list.Get(-1); }), "List index out of bounds (-1)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.Put(5, nullptr); }), "List index out of bounds (5)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.Delete(1); }), "List index out of bounds (1)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.Insert(2, nullptr); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.Exchange(0, 3); }), "List index out of bounds (3)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.Move(-4, 0); }), "List index out of bounds (-4)");
  TList empty;
  EXPECT_EQ(MessageOf<EListError>([&] { (void)empty.First(); }), "List index out of bounds (0)");
  EXPECT_EQ(MessageOf<EListError>([&] { (void)empty.Last(); }), "List index out of bounds (-1)");
  EXPECT_EQ(MessageOf<EListError>([] { TList::IndexError(7); }), "List index out of bounds (7)");
}

TEST(TListIndexError, IsAnException) {
  TList list;
  EXPECT_THROW((void)list.Get(0), Exception);
  try {
    (void)list.Get(0);
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"List index out of bounds (0)");
  }
}

TEST(TListInsert, AtFrontMiddleAndCount) {
  TList list;
  list.Add(P(1));
  list.Insert(0, P(0));  // front
  list.Insert(2, P(3));  // index == Count appends
  list.Insert(2, P(2));  // middle
  ASSERT_EQ(list.Count(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(list.Get(i), P(i)) << i;
}

TEST(TListDelete, ShiftsLaterEntriesDown) {
  TList list;
  for (int i = 0; i < 4; ++i) list.Add(P(i));
  list.Delete(1);
  ASSERT_EQ(list.Count(), 3);
  EXPECT_EQ(list.Get(0), P(0));
  EXPECT_EQ(list.Get(1), P(2));
  EXPECT_EQ(list.Get(2), P(3));
}

TEST(TListPut, ReplacesInPlace) {
  TList list;
  list.Add(P(0));
  list.Put(0, P(5));
  list.SetItems(0, P(6));
  EXPECT_EQ(list.Get(0), P(6));
  EXPECT_EQ(list.Count(), 1);
}

TEST(TListIndexOf, FirstMatchOrMinusOne) {
  TList list;
  list.Add(P(0));
  list.Add(P(1));
  list.Add(P(0));
  EXPECT_EQ(list.IndexOf(P(0)), 0);
  EXPECT_EQ(list.IndexOf(P(1)), 1);
  EXPECT_EQ(list.IndexOf(P(9)), -1);
  EXPECT_EQ(list.IndexOf(nullptr), -1);
}

TEST(TListRemove, RemovesFirstMatchOnly) {
  TList list;
  list.Add(P(0));
  list.Add(P(1));
  list.Add(P(0));
  EXPECT_EQ(list.Remove(P(0)), 0);
  ASSERT_EQ(list.Count(), 2);
  EXPECT_EQ(list.Get(0), P(1));
  EXPECT_EQ(list.Get(1), P(0));
  // Edge case: removing an absent pointer changes nothing and gives -1.
  EXPECT_EQ(list.Remove(P(9)), -1);
  EXPECT_EQ(list.Count(), 2);
}

TEST(TListExchange, SwapsTwoEntries) {
  TList list;
  for (int i = 0; i < 3; ++i) list.Add(P(i));
  list.Exchange(0, 2);
  EXPECT_EQ(list.Get(0), P(2));
  EXPECT_EQ(list.Get(1), P(1));
  EXPECT_EQ(list.Get(2), P(0));
  list.Exchange(1, 1);  // same index: no change
  EXPECT_EQ(list.Get(1), P(1));
}

TEST(TListMove, ForwardAndBackward) {
  TList list;
  for (int i = 0; i < 5; ++i) list.Add(P(i));
  list.Move(1, 3);  // 0 2 3 1 4
  EXPECT_EQ(list.Get(0), P(0));
  EXPECT_EQ(list.Get(1), P(2));
  EXPECT_EQ(list.Get(2), P(3));
  EXPECT_EQ(list.Get(3), P(1));
  EXPECT_EQ(list.Get(4), P(4));
  list.Move(4, 0);  // 4 0 2 3 1
  EXPECT_EQ(list.Get(0), P(4));
  EXPECT_EQ(list.Get(1), P(0));
  EXPECT_EQ(list.Get(4), P(1));
  // Edge case: moving to an index equal to Count is out of bounds.
  EXPECT_THROW(list.Move(0, 5), EListError);
  EXPECT_EQ(list.Count(), 5);
}

TEST(TListClear, EmptiesAndReleasesStorage) {
  TList list;
  for (int i = 0; i < 10; ++i) list.Add(P(i));
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.Capacity(), 0);
  EXPECT_EQ(list.Add(P(1)), 0);
}

// An owning list in the way the library's object list builds on TList: it
// overrides the virtual Clear to free its objects first.
class CountingList : public TList {
 public:
  ~CountingList() override { CountingList::Clear(); }
  void Clear() override {
    freed += Count();
    TList::Clear();
  }
  int freed = 0;
};

TEST(TListClear, IsVirtual) {
  CountingList owning;
  owning.Add(P(0));
  owning.Add(P(1));
  TList& base = owning;
  base.Clear();  // dispatches to the override
  EXPECT_EQ(owning.freed, 2);
  EXPECT_EQ(owning.Count(), 0);
}

}  // namespace
}  // namespace quill
