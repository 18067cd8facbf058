// The one-call stream and file routines: positions, appending, rewinding,
// the header probe, progress, and the file routines' always-written output.
#include "quill/compress/lzgstreams.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "quill/compress/internal/lztestutil.h"
#include "quill/frame/errors.h"
#include "quill/rtl/unicode.h"

namespace quill::Gcompress::testing {
namespace {

const Bytes kHeader = {'L', 'Z', 'G', '0', '0', 0, 0, 0, 0};

Bytes Packed(const Bytes& plain) {
  TMemoryStream s, d;
  Fill(s, plain);
  LZGCompressStream(&s, &d);
  return Contents(d);
}

std::string Message(const std::function<void()>& f) {
  try {
    f();
  } catch (const Exception& e) {
    return e.what();
  }
  return "no error";
}

// Edge case: one or two bytes give the header plus one literal run.
TEST(LZGCompressStream, OneAndTwoBytes) {
  Bytes expected = kHeader;
  expected.insert(expected.end(), {0x02, 'q'});
  EXPECT_EQ(Packed(ToBytes("q")), expected);
  expected.back() = 'p';
  expected[9] = 0x04;
  expected.push_back('q');
  EXPECT_EQ(Packed(ToBytes("pq")), expected);
}

// The worked example: "abc" four times.
TEST(LZGCompressStream, AbcExample) {
  Bytes expected = kHeader;
  expected.insert(expected.end(), {0x06, 'a', 'b', 'c', 0x07, 0x60});
  EXPECT_EQ(Packed(ToBytes("abcabcabcabc")), expected);
}

// The plain routines work from the source's position to its end.
TEST(LZGCompressStream, StartsAtTheSourcePosition) {
  TMemoryStream s, d;
  Fill(s, ToBytes("skip-me:abcabcabcabc"));
  s.SetPosition(8);
  LZGCompressStream(&s, &d);
  EXPECT_EQ(Contents(d), Packed(ToBytes("abcabcabcabc")));
  EXPECT_EQ(s.Position(), s.Size());
}

// Edge case: compressing into a destination that holds data appends after it.
TEST(LZGCompressStream, AppendsToTheDestination) {
  TMemoryStream s, d;
  d.WriteBuffer("prefix", 6);
  Fill(s, ToBytes("hello hello hello"));
  LZGCompressStream(&s, &d);
  Bytes expected = ToBytes("prefix");
  const Bytes packed = Packed(ToBytes("hello hello hello"));
  expected.insert(expected.end(), packed.begin(), packed.end());
  EXPECT_EQ(Contents(d), expected);
  // The appended data expands when read from where it starts ...
  TMemoryStream back;
  d.SetPosition(6);
  LZGDecompressStream(&d, &back);
  EXPECT_EQ(Contents(back), ToBytes("hello hello hello"));
  // ... but the Full routine rewinds to the prefix, which is not the magic.
  TMemoryStream again;
  EXPECT_EQ(Message([&] { LZGDecompressFullStream(&d, &again); }), "Wrong stream format");
  EXPECT_EQ(again.Size(), 0);
}

// Edge case: a prefix that itself starts with the magic is read as a header.
TEST(LZGDecompressFullStream, PrefixStartingWithMagicIsAccepted) {
  TMemoryStream d;
  d.WriteBuffer("LZG00\0\0\0\0", 9);  // an empty compressed stream as prefix
  TMemoryStream s;
  Fill(s, ToBytes("xyz"));
  LZGCompressStream(&s, &d);
  TMemoryStream back;
  LZGDecompressFullStream(&d, &back);
  // The second header is read as tokens: "L" (0x4C) is a literal run of 38
  // bytes, of which 12 are there; the ring's (zero) bytes fill the rest.
  Bytes expected = {'Z', 'G', '0', '0', 0, 0, 0, 0, 0x06, 'x', 'y', 'z'};
  expected.resize(38, 0);
  EXPECT_EQ(Contents(back), expected);
}

// "Full" rewinds only the source; the destination is left where it stands.
TEST(LZGCompressFullStream, RewindsOnlyTheSource) {
  TMemoryStream s, d;
  Fill(s, ToBytes("abcabcabcabc"));
  s.SetPosition(5);
  d.WriteBuffer("12345", 5);
  d.SetPosition(2);  // overwrite from here
  LZGCompressFullStream(&s, &d);
  Bytes expected = ToBytes("12");
  const Bytes packed = Packed(ToBytes("abcabcabcabc"));
  expected.insert(expected.end(), packed.begin(), packed.end());
  EXPECT_EQ(Contents(d), expected);
}

TEST(LZGDecompressFullStream, RewindsTheSource) {
  const Bytes packed = Packed(ToBytes("round and round and round"));
  TMemoryStream s, d;
  Fill(s, packed);
  s.SetPosition(s.Size());
  LZGDecompressFullStream(&s, &d);
  EXPECT_EQ(Contents(d), ToBytes("round and round and round"));
}

// Edge case: decompressing at a header 9 bytes before the end with version 5
// produces nothing.
TEST(LZGDecompressStream, Version5HeaderAtTheEndGivesNothing) {
  TMemoryStream s, d;
  Fill(s, Bytes{'j', 'u', 'n', 'k', 'L', 'Z', 'G', '0', '0', 5, 0, 0, 0});
  s.SetPosition(4);
  LZGDecompressStream(&s, &d);
  EXPECT_EQ(d.Size(), 0);
}

TEST(LZGStreamRoutines, NullStreamsRaiseTheUnitError) {
  TMemoryStream s;
  EXPECT_EQ(Message([&] { LZGCompressStream(nullptr, nullptr); }), "Source stream is not defined");
  EXPECT_EQ(Message([&] { LZGCompressFullStream(nullptr, &s); }), "Source stream is not defined");
  EXPECT_EQ(Message([&] { LZGDecompressStream(&s, nullptr); }), "Destination stream is not defined");
  EXPECT_EQ(Message([&] { LZGDecompressFullStream(&s, nullptr); }), "Destination stream is not defined");
  try {
    LZGDecompressStream(nullptr, &s);
    FAIL();
  } catch (const EGCompressError&) {
  }
}

// Round trips of many sizes around 0, 1, 127, 128 and 2,048, and a large input.
TEST(LZGStreamRoutines, RoundTripsOfManySizes) {
  std::vector<size_t> sizes;
  for (size_t n : {0, 1, 2, 3, 126, 127, 128, 129, 254, 255, 256, 2046, 2047, 2048, 2049, 2050, 4095, 4096, 4097})
    sizes.push_back(n);
  for (size_t n : sizes) {
    for (int alphabet : {2, 256}) {
      const Bytes plain = RandomBytes(n, static_cast<uint32_t>(n), alphabet);
      TMemoryStream s, packed, back;
      Fill(s, plain);
      LZGCompressFullStream(&s, &packed);
      LZGDecompressFullStream(&packed, &back);
      EXPECT_EQ(Contents(back), plain) << n << " " << alphabet;
    }
  }
  Bytes big;
  std::mt19937 rng(1);
  while (big.size() < 3000000) {
    const std::string word = "word" + std::to_string(rng() % 5000) + (rng() % 7 ? " " : "\n");
    big.insert(big.end(), word.begin(), word.end());
  }
  TMemoryStream s, packed, back;
  Fill(s, big);
  LZGCompressFullStream(&s, &packed);
  EXPECT_LT(packed.Size(), s.Size());
  LZGDecompressFullStream(&packed, &back);
  EXPECT_TRUE(Contents(back) == big);
}

// Edge case: fewer than 5 bytes: false, position unchanged.
TEST(IsLZGCompressedStream, ShortStreamIsNotCompressed) {
  TMemoryStream s;
  Fill(s, ToBytes("LZG0"));
  s.SetPosition(1);
  EXPECT_FALSE(IsLZGCompressedStream(s));
  EXPECT_EQ(s.Position(), 1);
  TMemoryStream empty;
  EXPECT_FALSE(IsLZGCompressedStream(empty));
}

// Edge case: the magic at the current position is enough, even with nothing after it.
TEST(IsLZGCompressedStream, MagicAtCurrentPositionIsEnough) {
  TMemoryStream s;
  Fill(s, ToBytes("xxLZG00"));
  EXPECT_FALSE(IsLZGCompressedStream(s));  // tested at position 0, not searched
  s.SetPosition(2);
  EXPECT_TRUE(IsLZGCompressedStream(s));
  EXPECT_EQ(s.Position(), 2);
}

// A stream that fails on reading: the error passes and the position is not restored.
class FailingStream : public TMemoryStream {
 public:
  int64_t Read(void*, int64_t) override {
    SetPosition(3);
    throw EReadError(rtlmsg::SReadError);
  }
};

TEST(IsLZGCompressedStream, StreamErrorsPassThrough) {
  FailingStream s;
  s.WriteBuffer("LZG00", 5);
  s.SetPosition(1);
  EXPECT_THROW((void)IsLZGCompressedStream(s), EReadError);
  EXPECT_EQ(s.Position(), 3);
}

// Progress: once per coding step with the source stream's position and size.
TEST(LZGCompressStream, ProgressOncePerStep) {
  std::vector<std::pair<int32_t, int32_t>> calls;
  auto record = [&](TObject* sender, int32_t p, int32_t m) {
    EXPECT_NE(sender, nullptr);
    calls.emplace_back(p, m);
  };
  const Bytes plain = NoRepeats(300, 2);
  TMemoryStream s, d;
  Fill(s, plain);
  LZGCompressStream(&s, &d, record);
  ASSERT_EQ(calls.size(), 300u);  // one step per literal byte
  for (size_t k = 0; k < calls.size(); ++k) {
    // the 127-byte lookahead is topped up before each step
    EXPECT_EQ(calls[k].first, static_cast<int32_t>(std::min<size_t>(k + 127, 300))) << k;
    EXPECT_EQ(calls[k].second, 300);
  }
  // Expanding: one call per token, positions in the compressed stream (header included).
  calls.clear();
  TMemoryStream back;
  d.SetPosition(0);
  LZGDecompressStream(&d, &back, record);
  EXPECT_EQ(calls, (std::vector<std::pair<int32_t, int32_t>>{{137, 312}, {265, 312}, {312, 312}}));
}

// A stream that pretends to start 4 GiB in: positions reach the callback cut
// to their low 32 bits.
class FarStream : public TStream {
 public:
  static constexpr int64_t kOffset = int64_t{1} << 32;
  int64_t Read(void* buffer, int64_t count) override { return inner.Read(buffer, count); }
  int64_t Write(const void* buffer, int64_t count) override { return inner.Write(buffer, count); }
  int64_t Seek(int64_t offset, TSeekOrigin origin) override {
    if (origin == soBeginning) offset -= kOffset;
    return inner.Seek(offset, origin) + kOffset;
  }
  int64_t Size() override { return inner.Size() + kOffset; }
  TMemoryStream inner;
};

TEST(LZGCompressStream, ProgressPositionsAreCutTo32Bits) {
  FarStream s;
  s.WriteBuffer("abcabcabcabc", 12);
  s.SetPosition(FarStream::kOffset);
  std::vector<std::pair<int32_t, int32_t>> calls;
  TMemoryStream d;
  LZGCompressStream(&s, &d, [&](TObject*, int32_t p, int32_t m) { calls.emplace_back(p, m); });
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_EQ(calls.back(), std::make_pair(12, 12));
}

// When the callback raises, the tokens completed so far are already in the
// destination (the pending literal run is not), as in the step-by-step coder.
TEST(LZGCompressStream, ErrorInCallbackLeavesCompletedTokens) {
  const Bytes plain = ToBytes("abcabcabcabcXYZ");
  for (int stop_after = 1; stop_after <= 6; ++stop_after) {
    int calls = 0;
    auto stopper = [&](void*, int32_t, int32_t) {
      if (++calls == stop_after) throw Exception(u"stop");
    };
    TMemoryStream s1, d1, s2, d2;
    Fill(s1, plain);
    Fill(s2, plain);
    EXPECT_THROW(LZGCompressStream(&s1, &d1, [&](TObject*, int32_t p, int32_t m) { stopper(nullptr, p, m); }),
                 Exception);
    calls = 0;
    struct Ctx {
      decltype(stopper)* f;
    } ctx{&stopper};
    internal::LZProgress progress{&ctx, [](void* c, int32_t p, int32_t m) { (*static_cast<Ctx*>(c)->f)(nullptr, p, m); }};
    EXPECT_THROW(internal::ReferenceCompress(s2, d2, progress), Exception);
    Bytes expected = kHeader;
    const Bytes body = Contents(d2);
    expected.insert(expected.end(), body.begin(), body.end());
    EXPECT_EQ(Contents(d1), expected) << stop_after;
  }
}

// The same when expanding: every token before the failing callback is written.
TEST(LZGDecompressStream, ErrorInCallbackLeavesCompletedTokens) {
  Bytes plain;
  for (int i = 0; i < 400; ++i) {
    const std::string w = "item" + std::to_string(i % 37) + (i % 5 ? "," : ";\n");
    plain.insert(plain.end(), w.begin(), w.end());
  }
  const Bytes packed = Packed(plain);
  const Bytes body(packed.begin() + 9, packed.end());
  for (int stop_after : {1, 2, 17, 150}) {
    int calls = 0;
    TMemoryStream s1, d1;
    Fill(s1, packed);
    EXPECT_THROW(LZGDecompressStream(&s1, &d1,
                                     [&](TObject*, int32_t, int32_t) {
                                       if (++calls == stop_after) throw Exception(u"stop");
                                     }),
                 Exception);
    // The step-by-step coder, stopped at the same token.
    TMemoryStream s2, d2;
    Fill(s2, body);
    struct Stop {
      int n, limit;
    } stop{0, stop_after};
    internal::LZProgress progress{&stop, [](void* c, int32_t, int32_t) {
                  auto* st = static_cast<Stop*>(c);
                  if (++st->n == st->limit) throw Exception(u"stop");
                }};
    EXPECT_THROW(internal::ReferenceDecompress(s2, d2, progress), Exception);
    EXPECT_EQ(Contents(d1), Contents(d2)) << stop_after;
    EXPECT_GT(d1.Size(), 0);
  }
}

class FileRoutines : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = std::filesystem::path(::testing::TempDir()) /
           ("lzg_files_" + std::to_string(::getpid()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }
  std::filesystem::path Path(const char* name) const { return dir_ / name; }
  static UnicodeString U(const std::filesystem::path& p) { return Utf8ToUnicode(p.string()); }
  static Bytes Read(const std::filesystem::path& p) {
    std::ifstream f(p, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
  }
  static void Write(const std::filesystem::path& p, const Bytes& b) {
    std::ofstream f(p, std::ios::binary);
    f.write(reinterpret_cast<const char*>(b.data()), static_cast<std::streamsize>(b.size()));
  }
  std::filesystem::path dir_;
};

TEST_F(FileRoutines, RoundTrip) {
  const Bytes plain = RandomBytes(100000, 3, 10);
  Write(Path("plain.bin"), plain);
  LZGCompressFile(U(Path("plain.bin")), U(Path("packed.lzg")));
  EXPECT_EQ(Read(Path("packed.lzg")), Packed(plain));
  LZGDecompressFile(U(Path("packed.lzg")), U(Path("back.bin")));
  EXPECT_EQ(Read(Path("back.bin")), plain);
}

// Edge case: a missing source raises the file error and leaves an empty destination.
TEST_F(FileRoutines, MissingSourceLeavesEmptyDestination) {
  Write(Path("dest.lzg"), ToBytes("old contents"));
  EXPECT_THROW(LZGCompressFile(U(Path("missing.txt")), U(Path("dest.lzg"))), EFOpenError);
  ASSERT_TRUE(std::filesystem::exists(Path("dest.lzg")));
  EXPECT_EQ(std::filesystem::file_size(Path("dest.lzg")), 0u);
  EXPECT_THROW(LZGDecompressFile(U(Path("missing.lzg")), U(Path("new.bin"))), EFOpenError);
  ASSERT_TRUE(std::filesystem::exists(Path("new.bin")));
  EXPECT_EQ(std::filesystem::file_size(Path("new.bin")), 0u);
}

// Deliberate: a wrong format still writes the (empty) destination file.
TEST_F(FileRoutines, WrongFormatStillWritesDestination) {
  Write(Path("notlzg.bin"), ToBytes("plain text, not compressed"));
  EXPECT_THROW(LZGDecompressFile(U(Path("notlzg.bin")), U(Path("out.bin"))), EGCompressError);
  ASSERT_TRUE(std::filesystem::exists(Path("out.bin")));
  EXPECT_EQ(std::filesystem::file_size(Path("out.bin")), 0u);
}

// Deliberate: when coding fails half-way, the destination gets what was produced so far.
TEST_F(FileRoutines, FailureHalfWayKeepsPartialOutput) {
  const Bytes plain = RandomBytes(5000, 8, 4);
  Write(Path("plain.bin"), plain);
  int calls = 0;
  EXPECT_THROW(LZGCompressFile(U(Path("plain.bin")), U(Path("part.lzg")),
                               [&](TObject*, int32_t, int32_t) {
                                 if (++calls == 500) throw Exception(u"cancelled");
                               }),
               Exception);
  const Bytes part = Read(Path("part.lzg"));
  const Bytes full = Packed(plain);
  ASSERT_GT(part.size(), 9u);
  ASSERT_LT(part.size(), full.size());
  EXPECT_TRUE(std::equal(part.begin(), part.end(), full.begin()));
}

}  // namespace
}  // namespace quill::Gcompress::testing
