// Codes and short names of a locale, read from the locale database.
#include "quill/locales/localecodes.h"

#include "quill/locales/localeinfo.h"
#include "quill/strings/slicing.h"

namespace quill::Glocales {
namespace {

bool IsPrimary(LCID Locale) { return GetPrimaryLangID(Locale) == Locale; }

}  // namespace

UnicodeString AbbrByLocale(LCID Locale) {
  UnicodeString abbr = LocaleInfo(Locale, LOCALE_SABBREVLANGNAME);
  if (IsPrimary(Locale) && abbr.size() > 2) abbr.resize(2);
  return abbr;
}

UnicodeString ISOCodesByLocale(LCID Locale) {
  UnicodeString codes = LocaleInfo(Locale, LOCALE_SISO3166CTRYNAME);
  codes += u' ';
  codes += LocaleInfo(Locale, LOCALE_SISO639LANGNAME);
  return codes;
}

UnicodeString ISOCodesByLocaleTMX(LCID Locale) {
  UnicodeString codes = LocaleInfo(Locale, LOCALE_SISO639LANGNAME);
  if (!IsPrimary(Locale)) {
    codes += u'-';
    codes += LocaleInfo(Locale, LOCALE_SISO3166CTRYNAME);
  }
  return codes;
}

UnicodeString CountryISOCodeByLocale(LCID Locale) { return LocaleInfo(Locale, LOCALE_SISO3166CTRYNAME); }

UnicodeString ISO6391CodeByLocale(LCID Locale) { return LocaleInfo(Locale, LOCALE_SISO639LANGNAME); }

UnicodeString GetLocaleSLanguage(LCID Locale) {
  UnicodeString name = LocaleInfo(Locale, LOCALE_SLANGUAGE);
  if (IsPrimary(Locale)) name = Gstrings::GetBeforeSep(u"(", name);
  return name;
}

}  // namespace quill::Glocales
