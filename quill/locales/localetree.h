// Glocales: the supported locales as a tree of languages and their locales.
//
// The content a tree view shows, as plain data: top-level nodes are
// languages, their children the locales of the language. A language with a
// single locale is one leaf carrying that locale's full LCID. A user-interface
// layer copies the nodes into its tree widget.
//
//   for (const TLocaleTreeNode& language : GetLocaleTreeNodes()) {
//     // language.Text "English", language.Data 0x09, 13 or more children
//     //   ("English (Australia)" 0x0C09, ...); "Hebrew (Israel)" 0x040D, no children
//   }
#pragma once

#include <cstdint>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

struct TLocaleTreeNode {
  UnicodeString Text;
  uint32_t Data;
  std::vector<TLocaleTreeNode> Children;
};

// Built from the lloSub list: for each locale in list order, its language's
// node (made on first need: named by the locale's text before the first "(",
// carrying the LCID AND 0xFF, deliberately the low 8 bits rather than the
// 10-bit primary language) gets a child with the locale's full text and LCID.
// Then every language node with fewer than 2 children takes its only child's
// text and data and loses the child. Top-level nodes, and each node's
// children, are sorted by Text in ordinal UTF-16 order (stable), as the tree
// view sorts them. Raises only what LocaleInfo raises.
[[nodiscard]] QUILL_API std::vector<TLocaleTreeNode> GetLocaleTreeNodes();

}  // namespace quill::Glocales
