// Tests of the codes and short names of a locale.
#include "quill/locales/localecodes.h"

#include <gtest/gtest.h>

#include "quill/locales/localeinfo.h"
#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill::Glocales {
namespace {

TEST(GetPrimaryLangID, LowTenBits) {
  EXPECT_EQ(GetPrimaryLangID(0x0409), 0x09u);
  EXPECT_EQ(GetPrimaryLangID(0x0C0A), 0x0Au);
  EXPECT_EQ(GetPrimaryLangID(0x10407), 0x07u);
  EXPECT_EQ(GetPrimaryLangID(0xFFFF), 0x3FFu);
  EXPECT_EQ(GetPrimaryLangID(0x0009), 0x09u);
}

// Edge case: a primary locale's abbreviation is cut to 2 characters.
TEST(AbbrByLocale, PrimaryCutToTwo) {
  EXPECT_EQ(AbbrByLocale(0x0409), u"ENU");
  EXPECT_EQ(AbbrByLocale(0x0809), u"ENG");
  EXPECT_EQ(AbbrByLocale(0x0009), u"EN");
  EXPECT_EQ(AbbrByLocale(0x0007), u"DE");
  EXPECT_EQ(AbbrByLocale(0x0007).size(), 2u);
  EXPECT_EQ(AbbrByLocale(0xABCD), u"");
  EXPECT_EQ(AbbrByLocale(0x03FF), u"");
}

// Edge case: country first, one blank, then the language.
TEST(ISOCodesByLocale, CountryBlankLanguage) {
  EXPECT_EQ(ISOCodesByLocale(0x0409), u"US en");
  EXPECT_EQ(ISOCodesByLocale(0x0C0A), u"ES es");
  EXPECT_EQ(ISOCodesByLocale(0x2409), u"029 en");
  // A primary locale has no country: a leading blank.
  EXPECT_EQ(ISOCodesByLocale(0x0009), u" en");
  EXPECT_EQ(ISOCodesByLocale(0xABCD), u" ");
}

// Edge case: the TMX form is language, hyphen, country; a primary locale
// gives the language alone.
TEST(ISOCodesByLocaleTMX, LanguageHyphenCountry) {
  EXPECT_EQ(ISOCodesByLocaleTMX(0x0409), u"en-US");
  EXPECT_EQ(ISOCodesByLocaleTMX(0x0816), u"pt-PT");
  EXPECT_EQ(ISOCodesByLocaleTMX(0x0009), u"en");
  EXPECT_EQ(ISOCodesByLocaleTMX(0x0016), u"pt");
  // Unknown regional locale: the empty codes around the hyphen.
  EXPECT_EQ(ISOCodesByLocaleTMX(0xABCD), u"-");
  EXPECT_EQ(ISOCodesByLocaleTMX(0x03FF), u"");
}

TEST(CountryISOCodeByLocale, Codes) {
  EXPECT_EQ(CountryISOCodeByLocale(0x0407), u"DE");
  EXPECT_EQ(CountryISOCodeByLocale(0x0807), u"CH");
  EXPECT_EQ(CountryISOCodeByLocale(0x0007), u"");
  EXPECT_EQ(CountryISOCodeByLocale(0xABCD), u"");
}

TEST(ISO6391CodeByLocale, Codes) {
  EXPECT_EQ(ISO6391CodeByLocale(0x0407), u"de");
  EXPECT_EQ(ISO6391CodeByLocale(0x0414), u"nb");
  EXPECT_EQ(ISO6391CodeByLocale(0x0007), u"de");
  EXPECT_EQ(ISO6391CodeByLocale(0xABCD), u"");
}

// A regional locale gives the whole display name; a primary one the part
// before the first "(", trimmed.
TEST(GetLocaleSLanguage, PrimaryCutBeforeBracket) {
  EXPECT_EQ(GetLocaleSLanguage(0x0409), u"English (United States)");
  EXPECT_EQ(GetLocaleSLanguage(0x0009), u"English");
  // zh-Hans is "Chinese (Simplified)": the primary locale 0004 loses the bracket.
  EXPECT_EQ(LocaleInfo(0x0004, LOCALE_SLANGUAGE), u"Chinese (Simplified)");
  EXPECT_EQ(GetLocaleSLanguage(0x0004), u"Chinese");
  // The cut does not apply to regional locales, whatever their brackets.
  EXPECT_EQ(GetLocaleSLanguage(0x7C04), u"Chinese (Traditional)");
  EXPECT_EQ(GetLocaleSLanguage(0xABCD), u"");
}

// The display name follows the system language.
TEST(GetLocaleSLanguage, SystemLanguage) {
  testing::ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  EXPECT_EQ(GetLocaleSLanguage(0x0407), u"Deutsch (Deutschland)");
  EXPECT_EQ(GetLocaleSLanguage(0x0007), u"Deutsch");
}

}  // namespace
}  // namespace quill::Glocales
