// Tests of the English name table and LocaleEngName.
#include "quill/locales/localenames.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "quill/locales/localeinfo.h"

namespace quill::Glocales {
namespace {

// The 135 rows as published for the library, one per line.
const std::map<LCID, std::u16string>& ExpectedRows() {
  static const std::map<LCID, std::u16string> rows = {
      {0x0401, u"Arabic (Saudi Arabia)"},
      {0x0801, u"Arabic (Iraq)"},
      {0x0C01, u"Arabic (Egypt)"},
      {0x1001, u"Arabic (Libya)"},
      {0x1401, u"Arabic (Algeria)"},
      {0x1801, u"Arabic (Morocco)"},
      {0x1C01, u"Arabic (Tunisia)"},
      {0x2001, u"Arabic (Oman)"},
      {0x2401, u"Arabic (Yemen)"},
      {0x2801, u"Arabic (Syria)"},
      {0x2C01, u"Arabic (Jordan)"},
      {0x3001, u"Arabic (Lebanon)"},
      {0x3401, u"Arabic (Kuwait)"},
      {0x3801, u"Arabic (U.A.E.)"},
      {0x3C01, u"Arabic (Bahrain)"},
      {0x4001, u"Arabic (Qatar)"},
      {0x0402, u"Bulgarian"},
      {0x0403, u"Catalan"},
      {0x0404, u"Chinese (Taiwan)"},
      {0x0804, u"Chinese (PRC)"},
      {0x0C04, u"Chinese (Hong Kong)"},
      {0x1004, u"Chinese (Singapore)"},
      {0x1404, u"Chinese (Macau)"},
      {0x0405, u"Czech"},
      {0x0406, u"Danish"},
      {0x0407, u"German (Germany)"},
      {0x0807, u"German (Switzerland)"},
      {0x0C07, u"German (Austria)"},
      {0x1007, u"German (Luxembourg)"},
      {0x1407, u"German (Liechtenstein)"},
      {0x0408, u"Greek"},
      {0x0409, u"English (United States)"},
      {0x0809, u"English (United Kingdom)"},
      {0x0C09, u"English (Australia)"},
      {0x1009, u"English (Canada)"},
      {0x1409, u"English (New Zealand)"},
      {0x1809, u"English (Ireland)"},
      {0x1C09, u"English (South Africa)"},
      {0x2009, u"English (Jamaica)"},
      {0x2409, u"English (Caribbean)"},
      {0x2809, u"English (Belize)"},
      {0x2C09, u"English (Trinidad)"},
      {0x3009, u"English (Zimbabwe)"},
      {0x3409, u"English (Philippines)"},
      {0x040A, u"Spanish (Traditional Sort)"},
      {0x080A, u"Spanish (Mexico)"},
      {0x0C0A, u"Spanish (International Sort)"},
      {0x100A, u"Spanish (Guatemala)"},
      {0x140A, u"Spanish (Costa Rica)"},
      {0x180A, u"Spanish (Panama)"},
      {0x1C0A, u"Spanish (Dominican Republic)"},
      {0x200A, u"Spanish (Venezuela)"},
      {0x240A, u"Spanish (Colombia)"},
      {0x280A, u"Spanish (Peru)"},
      {0x2C0A, u"Spanish (Argentina)"},
      {0x300A, u"Spanish (Ecuador)"},
      {0x340A, u"Spanish (Chile)"},
      {0x380A, u"Spanish (Uruguay)"},
      {0x3C0A, u"Spanish (Paraguay)"},
      {0x400A, u"Spanish (Bolivia)"},
      {0x440A, u"Spanish (El Salvador)"},
      {0x480A, u"Spanish (Honduras)"},
      {0x4C0A, u"Spanish (Nicaragua)"},
      {0x500A, u"Spanish (Puerto Rico)"},
      {0x040B, u"Finnish"},
      {0x040C, u"French (France)"},
      {0x080C, u"French (Belgium)"},
      {0x0C0C, u"French (Canada)"},
      {0x100C, u"French (Switzerland)"},
      {0x140C, u"French (Luxembourg)"},
      {0x180C, u"French (Monaco)"},
      {0x040D, u"Hebrew"},
      {0x040E, u"Hungarian"},
      {0x040F, u"Icelandic"},
      {0x0410, u"Italian (Italy)"},
      {0x0810, u"Italian (Switzerland)"},
      {0x0411, u"Japanese"},
      {0x0412, u"Korean"},
      {0x0413, u"Dutch (Netherlands)"},
      {0x0813, u"Dutch (Belgium)"},
      {0x0414, u"Norwegian (Bokmal)"},
      {0x0814, u"Norwegian (Nynorsk)"},
      {0x0415, u"Polish"},
      {0x0416, u"Portuguese (Brazil)"},
      {0x0816, u"Portuguese (Portugal)"},
      {0x0418, u"Romanian"},
      {0x0419, u"Russian"},
      {0x041A, u"Croatian"},
      {0x081A, u"Serbian (Latin)"},
      {0x0C1A, u"Serbian (Cyrillic)"},
      {0x041B, u"Slovak"},
      {0x041C, u"Albanian"},
      {0x041D, u"Swedish"},
      {0x081D, u"Swedish (Finland)"},
      {0x041E, u"Thai"},
      {0x041F, u"Turkish"},
      {0x0420, u"Urdu"},
      {0x0421, u"Indonesian"},
      {0x0422, u"Ukrainian"},
      {0x0423, u"Belarusian"},
      {0x0424, u"Slovenian"},
      {0x0425, u"Estonian"},
      {0x0426, u"Latvian"},
      {0x0427, u"Lithuanian"},
      {0x0429, u"Farsi"},
      {0x042A, u"Vietnamese"},
      {0x042B, u"Armenian"},
      {0x042C, u"Azeri (Latin)"},
      {0x082C, u"Azeri (Cyrillic)"},
      {0x042D, u"Basque"},
      {0x042F, u"Macedonian (FYROM)"},
      {0x0436, u"Afrikaans"},
      {0x0437, u"Georgian"},
      {0x0438, u"Faeroese"},
      {0x0439, u"Hindi"},
      {0x043E, u"Malay (Malaysia)"},
      {0x083E, u"Malay (Brunei Darussalam)"},
      {0x043F, u"Kazakh"},
      {0x0440, u"Kyrgyz (Cyrillic)"},
      {0x0441, u"Swahili"},
      {0x0443, u"Uzbek (Latin)"},
      {0x0843, u"Uzbek (Cyrillic)"},
      {0x0444, u"Tatar"},
      {0x0446, u"Punjabi"},
      {0x0447, u"Gujarati"},
      {0x0449, u"Tamil"},
      {0x044A, u"Telugu"},
      {0x044B, u"Kannada"},
      {0x044E, u"Marathi"},
      {0x044F, u"Sanskrit"},
      {0x0450, u"Mongolian (Cyrillic)"},
      {0x0456, u"Galician"},
      {0x0457, u"Konkani"},
      {0x045A, u"Syriac"},
      {0x0465, u"Divehi"},
  };
  return rows;
}

// Every row of the table, exactly.
TEST(LocaleEngName, EveryTableRow) {
  ASSERT_EQ(ExpectedRows().size(), 135u);
  for (const auto& [lcid, name] : ExpectedRows()) {
    EXPECT_EQ(LocaleEngName(lcid), name) << std::hex << lcid;
  }
}

// The table itself holds exactly those rows, each key once.
TEST(LocaleEngNameTable, ExactlyTheRows) {
  const auto table = LocaleEngNameTable();
  ASSERT_EQ(table.size(), 135u);
  std::set<LCID> keys;
  for (const TLocaleEngNameRow& row : table) {
    EXPECT_TRUE(keys.insert(row.Locale).second) << std::hex << row.Locale;
    const auto it = ExpectedRows().find(row.Locale);
    ASSERT_NE(it, ExpectedRows().end()) << std::hex << row.Locale;
    EXPECT_EQ(row.Name, it->second);
  }
}

// Edge cases: 0409 and the historic forms kept on purpose.
TEST(LocaleEngName, HistoricForms) {
  EXPECT_EQ(LocaleEngName(0x0409), u"English (United States)");
  EXPECT_EQ(LocaleEngName(0x0C0A), u"Spanish (International Sort)");
  EXPECT_EQ(LocaleEngName(0x040A), u"Spanish (Traditional Sort)");
  EXPECT_EQ(LocaleEngName(0x0429), u"Farsi");
  EXPECT_EQ(LocaleEngName(0x0438), u"Faeroese");
  EXPECT_EQ(LocaleEngName(0x042F), u"Macedonian (FYROM)");
  EXPECT_EQ(LocaleEngName(0x0414), u"Norwegian (Bokmal)");
  EXPECT_EQ(LocaleEngName(0x3801), u"Arabic (U.A.E.)");
  EXPECT_EQ(LocaleEngName(0x2C09), u"English (Trinidad)");
}

// Keys are exact: a sort-order variant of a listed locale is not listed.
TEST(LocaleEngName, KeysAreNotMasked) {
  // 0x10407 (German, phone book sort) is a regional locale missing from the
  // table: its English language name and abbreviation.
  EXPECT_EQ(LocaleEngName(0x10407), u"German (DEU)");
  EXPECT_NE(LocaleEngName(0x10407), LocaleEngName(0x0407));
}

// Edge case: a primary LCID missing from the table gives the bare English
// language name.
TEST(LocaleEngName, PrimaryNotListedIsLanguageName) {
  EXPECT_EQ(LocaleEngName(0x0009), u"English");
  EXPECT_EQ(LocaleEngName(0x0007), u"German");
  // The whole language name, brackets and all: the cut applies to regional
  // locales only.
  EXPECT_EQ(LocaleEngName(0x0014), u"Norwegian (Bokm\u00E5l)");
}

// An unlisted regional locale reads as its English language name followed by
// its abbreviation in brackets, not by a country.
TEST(LocaleEngName, RegionalNotListedUsesAbbreviation) {
  EXPECT_EQ(LocaleEngName(0x4009), u"English (ENN)");
  EXPECT_EQ(LocaleEngName(0x0432), u"Setswana (TSN)");
  // The language name is cut before " (": "Azeri (Latin)" becomes "Azeri".
  EXPECT_EQ(LocaleEngName(0x742C), u"Azeri (AZC)");
  EXPECT_EQ(LocaleEngName(0x0C1A), u"Serbian (Cyrillic)");  // listed: the table wins
}

// Edge case: a primary LCID unknown to the system gives "", no error.
TEST(LocaleEngName, UnknownPrimaryIsEmpty) {
  EXPECT_EQ(LocaleEngName(0x03FF), u"");
  // 0 stands for the user's locale (en-US here) and is primary by the bit
  // rule, so it reads as the bare language name.
  EXPECT_EQ(LocaleEngName(0x0000), u"English");
}

// An unknown regional LCID gives " ()": the empty language name, then " (",
// the empty abbreviation and ")".
TEST(LocaleEngName, UnknownRegionalIsEmptyBrackets) {
  EXPECT_EQ(LocaleEngName(0xABCD), u" ()");
  EXPECT_EQ(LocaleEngName(0x07FF), u" ()");
}

}  // namespace
}  // namespace quill::Glocales
