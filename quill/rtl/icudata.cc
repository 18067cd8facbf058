#include "quill/rtl/internal/icudata.h"

#include <unicode/locid.h>

#include <set>
#include <string>

namespace quill::internal {

bool IcuHasLanguageData(const char* language) {
  static const std::set<std::string> languages = [] {
    std::set<std::string> out;
    int32_t n = 0;
    const icu::Locale* all = icu::Locale::getAvailableLocales(n);
    for (int32_t i = 0; i < n; ++i) out.insert(all[i].getLanguage());
    return out;
  }();
  return languages.count(language) != 0;
}

UnicodeString FromIcuString(const icu::UnicodeString& s) {
  return UnicodeString(reinterpret_cast<const char16_t*>(s.getBuffer()), static_cast<size_t>(s.length()));
}

}  // namespace quill::internal
