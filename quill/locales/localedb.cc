// The locale database: Windows facts from the fact table, names from ICU.
#include "quill/locales/internal/localedb.h"

#include <unicode/uloc.h>

#include <cstdio>
#include <string>

#include "quill/locales/localeinfo.h"
#include "quill/rtl/internal/icudata.h"
#include "quill/rtl/localefacts.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace quill::Glocales::internal {
namespace {

UnicodeString FromIcu(const icu::UnicodeString& s) { return quill::internal::FromIcuString(s); }

UnicodeString FromUtf8(std::string_view s) { return Utf8ToUnicode(s); }

// Text of a fact-table cell, or nullopt for an empty cell (the fact is unknown).
std::optional<UnicodeString> Cell(std::string_view s) {
  if (s.empty()) return std::nullopt;
  return FromUtf8(s);
}

std::optional<UnicodeString> Number(uint32_t n) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%u", n);
  return FromUtf8(buf);
}

// Names in the language of `display`. ICU falls back to the process's default
// locale for a display language it has no data for, which would make the
// answer depend on the machine; English is used instead.
icu::Locale DisplayLocale(const icu::Locale& wanted) {
  return IcuHasLanguageData(wanted) ? wanted : icu::Locale::getEnglish();
}

icu::Locale SystemDisplayLocale() { return DisplayLocale(IcuLocaleForTag(SystemDefaultLocaleTag())); }

// ICU answers with the bare code when it has no name; that counts as no name.
std::optional<UnicodeString> IcuName(const icu::UnicodeString& name, const char* code) {
  const UnicodeString text = FromIcu(name);
  if (text.empty() || text == FromUtf8(code)) return std::nullopt;
  return text;
}

std::optional<UnicodeString> LanguageName(const icu::Locale& loc, const icu::Locale& display) {
  icu::UnicodeString name;
  loc.getDisplayLanguage(display, name);
  return IcuName(name, loc.getLanguage());
}

std::optional<UnicodeString> CountryName(const icu::Locale& loc, const icu::Locale& display) {
  if (*loc.getCountry() == '\0') return std::nullopt;
  icu::UnicodeString name;
  loc.getDisplayCountry(display, name);
  return IcuName(name, loc.getCountry());
}

// "Language (Country)" in the language of `display`, or the fact table's
// English display name when ICU does not know the language at all.
std::optional<UnicodeString> DisplayName(const icu::Locale& loc, const icu::Locale& display,
                                         const WinLocaleFact& fact) {
  if (!LanguageName(loc, display)) return Cell(fact.english_display);
  UErrorCode err = U_ZERO_ERROR;
  UChar buffer[128];
  const int32_t n = uloc_getDisplayKeywordValue(loc.getName(), "collation", display.getName(), buffer, 128, &err);
  const icu::UnicodeString sort = U_SUCCESS(err) && n > 0 && n < 128 ? icu::UnicodeString(buffer, n) : icu::UnicodeString();
  if (sort.isEmpty()) {
    icu::UnicodeString name;
    loc.getDisplayName(display, name);
    return FromIcu(name);
  }
  // A sort order reads as one more item in the brackets ("Spanish (Spain,
  // Traditional Sort Order)"), not as ICU's "Sort Order=..." pair.
  const icu::Locale plain(loc.getLanguage(), loc.getCountry(), loc.getVariant());
  icu::UnicodeString name;
  plain.getDisplayName(display, name);
  UnicodeString text = FromIcu(name);
  const UnicodeString item = FromIcu(sort);
  if (!text.empty() && text.back() == u')') {
    text.pop_back();
    text += u", ";
  } else {
    text += u" (";
  }
  text += item;
  text += u')';
  return text;
}

}  // namespace

bool IcuHasLanguageData(const icu::Locale& loc) { return quill::internal::IcuHasLanguageData(loc.getLanguage()); }

icu::Locale IcuLocaleForTag(std::string tag) {
  if (const auto us = tag.find('_'); us != std::string::npos) {
    const std::string sort = tag.substr(us + 1);
    tag.resize(us);
    // The one sort order that has an ICU collation of its own; the others
    // (phone book, stroke, radical, ...) name the same locale for naming.
    if (sort == "tradnl") tag += "-u-co-trad";
  }
  UErrorCode err = U_ZERO_ERROR;
  icu::Locale loc = icu::Locale::forLanguageTag(tag, err);
  if (U_FAILURE(err) || loc.isBogus()) return icu::Locale::getRoot();
  return loc;
}

std::optional<UnicodeString> QueryLocaleInfo(LCID lcid, uint32_t lctype) {
  const WinLocaleFact* fact = FindLocaleFact(lcid);
  if (fact == nullptr) return std::nullopt;
  switch (lctype) {
    case LOCALE_ILANGUAGE: {
      char buf[8];
      std::snprintf(buf, sizeof buf, "%04X", static_cast<unsigned>(lcid & 0xFFFF));
      return FromUtf8(buf);
    }
    case LOCALE_SABBREVLANGNAME: return Cell(fact->abbrev);
    case LOCALE_SISO639LANGNAME: return Cell(fact->iso639);
    case LOCALE_SISO3166CTRYNAME: return Cell(fact->iso3166);
    case LOCALE_SNAME: return Cell(fact->tag);
    case LOCALE_IDEFAULTANSICODEPAGE: return Number(fact->ansi_cp);
    case LOCALE_IDEFAULTCODEPAGE:
      if (fact->oem_cp == 0) return std::nullopt;  // not recorded for this locale
      return Number(fact->oem_cp);
    default: break;
  }
  const icu::Locale loc = IcuLocaleForTag(std::string(fact->tag));
  switch (lctype) {
    case LOCALE_SENGLANGUAGE:
      if (auto name = Cell(fact->english_language)) return name;
      return LanguageName(loc, icu::Locale::getEnglish());
    case LOCALE_SENGLISHDISPLAYNAME:
      if (auto name = Cell(fact->english_display)) return name;
      return DisplayName(loc, icu::Locale::getEnglish(), *fact);
    case LOCALE_SLANGUAGE: return DisplayName(loc, SystemDisplayLocale(), *fact);
    case LOCALE_SNATIVELANGNAME:
      if (auto name = LanguageName(loc, DisplayLocale(loc))) return name;
      return LanguageName(loc, icu::Locale::getEnglish());
    case LOCALE_SENGCOUNTRY: return CountryName(loc, icu::Locale::getEnglish());
    case LOCALE_SCOUNTRY: return CountryName(loc, SystemDisplayLocale());
    case LOCALE_SNATIVECTRYNAME:
      if (auto name = CountryName(loc, DisplayLocale(loc))) return name;
      return CountryName(loc, icu::Locale::getEnglish());
    default: return std::nullopt;
  }
}

}  // namespace quill::Glocales::internal
