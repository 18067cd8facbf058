// The window classes on their own: ring arithmetic, growth, the position
// lists and their search.
#include <gtest/gtest.h>

#include "quill/compress/internal/lzreference.h"
#include "quill/compress/internal/lztestutil.h"

namespace quill::Gcompress::internal {
namespace {

TEST(TSlideWindow, CreateStartsEmptyAndZeroed) {
  TSlideWindow w(8);
  EXPECT_EQ(w.MaxWinSize(), 8);
  EXPECT_EQ(w.Size(), 0);
  EXPECT_EQ(w.Start(), 0);
  EXPECT_EQ(w.GlobalStart(), 0);
}

// RealIndex and IncIntIndex wrap once by subtraction.
TEST(TSlideWindow, IndexesWrapOnce) {
  TSlideWindow w(8);
  for (int i = 0; i < 11; ++i) w.AddByte(static_cast<uint8_t>(i));
  EXPECT_EQ(w.Start(), 3);
  EXPECT_EQ(w.RealIndex(0), 3);
  EXPECT_EQ(w.RealIndex(5), 0);
  EXPECT_EQ(w.RealIndex(8), 3);
  int32_t i = 6;
  w.IncIntIndex(i, 3);
  EXPECT_EQ(i, 1);
  w.IncIntIndex(i, 2);
  EXPECT_EQ(i, 3);
}

// Growing past the capacity drops the oldest bytes and counts them.
TEST(TSlideWindow, GrowDropsOldestBytes) {
  TSlideWindow w(4);
  for (int i = 1; i <= 6; ++i) w.AddByte(static_cast<uint8_t>(i * 10));
  EXPECT_EQ(w.Size(), 4);
  EXPECT_EQ(w.GlobalStart(), 2);
  EXPECT_EQ(w.Data(0), 30);
  EXPECT_EQ(w.Data(3), 60);
  w.SetData(1, 99);
  EXPECT_EQ(w.Data(1), 99);
}

// DeleteFirst moves the front without counting the bytes as dropped.
TEST(TSlideWindow, DeleteFirstKeepsGlobalStart) {
  TSlideWindow w(4);
  for (int i = 1; i <= 3; ++i) w.AddByte(static_cast<uint8_t>(i));
  w.DeleteFirst(2);
  EXPECT_EQ(w.Size(), 1);
  EXPECT_EQ(w.Data(0), 3);
  EXPECT_EQ(w.GlobalStart(), 0);
}

// A full list drops its oldest entry on the 41st addition.
TEST(TPositionsList, KeepsTheLast40Positions) {
  TPositionsList list(40);
  for (int32_t p = 100; p < 141; ++p) list.AddPosition(p);
  EXPECT_EQ(list.Count(), 40);
  EXPECT_EQ(list.Items(0), 101);
  EXPECT_EQ(list.Items(39), 140);
  list.SetItems(0, 7);
  EXPECT_EQ(list.Items(0), 7);
}

// DeleteFirstItems does nothing when asked for more than the list holds.
TEST(TPositionsList, DeleteFirstItemsBeyondCountDoesNothing) {
  TPositionsList list(40);
  for (int32_t p = 0; p < 5; ++p) list.AddPosition(p * 3);
  list.DeleteFirstItems(6);
  EXPECT_EQ(list.Count(), 5);
  list.DeleteFirstItems(5);
  EXPECT_EQ(list.Count(), 0);
  for (int32_t p = 0; p < 5; ++p) list.AddPosition(p * 3);
  list.DeleteFirstItems(2);
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(list.Items(0), 6);
}

// Find: the entry's index when present, else where it would be inserted.
TEST(TPositionsList, FindIsABinarySearch) {
  TPositionsList list(40);
  for (int32_t p : {2, 4, 8, 16, 32}) list.AddPosition(p);
  int32_t index = -1;
  EXPECT_TRUE(list.Find(8, index));
  EXPECT_EQ(index, 2);
  EXPECT_TRUE(list.Find(2, index));
  EXPECT_EQ(index, 0);
  EXPECT_TRUE(list.Find(32, index));
  EXPECT_EQ(index, 4);
  EXPECT_FALSE(list.Find(1, index));
  EXPECT_EQ(index, 0);
  EXPECT_FALSE(list.Find(9, index));
  EXPECT_EQ(index, 3);
  EXPECT_FALSE(list.Find(99, index));
  EXPECT_EQ(index, 5);
  TPositionsList empty(40);
  EXPECT_FALSE(empty.Find(3, index));
  EXPECT_EQ(index, 0);
}

// AddItem files GlobalStart + index under the byte's value.
TEST(TLZDictionary, AddItemFilesAbsolutePositionByByte) {
  TLZDictionary d;
  const uint8_t bytes[] = {'q', 'r'};
  d.AddItem(&bytes[0], 1000, 5);
  d.AddItem(&bytes[1], 1000, 6);
  d.AddItem(&bytes[0], 1000, 7);
  ASSERT_EQ(d.Positions('q').Count(), 2);
  EXPECT_EQ(d.Positions('q').Items(0), 1005);
  EXPECT_EQ(d.Positions('q').Items(1), 1007);
  EXPECT_EQ(d.Positions('r').Items(0), 1006);
  EXPECT_EQ(d.Positions('s').Count(), 0);
}

// When compressing, the uncoded bytes keep their place as the front slides.
TEST(TLZSlideWindow, GrowKeepsBufIndexOnTheFirstUncodedByte) {
  TLZSlideWindow w(16, 8, 18, ptCompress);
  Gcompress::testing::Bytes data(20);
  for (size_t i = 0; i < data.size(); ++i) data[i] = static_cast<uint8_t>(i);
  TMemoryStream s;
  Gcompress::testing::Fill(s, data);
  EXPECT_EQ(w.FillBufferFromStream(s), 8);
  w.EnlargeDictionary(8);
  EXPECT_EQ(w.FillBufferFromStream(s), 8);
  w.EnlargeDictionary(4);
  EXPECT_EQ(w.BufIndex(), 12);
  EXPECT_EQ(w.FillBufferFromStream(s), 4);  // 4 more: the front slides by 4
  EXPECT_EQ(w.GlobalStart(), 4);
  EXPECT_EQ(w.BufIndex(), 8);
  EXPECT_EQ(w.BufSize(), 8);
  EXPECT_EQ(w.Buffer(0), 12);
  EXPECT_EQ(w.Buffer(7), 19);
}

// When expanding, growth does not move FBufIndex.
TEST(TLZSlideWindow, ExpandingWindowIgnoresBufIndex) {
  TLZSlideWindow w(4, 0, 18, ptDecompress);
  for (int i = 0; i < 10; ++i) w.AddByte(static_cast<uint8_t>(i));
  EXPECT_EQ(w.BufIndex(), 0);
  EXPECT_EQ(w.Size(), 4);
}

// FindMatch needs 3 bytes of lookahead and a coded occurrence of the first byte.
TEST(TLZSlideWindow, FindMatchNeedsThreeBytesOfLookahead) {
  TLZSlideWindow w(16, 8, 18, ptCompress);
  TMemoryStream s;
  Gcompress::testing::Fill(s, Gcompress::testing::ToBytes("aaaaa"));
  w.FillBufferFromStream(s);
  uint16_t offset = 0, length = 0;
  EXPECT_FALSE(w.FindMatch(offset, length));  // nothing coded yet
  w.EnlargeDictionary(1);
  ASSERT_TRUE(w.FindMatch(offset, length));
  EXPECT_EQ(offset, 1);
  EXPECT_EQ(length, 4);  // runs on into the lookahead, limited by its size
  w.EnlargeDictionary(2);
  EXPECT_EQ(w.BufSize(), 2);
  EXPECT_FALSE(w.FindMatch(offset, length));
}

}  // namespace
}  // namespace quill::Gcompress::internal
