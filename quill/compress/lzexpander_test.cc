// Expanding hand-made token streams: overlapping copies, the ring's
// write-back when a copy runs over its own source, and damaged data.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>

#include "quill/compress/internal/lztestutil.h"

namespace quill::Gcompress::testing {
namespace {

// Decodes with both expanders; fails when they differ.
Bytes Expand(const Bytes& tokens) {
  const Bytes fast = DecodeBody(tokens, Coder::kFast);
  EXPECT_EQ(fast, DecodeBody(tokens, Coder::kReference));
  return fast;
}

void AddLiterals(Bytes& tokens, const Bytes& bytes) {
  for (size_t i = 0; i < bytes.size(); i += 127) {
    const size_t n = std::min<size_t>(127, bytes.size() - i);
    tokens.push_back(static_cast<uint8_t>(n * 2));
    tokens.insert(tokens.end(), bytes.begin() + static_cast<ptrdiff_t>(i),
                  bytes.begin() + static_cast<ptrdiff_t>(i + n));
  }
}

void AddCopy(Bytes& tokens, uint32_t distance, uint32_t length) {
  uint8_t t[2];
  internal::EncodeCopy(t, distance, length);
  tokens.push_back(t[0]);
  tokens.push_back(t[1]);
}

// 2,048 bytes that differ from their neighbours.
Bytes Pattern(size_t n) {
  Bytes b(n);
  for (size_t i = 0; i < n; ++i) b[i] = static_cast<uint8_t>(i * 7 + 3);
  return b;
}

// Edge case: the 100-equal-bytes tokens expand through overlapping copies.
TEST(DecompressSource, OverlappingCopiesRepeatAPattern) {
  Bytes tokens;
  AddLiterals(tokens, {'z'});
  for (int i = 0; i < 5; ++i) AddCopy(tokens, 1, 18);
  AddCopy(tokens, 1, 9);
  EXPECT_EQ(Expand(tokens), Bytes(100, 'z'));
  Bytes abc;
  AddLiterals(abc, ToBytes("abc"));
  AddCopy(abc, 3, 9);
  EXPECT_EQ(Expand(abc), ToBytes("abcabcabcabc"));
}

// Deliberate: with a full window, a copy of distance 2,040 and length 18
// overwrites the front of its own source in the ring; what is written out is
// read back from there after the copy, while the window keeps the copied bytes.
TEST(UnpackSequence, FullWindowCopyShowsItsOwnOverwrite) {
  const Bytes p = Pattern(2048);
  Bytes tokens;
  AddLiterals(tokens, p);
  AddCopy(tokens, 2040, 18);
  AddCopy(tokens, 18, 18);  // re-reads what the window holds
  Bytes expected = p;
  // shown: p[16..25] then p[18..25]
  expected.insert(expected.end(), p.begin() + 16, p.begin() + 26);
  expected.insert(expected.end(), p.begin() + 18, p.begin() + 26);
  // held in the window: p[8..25]
  expected.insert(expected.end(), p.begin() + 8, p.begin() + 26);
  EXPECT_EQ(Expand(tokens), expected);
}

// Below the quirk's threshold (distance + length <= 2,048) the copy is plain.
TEST(UnpackSequence, CopyAtTheThresholdIsPlain) {
  const Bytes p = Pattern(2048);
  Bytes tokens;
  AddLiterals(tokens, p);
  AddCopy(tokens, 2030, 18);
  Bytes expected = p;
  expected.insert(expected.end(), p.begin() + 18, p.begin() + 36);
  EXPECT_EQ(Expand(tokens), expected);
}

// Every distance from 2,031 to 2,047 with the longest length that stays within
// the window is still a plain copy, in the window and in a destination's
// memory (the decoder screens these distances before taking the fast path).
TEST(UnpackSequence, FarCopiesUpToTheThresholdArePlain) {
  const Bytes p = Pattern(4000);
  Bytes tokens;
  AddLiterals(tokens, p);
  Bytes expected = p;
  for (uint32_t d = 2031; d <= 2047; ++d) {
    const uint32_t len = std::min<uint32_t>(18, 2048 - d);
    if (len < 3) continue;
    AddCopy(tokens, d, len);
    for (uint32_t k = 0; k < len; ++k) expected.push_back(expected[expected.size() - d]);
  }
  EXPECT_EQ(Expand(tokens), expected);
}

// The compressor never writes such a copy: compress-then-expand is exact
// even for inputs whose repeats sit right at the window's edge.
TEST(UnpackSequence, CompressorOutputNeverTriggersTheOverwrite) {
  const Bytes s = NoRepeats(2100, 4);
  Bytes plain(s.begin(), s.begin() + 2030);
  plain.insert(plain.end(), s.begin(), s.begin() + 18);
  const Bytes body = EncodeBody(plain, Coder::kFast);
  EXPECT_EQ(Expand(body), plain);
}

// Edge case (damaged): a distance beyond the output so far reads the ring's
// unwritten bytes, which are zero.
TEST(DecompressSource, DistanceBeyondOutputReadsZeros) {
  Bytes tokens;
  AddLiterals(tokens, ToBytes("AB"));
  AddCopy(tokens, 5, 4);
  EXPECT_EQ(Expand(tokens), (Bytes{'A', 'B', 0, 0, 0, 'A'}));
}

// Distance 0 copies each ring slot onto itself: the bytes 2,048 back.
TEST(DecompressSource, DistanceZeroRepeatsTheRingsOldBytes) {
  Bytes tokens;
  AddCopy(tokens, 0, 3);
  EXPECT_EQ(Expand(tokens), Bytes(3, 0));
  const Bytes p = Pattern(2048);
  Bytes full;
  AddLiterals(full, p);
  AddCopy(full, 0, 5);
  Bytes expected = p;
  expected.insert(expected.end(), p.begin(), p.begin() + 5);
  EXPECT_EQ(Expand(full), expected);
}

// Edge case (damaged): a literal run cut short keeps the ring's old bytes.
TEST(DecompressSource, CutLiteralRunKeepsRingBytes) {
  EXPECT_EQ(Expand(Bytes{0x0A, 'a', 'b'}), (Bytes{'a', 'b', 0, 0, 0}));
  const Bytes p = Pattern(2048);
  Bytes tokens;
  AddLiterals(tokens, p);
  tokens.insert(tokens.end(), {0x08, 'x'});  // 4 announced, 1 there
  Bytes expected = p;
  expected.insert(expected.end(), {'x', p[1], p[2], p[3]});
  EXPECT_EQ(Expand(tokens), expected);
}

// Edge case (damaged): a copy token cut after its first byte reads the
// missing byte as 0 (distance from the first byte, length 3).
TEST(DecompressSource, CutCopyTokenReadsMissingByteAsZero) {
  Bytes tokens;
  AddLiterals(tokens, ToBytes("abcd"));
  tokens.push_back(0x05);  // distance 2, length 3
  EXPECT_EQ(Expand(tokens), ToBytes("abcdcdc"));
}

// A zero literal header appends nothing and decoding goes on.
TEST(DecompressSource, ZeroLiteralHeaderAppendsNothing) {
  Bytes tokens = {0x00, 0x00};
  AddLiterals(tokens, ToBytes("ok"));
  tokens.push_back(0x00);
  EXPECT_EQ(Expand(tokens), ToBytes("ok"));
}

// Foreign bytes after valid tokens are decoded as tokens too (not detected).
TEST(DecompressSource, TrailingBytesAreDecodedAsTokens) {
  Bytes tokens;
  AddLiterals(tokens, ToBytes("hi"));
  tokens.insert(tokens.end(), {0x02, '!'});
  EXPECT_EQ(Expand(tokens), ToBytes("hi!"));
}

// Long damaged streams wrap the output buffer many times without leaving it.
TEST(DecompressSource, LongStreamsOfMaximalCopies) {
  Bytes tokens;
  AddLiterals(tokens, Pattern(300));
  for (int i = 0; i < 200000; ++i) AddCopy(tokens, static_cast<uint32_t>(1 + i % 2047), 18);
  const Bytes out = Expand(tokens);
  EXPECT_EQ(out.size(), 300u + 200000u * 18u);
}


// --- Streams of every kind --------------------------------------------------
//
// The decoder reads a memory-stream source and appends to a memory-stream
// destination in place, and goes through Read/Write for anything else. The
// tests below run every pairing on the same tokens and hold the result
// against the reference classes run on plain memory streams.

// Forwards to a TMemoryStream without being one, so the decoder sees an
// ordinary stream and takes its buffered path.
class ForwardingStream : public TStream {
 public:
  explicit ForwardingStream(TMemoryStream& target) : target_(target) {}
  int64_t Read(void* buffer, int64_t count) override { return target_.Read(buffer, count); }
  int64_t Write(const void* buffer, int64_t count) override { return target_.Write(buffer, count); }
  int64_t Seek(int64_t offset, TSeekOrigin origin) override { return target_.Seek(offset, origin); }
  int64_t Size() override { return target_.Size(); }
  void SetSize(int64_t new_size) override { target_.SetSize(new_size); }

 private:
  TMemoryStream& target_;
};

enum class Kind { kMemory, kForwarding };

struct RunSetup {
  Bytes prefix;              // destination contents before the run
  int64_t dst_position = 0;  // where the destination stands (prefix size: appending)
  bool with_progress = true;
  int throw_on_call = 0;     // the progress call that throws (1-based; 0: none)
};

struct Outcome {
  Bytes dst;
  int64_t dst_position = 0;
  int64_t src_position = 0;
  bool threw = false;
  int calls = 0;
};

struct CallCounter {
  int calls = 0;
  int throw_on_call = 0;
};

void CountCall(void* context, int32_t /*position*/, int32_t /*max_value*/) {
  auto* counter = static_cast<CallCounter*>(context);
  if (++counter->calls == counter->throw_on_call) throw std::runtime_error("stop here");
}

Outcome Run(const Bytes& tokens, Kind src_kind, Kind dst_kind, const RunSetup& setup, Coder coder) {
  TMemoryStream src_memory, dst_memory;
  Fill(src_memory, tokens);
  Fill(dst_memory, setup.prefix);
  dst_memory.SetPosition(setup.dst_position);
  ForwardingStream src_forward(src_memory), dst_forward(dst_memory);
  TStream& src = src_kind == Kind::kMemory ? static_cast<TStream&>(src_memory) : src_forward;
  TStream& dst = dst_kind == Kind::kMemory ? static_cast<TStream&>(dst_memory) : dst_forward;
  CallCounter counter{0, setup.throw_on_call};
  internal::LZProgress progress;
  if (setup.with_progress) progress = internal::LZProgress{&counter, &CountCall};
  Outcome o;
  try {
    if (coder == Coder::kFast)
      internal::LZDecode(src, dst, progress);
    else
      internal::ReferenceDecompress(src, dst, progress);
  } catch (const std::runtime_error&) {
    o.threw = true;
  }
  o.dst = Contents(dst_memory);
  o.dst_position = dst_memory.Position();
  o.src_position = src_memory.Position();
  o.calls = counter.calls;
  return o;
}

// "" when equal, else where the two first differ (large outputs stay readable).
std::string FirstDifference(const Bytes& got, const Bytes& want) {
  if (got == want) return "";
  size_t i = 0;
  while (i < got.size() && i < want.size() && got[i] == want[i]) ++i;
  return "sizes " + std::to_string(got.size()) + " / " + std::to_string(want.size()) +
         ", first difference at " + std::to_string(i);
}

// Every source/destination pairing against the reference on memory streams.
void ExpectPairingsMatch(const Bytes& tokens, const RunSetup& setup, const std::string& what) {
  const Outcome want = Run(tokens, Kind::kMemory, Kind::kMemory, setup, Coder::kReference);
  for (Kind src_kind : {Kind::kMemory, Kind::kForwarding}) {
    for (Kind dst_kind : {Kind::kMemory, Kind::kForwarding}) {
      SCOPED_TRACE(what + (src_kind == Kind::kMemory ? ", memory source" : ", other source") +
                   (dst_kind == Kind::kMemory ? ", memory destination" : ", other destination"));
      const Outcome got = Run(tokens, src_kind, dst_kind, setup, Coder::kFast);
      EXPECT_EQ(got.threw, want.threw);
      EXPECT_EQ(got.calls, want.calls);
      EXPECT_EQ(FirstDifference(got.dst, want.dst), "");
      EXPECT_EQ(got.dst_position, want.dst_position);
      // Only a callback throws here, and with a callback every source is
      // read in blocks, so it may have been read ahead.
      if (!want.threw) {
        EXPECT_EQ(got.src_position, want.src_position);
      }
    }
  }
}

// As above, and once more without the progress hook when the setup has one
// that does not throw: memory streams are worked on in place only then.
void ExpectAllPairingsMatch(const Bytes& tokens, const RunSetup& setup, const std::string& what) {
  ExpectPairingsMatch(tokens, setup, what + (setup.with_progress ? ", progress hook" : ", no hook"));
  if (setup.with_progress && setup.throw_on_call == 0) {
    RunSetup quiet = setup;
    quiet.with_progress = false;
    ExpectPairingsMatch(tokens, quiet, what + ", no hook");
  }
}

// The destination setups each token stream is tried with.
std::vector<std::pair<std::string, RunSetup>> Setups() {
  std::vector<std::pair<std::string, RunSetup>> all;
  all.push_back({"empty destination", RunSetup{}});
  all.push_back({"no progress hook", RunSetup{{}, 0, false, 0}});
  const Bytes old = RandomBytes(300, 77);
  // Appending after existing contents: those bytes are not history.
  all.push_back({"appended", RunSetup{old, 300, true, 0}});
  // Position inside the contents: the output overwrites and may extend them.
  const Bytes long_old = RandomBytes(5000, 78);
  all.push_back({"position inside", RunSetup{long_old, 10, true, 0}});
  // Position beyond the end: the gap reads as zeros.
  all.push_back({"position beyond the end", RunSetup{old, 350, true, 0}});
  return all;
}

void ExpectAllSetupsMatch(const Bytes& tokens, const std::string& what) {
  for (const auto& [name, setup] : Setups()) ExpectAllPairingsMatch(tokens, setup, what + ", " + name);
}

// Compressed bodies of assorted data, from a few bytes to past the decoder's
// growth steps, and around 2,048 bytes of output (where appending to a memory
// stream moves into the stream's memory).
std::vector<std::pair<std::string, Bytes>> ValidBodies() {
  std::vector<std::pair<std::string, Bytes>> all;
  for (size_t n : {size_t{0}, size_t{1}, size_t{100}, size_t{2000}, size_t{2047}, size_t{2048},
                   size_t{2049}, size_t{2100}, size_t{4100}, size_t{70000}})
    all.push_back({"text-like " + std::to_string(n), EncodeBody(RandomBytes(n, 5, 6), Coder::kFast)});
  for (size_t n : {size_t{2040}, size_t{2048}, size_t{2060}, size_t{3000}})
    all.push_back({"no repeats " + std::to_string(n), EncodeBody(NoRepeats(n, 11), Coder::kFast)});
  Bytes runs;
  for (int i = 0; i < 400; ++i) runs.insert(runs.end(), 1 + i % 37, static_cast<uint8_t>(i % 5));
  all.push_back({"runs", EncodeBody(runs, Coder::kFast)});
  all.push_back({"long", EncodeBody(RandomBytes(600000, 6, 12), Coder::kFast)});
  return all;
}

// Edge cases: valid data in every pairing and destination setup.
TEST(LZDecodeStreams, ValidBodiesInEveryPairing) {
  for (const auto& [name, body] : ValidBodies()) ExpectAllSetupsMatch(body, name);
}

// Edge cases (damaged): truncated bodies, foreign bytes, random tokens with
// distances near the window's edge and 0.
TEST(LZDecodeStreams, DamagedAndTruncatedStreamsInEveryPairing) {
  const Bytes body = EncodeBody(RandomBytes(9000, 8, 9), Coder::kFast);
  for (size_t cut : {size_t{1}, size_t{2}, size_t{700}, size_t{1501}, body.size() / 2, body.size() - 1})
    ExpectAllSetupsMatch(Bytes(body.begin(), body.begin() + static_cast<ptrdiff_t>(cut)),
                         "cut at " + std::to_string(cut));
  for (uint32_t seed = 0; seed < 12; ++seed)
    ExpectAllSetupsMatch(RandomBytes(200 + seed * 450, seed), "random bytes " + std::to_string(seed));
  std::mt19937 rng(21);
  for (int round = 0; round < 8; ++round) {
    const size_t count = 500 + rng() % 4000;
    ExpectAllSetupsMatch(RandomTokens(rng, count, 7, 8), "random tokens " + std::to_string(round));
  }
}

// A stream that is valid well past 2,048 bytes of output and then holds
// copies that show their own overwrite (and distance 0): after them the
// history and the output differ, which in-place appending cannot hold, so
// decoding must carry on through the window and still match the reference.
TEST(LZDecodeStreams, OverwriteCopiesAfterTheSwitchInEveryPairing) {
  for (size_t lead : {size_t{2100}, size_t{5000}, size_t{400000}}) {
    const Bytes plain = RandomBytes(lead, 31, 10);
    Bytes tokens = EncodeBody(plain, Coder::kFast);
    AddCopy(tokens, 2040, 18);
    AddCopy(tokens, 18, 18);  // re-reads what the window holds
    AddCopy(tokens, 0, 7);
    AddCopy(tokens, 2047, 4);
    // Valid data again, long enough for another growth step.
    for (int i = 0; i < 30000; ++i) AddCopy(tokens, static_cast<uint32_t>(100 + i % 1900), 3 + i % 16);
    AddLiterals(tokens, Pattern(500));
    AddCopy(tokens, 2045, 18);
    ExpectAllSetupsMatch(tokens, "lead " + std::to_string(lead));
  }
}

// The same copies right at the start and just before the switch.
TEST(LZDecodeStreams, OverwriteCopiesBeforeTheSwitchInEveryPairing) {
  for (size_t lead : {size_t{0}, size_t{127}, size_t{1900}, size_t{2047}}) {
    Bytes tokens;
    AddLiterals(tokens, Pattern(lead));
    AddCopy(tokens, 2040, 18);
    AddCopy(tokens, 0, 18);
    for (int i = 0; i < 3000; ++i) AddCopy(tokens, static_cast<uint32_t>(8 + i % 1000), 18);
    ExpectAllSetupsMatch(tokens, "lead " + std::to_string(lead));
  }
}

// Short periods (distance 1 to 7) at every length, in the window and in a
// destination's memory.
TEST(LZDecodeStreams, ShortPeriodCopiesInEveryPairing) {
  for (size_t lead : {size_t{20}, size_t{3000}}) {
    Bytes tokens;
    AddLiterals(tokens, Pattern(lead));
    for (uint32_t d = 1; d < 8; ++d)
      for (uint32_t len = 3; len <= 18; ++len) {
        AddCopy(tokens, d, len);
        AddLiterals(tokens, Pattern(1 + (d * len) % 9));
      }
    ExpectAllPairingsMatch(tokens, RunSetup{}, "lead " + std::to_string(lead));
  }
}

// Runs of one short-period copy repeated (what one repeated byte or a short
// pattern compresses to) are expanded as one fill: runs of every length up
// to past the decoder's growth steps, with every distance below 8, each
// followed by a far copy and a run so that the fill must end exactly.
TEST(LZDecodeStreams, RunsOfIdenticalShortPeriodCopiesInEveryPairing) {
  for (size_t lead : {size_t{20}, size_t{2100}}) {
    Bytes tokens;
    AddLiterals(tokens, Pattern(lead));
    for (uint32_t d = 1; d < 8; ++d) {
      for (int run : {1, 2, 3, 17, 1000, 16000}) {
        const uint32_t len = 3 + (d * static_cast<uint32_t>(run)) % 16;
        for (int i = 0; i < run; ++i) AddCopy(tokens, d, len);
        AddCopy(tokens, 9 + d, 18);
        AddLiterals(tokens, Pattern(1 + (d * 5) % 30));
      }
    }
    ExpectAllPairingsMatch(tokens, RunSetup{}, "lead " + std::to_string(lead));
  }
}

// Incompressible data is a stream of 127-byte literal runs, which the
// decoder takes one after the other outside its token table: past its
// pieces and growth steps, with a compressible stretch between two such
// streams.
TEST(LZDecodeStreams, LongStreamsOfLiteralRunsInEveryPairing) {
  Bytes plain = RandomBytes(300000, 77);
  const Bytes text = RandomBytes(5000, 78, 4);
  plain.insert(plain.begin() + 150000, text.begin(), text.end());
  ExpectAllPairingsMatch(EncodeBody(plain, Coder::kFast), RunSetup{}, "random with a text stretch");
}

// Far copies the screening sends aside (d above 2,030 that still fit in the
// window) and literal runs above 24 bytes, mixed with ordinary tokens.
TEST(LZDecodeStreams, FarCopiesAndLongRunsInEveryPairing) {
  Bytes tokens;
  AddLiterals(tokens, Pattern(2047));
  std::mt19937 rng(5);
  for (int i = 0; i < 20000; ++i) {
    switch (rng() % 4) {
      case 0: {
        const uint32_t len = 3 + rng() % 16;
        AddCopy(tokens, 2048 - len - rng() % 17, len);  // 2,030 .. 2,048 - len
        break;
      }
      case 1: {
        Bytes run = Pattern(25 + rng() % 103);
        tokens.push_back(static_cast<uint8_t>(run.size() * 2));
        tokens.insert(tokens.end(), run.begin(), run.end());
        break;
      }
      case 2:
        AddCopy(tokens, 8 + rng() % 2000, 3 + rng() % 16);
        break;
      default:
        AddLiterals(tokens, Pattern(1 + rng() % 24));
        break;
    }
  }
  ExpectAllPairingsMatch(tokens, RunSetup{}, "mixed far copies and long runs");
}

// A progress callback that throws after N tokens: the destination holds
// exactly the bytes of the tokens completed before, in every pairing. N
// sweeps across 2,048 bytes of output (about 17 tokens of 127-byte runs in the
// first stream) and across later overwrite copies.
TEST(LZDecodeStreams, ThrowingCallbackKeepsCompletedTokens) {
  Bytes runs_then_copies;
  AddLiterals(runs_then_copies, Pattern(2600));
  for (int i = 0; i < 40000; ++i) AddCopy(runs_then_copies, static_cast<uint32_t>(20 + i % 2000), 18);
  AddCopy(runs_then_copies, 2040, 18);
  for (int i = 0; i < 100; ++i) AddCopy(runs_then_copies, 50, 18);
  const Bytes text_like = EncodeBody(RandomBytes(50000, 3, 8), Coder::kFast);
  for (const auto& [name, tokens] : {std::pair{std::string("runs then copies"), runs_then_copies},
                                     std::pair{std::string("text-like"), text_like}}) {
    for (int n : {1, 2, 15, 16, 17, 18, 19, 20, 100, 1000, 15000, 40017, 40018, 40019, 40100}) {
      for (bool append : {false, true}) {
        RunSetup setup;
        if (append) {
          setup.prefix = RandomBytes(40, 2);
          setup.dst_position = 40;
        }
        setup.throw_on_call = n;
        ExpectAllPairingsMatch(tokens, setup,
                               name + ", throw on call " + std::to_string(n) + (append ? ", appended" : ""));
      }
    }
  }
}

// Writes at its own position into a memory stream that something else reads
// from (the underlying stream's position is left where it was).
class AppendingView : public TStream {
 public:
  AppendingView(TMemoryStream& target, int64_t position) : target_(target), position_(position) {}
  int64_t Read(void*, int64_t) override { return 0; }
  int64_t Write(const void* buffer, int64_t count) override {
    const int64_t keep = target_.Position();
    target_.SetPosition(position_);
    const int64_t n = target_.Write(buffer, count);
    position_ += n;
    target_.SetPosition(keep);
    return n;
  }
  int64_t Seek(int64_t offset, TSeekOrigin origin) override {
    if (origin == soBeginning) position_ = offset;
    if (origin == soCurrent) position_ += offset;
    if (origin == soEnd) position_ = target_.Size() + offset;
    return position_;
  }

 private:
  TMemoryStream& target_;
  int64_t position_;
};

// Edge case: the destination appends to the very memory stream the tokens are
// read from, growing (and so moving) its memory many times during the run.
// The tokens present at the start are decoded whole and appended after them
// (under the sanitizers a stale read of the moved memory would be reported).
TEST(LZDecodeStreams, DestinationAppendingToTheSourceMemory) {
  const Bytes plain = RandomBytes(400000, 4, 10);
  const Bytes body = EncodeBody(plain, Coder::kFast);
  TMemoryStream m;
  m.WriteBuffer(body.data(), static_cast<int64_t>(body.size()));
  m.SetPosition(0);
  AppendingView tail(m, m.Size());
  internal::LZDecode(m, tail, {});
  ASSERT_EQ(m.Size(), static_cast<int64_t>(body.size() + plain.size()));
  EXPECT_EQ(m.Position(), static_cast<int64_t>(body.size()));
  EXPECT_TRUE(std::equal(plain.begin(), plain.end(), m.Memory() + body.size()));
}

}  // namespace
}  // namespace quill::Gcompress::testing
