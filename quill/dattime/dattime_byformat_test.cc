// Tests of reading dates by a caller's format.
//
// The system default locale is pinned through QUILL_SYSTEM_LOCALE; the
// current year only enters through values computed here.
#include "quill/dattime/byformat.h"

#include <gtest/gtest.h>

#include <cmath>

#include "quill/rtl/datetime.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/syslocale.h"

namespace quill::Gdattime {
namespace {

using quill::testing::ScopedEnv;

TDateTime DT(uint16_t y, uint16_t m, uint16_t d, uint16_t h = 0, uint16_t n = 0, uint16_t s = 0) {
  return EncodeDate(y, m, d) + EncodeTime(h, n, s, 0);
}

double Read(std::u16string_view format, std::u16string_view text) {
  TDateTime v = 0;
  return TryStrToDateTimeByFormat(format, text, v) ? v : std::nan("");
}

TEST(TryStrToDateTimeByFormat, PointSeparatorWhateverTheLocaleUses) {
  // edge: d.m.y reads 24.12.2023 under a slash locale and a point locale
  for (const char* tag : {"en-US", "de-DE", "fr-FR"}) {
    ScopedEnv env({{"QUILL_SYSTEM_LOCALE", tag}});
    EXPECT_EQ(Read(u"dd.mm.yyyy", u"24.12.2023"), DT(2023, 12, 24)) << tag;
    EXPECT_EQ(Read(u"DD.MM.YYYY", u"24.12.2023"), DT(2023, 12, 24)) << tag;  // letters in any case
    EXPECT_TRUE(std::isnan(Read(u"dd.mm.yyyy", u"24/12/2023"))) << tag;
  }
}

TEST(TryStrToDateTimeByFormat, SlashMeansTheLocalesSeparator) {
  // edge: "/" keeps the system locale's own separator, not necessarily a slash
  {
    ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
    ASSERT_EQ(TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT).DateSeparator, u'.');
    EXPECT_EQ(Read(u"dd/mm/yyyy", u"24.12.2023"), DT(2023, 12, 24));
    EXPECT_TRUE(std::isnan(Read(u"dd/mm/yyyy", u"24/12/2023")));
  }
  {
    ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
    ASSERT_EQ(TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT).DateSeparator, u'/');
    EXPECT_EQ(Read(u"dd/mm/yyyy", u"24/12/2023"), DT(2023, 12, 24));
    EXPECT_TRUE(std::isnan(Read(u"dd/mm/yyyy", u"24.12.2023")));
  }
}

TEST(TryStrToDateTimeByFormat, OrderComesFromTheFormat) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  EXPECT_EQ(Read(u"yyyy-mm-dd", u"2023-12-24"), DT(2023, 12, 24));
  EXPECT_EQ(Read(u"mm-dd-yyyy", u"12-24-2023"), DT(2023, 12, 24));
  EXPECT_EQ(Read(u"d-m-y", u"24-12-2023"), DT(2023, 12, 24));
  EXPECT_TRUE(std::isnan(Read(u"mm-dd-yyyy", u"24-12-2023")));
}

TEST(TryStrToDateTimeByFormat, QuotedSeparator) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  EXPECT_EQ(Read(u"dd\"-\"mm\"-\"yyyy", u"24-12-2023"), DT(2023, 12, 24));
  // a doubled quote inside the quotes is the quote character itself
  EXPECT_EQ(Read(u"dd\"\"\"\"mm\"\"\"\"yyyy", u"24\"12\"2023"), DT(2023, 12, 24));
  // a quoted "/" is a real slash, even where the locale uses another separator
  ScopedEnv de({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  EXPECT_EQ(Read(u"dd\"/\"mm\"/\"yyyy", u"24/12/2023"), DT(2023, 12, 24));
}

TEST(TryStrToDateTimeByFormat, LongerSeparatorTextUsesItsFirstCharacter) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  EXPECT_EQ(Read(u"dd-/mm-/yyyy", u"24-12-2023"), DT(2023, 12, 24));
  // "dd. mm. yyyy": the separator is "."; blanks before numbers are read anyway
  EXPECT_EQ(Read(u"dd. mm. yyyy", u"24. 12. 2023"), DT(2023, 12, 24));
}

TEST(TryStrToDateTimeByFormat, DateThenTime) {
  // edge: a blank and a time format after the date part
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  EXPECT_EQ(Read(u"dd.mm.yyyy hh:nn", u"24.12.2023 18:30"), DT(2023, 12, 24, 18, 30));
  EXPECT_EQ(Read(u"dd.mm.yyyy hh:nn:ss", u"24.12.2023 18:30:15"), DT(2023, 12, 24, 18, 30, 15));
  EXPECT_EQ(Read(u"dd.mm.yyyy", u"24.12.2023 18:30"), DT(2023, 12, 24, 18, 30));  // the time is read anyway
  EXPECT_TRUE(std::isnan(Read(u"dd.mm.yyyy hh:nn", u"24.12.2023 18:30 Uhr")));
}

TEST(TryStrToDateTimeByFormat, AmPmOfTheLocale) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  EXPECT_EQ(Read(u"mm/dd/yyyy h:nn AMPM", u"12/24/2023 3:04 PM"), DT(2023, 12, 24, 15, 4));
  EXPECT_EQ(Read(u"mm/dd/yyyy", u"12/24/2023 12:00 am"), DT(2023, 12, 24));
}

TEST(TryStrToDateTimeByFormat, TwoDigitYearsAndMissingYear) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  const TFormatSettings fs = TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT);
  const int pivot = CurrentYear() - fs.TwoDigitYearCenturyWindow;
  int expected = pivot / 100 * 100 + 23;
  if (fs.TwoDigitYearCenturyWindow > 0 && expected < pivot) expected += 100;
  EXPECT_EQ(Read(u"dd.mm.yy", u"24.12.23"), DT(static_cast<uint16_t>(expected), 12, 24));
  // edge: missing year is the current one
  EXPECT_EQ(Read(u"dd.mm.yyyy", u"24.12"), DT(CurrentYear(), 12, 24));
  // edge: missing month is not a date (one number reads as an hour)
  EXPECT_EQ(Read(u"dd.mm.yyyy", u"7"), EncodeTime(7, 0, 0, 0));
  EXPECT_TRUE(std::isnan(Read(u"dd.mm.yyyy", u"24")));
}

TEST(TryStrToDateTimeByFormat, FailureLeavesTheResultAlone) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  TDateTime v = 7;
  EXPECT_FALSE(TryStrToDateTimeByFormat(u"dd.mm.yyyy", u"31.02.2023", v));
  EXPECT_FALSE(TryStrToDateTimeByFormat(u"dd.mm.yyyy", u"", v));
  EXPECT_EQ(v, 7);
}

TEST(TryStrToDateTimeByFormat, SwitchingFormatsAndLocales) {
  // The settings of the last format are kept per thread: a new format or a
  // changed system locale must still be honoured.
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  EXPECT_EQ(Read(u"dd/mm/yyyy", u"24/12/2023"), DT(2023, 12, 24));
  EXPECT_EQ(Read(u"mm/dd/yyyy", u"12/24/2023"), DT(2023, 12, 24));
  EXPECT_EQ(Read(u"dd/mm/yyyy", u"24/12/2023"), DT(2023, 12, 24));
  ScopedEnv de({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  EXPECT_EQ(Read(u"dd/mm/yyyy", u"24.12.2023"), DT(2023, 12, 24));
}

TEST(TryStrToDateTimeByFormat, FormatWithoutSeparatorKeepsTheLocales) {
  // outside the contract: no crash, the locale's separator stays
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  EXPECT_EQ(Read(u"ddmmyyyy", u"24.12.2023"), DT(2023, 12, 24));
  // an empty format has no date letter: month first, with the locale's separator
  EXPECT_EQ(Read(u"", u"12.24.2023"), DT(2023, 12, 24));
}

TEST(StrToDateTimeByFormat, UnreadableTextGivesToday) {
  // edge: deliberate fallback, never an error: today's date with time 0
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  const TDateTime before = Date();
  const TDateTime v = StrToDateTimeByFormat(u"dd.mm.yyyy", u"not a date");
  const TDateTime after = Date();
  EXPECT_TRUE(v == before || v == after);
  EXPECT_EQ(v, std::floor(v));
  EXPECT_EQ(StrToDateTimeByFormat(u"dd.mm.yyyy", u"24.12.2023 10:00"), DT(2023, 12, 24, 10));
}

}  // namespace
}  // namespace quill::Gdattime
