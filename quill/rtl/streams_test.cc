// Streams: TStream's buffer and copy operations, TMemoryStream and
// TFileStream.
#include "quill/rtl/streams.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
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

std::string TempPath(const std::string& name) {
  return "/tmp/quill_rtla_streams_" + std::to_string(::getpid()) + "_" + name;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
}

std::string Contents(TMemoryStream& ms) {
  return std::string(reinterpret_cast<const char*>(ms.Memory()), static_cast<size_t>(ms.Size()));
}

// Removes a file when the test ends, also when it fails.
struct TempFile {
  explicit TempFile(const std::string& name) : path(TempPath(name)) {}
  ~TempFile() { std::remove(path.c_str()); }
  std::string path;
};

// --- TMemoryStream ---

TEST(TMemoryStream, WriteGrowsAndReadReturnsWhatIsLeft) {
  TMemoryStream ms;
  EXPECT_EQ(ms.Size(), 0);
  EXPECT_EQ(ms.Write("hello", 5), 5);
  EXPECT_EQ(ms.Size(), 5);
  EXPECT_EQ(ms.Position(), 5);
  ms.SetPosition(1);
  char buf[16] = {};
  EXPECT_EQ(ms.Read(buf, 10), 4);  // only four bytes left
  EXPECT_STREQ(buf, "ello");
  EXPECT_EQ(ms.Position(), 5);
  EXPECT_EQ(ms.Read(buf, 1), 0);  // at the end
  EXPECT_EQ(ms.Read(buf, 0), 0);
}

TEST(TMemoryStream, OverwriteInTheMiddleKeepsSize) {
  TMemoryStream ms;
  ms.WriteBuffer("abcdef", 6);
  ms.SetPosition(2);
  ms.WriteBuffer("XY", 2);
  EXPECT_EQ(Contents(ms), "abXYef");
  ms.WriteBuffer("ZZZ", 3);  // runs over the end: grows by one
  EXPECT_EQ(Contents(ms), "abXYZZZ");
}

TEST(TMemoryStream, SeekOrigins) {
  TMemoryStream ms;
  ms.WriteBuffer("0123456789", 10);
  EXPECT_EQ(ms.Seek(3, soBeginning), 3);
  EXPECT_EQ(ms.Seek(2, soCurrent), 5);
  EXPECT_EQ(ms.Seek(-1, soCurrent), 4);
  EXPECT_EQ(ms.Seek(-2, soEnd), 8);
  EXPECT_EQ(ms.Seek(0, soEnd), 10);
}

TEST(TMemoryStream, SeekBeyondEndThenWriteZeroFills) {
  TMemoryStream ms;
  ms.WriteBuffer("ab", 2);
  EXPECT_EQ(ms.Seek(5, soEnd), 7);
  EXPECT_EQ(ms.Size(), 2);  // seeking alone does not grow
  char buf[4];
  EXPECT_EQ(ms.Read(buf, 4), 0);
  ms.WriteBuffer("z", 1);
  EXPECT_EQ(ms.Size(), 8);
  EXPECT_EQ(Contents(ms), std::string("ab\0\0\0\0\0z", 8));
}

TEST(TMemoryStream, NegativePositionMovesNothing) {
  TMemoryStream ms;
  ms.WriteBuffer("ab", 2);
  EXPECT_EQ(ms.Seek(-5, soBeginning), -5);
  char c = 0;
  EXPECT_EQ(ms.Read(&c, 1), 0);
  EXPECT_EQ(ms.Write("x", 1), 0);
  EXPECT_EQ(Contents(ms), "ab");
}

TEST(TMemoryStream, WriteAtAnOverflowingPositionMovesNothing) {
  TMemoryStream ms;
  ms.Seek(INT64_MAX - 1, soBeginning);
  EXPECT_EQ(ms.Write("abc", 3), 0);
  EXPECT_EQ(ms.Size(), 0);
  EXPECT_THROW(ms.WriteBuffer("abc", 3), EWriteError);
}

TEST(TMemoryStream, SetSizeTruncatesOrZeroExtends) {
  TMemoryStream ms;
  ms.WriteBuffer("abcdef", 6);
  ms.SetSize(3);
  EXPECT_EQ(Contents(ms), "abc");
  EXPECT_EQ(ms.Position(), 3);  // a position beyond the new end moves to it
  ms.SetPosition(1);
  ms.SetSize(5);
  EXPECT_EQ(Contents(ms), std::string("abc\0\0", 5));
  EXPECT_EQ(ms.Position(), 1);
  ms.SetSize(-4);  // a negative size empties the stream
  EXPECT_EQ(ms.Size(), 0);
  EXPECT_EQ(ms.Position(), 0);
}

// Clear frees the buffer; the stream is usable again afterwards.
TEST(TMemoryStream, ClearEmptiesAndRewinds) {
  TMemoryStream ms;
  ms.WriteBuffer("abc", 3);
  ms.Clear();
  EXPECT_EQ(ms.Size(), 0);
  EXPECT_EQ(ms.Position(), 0);
  ms.WriteBuffer("xy", 2);
  EXPECT_EQ(Contents(ms), "xy");
}

// The buffer keeps its capacity when the size shrinks, so the bytes written
// before still sit in memory past the end. Growth by a write after a seek
// beyond the end must clear that gap, not uncover the old bytes.
TEST(TMemoryStream, GapAfterShrinkReadsAsZeros) {
  TMemoryStream ms;
  const std::string old(4096, 'x');
  ms.WriteBuffer(old.data(), static_cast<int64_t>(old.size()));
  ms.SetSize(0);
  ms.Seek(3000, soBeginning);
  ms.WriteBuffer("z", 1);
  ASSERT_EQ(ms.Size(), 3001);
  EXPECT_EQ(Contents(ms), std::string(3000, '\0') + "z");
}

// Same for SetSize: growing again after a shrink zero-extends.
TEST(TMemoryStream, SetSizeGrowthAfterShrinkReadsAsZeros) {
  TMemoryStream ms;
  const std::string old(4096, 'x');
  ms.WriteBuffer(old.data(), static_cast<int64_t>(old.size()));
  ms.SetSize(10);
  ms.SetSize(4000);
  EXPECT_EQ(Contents(ms), std::string(10, 'x') + std::string(3990, '\0'));
}

// Plain appends fill what they add: no zero bytes appear between writes, and
// many small writes through several reallocations keep every byte.
TEST(TMemoryStream, ManySmallAppendsKeepEveryByte) {
  TMemoryStream ms;
  std::string expected;
  for (int i = 0; i < 100000; ++i) {
    const char c = static_cast<char>('a' + i % 26);
    ms.WriteBuffer(&c, 1);
    expected += c;
  }
  EXPECT_EQ(ms.Size(), 100000);
  EXPECT_EQ(ms.Position(), 100000);
  EXPECT_EQ(Contents(ms), expected);
}

// Writing inside the contents after a shrink-and-grow leaves the rest intact.
TEST(TMemoryStream, OverwriteAfterRegrowKeepsZeros) {
  TMemoryStream ms;
  ms.WriteBuffer("abcdefgh", 8);
  ms.SetSize(2);
  ms.SetSize(8);
  ms.SetPosition(4);
  ms.WriteBuffer("Q", 1);
  EXPECT_EQ(Contents(ms), std::string("ab\0\0Q\0\0\0", 8));
}

// A copy holds its own bytes and position.
TEST(TMemoryStream, CopiesAreIndependent) {
  TMemoryStream a;
  a.WriteBuffer("hello", 5);
  a.SetPosition(2);
  TMemoryStream b(a);
  EXPECT_EQ(Contents(b), "hello");
  EXPECT_EQ(b.Position(), 2);
  b.WriteBuffer("LLO!", 4);
  EXPECT_EQ(Contents(a), "hello");
  EXPECT_EQ(Contents(b), "heLLO!");
  TMemoryStream c;
  c.WriteBuffer("something longer", 16);
  c = a;
  EXPECT_EQ(Contents(c), "hello");
  EXPECT_EQ(c.Position(), 2);
  TMemoryStream empty;
  c = empty;
  EXPECT_EQ(c.Size(), 0);
  EXPECT_EQ(c.Position(), 0);
}


TEST(TStreamReadBuffer, ShortReadRaises) {
  TMemoryStream ms;
  ms.WriteBuffer("abc", 3);
  ms.SetPosition(0);
  char buf[8];
  ms.ReadBuffer(buf, 3);
  EXPECT_EQ(std::memcmp(buf, "abc", 3), 0);
  ms.SetPosition(1);
  EXPECT_EQ(MessageOf<EReadError>([&] { ms.ReadBuffer(buf, 3); }), "Stream read error");
  // A read error is a stream error and a runtime exception.
  ms.SetPosition(3);
  EXPECT_THROW(ms.ReadBuffer(buf, 1), EStreamError);
  EXPECT_THROW(ms.ReadBuffer(buf, 1), Exception);
  // Zero bytes never fail, even at the end.
  EXPECT_NO_THROW(ms.ReadBuffer(buf, 0));
}

// A stream that accepts only a few bytes, for short writes.
class SmallSink : public TStream {
 public:
  int64_t Read(void*, int64_t) override { return 0; }
  int64_t Write(const void*, int64_t count) override {
    const int64_t n = count < room ? count : room;
    room -= n;
    return n;
  }
  int64_t Seek(int64_t, TSeekOrigin) override { return 0; }
  int64_t room = 4;
};

TEST(TStreamWriteBuffer, ShortWriteRaises) {
  SmallSink sink;
  sink.WriteBuffer("abc", 3);
  EXPECT_EQ(MessageOf<EWriteError>([&] { sink.WriteBuffer("abc", 3); }), "Stream write error");
  EXPECT_NO_THROW(sink.WriteBuffer("abc", 0));
}

TEST(TStreamSize, DefaultSeeksToEndAndRestoresPosition) {
  // TStream::Size through a memory stream's Seek, called explicitly.
  TMemoryStream ms;
  ms.WriteBuffer("abcdef", 6);
  ms.SetPosition(2);
  EXPECT_EQ(ms.TStream::Size(), 6);
  EXPECT_EQ(ms.Position(), 2);
}

TEST(TStreamCopyFrom, CopiesCountFromCurrentPosition) {
  TMemoryStream src;
  src.WriteBuffer("0123456789", 10);
  src.SetPosition(4);
  TMemoryStream dst;
  dst.WriteBuffer("x", 1);
  EXPECT_EQ(dst.CopyFrom(src, 3), 3);
  EXPECT_EQ(Contents(dst), "x456");
  EXPECT_EQ(src.Position(), 7);
}

TEST(TStreamCopyFrom, ZeroCopiesTheWholeSourceFromTheStart) {
  TMemoryStream src;
  src.WriteBuffer("0123456789", 10);  // position at the end
  TMemoryStream dst;
  EXPECT_EQ(dst.CopyFrom(src, 0), 10);
  EXPECT_EQ(Contents(dst), "0123456789");
}

TEST(TStreamCopyFrom, LargerThanOneChunk) {
  TMemoryStream src;
  std::string big(200000, '\0');
  for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>(i * 7 + 3);
  src.WriteBuffer(big.data(), static_cast<int64_t>(big.size()));
  TMemoryStream dst;
  EXPECT_EQ(dst.CopyFrom(src, 0), 200000);
  EXPECT_EQ(Contents(dst), big);
}

TEST(TStreamCopyFrom, ShortSourceRaisesReadError) {
  TMemoryStream src;
  src.WriteBuffer("abc", 3);
  src.SetPosition(0);
  TMemoryStream dst;
  EXPECT_EQ(MessageOf<EReadError>([&] { dst.CopyFrom(src, 5); }), "Stream read error");
}

// --- files through memory streams ---

TEST(TMemoryStreamFiles, SaveAndLoad) {
  TempFile f("save.bin");
  TMemoryStream ms;
  ms.WriteBuffer("a\0b\xFF", 4);
  ms.SaveToFile(f.path);
  EXPECT_EQ(ReadBytes(f.path), std::string("a\0b\xFF", 4));
  TMemoryStream back;
  back.WriteBuffer("previous contents", 17);
  back.LoadFromFile(f.path);
  EXPECT_EQ(Contents(back), std::string("a\0b\xFF", 4));
  EXPECT_EQ(back.Position(), 0);
}

TEST(TMemoryStreamFiles, SaveTruncatesAnExistingFile) {
  TempFile f("trunc.bin");
  WriteBytes(f.path, "a much longer old content");
  TMemoryStream ms;
  ms.WriteBuffer("new", 3);
  ms.SaveToFile(f.path);
  EXPECT_EQ(ReadBytes(f.path), "new");
  // An empty stream saves an empty file.
  TMemoryStream empty;
  empty.SaveToFile(f.path);
  EXPECT_EQ(ReadBytes(f.path), "");
}

TEST(TMemoryStreamFiles, LoadMissingFileRaisesWithFullPath) {
  const std::string path = TempPath("absent.bin");
  TMemoryStream ms;
  ms.WriteBuffer("kept", 4);
  EXPECT_EQ(MessageOf<EFOpenError>([&] { ms.LoadFromFile(path); }),
            "Cannot open file \"" + path + "\". No such file or directory");
  EXPECT_EQ(Contents(ms), "kept");
}

TEST(TMemoryStreamFiles, StreamToStream) {
  TMemoryStream a;
  a.WriteBuffer("xyz", 3);
  TMemoryStream b;
  a.SaveToStream(b);
  EXPECT_EQ(Contents(b), "xyz");
  TMemoryStream c;
  c.LoadFromStream(b);  // from position 0 whatever b's position
  EXPECT_EQ(Contents(c), "xyz");
}

// --- TFileStream ---

TEST(TFileStream, CreateWriteReopenRead) {
  TempFile f("file.bin");
  {
    TFileStream fs(f.path, fmCreate);
    EXPECT_EQ(fs.FileName(), f.path);
    fs.WriteBuffer("hello world", 11);
    EXPECT_EQ(fs.Size(), 11);
    EXPECT_EQ(fs.Position(), 11);
  }
  TFileStream fs(f.path, fmOpenRead);
  EXPECT_EQ(fs.Size(), 11);
  char buf[16] = {};
  fs.SetPosition(6);
  EXPECT_EQ(fs.Read(buf, 16), 5);
  EXPECT_STREQ(buf, "world");
  EXPECT_EQ(fs.Read(buf, 1), 0);
  EXPECT_EQ(MessageOf<EReadError>([&] {
              fs.SetPosition(8);
              fs.ReadBuffer(buf, 4);
            }),
            "Stream read error");
  // A read-only stream refuses writes: a short write.
  EXPECT_EQ(MessageOf<EWriteError>([&] { fs.WriteBuffer("x", 1); }), "Stream write error");
}

TEST(TFileStream, OpenWriteKeepsContentsAndOverwrites) {
  TempFile f("rw.bin");
  WriteBytes(f.path, "abcdef");
  {
    TFileStream fs(f.path, fmOpenWrite | fmShareDenyNone);
    fs.SetPosition(2);
    fs.WriteBuffer("XY", 2);
  }
  EXPECT_EQ(ReadBytes(f.path), "abXYef");
  {
    TFileStream fs(f.path, fmOpenReadWrite);
    char c = 0;
    fs.SetPosition(3);
    fs.ReadBuffer(&c, 1);
    EXPECT_EQ(c, 'Y');
    fs.Seek(0, soEnd);
    fs.WriteBuffer("!", 1);
  }
  EXPECT_EQ(ReadBytes(f.path), "abXYef!");
}

TEST(TFileStream, SeekBeyondEndThenWriteZeroFills) {
  TempFile f("gap.bin");
  {
    TFileStream fs(f.path, fmCreate);
    fs.WriteBuffer("a", 1);
    EXPECT_EQ(fs.Seek(3, soCurrent), 4);
    fs.WriteBuffer("b", 1);
  }
  EXPECT_EQ(ReadBytes(f.path), std::string("a\0\0\0b", 5));
}

TEST(TFileStream, SetSizeTruncatesAndExtends) {
  TempFile f("size.bin");
  TFileStream fs(f.path, fmCreate);
  fs.WriteBuffer("abcdef", 6);
  fs.SetSize(2);
  EXPECT_EQ(fs.Size(), 2);
  EXPECT_EQ(fs.Position(), 2);
  fs.SetSize(4);
  EXPECT_EQ(fs.Size(), 4);
  EXPECT_EQ(ReadBytes(f.path), std::string("ab\0\0", 4));
  EXPECT_THROW(fs.SetSize(-1), EWriteError);
}

TEST(TFileStream, PositionsBeyondFourGigabytes) {
  // 64-bit positions: a sparse file with one byte past 5 GiB.
  TempFile f("large.bin");
  const int64_t far = (int64_t{5} << 30) + 17;
  {
    TFileStream fs(f.path, fmCreate);
    EXPECT_EQ(fs.Seek(far, soBeginning), far);
    fs.WriteBuffer("L", 1);
    EXPECT_EQ(fs.Size(), far + 1);
  }
  TFileStream fs(f.path, fmOpenRead);
  EXPECT_EQ(fs.Size(), far + 1);
  EXPECT_EQ(fs.Seek(-1, soEnd), far);
  char c = 0;
  fs.ReadBuffer(&c, 1);
  EXPECT_EQ(c, 'L');
  EXPECT_EQ(fs.Position(), far + 1);
}

TEST(TFileStream, MissingFileMessage) {
  const std::string path = TempPath("nope.bin");
  // The system error text comes without a trailing period.
  EXPECT_EQ(MessageOf<EFOpenError>([&] { TFileStream fs(path, fmOpenRead); }),
            "Cannot open file \"" + path + "\". No such file or directory");
  EXPECT_THROW(TFileStream(path, fmOpenReadWrite), EFileStreamError);
}

TEST(TFileStream, RelativeNameIsReportedAsFullPath) {
  char cwd[4096];
  ASSERT_NE(::getcwd(cwd, sizeof cwd), nullptr);
  const std::string rel = "quill_rtla_no_such_dir/./sub/../file.bin";
  EXPECT_EQ(MessageOf<EFOpenError>([&] { TFileStream fs(rel, fmOpenRead); }),
            "Cannot open file \"" + std::string(cwd) +
                "/quill_rtla_no_such_dir/file.bin\". No such file or directory");
}

TEST(TFileStream, CreateInMissingDirectoryMessage) {
  const std::string path = TempPath("nodir") + "/x.bin";
  EXPECT_EQ(MessageOf<EFCreateError>([&] { TFileStream fs(path, fmCreate); }),
            "Cannot create file \"" + path + "\". No such file or directory");
}

TEST(TFileStream, DirectoryCannotBeOpened) {
  EXPECT_EQ(MessageOf<EFOpenError>([] { TFileStream fs("/tmp", fmOpenRead); }),
            "Cannot open file \"/tmp\". Is a directory");
  EXPECT_EQ(MessageOf<EFCreateError>([] { TFileStream fs("/tmp", fmCreate); }),
            "Cannot create file \"/tmp\". Is a directory");
}

TEST(TFileStream, CopyFromFileToMemory) {
  TempFile f("copy.bin");
  WriteBytes(f.path, "0123456789");
  TFileStream fs(f.path, fmOpenRead);
  fs.SetPosition(9);
  TMemoryStream ms;
  EXPECT_EQ(ms.CopyFrom(fs, 0), 10);
  EXPECT_EQ(Contents(ms), "0123456789");
}

}  // namespace
}  // namespace quill
