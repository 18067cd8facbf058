// The PE reader's resource lookup by type, name and language, and string-table entries.
#include <gtest/gtest.h>

#include "quill/utils/internal/pe_builder.h"
#include "quill/utils/internal/pe_reader.h"

namespace quill::Gutils::internal {
namespace {

namespace peb = Gutils::testing;

peb::Bytes Data(uint8_t tag, size_t n = 4) { return peb::Bytes(n, tag); }

std::optional<std::vector<uint8_t>> Find(const peb::Bytes& image, ResourceQuery q) {
  MemorySource src(image);
  return FindResource(src, q);
}

TEST(FindResource, NameAsAskedOrOneOrTheFirst) {
  const peb::Bytes image = peb::PeImageWithResources(
      {{10, 3, 0x409, Data(3)}, {10, 7, 0x409, Data(7)}, {11, 1, 0x409, Data(0x11)}, {11, 5, 0x409, Data(0x15)}});
  EXPECT_EQ(Find(image, {10, 7, {}, 100}), Data(7));
  EXPECT_EQ(Find(image, {10, 4, {}, 100}), std::nullopt);  // an exact name that is not there
  EXPECT_EQ(Find(image, {10, std::nullopt, {}, 100}), Data(3));     // no 1: the first
  EXPECT_EQ(Find(image, {11, std::nullopt, {}, 100}), Data(0x11));  // 1 when present
  EXPECT_EQ(Find(image, {12, std::nullopt, {}, 100}), std::nullopt);
}

TEST(FindResource, LanguageByPreferenceElseTheFirst) {
  const peb::Bytes image = peb::PeImageWithResources(
      {{6, 1, 0x407, Data(0x07)}, {6, 1, 0x409, Data(0x09)}, {6, 1, 0x411, Data(0x11)}});
  EXPECT_EQ(Find(image, {6, 1, {0x411, 0x409}, 100}), Data(0x11));
  EXPECT_EQ(Find(image, {6, 1, {0x40C, 0x409}, 100}), Data(0x09));
  EXPECT_EQ(Find(image, {6, 1, {0x40C}, 100}), Data(0x07));
  EXPECT_EQ(Find(image, {6, 1, {}, 100}), Data(0x07));
}

TEST(FindResource, LongResourcesAreCut) {
  const peb::Bytes image = peb::PeImageWithResources({{6, 1, 0x409, Data(1, 50)}});
  EXPECT_EQ(Find(image, {6, 1, {}, 10}), Data(1, 10));
  EXPECT_EQ(Find(image, {6, 1, {}, 1000}), Data(1, 50));
}

TEST(IsPeImage, HeadersOnly) {
  peb::PeOptions opt;
  opt.with_resources = false;
  const peb::Bytes image = peb::PeImage({}, opt);
  EXPECT_TRUE(IsPeImage(MemorySource(image)));
  peb::Bytes no_pe = image;
  no_pe[0x40] = 'X';
  EXPECT_FALSE(IsPeImage(MemorySource(no_pe)));
  EXPECT_FALSE(IsPeImage(MemorySource(peb::Bytes{'M', 'Z'})));
}

TEST(StringTableEntry, EntriesAndBounds) {
  std::array<std::u16string, 16> s;
  s[0] = u"a";
  s[2] = u"ccc";
  s[15] = u"last";
  const peb::Bytes block = peb::StringTableData(s);
  EXPECT_EQ(StringTableEntry(block, 0), u"a");
  EXPECT_EQ(StringTableEntry(block, 1), u"");
  EXPECT_EQ(StringTableEntry(block, 2), u"ccc");
  EXPECT_EQ(StringTableEntry(block, 15), u"last");
  // Cut inside entry 15's text: the units that are there.
  const peb::Bytes cut(block.begin(), block.end() - 3);
  EXPECT_EQ(StringTableEntry(cut, 15), u"la");
  // Cut before entry 15's length: nothing.
  const peb::Bytes shorter(block.begin(), block.end() - 9);
  EXPECT_EQ(StringTableEntry(shorter, 15), std::nullopt);
  EXPECT_EQ(StringTableEntry({}, 0), std::nullopt);
}

TEST(StringTableBlock, SixteenIdsPerBlockFromOne) {
  EXPECT_EQ(StringTableBlock(0), 1u);
  EXPECT_EQ(StringTableBlock(15), 1u);
  EXPECT_EQ(StringTableBlock(16), 2u);
  EXPECT_EQ(StringTableBlock(65520), 4096u);
  EXPECT_EQ(StringTableBlock(65535), 4096u);
  EXPECT_EQ(StringTableBlock(0xFFFFF), 65536u);
  EXPECT_EQ(StringTableBlock(0x100000), 1u);  // only 16 bits of the block number count
}

}  // namespace
}  // namespace quill::Gutils::internal
