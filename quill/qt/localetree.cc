// GetLocaleTree: the locale tree data copied into a QTreeWidget.
#include "quill/qt/localetree.h"

#include <QList>
#include <QTreeWidgetItem>

#include "quill/locales/localetree.h"
#include "quill/qt/internal/qtstrings.h"

namespace quill::Glocales {

namespace {

QTreeWidgetItem* MakeItem(const TLocaleTreeNode& Node) {
  auto* item = new QTreeWidgetItem;
  item->setText(0, qtinternal::ToQString(Node.Text));
  item->setData(0, kLocaleDataRole, QVariant::fromValue<uint>(Node.Data));
  for (const TLocaleTreeNode& child : Node.Children) item->addChild(MakeItem(child));
  return item;
}

}  // namespace

void GetLocaleTree(QTreeWidget& TreeView) {
  TreeView.clear();
  const std::vector<TLocaleTreeNode> nodes = GetLocaleTreeNodes();
  QList<QTreeWidgetItem*> items;
  items.reserve(static_cast<qsizetype>(nodes.size()));
  for (const TLocaleTreeNode& node : nodes) items.append(MakeItem(node));
  TreeView.addTopLevelItems(items);
  TreeView.setSortingEnabled(true);
  TreeView.sortByColumn(0, Qt::AscendingOrder);
}

}  // namespace quill::Glocales
