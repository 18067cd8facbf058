// Tests of the locale database: GetLocaleInfoW, LocaleInfo and the supported
// locales. The tests run with the system locale pinned to en-US.
#include "quill/locales/localeinfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

#include "quill/locales/internal/localeinfo_steps.h"
#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill::Glocales {
namespace {

// The Windows values of the type constants: callers pass raw numbers too.
TEST(LocaleInfoTypes, WindowsValues) {
  EXPECT_EQ(LOCALE_ILANGUAGE, 0x1u);
  EXPECT_EQ(LOCALE_SLANGUAGE, 0x2u);
  EXPECT_EQ(LOCALE_SABBREVLANGNAME, 0x3u);
  EXPECT_EQ(LOCALE_SNATIVELANGNAME, 0x4u);
  EXPECT_EQ(LOCALE_SCOUNTRY, 0x6u);
  EXPECT_EQ(LOCALE_SNATIVECTRYNAME, 0x8u);
  EXPECT_EQ(LOCALE_IDEFAULTCODEPAGE, 0xBu);
  EXPECT_EQ(LOCALE_SENGLANGUAGE, 0x1001u);
  EXPECT_EQ(LOCALE_SENGCOUNTRY, 0x1002u);
  EXPECT_EQ(LOCALE_IDEFAULTANSICODEPAGE, 0x1004u);
  EXPECT_EQ(LOCALE_SISO639LANGNAME, 0x59u);
  EXPECT_EQ(LOCALE_SISO3166CTRYNAME, 0x5Au);
  EXPECT_EQ(LOCALE_SNAME, 0x5Cu);
  EXPECT_EQ(LOCALE_SENGLISHDISPLAYNAME, 0x72u);
}

// Every type for en-US.
TEST(LocaleInfo, EnglishUnitedStates) {
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_ILANGUAGE), u"0409");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SLANGUAGE), u"English (United States)");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SABBREVLANGNAME), u"ENU");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SNATIVELANGNAME), u"English");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SCOUNTRY), u"United States");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SNATIVECTRYNAME), u"United States");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_IDEFAULTCODEPAGE), u"437");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SENGLANGUAGE), u"English");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SENGCOUNTRY), u"United States");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_IDEFAULTANSICODEPAGE), u"1252");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SISO639LANGNAME), u"en");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SISO3166CTRYNAME), u"US");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SNAME), u"en-US");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SENGLISHDISPLAYNAME), u"English (United States)");
}

// Native names come in the locale's own language, display names in the
// system's.
TEST(LocaleInfo, GermanGermanyUnderEnglishSystem) {
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SLANGUAGE), u"German (Germany)");
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SNATIVELANGNAME), u"Deutsch");
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SNATIVECTRYNAME), u"Deutschland");
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SENGCOUNTRY), u"Germany");
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SCOUNTRY), u"Germany");
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SABBREVLANGNAME), u"DEU");
  EXPECT_EQ(LocaleInfo(0x0C07, LOCALE_SABBREVLANGNAME), u"DEA");
}

// LOCALE_SLANGUAGE follows the system default locale, not the user's.
TEST(LocaleInfo, DisplayNameInSystemLanguage) {
  testing::ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}, {"LANG", "fr_FR.UTF-8"}});
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SLANGUAGE), u"Englisch (Vereinigte Staaten)");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SCOUNTRY), u"Vereinigte Staaten");
  // English and native names do not move with it.
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SENGLANGUAGE), u"English");
  EXPECT_EQ(LocaleInfo(0x040C, LOCALE_SNATIVELANGNAME), u"fran\u00E7ais");
}

// A system language ICU has no names for falls back to English, whatever the
// machine's own locale is.
TEST(LocaleInfo, SystemLanguageWithoutNamesUsesEnglish) {
  testing::ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "0x0466"}, {"LANG", "de_DE.UTF-8"}, {"LC_ALL", "de_DE.UTF-8"}});
  EXPECT_EQ(LocaleInfo(0x0407, LOCALE_SLANGUAGE), u"German (Germany)");
}

// The sort-order variant 040A is Spain with the traditional collation;
// 0C0A is plain Spain.
TEST(LocaleInfo, SpanishSortOrders) {
  EXPECT_EQ(LocaleInfo(0x0C0A, LOCALE_SLANGUAGE), u"Spanish (Spain)");
  EXPECT_EQ(LocaleInfo(0x040A, LOCALE_SLANGUAGE), u"Spanish (Spain, Traditional Sort Order)");
  EXPECT_EQ(LocaleInfo(0x040A, LOCALE_SNAME), u"es-ES_tradnl");
  EXPECT_EQ(LocaleInfo(0x040A, LOCALE_SISO3166CTRYNAME), u"ES");
}

// Unicode-only locales: ANSI code page "0", OEM code page "1", as on Windows.
TEST(LocaleInfo, UnicodeOnlyLocaleCodePages) {
  EXPECT_EQ(LocaleInfo(0x0439, LOCALE_IDEFAULTANSICODEPAGE), u"0");
  EXPECT_EQ(LocaleInfo(0x0439, LOCALE_IDEFAULTCODEPAGE), u"1");
  EXPECT_EQ(LocaleInfo(0x0411, LOCALE_IDEFAULTANSICODEPAGE), u"932");
  EXPECT_EQ(LocaleInfo(0x0401, LOCALE_IDEFAULTANSICODEPAGE), u"1256");
}

// A neutral (primary) locale has a language but no country.
TEST(LocaleInfo, NeutralLocaleHasNoCountry) {
  EXPECT_EQ(LocaleInfo(0x0009, LOCALE_SISO639LANGNAME), u"en");
  EXPECT_EQ(LocaleInfo(0x0009, LOCALE_SISO3166CTRYNAME), u"");
  EXPECT_EQ(LocaleInfo(0x0009, LOCALE_SENGCOUNTRY), u"");
  EXPECT_EQ(LocaleInfo(0x0009, LOCALE_SLANGUAGE), u"English");
  EXPECT_EQ(LocaleInfo(0x0009, LOCALE_SABBREVLANGNAME), u"ENU");
}

// Edge case: an LCID or a type the database does not know gives "" from
// both calls, never an error.
TEST(LocaleInfo, UnknownLocaleOrTypeIsEmpty) {
  for (uint32_t type : {LOCALE_ILANGUAGE, LOCALE_SLANGUAGE, LOCALE_SABBREVLANGNAME, LOCALE_SNATIVELANGNAME,
                        LOCALE_SCOUNTRY, LOCALE_SNATIVECTRYNAME, LOCALE_IDEFAULTCODEPAGE, LOCALE_SENGLANGUAGE,
                        LOCALE_SENGCOUNTRY, LOCALE_IDEFAULTANSICODEPAGE, LOCALE_SISO639LANGNAME,
                        LOCALE_SISO3166CTRYNAME, LOCALE_SNAME, LOCALE_SENGLISHDISPLAYNAME}) {
    EXPECT_EQ(LocaleInfo(0xABCD, type), u"") << type;
    EXPECT_EQ(GetLocaleInfoW(0xABCD, type, nullptr, 0), 0) << type;
  }
  EXPECT_EQ(LocaleInfo(0x0409, 0x7777), u"");
  EXPECT_EQ(LocaleInfo(0x0409, 0), u"");
}

// A locale without a recorded OEM code page answers "" for it.
TEST(LocaleInfo, UnrecordedOemCodePageIsEmpty) {
  EXPECT_EQ(LocaleInfo(0x4C09, LOCALE_IDEFAULTCODEPAGE), u"");
  EXPECT_EQ(LocaleInfo(0x4C09, LOCALE_IDEFAULTANSICODEPAGE), u"1252");
}

// 2048 is the system default locale, 1024 and 0 the user's.
TEST(LocaleInfo, DefaultLocaleIdentifiers) {
  testing::ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-AT"}, {"LANG", "fr_CA.UTF-8"}});
  EXPECT_EQ(LocaleInfo(2048, LOCALE_SNAME), u"de-AT");
  EXPECT_EQ(LocaleInfo(1024, LOCALE_SNAME), u"fr-CA");
  EXPECT_EQ(LocaleInfo(0, LOCALE_SNAME), u"fr-CA");
}

// The override and code-page flags change nothing.
TEST(LocaleInfo, FlagsIgnored) {
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SENGLANGUAGE | LOCALE_NOUSEROVERRIDE), u"English");
  EXPECT_EQ(LocaleInfo(0x0409, LOCALE_SISO639LANGNAME | LOCALE_USE_CP_ACP), u"en");
}

// The length call counts the terminator; a short buffer gets nothing.
TEST(GetLocaleInfoW, LengthAndBuffer) {
  EXPECT_EQ(GetLocaleInfoW(0x0409, LOCALE_SNAME, nullptr, 0), 6);
  char16_t buf[8] = {u'x', u'x', u'x', u'x', u'x', u'x', u'x', u'x'};
  EXPECT_EQ(GetLocaleInfoW(0x0409, LOCALE_SNAME, buf, 5), 0);
  EXPECT_EQ(buf[0], u'x');
  EXPECT_EQ(GetLocaleInfoW(0x0409, LOCALE_SNAME, buf, 6), 6);
  EXPECT_EQ(UnicodeString(buf), u"en-US");
  EXPECT_EQ(buf[6], u'x');
  EXPECT_EQ(GetLocaleInfoW(0x0409, LOCALE_SNAME, buf, -1), 0);
}

// Edge case: the error is raised only when the length call and the text call
// disagree.
TEST(LocaleInfoBy, DisagreementRaises) {
  int calls = 0;
  const internal::LocaleInfoQuery shifting = [&calls](LCID, uint32_t, char16_t* buf, int32_t n) -> int32_t {
    ++calls;
    if (n == 0) return 4;
    buf[0] = u'a';
    buf[1] = u'\0';
    return 2;
  };
  try {
    (void)internal::LocaleInfoBy(shifting, 0x0409, LOCALE_SNAME);
    FAIL() << "no error";
  } catch (const ELocalesError& e) {
    EXPECT_EQ(e.Message(), u"Can not get locale info");
  }
  EXPECT_EQ(calls, 2);
}

// Edge case: two zero answers agree: the empty string, no error.
TEST(LocaleInfoBy, BothZeroIsEmpty) {
  int calls = 0;
  const internal::LocaleInfoQuery none = [&calls](LCID, uint32_t, char16_t*, int32_t) -> int32_t {
    ++calls;
    return 0;
  };
  EXPECT_EQ(internal::LocaleInfoBy(none, 1, 2), u"");
  EXPECT_EQ(calls, 2);
}

// The text call gets a buffer of exactly the announced length.
TEST(LocaleInfoBy, SecondCallGetsAnnouncedLength) {
  std::vector<int32_t> sizes;
  const internal::LocaleInfoQuery query = [&sizes](LCID l, uint32_t t, char16_t* buf, int32_t n) {
    sizes.push_back(n);
    return GetLocaleInfoW(l, t, buf, n);
  };
  EXPECT_EQ(internal::LocaleInfoBy(query, 0x0409, LOCALE_SENGLANGUAGE), u"English");
  EXPECT_EQ(sizes, (std::vector<int32_t>{0, 8}));
}

// The fact table's rows with a country, no sort order and no pseudo tag, read
// straight from the data file.
std::vector<LCID> SpecificLocalesFromDataFile() {
  std::ifstream in(std::string(QUILL_SOURCE_DIR) + "/data/locales/windows-locales.tsv");
  std::string line;
  std::getline(in, line);
  std::vector<LCID> out;
  while (std::getline(in, line)) {
    std::vector<std::string> cells;
    std::stringstream ss(line);
    for (std::string cell; std::getline(ss, cell, '\t');) cells.push_back(cell);
    if (cells.size() < 7 || cells[6].empty() || cells[0].size() > 4 || cells[1].starts_with("qps")) continue;
    out.push_back(static_cast<LCID>(std::stoul(cells[0], nullptr, 16)));
  }
  return out;
}

// The enumeration: every specific locale, ascending.
TEST(EnumSystemLocales, SpecificLocalesAscending) {
  const std::vector<LCID> all = EnumSystemLocales();
  EXPECT_EQ(all, SpecificLocalesFromDataFile());
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
  EXPECT_EQ(all.front(), 0x0401u);
  EXPECT_GT(all.size(), 250u);
  for (LCID l : {0x0409u, 0x0809u, 0x0C09u, 0x040Au, 0x0C0Au, 0x2409u}) {
    EXPECT_NE(std::find(all.begin(), all.end(), l), all.end()) << l;
  }
  // Neutral, sort-order and pseudo locales are not listed.
  for (LCID l : {0x0009u, 0x7C04u, 0x10407u, 0x0501u, 0x09FFu, 0x0460u}) {
    EXPECT_EQ(std::find(all.begin(), all.end(), l), all.end()) << l;
  }
}

// Every listed locale has a display name, so every list can show it.
TEST(EnumSystemLocales, EveryLocaleHasADisplayName) {
  for (LCID l : EnumSystemLocales()) {
    EXPECT_FALSE(LocaleInfo(l, LOCALE_SLANGUAGE).empty()) << l;
    EXPECT_FALSE(LocaleInfo(l, LOCALE_SISO3166CTRYNAME).empty()) << l;
  }
}

}  // namespace
}  // namespace quill::Glocales
