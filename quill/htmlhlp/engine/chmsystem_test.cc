// The default topic out of "#SYSTEM", read strictly inside its bytes.
#include "quill/htmlhlp/engine/chmsystem.h"

#include <gtest/gtest.h>

#include <vector>

namespace quill::Ghtmlhlp::engine {
namespace {

// Version 3, then the records given as (code, data).
std::vector<uint8_t> System(std::initializer_list<std::pair<uint16_t, std::string>> records) {
  std::vector<uint8_t> out = {3, 0, 0, 0};
  for (const auto& [code, data] : records) {
    out.push_back(static_cast<uint8_t>(code));
    out.push_back(static_cast<uint8_t>(code >> 8));
    out.push_back(static_cast<uint8_t>(data.size()));
    out.push_back(static_cast<uint8_t>(data.size() >> 8));
    out.insert(out.end(), data.begin(), data.end());
  }
  return out;
}

TEST(DefaultTopicFromSystem, FoundAmongOtherRecords) {
  using namespace std::string_literals;
  const auto data = System({{0, "toc.hhc\0"s}, {3, "Title\0"s}, {2, "pages/index.htm\0"s}, {4, "xxxx"}});
  EXPECT_EQ(DefaultTopicFromSystem(data), "/pages/index.htm");
}

TEST(DefaultTopicFromSystem, LeadingSlashKept) {
  using namespace std::string_literals;
  EXPECT_EQ(DefaultTopicFromSystem(System({{2, "/a.htm\0"s}})), "/a.htm");
}

// A topic without its zero ends at its record's end.
TEST(DefaultTopicFromSystem, UnterminatedTopic) {
  EXPECT_EQ(DefaultTopicFromSystem(System({{2, "a.htm"}})), "/a.htm");
}

TEST(DefaultTopicFromSystem, NoTopic) {
  using namespace std::string_literals;
  EXPECT_EQ(DefaultTopicFromSystem(System({{3, "Title\0"s}})), std::nullopt);
  EXPECT_EQ(DefaultTopicFromSystem(System({{2, "\0"s}})), std::nullopt);  // empty topic
  EXPECT_EQ(DefaultTopicFromSystem(System({})), std::nullopt);
  EXPECT_EQ(DefaultTopicFromSystem({}), std::nullopt);
  const std::vector<uint8_t> short_version = {3, 0};
  EXPECT_EQ(DefaultTopicFromSystem(short_version), std::nullopt);
}

// A record whose length runs past the end stops the scan: the bytes after
// the version are never read beyond the data.
TEST(DefaultTopicFromSystem, RecordCutShort) {
  auto data = System({{2, "pages/index.htm"}});
  data.resize(data.size() - 3);
  EXPECT_EQ(DefaultTopicFromSystem(data), std::nullopt);
  // A record head cut in two is not a record.
  auto head = System({});
  head.push_back(2);
  head.push_back(0);
  head.push_back(0xFF);
  EXPECT_EQ(DefaultTopicFromSystem(head), std::nullopt);
}

}  // namespace
}  // namespace quill::Ghtmlhlp::engine

namespace quill::Ghtmlhlp::engine {
namespace {

// A context map: the byte count, then (context, offset) pairs.
std::vector<uint8_t> Ivb(std::initializer_list<std::pair<uint32_t, uint32_t>> pairs, int32_t extra_count = 0) {
  std::vector<uint8_t> out;
  auto put = [&out](uint32_t v) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<uint8_t>(v >> (8 * i)));
  };
  put(static_cast<uint32_t>(pairs.size() * 8 + extra_count));
  for (const auto& [context, offset] : pairs) {
    put(context);
    put(offset);
  }
  return out;
}

std::vector<uint8_t> Strings(std::string_view text) { return std::vector<uint8_t>(text.begin(), text.end()); }

TEST(ContextFileName, MappedNumbers) {
  using namespace std::string_literals;
  const auto strings = Strings("\0pages/index.htm\0/build/pages/a.htm\0"s);
  const auto ivb = Ivb({{7, 1}, {42, 17}});
  EXPECT_EQ(ContextFileName(ivb, strings, 7), "pages/index.htm");
  EXPECT_EQ(ContextFileName(ivb, strings, 42), "/build/pages/a.htm");
  EXPECT_EQ(ContextFileName(ivb, strings, 8), std::nullopt);
}

// The first pair with the number wins.
TEST(ContextFileName, FirstPairWins) {
  using namespace std::string_literals;
  const auto strings = Strings("\0a.htm\0b.htm\0"s);
  EXPECT_EQ(ContextFileName(Ivb({{5, 1}, {5, 7}}), strings, 5), "a.htm");
}

// Offsets outside the strings, empty names and a name without its zero.
TEST(ContextFileName, BadOffsetsAndNames) {
  using namespace std::string_literals;
  const auto strings = Strings("\0a.htm"s);
  EXPECT_EQ(ContextFileName(Ivb({{1, 6}}), strings, 1), std::nullopt);           // just past the end
  EXPECT_EQ(ContextFileName(Ivb({{1, 0xFFFFFFFFu}}), strings, 1), std::nullopt);
  EXPECT_EQ(ContextFileName(Ivb({{1, 0}}), strings, 1), std::nullopt);           // empty name
  EXPECT_EQ(ContextFileName(Ivb({{1, 1}}), strings, 1), "a.htm");                // ends with the data
  EXPECT_EQ(ContextFileName(Ivb({{1, 1}}), {}, 1), std::nullopt);
}

// A byte count larger than the data is cut to it: a half pair at the end is
// not read; a count smaller than the data hides the pairs after it.
TEST(ContextFileName, ByteCountBounds) {
  using namespace std::string_literals;
  const auto strings = Strings("\0a.htm\0"s);
  auto ivb = Ivb({{1, 1}, {2, 1}}, 1000);
  EXPECT_EQ(ContextFileName(ivb, strings, 2), "a.htm");
  ivb.resize(ivb.size() - 4);  // the second pair loses its offset
  EXPECT_EQ(ContextFileName(ivb, strings, 2), std::nullopt);
  EXPECT_EQ(ContextFileName(ivb, strings, 1), "a.htm");
  EXPECT_EQ(ContextFileName(Ivb({{1, 1}, {2, 1}}, -8), strings, 2), std::nullopt);
  const std::vector<uint8_t> tiny = {8, 0};
  EXPECT_EQ(ContextFileName(tiny, strings, 0), std::nullopt);
}

}  // namespace
}  // namespace quill::Ghtmlhlp::engine
