// How the locale lists are built and cached, step by step. Not installed;
// tests use the steps on small injected locale sets.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "quill/locales/localelist.h"
#include "quill/locales/localetree.h"
#include "quill/rtl/types.h"

namespace quill::Glocales::internal {

struct TLocaleEntry {
  UnicodeString Text;
  LCID Value;
  bool operator==(const TLocaleEntry&) const = default;
};
using TLocaleEntries = std::vector<TLocaleEntry>;

// Step 1: for each non-empty locale string (hexadecimal LCID, as the
// enumeration gives it), its LCID and display name; locales whose name is
// empty are left out. Enumeration order is kept.
[[nodiscard]] TLocaleEntries ScratchLocaleList(std::span<const UnicodeString> locale_strings);
// Step 3 (lloPrimary), in place.
void MakePrimaryList(TLocaleEntries& list);
// Step 4 (lloBoth), in place.
void MakeBothList(TLocaleEntries& list);
// Steps 1 to 4 for one option.
[[nodiscard]] TLocaleEntries BuildLocaleList(std::span<const UnicodeString> locale_strings, TLocaleListOpt opt);

// The supported locales as the enumeration gives them: 8 hexadecimal digits each.
[[nodiscard]] std::vector<UnicodeString> SystemLocaleStrings();

// The codes the reverse lookups compare, folded as CompareText folds them
// ('a'..'z' to 'A'..'Z'), mapped to the first list entry that has them.
using TCodeIndex = std::unordered_map<UnicodeString, LCID>;

// A cached list with what the lookups over it need.
struct TCachedLocaleList {
  TLocaleEntries entries;
  TCodeIndex abbr;     // AbbrByLocale (cut to 2 characters in the lloPrimary list)
  TCodeIndex iso;      // ISOCodesByLocale
  TCodeIndex tmx;      // ISOCodesByLocaleTMX
  TCodeIndex country;  // CountryISOCodeByLocale
  TCodeIndex lang;     // ISO6391CodeByLocale
  std::vector<UnicodeString> english_lower;  // lower-cased LOCALE_SENGLANGUAGE, one per entry
};

// The cached list for `opt`, built on first request.
[[nodiscard]] std::shared_ptr<const TCachedLocaleList> CachedLocaleList(TLocaleListOpt opt);
// True when the list for `opt` exists.
[[nodiscard]] bool LocaleListCached(TLocaleListOpt opt);
// Frees the three lists (the unit's last stop).
void FreeLocaleLists();

// 'a'..'z' to 'A'..'Z', nothing else: equal results mean CompareText gives 0.
[[nodiscard]] UnicodeString FoldCode(std::u16string_view code);

// The locale tree's nodes for the lloSub list `sub` (see GetLocaleTreeNodes).
[[nodiscard]] std::vector<TLocaleTreeNode> LocaleTreeFrom(const TLocaleEntries& sub);

// Replaces the enumeration the lists are built from (nullptr: the system's)
// and frees the lists. For tests.
void SetLocaleSource(std::function<std::vector<UnicodeString>()> source);

// Installs a locale source for one scope.
class ScopedLocaleSource {
 public:
  explicit ScopedLocaleSource(std::vector<UnicodeString> strings) {
    SetLocaleSource([strings] { return strings; });
  }
  ~ScopedLocaleSource() { SetLocaleSource(nullptr); }
  ScopedLocaleSource(const ScopedLocaleSource&) = delete;
  ScopedLocaleSource& operator=(const ScopedLocaleSource&) = delete;
};

}  // namespace quill::Glocales::internal
