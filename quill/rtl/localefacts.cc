#include "quill/rtl/localefacts.h"

#include <algorithm>
#include <cstddef>

namespace quill {
namespace {

// kWinLocaleFactCount and kWinLocaleFactRows, generated from the TSV.
#include "quill/rtl/localefacts_table.inc"

constexpr char FoldTagChar(char c) {
  if (c >= 'A' && c <= 'Z') return static_cast<char>(c - 'A' + 'a');
  if (c == '_') return '-';
  return c;
}

bool SameTag(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(),
                    [](char x, char y) { return FoldTagChar(x) == FoldTagChar(y); });
}

}  // namespace

std::span<const WinLocaleFact> WinLocaleFacts() {
  return {kWinLocaleFactRows, kWinLocaleFactCount};
}

const WinLocaleFact* FindLocaleFact(LCID lcid) {
  const auto rows = WinLocaleFacts();
  const auto it = std::lower_bound(rows.begin(), rows.end(), lcid,
                                   [](const WinLocaleFact& f, LCID v) { return f.lcid < v; });
  return (it != rows.end() && it->lcid == lcid) ? &*it : nullptr;
}

const WinLocaleFact* FindLocaleFactByTag(std::string_view tag) {
  // Rows are sorted by LCID, so the first match is the lowest LCID.
  for (const WinLocaleFact& f : WinLocaleFacts()) {
    if (SameTag(f.tag, tag)) return &f;
  }
  return nullptr;
}

}  // namespace quill
