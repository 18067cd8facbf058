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
