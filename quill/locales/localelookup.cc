// Reverse lookups over the cached locale lists.
#include "quill/locales/localelookup.h"

#include "quill/locales/internal/localelist_steps.h"
#include "quill/rtl/casing.h"
#include "quill/strings/search.h"

namespace quill::Glocales {
namespace {

using internal::TCachedLocaleList;
using internal::TCodeIndex;

LCID Find(TLocaleListOpt opt, TCodeIndex TCachedLocaleList::*index, std::u16string_view code) {
  const auto list = internal::CachedLocaleList(opt);
  const TCodeIndex& codes = (*list).*index;
  const auto it = codes.find(internal::FoldCode(code));
  return it == codes.end() ? 0 : it->second;
}

}  // namespace

LCID LocaleByAbbr(std::u16string_view Abbr) { return LocaleByAbbrEx(Abbr, lloBoth); }

LCID LocaleByAbbrEx(std::u16string_view Abbr, TLocaleListOpt Opt) {
  return Find(Opt, &TCachedLocaleList::abbr, Abbr);
}

LCID LocaleByEnglishName(std::u16string_view Name) {
  const auto list = internal::CachedLocaleList(lloSub);
  const UnicodeString prefix = LowerCase(Name);
  for (size_t i = 0; i < list->entries.size(); ++i) {
    if (Gstrings::StartsWith(prefix, list->english_lower[i])) return list->entries[i].Value;
  }
  return 0;
}

LCID LocaleByISOCodes(std::u16string_view Codes) { return Find(lloBoth, &TCachedLocaleList::iso, Codes); }

LCID LocaleByISOCodesTMX(std::u16string_view Codes) { return Find(lloBoth, &TCachedLocaleList::tmx, Codes); }

LCID LocaleByCountryISOCode(std::u16string_view Code) {
  return Find(lloPrimary, &TCachedLocaleList::country, Code);
}

LCID LocaleByISO6391Code(std::u16string_view Code) { return Find(lloPrimary, &TCachedLocaleList::lang, Code); }

}  // namespace quill::Glocales
