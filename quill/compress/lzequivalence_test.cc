// The fast coder against the window classes: same tokens, same output, same
// progress calls, on many kinds of input (short, long, runs, random, text,
// binary, far repeats, damaged token streams).
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "quill/compress/internal/lztestutil.h"

namespace quill::Gcompress::testing {
namespace {

using Calls = std::vector<std::pair<int32_t, int32_t>>;

void Record(void* context, int32_t position, int32_t max_value) {
  static_cast<Calls*>(context)->emplace_back(position, max_value);
}

// Runs one coder on `input` (placed after `skip` bytes that stay unread) and
// returns its output and progress calls.
std::pair<Bytes, Calls> RunCoder(const Bytes& input, bool encode, Coder coder, size_t skip = 0) {
  TMemoryStream in, out;
  Bytes padded(skip, 0xEE);
  padded.insert(padded.end(), input.begin(), input.end());
  Fill(in, padded);
  in.SetPosition(static_cast<int64_t>(skip));
  Calls calls;
  internal::LZProgress progress{&calls, &Record};
  if (encode)
    coder == Coder::kFast ? internal::LZEncode(in, out, progress) : internal::ReferenceCompress(in, out, progress);
  else
    coder == Coder::kFast ? internal::LZDecode(in, out, progress) : internal::ReferenceDecompress(in, out, progress);
  EXPECT_EQ(in.Position(), in.Size());
  return {Contents(out), calls};
}

// What the writer may emit: literal runs of 1 to 127 bytes, complete; copies
// of distance 1 to 2,045 whose distance plus length never exceeds 2,048 (so
// the expander's overwrite case never arises from our own output).
void ExpectWellFormedTokens(const Bytes& t) {
  size_t i = 0;
  while (i < t.size()) {
    if (t[i] & 1) {
      ASSERT_LT(i + 1, t.size());
      uint32_t d = 0, len = 0;
      internal::DecodeCopy(t[i] | (uint32_t{t[i + 1]} << 8), d, len);
      ASSERT_GE(d, 1u);
      ASSERT_LE(d, 2045u);
      ASSERT_LE(d + len, 2048u);
      i += 2;
    } else {
      const size_t n = t[i] >> 1;
      ASSERT_GE(n, 1u);
      ASSERT_LE(i + 1 + n, t.size());
      i += 1 + n;
    }
  }
}

// Encodes with both coders, compares tokens and progress, and checks that
// both decoders give the input back.
void ExpectSameCompression(const Bytes& plain, const std::string& what) {
  SCOPED_TRACE(what + " (" + std::to_string(plain.size()) + " bytes)");
  const auto fast = RunCoder(plain, true, Coder::kFast);
  const auto reference = RunCoder(plain, true, Coder::kReference);
  ASSERT_EQ(fast.first, reference.first);
  ASSERT_EQ(fast.second, reference.second);
  ExpectWellFormedTokens(fast.first);
  const auto back_fast = RunCoder(fast.first, false, Coder::kFast);
  const auto back_reference = RunCoder(fast.first, false, Coder::kReference);
  ASSERT_EQ(back_fast.first, plain);
  ASSERT_EQ(back_reference.first, plain);
  ASSERT_EQ(back_fast.second, back_reference.second);
}

void ExpectSameExpansion(const Bytes& tokens, const std::string& what) {
  SCOPED_TRACE(what);
  const auto fast = RunCoder(tokens, false, Coder::kFast);
  const auto reference = RunCoder(tokens, false, Coder::kReference);
  ASSERT_EQ(fast.first, reference.first);
  ASSERT_EQ(fast.second, reference.second);
}

Bytes ReadFile(const std::filesystem::path& p) {
  std::ifstream f(p, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
}

// The project's own sources, concatenated (a text corpus that every checkout has).
Bytes ProjectText(size_t limit) {
  Bytes all;
  const std::filesystem::path root = std::filesystem::path(QUILL_SOURCE_DIR) / "quill";
  std::vector<std::filesystem::path> files;
  for (const auto& e : std::filesystem::recursive_directory_iterator(root)) {
    const auto ext = e.path().extension();
    if (e.is_regular_file() && (ext == ".h" || ext == ".cc")) files.push_back(e.path());
  }
  std::sort(files.begin(), files.end());
  for (const auto& f : files) {
    const Bytes b = ReadFile(f);
    all.insert(all.end(), b.begin(), b.end());
    if (all.size() >= limit) break;
  }
  if (all.size() > limit) all.resize(limit);
  return all;
}

// Edge case: every length from 0 to 300 and around 2,048, several alphabets.
TEST(FastCoder, MatchesReferenceOnAllShortLengths) {
  for (int alphabet : {1, 2, 4, 26, 256}) {
    for (size_t n = 0; n <= 300; ++n)
      ExpectSameCompression(RandomBytes(n, static_cast<uint32_t>(n * 31 + alphabet), alphabet),
                            "alphabet " + std::to_string(alphabet));
    for (size_t n = 2030; n <= 2070; ++n)
      ExpectSameCompression(RandomBytes(n, static_cast<uint32_t>(n), alphabet),
                            "alphabet " + std::to_string(alphabet));
  }
}

// Edge case: runs of equal bytes of many lengths, mixed with short patterns.
TEST(FastCoder, MatchesReferenceOnRuns) {
  Bytes plain;
  std::mt19937 rng(3);
  while (plain.size() < 200000) {
    const size_t len = rng() % 300;
    const uint8_t c = static_cast<uint8_t>(rng() % 4);
    if (rng() % 3 == 0) {
      for (size_t i = 0; i < len; ++i) plain.push_back(static_cast<uint8_t>(c + i % (1 + rng() % 5)));
    } else {
      plain.insert(plain.end(), len, c);
    }
  }
  ExpectSameCompression(plain, "runs");
}

// Edge case: inputs far longer than the window with repeats near its edge
// (1,900 to 2,047 back), where the lookahead and the 40-entry lists decide.
TEST(FastCoder, MatchesReferenceOnFarRepeats) {
  std::mt19937 rng(5);
  Bytes plain;
  while (plain.size() < 300000) {
    if (plain.size() > 2100 && rng() % 2 == 0) {
      const size_t distance = 1900 + rng() % 148;
      const size_t len = 3 + rng() % 30;
      const size_t from = plain.size() - distance;
      for (size_t i = 0; i < len; ++i) plain.push_back(plain[from + i]);
    } else {
      const size_t len = 1 + rng() % 60;
      for (size_t i = 0; i < len; ++i) plain.push_back(static_cast<uint8_t>(rng() % 64));
    }
  }
  ExpectSameCompression(plain, "far repeats");
  // The same with the repeats landing while the lookahead drains at the end.
  for (size_t tail = 1; tail < 140; tail += 3) {
    Bytes end(plain.begin(), plain.begin() + 2048 + tail);
    ExpectSameCompression(end, "drained end " + std::to_string(tail));
  }
}

// Edge case: random data (nothing to find) and low-entropy random data.
TEST(FastCoder, MatchesReferenceOnRandomData) {
  ExpectSameCompression(RandomBytes(300000, 42), "random 256");
  ExpectSameCompression(RandomBytes(300000, 43, 3), "random 3");
  ExpectSameCompression(RandomBytes(100000, 44, 12), "random 12");
}

// Edge case: real files: the project's sources, and a binary built from them.
TEST(FastCoder, MatchesReferenceOnRealFiles) {
  const Bytes text = ProjectText(600000);
  ASSERT_GT(text.size(), 10000u);
  ExpectSameCompression(text, "project sources");
  Bytes binary;
  for (size_t i = 0; i + 4 <= text.size() && binary.size() < 200000; i += 4) {
    const uint32_t v = static_cast<uint32_t>(text[i]) * 2654435761u + text[i + 1];
    binary.push_back(static_cast<uint8_t>(v));
    binary.push_back(0);
    binary.push_back(static_cast<uint8_t>(v >> 24));
    binary.push_back(text[i + 2]);
  }
  ExpectSameCompression(binary, "binary");
}

// Inputs larger than the fast coder's 64 KiB input block, with matches
// across its edges, read from a position other than 0.
TEST(FastCoder, MatchesReferenceAcrossBlocksAndFromAnOffset) {
  const Bytes text = ProjectText(400000);
  for (size_t skip : {size_t{1}, size_t{4096}, size_t{70000}}) {
    const auto fast = RunCoder(text, true, Coder::kFast, skip);
    const auto reference = RunCoder(text, true, Coder::kReference, skip);
    ASSERT_EQ(fast.first, reference.first) << skip;
    ASSERT_EQ(fast.second, reference.second) << skip;
  }
}

// The match index renumbers its positions every so often (every GiB in use);
// with a tiny interval the tokens must not change.
TEST(FastCoder, RenumberingPositionsKeepsTheTokens) {
  const Bytes text = ProjectText(300000);
  TMemoryStream in, fast, reference;
  for (int64_t every : {int64_t{9000}, int64_t{12345}, int64_t{65536}}) {
    Fill(in, text);
    fast.SetSize(0);
    internal::LZEncode(in, fast, {}, every);
    Fill(in, text);
    reference.SetSize(0);
    internal::ReferenceCompress(in, reference, {});
    ASSERT_EQ(Contents(fast), Contents(reference)) << every;
  }
}

// Damaged or foreign token streams: random bytes, random valid-looking tokens
// with any distance, cut tokens; both decoders must agree byte for byte.
TEST(FastDecoder, MatchesReferenceOnArbitraryTokens) {
  for (uint32_t seed = 0; seed < 300; ++seed) {
    ExpectSameExpansion(RandomBytes(seed * 7 % 1500, seed), "random bytes " + std::to_string(seed));
  }
  std::mt19937 rng(9);
  for (int round = 0; round < 60; ++round) {
    const size_t count = 10 + rng() % 3000;
    // Distances at the window's edge every other copy, to reach the ring's quirk.
    ExpectSameExpansion(RandomTokens(rng, count, 256, 2), "tokens round " + std::to_string(round));
  }
}

// Without a progress hook the decoder takes its table-driven path (common
// tokens two at a time where the processor allows). Token streams made
// mostly of common tokens (short runs, copies of distance 8 to 2,030) with
// rarer ones mixed in, long enough to cross the table's pieces and chunks,
// decode as the reference decodes them.
TEST(FastDecoder, MatchesReferenceWithoutAProgressHook) {
  std::mt19937 rng(21);
  for (int round = 0; round < 40; ++round) {
    Bytes tokens;
    const size_t count = 2000 + rng() % 30000;
    const uint32_t rare_every = 4 + round % 40;
    for (size_t t = 0; t < count; ++t) {
      const bool rare = rng() % rare_every == 0;
      if (rng() % 2 == 0) {
        const uint8_t n = static_cast<uint8_t>(rare ? 25 + rng() % 103 : 1 + rng() % 24);
        tokens.push_back(static_cast<uint8_t>(n * 2));
        for (int i = 0; i < n; ++i) tokens.push_back(static_cast<uint8_t>(rng()));
      } else {
        const uint32_t d = rare ? (rng() % 2 == 0 ? rng() % 8 : 2031 + rng() % 17) : 8 + rng() % 2023;
        uint8_t tok[2];
        internal::EncodeCopy(tok, d, 3 + rng() % 16);
        tokens.push_back(tok[0]);
        tokens.push_back(tok[1]);
      }
    }
    tokens.resize(tokens.size() - rng() % 3);
    TMemoryStream in, fast, reference;
    Fill(in, tokens);
    in.SetPosition(0);
    internal::LZDecode(in, fast, internal::LZProgress{});
    in.SetPosition(0);
    internal::ReferenceDecompress(in, reference, internal::LZProgress{});
    ASSERT_EQ(Contents(fast), Contents(reference)) << "round " << round;
  }
}

}  // namespace
}  // namespace quill::Gcompress::testing
