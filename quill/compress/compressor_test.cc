// The compressor framework: abstract operations, the order of the stream
// checks, bit I/O, progress dispatch and the LZG00 header.
#include "quill/compress/compressor.h"

#include <gtest/gtest.h>

#include "quill/compress/internal/lztestutil.h"
#include "quill/frame/errors.h"

namespace quill::Gcompress::testing {
namespace {

// Exposes the protected fields for inspection.
class OpenCompressor : public TLZGCompressor {
 public:
  using TGCompressor::FBitOffset;
  using TGCompressor::FBuffer;
  using TGCompressor::FVersion;
};

class OpenBase : public TGCompressor {
 public:
  using TGCompressor::FBitOffset;
  using TGCompressor::FBuffer;
};

std::string MessageOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const EGCompressError& e) {
    return std::string("EGCompressError: ") + e.what();
  } catch (const EAbstractError& e) {
    return std::string("EAbstractError: ") + e.what();
  }
  return "no error";
}

// Each of the four operations is abstract on the base class.
TEST(TGCompressor, AbstractOperationsRaiseAbstractError) {
  TGCompressor c;
  EXPECT_EQ(MessageOf([&] { c.ReadHeader(); }), "EAbstractError: Abstract Error");
  EXPECT_EQ(MessageOf([&] { c.WriteHeader(); }), "EAbstractError: Abstract Error");
  EXPECT_EQ(MessageOf([&] { c.CompressSource(); }), "EAbstractError: Abstract Error");
  EXPECT_EQ(MessageOf([&] { c.DecompressSource(); }), "EAbstractError: Abstract Error");
}

// With both streams set, the base class gets as far as its abstract header.
TEST(TGCompressor, CompressOnBaseReachesTheAbstractHeader) {
  TMemoryStream a, b;
  TGCompressor c;
  c.SetSrcStream(&a);
  c.SetDestStream(&b);
  EXPECT_EQ(MessageOf([&] { c.Compress(); }), "EAbstractError: Abstract Error");
  EXPECT_EQ(MessageOf([&] { c.Decompress(); }), "EAbstractError: Abstract Error");
}

// Edge case: the source is checked first, so with both absent its message wins.
TEST(TGCompressor, SourceCheckedBeforeDestination) {
  TMemoryStream s;
  TLZGCompressor c;
  EXPECT_EQ(MessageOf([&] { c.Compress(); }), "EGCompressError: Source stream is not defined");
  EXPECT_EQ(MessageOf([&] { c.Decompress(); }), "EGCompressError: Source stream is not defined");
  c.SetSrcStream(&s);
  EXPECT_EQ(MessageOf([&] { c.Compress(); }), "EGCompressError: Destination stream is not defined");
  EXPECT_EQ(MessageOf([&] { c.Decompress(); }), "EGCompressError: Destination stream is not defined");
  c.SetSrcStream(nullptr);
  c.SetDestStream(&s);
  EXPECT_EQ(MessageOf([&] { c.Compress(); }), "EGCompressError: Source stream is not defined");
  EXPECT_EQ(s.Size(), 0);  // nothing written before the checks pass
}

// The error class derives from the runtime's base exception.
TEST(TGCompressor, ErrorsAreQuillExceptions) {
  TLZGCompressor c;
  try {
    c.Compress();
    FAIL();
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Source stream is not defined");
  }
}

// Deliberate: the bit operations exist and do nothing; their fields stay untouched.
TEST(TGCompressor, BitOperationsDoNothing) {
  OpenBase c;
  c.WriteBits(16);
  c.ReadBits(8);
  c.WriteBits(-1);
  EXPECT_EQ(c.FBuffer, 0);
  EXPECT_EQ(c.FBitOffset, 0);
}

TEST(TGCompressor, PropertiesReadBackTheirFields) {
  TMemoryStream a, b;
  TLZGCompressor c;
  EXPECT_EQ(c.SrcStream(), nullptr);
  EXPECT_EQ(c.DestStream(), nullptr);
  EXPECT_FALSE(c.OnProgress());
  c.SetSrcStream(&a);
  c.SetDestStream(&b);
  EXPECT_EQ(c.SrcStream(), &a);
  EXPECT_EQ(c.DestStream(), &b);
}

// DoOnProgress passes the compressor itself as Sender; without a callback it does nothing.
TEST(TGCompressor, DoOnProgressCallsTheCallbackWithItself) {
  TLZGCompressor c;
  c.DoOnProgress(1, 2);  // no callback: nothing happens
  TObject* sender = nullptr;
  int32_t pos = 0, max = 0;
  c.SetOnProgress([&](TObject* s, int32_t p, int32_t m) {
    sender = s;
    pos = p;
    max = m;
  });
  c.DoOnProgress(-5, 77);
  EXPECT_EQ(sender, &c);
  EXPECT_EQ(pos, -5);
  EXPECT_EQ(max, 77);
}

// The header is "LZG00" then the version word, at the destination's position.
TEST(TLZGCompressor, WriteHeaderWritesMagicAndVersion) {
  TMemoryStream d;
  d.WriteBuffer("xy", 2);
  OpenCompressor c;
  c.SetDestStream(&d);
  c.WriteHeader();
  EXPECT_EQ(Contents(d), (Bytes{'x', 'y', 'L', 'Z', 'G', '0', '0', 0, 0, 0, 0}));
  c.FVersion = 0x01020304;  // written little-endian
  c.WriteHeader();
  EXPECT_EQ(Bytes(d.Memory() + 16, d.Memory() + 20), (Bytes{4, 3, 2, 1}));
}

// Edge case: an empty source compresses to exactly the 9 header bytes.
TEST(TLZGCompressor, EmptySourceGivesTheHeaderOnly) {
  TMemoryStream s, d;
  TLZGCompressor c;
  c.SetSrcStream(&s);
  c.SetDestStream(&d);
  int calls = 0;
  c.SetOnProgress([&](TObject*, int32_t, int32_t) { ++calls; });
  c.Compress();
  EXPECT_EQ(Contents(d), (Bytes{'L', 'Z', 'G', '0', '0', 0, 0, 0, 0}));
  EXPECT_EQ(calls, 0);
  // ... and those 9 bytes expand to nothing, with no progress call.
  TMemoryStream out;
  d.SetPosition(0);
  c.SetSrcStream(&d);
  c.SetDestStream(&out);
  c.Decompress();
  EXPECT_EQ(out.Size(), 0);
  EXPECT_EQ(calls, 0);
}

TEST(TLZGCompressor, CheckHeaderReadsVersionOnlyOnSuccess) {
  TMemoryStream s;
  Fill(s, Bytes{'L', 'Z', 'G', '0', '0', 5, 0, 0, 0, 'x'});
  TLZGCompressor c;
  c.SetSrcStream(&s);
  int32_t version = -1;
  EXPECT_TRUE(c.CheckHeader(version));
  EXPECT_EQ(version, 5);
  EXPECT_EQ(s.Position(), 9);

  Fill(s, ToBytes("LZG01\x07\x00\x00\x00"));
  version = -1;
  EXPECT_FALSE(c.CheckHeader(version));
  EXPECT_EQ(version, -1);
  EXPECT_EQ(s.Position(), 5);  // moved on by the 5 bytes, not rewound
}

// The comparison is case-sensitive.
TEST(TLZGCompressor, CheckHeaderIsCaseSensitive) {
  TMemoryStream s;
  Fill(s, ToBytes(std::string("lzg00\0\0\0\0", 9)));
  TLZGCompressor c;
  c.SetSrcStream(&s);
  int32_t version = 0;
  EXPECT_FALSE(c.CheckHeader(version));
}

// Short streams: fewer than 5 bytes never match; a magic without its version
// keeps the old bytes of Version.
TEST(TLZGCompressor, CheckHeaderOnShortStreams) {
  TMemoryStream s;
  TLZGCompressor c;
  c.SetSrcStream(&s);
  int32_t version = 0x11223344;
  Fill(s, ToBytes("LZG0"));
  EXPECT_FALSE(c.CheckHeader(version));
  Fill(s, ToBytes("LZG00\x7F"));
  EXPECT_TRUE(c.CheckHeader(version));
  EXPECT_EQ(version, 0x1122337F);
}

// Edge case: header version 5 is accepted silently and stored; nothing follows.
TEST(TLZGCompressor, ReadHeaderAcceptsAnyVersion) {
  TMemoryStream s, d;
  Fill(s, Bytes{'L', 'Z', 'G', '0', '0', 5, 0, 0, 0});
  OpenCompressor c;
  c.SetSrcStream(&s);
  c.SetDestStream(&d);
  c.Decompress();
  EXPECT_EQ(c.FVersion, 5);
  EXPECT_EQ(d.Size(), 0);
}

// Edge case: wrong format: "Wrong stream format", nothing written, source moved by 5.
TEST(TLZGCompressor, WrongFormatRaisesAndWritesNothing) {
  TMemoryStream s, d;
  Fill(s, ToBytes("PK\x03\x04 not ours, but long enough"));
  TLZGCompressor c;
  c.SetSrcStream(&s);
  c.SetDestStream(&d);
  EXPECT_EQ(MessageOf([&] { c.Decompress(); }), "EGCompressError: Wrong stream format");
  EXPECT_EQ(d.Size(), 0);
  EXPECT_EQ(s.Position(), 5);
}

// One object may run again after its fields are set anew.
TEST(TLZGCompressor, ObjectCanBeReused) {
  TLZGCompressor c;
  for (int round = 0; round < 3; ++round) {
    const Bytes plain = RandomBytes(5000 + static_cast<size_t>(round) * 999, static_cast<uint32_t>(round), 8);
    TMemoryStream s, packed, back;
    Fill(s, plain);
    c.SetSrcStream(&s);
    c.SetDestStream(&packed);
    c.Compress();
    packed.SetPosition(0);
    c.SetSrcStream(&packed);
    c.SetDestStream(&back);
    c.Decompress();
    EXPECT_EQ(Contents(back), plain);
  }
}

// A subclass may override DoOnProgress; the coder calls it once per step.
TEST(TLZGCompressor, CodingStepsGoThroughDoOnProgress) {
  struct Counting : TLZGCompressor {
    int calls = 0;
    void DoOnProgress(int32_t, int32_t) override { ++calls; }
  } c;
  TMemoryStream s, d;
  Fill(s, ToBytes("abcabcabcabc"));
  c.SetSrcStream(&s);
  c.SetDestStream(&d);
  c.Compress();
  EXPECT_EQ(c.calls, 4);  // three literals and one copy
  TMemoryStream back;
  d.SetPosition(0);
  c.calls = 0;
  c.SetSrcStream(&d);
  c.SetDestStream(&back);
  c.Decompress();
  EXPECT_EQ(c.calls, 2);  // one literal run and one copy
}

}  // namespace
}  // namespace quill::Gcompress::testing
