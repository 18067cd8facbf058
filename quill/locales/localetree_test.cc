// Tests of the locale tree's content.
#include "quill/locales/localetree.h"

#include <gtest/gtest.h>

#include <map>

#include "quill/locales/internal/localelist_steps.h"
#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"

namespace quill::Glocales {
namespace {

using internal::LocaleTreeFrom;
using internal::TLocaleEntries;

// Languages with several locales get a node with their locales as children;
// a single-locale language is one leaf with the real LCID.
TEST(GetLocaleTreeNodes, SmallSet) {
  internal::ScopedLocaleSource source({u"00000409", u"0000040D", u"00000809", u"00000C09", u"00000407"});
  const std::vector<TLocaleTreeNode> tree = GetLocaleTreeNodes();
  ASSERT_EQ(tree.size(), 3u);
  EXPECT_EQ(tree[0].Text, u"English");
  EXPECT_EQ(tree[0].Data, 0x09u);
  ASSERT_EQ(tree[0].Children.size(), 3u);
  EXPECT_EQ(tree[0].Children[0].Text, u"English (Australia)");
  EXPECT_EQ(tree[0].Children[0].Data, 0x0C09u);
  EXPECT_EQ(tree[0].Children[1].Text, u"English (United Kingdom)");
  EXPECT_EQ(tree[0].Children[2].Text, u"English (United States)");
  EXPECT_EQ(tree[0].Children[2].Data, 0x0409u);
  EXPECT_EQ(tree[1].Text, u"German (Germany)");
  EXPECT_EQ(tree[1].Data, 0x0407u);
  EXPECT_TRUE(tree[1].Children.empty());
  EXPECT_EQ(tree[2].Text, u"Hebrew (Israel)");
  EXPECT_EQ(tree[2].Data, 0x040Du);
  EXPECT_TRUE(tree[2].Children.empty());
}

// A language node carries the LCID AND 0xFF: the low 8 bits, not the 10-bit
// primary language.
TEST(LocaleTreeFrom, LanguageDataIsLowEightBits) {
  const TLocaleEntries sub = {{u"Made-up (North)", 0x0512}, {u"Made-up (South)", 0x0912}};
  const auto tree = LocaleTreeFrom(sub);
  ASSERT_EQ(tree.size(), 1u);
  EXPECT_EQ(tree[0].Data, 0x12u);
  EXPECT_NE(tree[0].Data, GetPrimaryLangID(0x0512));
  EXPECT_EQ(tree[0].Text, u"Made-up");
}

// Languages are told apart by the 10-bit primary language even where the
// low 8 bits agree.
TEST(LocaleTreeFrom, IndexUsesPrimaryLanguage) {
  const TLocaleEntries sub = {{u"One (A)", 0x0412}, {u"Two (B)", 0x0512}, {u"One (C)", 0x0812}};
  const auto tree = LocaleTreeFrom(sub);
  ASSERT_EQ(tree.size(), 2u);
  EXPECT_EQ(tree[0].Text, u"One");
  EXPECT_EQ(tree[0].Children.size(), 2u);
  EXPECT_EQ(tree[1].Text, u"Two (B)");
  EXPECT_EQ(tree[1].Data, 0x0512u);
}

// The node takes its name from the first locale of the language in list
// order; single children are folded before sorting, so the leaf sorts by its
// own text.
TEST(LocaleTreeFrom, CollapseBeforeSort) {
  const TLocaleEntries sub = {{u"Zeta (Only)", 0x0401}, {u"Beta (Y)", 0x0802}, {u"Alpha (X)", 0x0402}};
  const auto tree = LocaleTreeFrom(sub);
  ASSERT_EQ(tree.size(), 2u);
  EXPECT_EQ(tree[0].Text, u"Beta");  // named by its first locale, Beta (Y)
  EXPECT_EQ(tree[0].Data, 0x02u);
  EXPECT_EQ(tree[0].Children[0].Text, u"Alpha (X)");
  EXPECT_EQ(tree[1].Text, u"Zeta (Only)");
  EXPECT_EQ(tree[1].Data, 0x0401u);
}

// Sorting is ordinal UTF-16: capitals before small letters, accented letters
// after both; equal texts keep their order.
TEST(LocaleTreeFrom, OrdinalStableSort) {
  const TLocaleEntries sub = {{u"\u00C5land (X)", 0x0401}, {u"isiZulu (Y)", 0x0402}, {u"Zulu (Z)", 0x0403},
                              {u"Same", 0x0404}, {u"Same", 0x0405}};
  const auto tree = LocaleTreeFrom(sub);
  ASSERT_EQ(tree.size(), 5u);
  EXPECT_EQ(tree[0].Data, 0x0404u);
  EXPECT_EQ(tree[1].Data, 0x0405u);
  EXPECT_EQ(tree[2].Text, u"Zulu (Z)");
  EXPECT_EQ(tree[3].Text, u"isiZulu (Y)");
  EXPECT_EQ(tree[4].Text, u"\u00C5land (X)");
}

// The real tree: every supported locale appears exactly once, as a child of
// its language or as a leaf.
TEST(GetLocaleTreeNodes, RealTreeHoldsEveryLocaleOnce) {
  std::map<LCID, int> seen;
  const auto tree = GetLocaleTreeNodes();
  for (size_t i = 0; i < tree.size(); ++i) {
    if (i > 0) {
      EXPECT_LE(tree[i - 1].Text, tree[i].Text);
    }
    if (tree[i].Children.empty()) {
      ++seen[tree[i].Data];
      continue;
    }
    EXPECT_GE(tree[i].Children.size(), 2u);
    for (const TLocaleTreeNode& child : tree[i].Children) {
      EXPECT_EQ(child.Data & 0xFF, tree[i].Data);
      EXPECT_EQ(child.Text, LocaleInfo(child.Data, LOCALE_SLANGUAGE));
      ++seen[child.Data];
    }
  }
  const std::vector<LCID> all = EnumSystemLocales();
  EXPECT_EQ(seen.size(), all.size());
  for (LCID l : all) EXPECT_EQ(seen[l], 1) << std::hex << l;
}

}  // namespace
}  // namespace quill::Glocales
