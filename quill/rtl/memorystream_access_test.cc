// In-place access to a memory stream's buffer: uninitialised growth, trimming,
// and which streams qualify.
#include "quill/rtl/internal/memorystream_access.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "quill/rtl/streams.h"

namespace quill {
namespace {

using internal::MemoryStreamAccess;

std::string Contents(TMemoryStream& ms) {
  return std::string(reinterpret_cast<const char*>(ms.Memory()), static_cast<size_t>(ms.Size()));
}

// A subclass may override Read/Write, so only an exact TMemoryStream is
// handed out for in-place access.
class CountingMemoryStream : public TMemoryStream {
 public:
  int64_t Write(const void* buffer, int64_t count) override {
    ++writes;
    return TMemoryStream::Write(buffer, count);
  }
  int writes = 0;
};

TEST(MemoryStreamAccess, OnlyPlainMemoryStreamsQualify) {
  TMemoryStream plain;
  CountingMemoryStream counting;
  EXPECT_EQ(MemoryStreamAccess::PlainMemoryStream(plain), &plain);
  EXPECT_EQ(MemoryStreamAccess::PlainMemoryStream(counting), nullptr);
}

// Growth keeps the contents and the position; the caller fills the new bytes.
TEST(MemoryStreamAccess, GrowKeepsContentsAndPosition) {
  TMemoryStream ms;
  ms.WriteBuffer("abc", 3);
  ms.SetPosition(1);
  uint8_t* p = MemoryStreamAccess::GrowUninitialised(ms, 100000);
  EXPECT_EQ(ms.Size(), 100000);
  EXPECT_EQ(ms.Position(), 1);
  EXPECT_EQ(p, ms.Memory());
  EXPECT_EQ(std::memcmp(p, "abc", 3), 0);
  std::memset(p + 3, 'd', 100000 - 3);
  MemoryStreamAccess::Trim(ms, 5);
  EXPECT_EQ(Contents(ms), "abcdd");
  EXPECT_EQ(ms.Position(), 1);
}

// Growing to a size not above the current one changes nothing.
TEST(MemoryStreamAccess, GrowToSmallerSizeIsNoOp) {
  TMemoryStream ms;
  ms.WriteBuffer("abcdef", 6);
  (void)MemoryStreamAccess::GrowUninitialised(ms, 2);
  EXPECT_EQ(Contents(ms), "abcdef");
}

// Trimming moves a position beyond the new end back to it; sizes outside
// 0 .. Size are ignored.
TEST(MemoryStreamAccess, TrimClampsPositionAndIgnoresBadSizes) {
  TMemoryStream ms;
  ms.WriteBuffer("abcdef", 6);
  MemoryStreamAccess::Trim(ms, 9);
  EXPECT_EQ(ms.Size(), 6);
  MemoryStreamAccess::Trim(ms, -1);
  EXPECT_EQ(ms.Size(), 6);
  MemoryStreamAccess::Trim(ms, 4);
  EXPECT_EQ(Contents(ms), "abcd");
  EXPECT_EQ(ms.Position(), 4);
}

// Bytes cut off by Trim are not uncovered by a later SetSize or gap write.
TEST(MemoryStreamAccess, TrimmedBytesDoNotReappear) {
  TMemoryStream ms;
  uint8_t* p = MemoryStreamAccess::GrowUninitialised(ms, 64);
  std::memset(p, 'x', 64);
  MemoryStreamAccess::Trim(ms, 0);
  ms.SetSize(8);
  EXPECT_EQ(Contents(ms), std::string(8, '\0'));
  MemoryStreamAccess::Trim(ms, 0);
  ms.SetPosition(6);
  ms.WriteBuffer("y", 1);
  EXPECT_EQ(Contents(ms), std::string(6, '\0') + "y");
}

}  // namespace
}  // namespace quill
