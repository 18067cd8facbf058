// GetLocaleTree for a QTreeWidget: the supported locales as languages with
// their locales below them.
//
//   QTreeWidget tree;
//   quill::Glocales::GetLocaleTree(tree);
//   // "English" (data 9) with "English (United States)" (data 0x0409) below...
#pragma once

#include <QTreeWidget>

#include "quill/rtl/export.h"

namespace quill::Glocales {

// The role under which each item keeps its data (column 0).
inline constexpr int kLocaleDataRole = Qt::UserRole;

// Clears `TreeView` and fills it with GetLocaleTreeNodes()
// (quill/locales/localetree.h): one top-level item per language, its
// locales as children, each item's text in column 0 and its data as a
// uint under kLocaleDataRole. A language item's data is the low 8 bits of
// its locales' LCID (deliberately not the 10-bit primary language); a
// language with a single locale is one item with that locale's text and full
// LCID. The tree is cleared first (also when an error follows) and left sorting by text (column 0, ascending), so items the
// caller adds later are sorted too. Raises what GetLocaleTreeNodes raises.
QUILL_API void GetLocaleTree(QTreeWidget& TreeView);

}  // namespace quill::Glocales
