// Tests of GetLocaleTree on a real QTreeWidget with the real locale list:
// the items are checked against the tree data and, independently, against
// the flat list of locales (lloSub) that the tree is made from.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTreeWidget>
#include <map>
#include <vector>

#include "quill/locales/localelist.h"
#include "quill/locales/localetree.h"
#include "quill/qt/internal/qtstrings.h"
#include "quill/qt/localetree.h"
#include "quill/qt/quillqt.h"
#include "quill/rtl/tstrings.h"

namespace quill::Glocales {
namespace {

using qtinternal::FromQString;

uint32_t DataOf(const QTreeWidgetItem* item) { return item->data(0, kLocaleDataRole).toUInt(); }

// The same text, data and children as `node`, in any order at every level
// (the tree sorts with its own text comparison, see SortedByText).
void ExpectSame(const QTreeWidgetItem* item, const TLocaleTreeNode& node) {
  EXPECT_EQ(FromQString(item->text(0)), node.Text);
  EXPECT_EQ(DataOf(item), node.Data);
  ASSERT_EQ(item->childCount(), static_cast<int>(node.Children.size())) << item->text(0).toStdString();
  for (const TLocaleTreeNode& child : node.Children) {
    int found = 0;
    for (int i = 0; i < item->childCount(); ++i) {
      if (FromQString(item->child(i)->text(0)) == child.Text && DataOf(item->child(i)) == child.Data) {
        ++found;
        ExpectSame(item->child(i), child);
      }
    }
    EXPECT_EQ(found, 1) << "child " << qtinternal::ToQString(child.Text).toStdString();
  }
}

class LocaleTree : public ::testing::Test {
 protected:
  void SetUp() override { GetLocaleTree(tree); }
  QTreeWidget tree;
};

// Every node of the tree data is one item with its text, data and children.
TEST_F(LocaleTree, ItemsAreTheTreeData) {
  const std::vector<TLocaleTreeNode> nodes = GetLocaleTreeNodes();
  ASSERT_GT(nodes.size(), 50u);
  ASSERT_EQ(tree.topLevelItemCount(), static_cast<int>(nodes.size()));
  for (const TLocaleTreeNode& node : nodes) {
    const QList<QTreeWidgetItem*> items =
        tree.findItems(qtinternal::ToQString(node.Text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    ASSERT_EQ(items.size(), 1) << qtinternal::ToQString(node.Text).toStdString();
    ExpectSame(items.front(), node);
  }
}

// Against the flat locale list: every locale appears exactly once, as a leaf
// with its full text and LCID; it sits under a language item exactly when
// its language (LCID AND 0x3FF) has two or more locales.
TEST_F(LocaleTree, EveryLocaleOnceUnderItsLanguage) {
  TStringList list;
  GetLocaleList(list, lloSub);
  std::map<uint32_t, int> per_language;
  for (int32_t i = 0; i < list.Count(); ++i) ++per_language[LocaleListLCID(list, i) & 0x3FF];

  std::map<uint32_t, const QTreeWidgetItem*> leaves;  // LCID -> item
  for (int i = 0; i < tree.topLevelItemCount(); ++i) {
    const QTreeWidgetItem* top = tree.topLevelItem(i);
    if (top->childCount() == 0) {
      EXPECT_TRUE(leaves.emplace(DataOf(top), top).second);
    }
    for (int j = 0; j < top->childCount(); ++j) {
      EXPECT_EQ(top->child(j)->childCount(), 0);
      EXPECT_TRUE(leaves.emplace(DataOf(top->child(j)), top->child(j)).second);
    }
  }
  ASSERT_EQ(static_cast<int32_t>(leaves.size()), list.Count());
  for (int32_t i = 0; i < list.Count(); ++i) {
    const LCID lcid = LocaleListLCID(list, i);
    const auto it = leaves.find(lcid);
    ASSERT_NE(it, leaves.end()) << lcid;
    EXPECT_EQ(FromQString(it->second->text(0)), list.Strings(i));
    const bool grouped = per_language[lcid & 0x3FF] >= 2;
    EXPECT_EQ(it->second->parent() != nullptr, grouped) << lcid;
  }
}

// A language item: named by its first locale's text before "(", carrying the low
// 8 bits of their LCID (deliberately not the 10-bit primary language), with
// two or more children; single-locale languages were collapsed.
TEST_F(LocaleTree, LanguageItems) {
  bool english = false;
  for (int i = 0; i < tree.topLevelItemCount(); ++i) {
    const QTreeWidgetItem* top = tree.topLevelItem(i);
    if (top->childCount() == 0) continue;
    EXPECT_GE(top->childCount(), 2) << top->text(0).toStdString();
    // Named after the language's first locale in list order (its lowest
    // LCID); its other locales may be named differently.
    const QTreeWidgetItem* first = top->child(0);
    for (int j = 0; j < top->childCount(); ++j) {
      EXPECT_EQ(DataOf(top), DataOf(top->child(j)) & 0xFF);
      if (DataOf(top->child(j)) < DataOf(first)) first = top->child(j);
    }
    EXPECT_TRUE(first->text(0).startsWith(top->text(0).trimmed()))
        << first->text(0).toStdString() << " / " << top->text(0).toStdString();
    if (DataOf(top) == 0x09) {
      english = true;
      EXPECT_EQ(top->text(0), QStringLiteral("English"));
      bool us = false;
      for (int j = 0; j < top->childCount(); ++j) {
        if (DataOf(top->child(j)) == 0x0409) {
          us = true;
          EXPECT_EQ(top->child(j)->text(0), QStringLiteral("English (United States)"));
        }
      }
      EXPECT_TRUE(us);
    }
  }
  EXPECT_TRUE(english);
}

// The tree view sorts by text itself, at both levels, with its own
// comparison of item texts (which, unlike the ordinal order of the tree
// data, puts "Catalan (Spain, Valencian)" before "Catalan (Spain)"); and it
// keeps sorting.
TEST_F(LocaleTree, SortedByText) {
  EXPECT_TRUE(tree.isSortingEnabled());
  EXPECT_EQ(tree.sortColumn(), 0);
  EXPECT_EQ(tree.header()->sortIndicatorOrder(), Qt::AscendingOrder);
  for (int i = 1; i < tree.topLevelItemCount(); ++i) {
    EXPECT_FALSE(*tree.topLevelItem(i) < *tree.topLevelItem(i - 1)) << i;
  }
  for (int i = 0; i < tree.topLevelItemCount(); ++i) {
    const QTreeWidgetItem* top = tree.topLevelItem(i);
    for (int j = 1; j < top->childCount(); ++j) {
      EXPECT_FALSE(*top->child(j) < *top->child(j - 1)) << top->text(0).toStdString();
    }
  }
  // An item added later is sorted in too.
  tree.addTopLevelItem(new QTreeWidgetItem(QStringList{QStringLiteral("!first")}));
  EXPECT_EQ(tree.topLevelItem(0)->text(0), QStringLiteral("!first"));
}

// The tree is cleared first: what the caller had in it is gone.
TEST(LocaleTreeFill, ClearsFirst) {
  QTreeWidget tree;
  tree.addTopLevelItem(new QTreeWidgetItem(QStringList{QStringLiteral("stale")}));
  GetLocaleTree(tree);
  EXPECT_TRUE(tree.findItems(QStringLiteral("stale"), Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
  GetLocaleTree(tree);  // twice gives the same count, not double
  EXPECT_EQ(tree.topLevelItemCount(), static_cast<int>(GetLocaleTreeNodes().size()));
}

}  // namespace
}  // namespace quill::Glocales
