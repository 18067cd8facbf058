// The Windows locale fact table generated from data/locales/windows-locales.tsv.
#include "quill/rtl/localefacts.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace quill {
namespace {

TEST(WinLocaleFacts, HasEveryRowSorted) {
  const auto rows = WinLocaleFacts();
  EXPECT_EQ(rows.size(), 449u);
  for (size_t i = 1; i < rows.size(); ++i) {
    EXPECT_LT(rows[i - 1].lcid, rows[i].lcid) << i;
  }
}

TEST(WinLocaleFacts, MatchesTheDataFileLineByLine) {
  // Every data line of the TSV appears in the table, in order, cell by cell.
  std::ifstream in(std::string(QUILL_SOURCE_DIR) + "/data/locales/windows-locales.tsv");
  ASSERT_TRUE(in.good());
  std::string line;
  std::getline(in, line);  // header
  const auto rows = WinLocaleFacts();
  size_t i = 0;
  while (std::getline(in, line)) {
    if (line.empty()) continue;
    ASSERT_LT(i, rows.size());
    const WinLocaleFact& f = rows[i++];
    std::string cells[9];
    size_t start = 0;
    for (int c = 0; c < 9; ++c) {
      const size_t tab = line.find('\t', start);
      cells[c] = line.substr(start, tab == std::string::npos ? std::string::npos : tab - start);
      start = tab == std::string::npos ? line.size() : tab + 1;
    }
    EXPECT_EQ(f.lcid, std::stoul(cells[0], nullptr, 16)) << line;
    EXPECT_EQ(f.tag, cells[1]);
    EXPECT_EQ(f.abbrev, cells[2]);
    EXPECT_EQ(f.ansi_cp, cells[3].empty() ? 0u : std::stoul(cells[3]));
    EXPECT_EQ(f.oem_cp, cells[4].empty() ? 0u : std::stoul(cells[4]));
    EXPECT_EQ(f.iso639, cells[5]);
    EXPECT_EQ(f.iso3166, cells[6]);
    EXPECT_EQ(f.english_language, cells[7]);
    EXPECT_EQ(f.english_display, cells[8]);
  }
  EXPECT_EQ(i, rows.size());
}

TEST(FindLocaleFact, KnownRows) {
  const WinLocaleFact* en = FindLocaleFact(0x0409);
  ASSERT_NE(en, nullptr);
  EXPECT_EQ(en->tag, "en-US");
  EXPECT_EQ(en->abbrev, "ENU");
  EXPECT_EQ(en->ansi_cp, 1252u);
  EXPECT_EQ(en->oem_cp, 437u);
  EXPECT_EQ(en->english_display, "English (United States)");
  const WinLocaleFact* nb = FindLocaleFact(0x0414);
  ASSERT_NE(nb, nullptr);
  EXPECT_EQ(nb->english_display, "Norwegian, Bokm\xC3\xA5l (Norway)");  // UTF-8 kept
  // The first and the last rows.
  EXPECT_EQ(FindLocaleFact(WinLocaleFacts().front().lcid), &WinLocaleFacts().front());
  EXPECT_EQ(FindLocaleFact(WinLocaleFacts().back().lcid), &WinLocaleFacts().back());
  // A sort-order LCID (five hex digits).
  const WinLocaleFact* phone = FindLocaleFact(0x10407);
  ASSERT_NE(phone, nullptr);
  EXPECT_EQ(phone->iso639, "de");
}

TEST(FindLocaleFact, UnknownAndEmptyCells) {
  // Edge cases: identifiers with no row.
  EXPECT_EQ(FindLocaleFact(0), nullptr);
  EXPECT_EQ(FindLocaleFact(0x7777), nullptr);
  EXPECT_EQ(FindLocaleFact(0xFFFFFFFF), nullptr);
  // en-AE has no OEM code page in the data: 0.
  const WinLocaleFact* ae = FindLocaleFact(0x4C09);
  ASSERT_NE(ae, nullptr);
  EXPECT_EQ(ae->oem_cp, 0u);
  // Unicode-only locales: ANSI 0, OEM 1.
  const WinLocaleFact* hi = FindLocaleFact(0x0439);
  ASSERT_NE(hi, nullptr);
  EXPECT_EQ(hi->ansi_cp, 0u);
  EXPECT_EQ(hi->oem_cp, 1u);
}

TEST(FindLocaleFactByTag, CaseAndUnderscore) {
  const WinLocaleFact* de = FindLocaleFactByTag("de-DE");
  ASSERT_NE(de, nullptr);
  EXPECT_EQ(de->lcid, 0x0407u);
  EXPECT_EQ(FindLocaleFactByTag("DE_de"), de);
  EXPECT_EQ(FindLocaleFactByTag("zh-hans")->lcid, 0x0004u);
  // Edge cases: empty and unknown tags, and a prefix of a tag.
  EXPECT_EQ(FindLocaleFactByTag(""), nullptr);
  EXPECT_EQ(FindLocaleFactByTag("xx-YY"), nullptr);
  EXPECT_EQ(FindLocaleFactByTag("de-D"), nullptr);
}

TEST(FindLocaleFactByTag, LowestLcidWinsOnSharedTags) {
  // Every tag resolves to the first (lowest) row that carries it.
  for (const WinLocaleFact& f : WinLocaleFacts()) {
    const WinLocaleFact* found = FindLocaleFactByTag(f.tag);
    ASSERT_NE(found, nullptr) << f.tag;
    EXPECT_LE(found->lcid, f.lcid) << f.tag;
    EXPECT_EQ(found->tag, f.tag);
  }
}

}  // namespace
}  // namespace quill
