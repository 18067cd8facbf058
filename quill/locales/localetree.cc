// The locale tree's content.
#include "quill/locales/localetree.h"

#include <algorithm>
#include <map>

#include "quill/locales/internal/localelist_steps.h"
#include "quill/locales/localecodes.h"
#include "quill/rtl/intconv.h"
#include "quill/strings/slicing.h"

namespace quill::Glocales {
namespace {

void SortByText(std::vector<TLocaleTreeNode>& nodes) {
  std::stable_sort(nodes.begin(), nodes.end(),
                   [](const TLocaleTreeNode& a, const TLocaleTreeNode& b) { return a.Text < b.Text; });
}

}  // namespace

namespace internal {

std::vector<TLocaleTreeNode> LocaleTreeFrom(const TLocaleEntries& sub) {
  std::vector<TLocaleTreeNode> languages;
  // Keyed by the decimal text of the primary language identifier, as the
  // tree view's index is.
  std::map<UnicodeString, size_t> index;
  for (const TLocaleEntry& e : sub) {
    const UnicodeString key = IntToStr(static_cast<int32_t>(GetPrimaryLangID(e.Value)));
    auto it = index.find(key);
    if (it == index.end()) {
      languages.push_back({Gstrings::GetBeforeSep(u"(", e.Text), e.Value & 0xFF, {}});
      it = index.emplace(key, languages.size() - 1).first;
    }
    languages[it->second].Children.push_back({e.Text, e.Value, {}});
  }
  for (TLocaleTreeNode& language : languages) {
    if (language.Children.size() < 2) {
      language.Text = language.Children.front().Text;
      language.Data = language.Children.front().Data;
      language.Children.clear();
    }
    SortByText(language.Children);
  }
  SortByText(languages);
  return languages;
}

}  // namespace internal

std::vector<TLocaleTreeNode> GetLocaleTreeNodes() {
  return internal::LocaleTreeFrom(internal::CachedLocaleList(lloSub)->entries);
}

}  // namespace quill::Glocales
