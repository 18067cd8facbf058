// GetLocaleInfoW, LocaleInfo and the supported-locale enumeration.
#include "quill/locales/localeinfo.h"

#include <algorithm>
#include <optional>

#include "quill/locales/internal/localeinfo_steps.h"
#include "quill/locales/internal/localedb.h"
#include "quill/rtl/localefacts.h"
#include "quill/rtl/syslocale.h"

namespace quill::Glocales {

int32_t GetLocaleInfoW(LCID Locale, uint32_t LCType, char16_t* LCData, int32_t cchData) {
  if (cchData < 0) return 0;
  LCType &= ~(LOCALE_NOUSEROVERRIDE | LOCALE_USE_CP_ACP);
  const std::optional<UnicodeString> text = internal::QueryLocaleInfo(ResolveLCID(Locale), LCType);
  if (!text) return 0;
  const auto needed = static_cast<int32_t>(text->size() + 1);
  if (cchData == 0) return needed;
  if (cchData < needed || LCData == nullptr) return 0;
  std::copy(text->begin(), text->end(), LCData);
  LCData[text->size()] = u'\0';
  return needed;
}

namespace internal {

UnicodeString LocaleInfoBy(const LocaleInfoQuery& query, LCID Locale, uint32_t LCType) {
  const int32_t n = query(Locale, LCType, nullptr, 0);
  // The buffer has room for the terminator; n may be 0 (unknown), which the
  // second call must then confirm.
  std::u16string buffer(static_cast<size_t>(std::max(n, 0)) + 1, u'\0');
  if (query(Locale, LCType, buffer.data(), n) != n) throw ELocalesError(u"Can not get locale info");
  buffer.resize(std::char_traits<char16_t>::length(buffer.c_str()));
  return buffer;
}

}  // namespace internal

UnicodeString LocaleInfo(LCID Locale, uint32_t LCType) {
  return internal::LocaleInfoBy(GetLocaleInfoW, Locale, LCType);
}

std::vector<LCID> EnumSystemLocales() {
  std::vector<LCID> out;
  for (const WinLocaleFact& f : WinLocaleFacts()) {
    if (internal::IsSpecificLocaleFact(f)) out.push_back(f.lcid);
  }
  return out;  // the fact table is sorted by LCID
}

namespace internal {

bool IsSpecificLocaleFact(const WinLocaleFact& f) {
  const bool sort_order = f.lcid > 0xFFFF;
  const bool pseudo = f.tag.starts_with("qps-");
  return !f.iso3166.empty() && !sort_order && !pseudo;
}

}  // namespace internal

}  // namespace quill::Glocales
