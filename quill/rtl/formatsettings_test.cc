// Format settings built from ICU locale data, and the process-wide settings.
#include "quill/rtl/formatsettings.h"

#include <gtest/gtest.h>

#include "quill/rtl/internal/icupattern.h"
#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill {
namespace {

using testing::ScopedEnv;

TEST(TranslateIcuPattern, Letters) {
  using internal::TranslateIcuPattern;
  EXPECT_EQ(TranslateIcuPattern(u"M/d/yy"), u"m/d/yy");
  EXPECT_EQ(TranslateIcuPattern(u"dd.MM.y"), u"dd.mm.yyyy");
  EXPECT_EQ(TranslateIcuPattern(u"EEEE, MMMM d, y"), u"dddd, mmmm d, yyyy");
  EXPECT_EQ(TranslateIcuPattern(u"EEE d MMM yyyy"), u"ddd d mmm yyyy");
  // Minutes become n so that they cannot be read as months.
  EXPECT_EQ(TranslateIcuPattern(u"h:mm a"), u"h:nn AMPM");
  EXPECT_EQ(TranslateIcuPattern(u"HH:mm:ss"), u"hh:nn:ss");
  EXPECT_EQ(TranslateIcuPattern(u"H:mm:ss.SSS"), u"h:nn:ss.zzz");
}

TEST(TranslateIcuPattern, LiteralsAndDroppedFields) {
  using internal::TranslateIcuPattern;
  // Edge case: quoted literal text with letters stays quoted; '' is a quote.
  EXPECT_EQ(TranslateIcuPattern(u"d 'de' MMMM 'de' y"), u"d\" de \"mmmm\" de \"yyyy");
  EXPECT_EQ(TranslateIcuPattern(u"h 'o''clock' a"), u"h\" o'clock \"AMPM");
  // Non-letter literals (CJK, punctuation) are copied as they are.
  EXPECT_EQ(TranslateIcuPattern(u"y\u5E74M\u6708d\u65E5"), u"yyyy\u5E74m\u6708d\u65E5");
  // Edge case: time zone and era have no letter; they go with their spacing.
  EXPECT_EQ(TranslateIcuPattern(u"h:mm:ss a zzzz"), u"h:nn:ss AMPM");
  EXPECT_EQ(TranslateIcuPattern(u"G y MMMM d"), u"yyyy mmmm d");
  EXPECT_EQ(TranslateIcuPattern(u""), u"");
}

TEST(PatternSeparator, FirstLiteralBetweenFields) {
  using internal::PatternSeparator;
  EXPECT_EQ(PatternSeparator(u"dd.MM.yy", u"yMd", u'/'), u'.');
  EXPECT_EQ(PatternSeparator(u"y-MM-dd", u"yMd", u'/'), u'-');
  EXPECT_EQ(PatternSeparator(u"d. M. y", u"yMd", u'/'), u'.');
  EXPECT_EQ(PatternSeparator(u"d\u200F/M\u200F/y", u"yMd", u'-'), u'/');
  EXPECT_EQ(PatternSeparator(u"HH.mm", u"Hhms", u':'), u'.');
  // Edge case: no separator at all gives the fallback.
  EXPECT_EQ(PatternSeparator(u"yyyyMMdd", u"yMd", u'/'), u'/');
}

TEST(TFormatSettingsCreate, EnglishUnitedStates) {
  const TFormatSettings fs = TFormatSettings::Create(u"en-US");
  EXPECT_EQ(fs.ShortDateFormat, u"m/d/yyyy");
  EXPECT_EQ(fs.LongDateFormat, u"dddd, mmmm d, yyyy");
  EXPECT_EQ(fs.ShortTimeFormat, u"h:nn AMPM");
  EXPECT_EQ(fs.LongTimeFormat, u"h:nn:ss AMPM");
  EXPECT_EQ(fs.DateSeparator, u'/');
  EXPECT_EQ(fs.TimeSeparator, u':');
  EXPECT_EQ(fs.DecimalSeparator, u'.');
  EXPECT_EQ(fs.ThousandSeparator, u',');
  EXPECT_EQ(fs.ListSeparator, u',');
  EXPECT_EQ(fs.CurrencyString, u"$");
  EXPECT_EQ(fs.CurrencyFormat, 0);
  EXPECT_EQ(fs.NegCurrFormat, 1);
  EXPECT_EQ(fs.CurrencyDecimals, 2);
  EXPECT_EQ(fs.TimeAMString, u"AM");
  EXPECT_EQ(fs.TimePMString, u"PM");
  EXPECT_EQ(fs.LongMonthNames[0], u"January");
  EXPECT_EQ(fs.LongMonthNames[11], u"December");
  EXPECT_EQ(fs.ShortMonthNames[8], u"Sep");
  EXPECT_EQ(fs.LongDayNames[0], u"Sunday");
  EXPECT_EQ(fs.LongDayNames[6], u"Saturday");
  EXPECT_EQ(fs.ShortDayNames[1], u"Mon");
  EXPECT_EQ(fs.TwoDigitYearCenturyWindow, 50);
}

TEST(TFormatSettingsCreate, German) {
  const TFormatSettings fs = TFormatSettings::Create(u"de-DE");
  EXPECT_EQ(fs.ShortDateFormat, u"dd.mm.yyyy");
  EXPECT_EQ(fs.LongDateFormat, u"dddd, d. mmmm yyyy");
  EXPECT_EQ(fs.ShortTimeFormat, u"hh:nn");
  EXPECT_EQ(fs.LongTimeFormat, u"hh:nn:ss");
  EXPECT_EQ(fs.DateSeparator, u'.');
  EXPECT_EQ(fs.DecimalSeparator, u',');
  EXPECT_EQ(fs.ThousandSeparator, u'.');
  EXPECT_EQ(fs.ListSeparator, u';');
  EXPECT_EQ(fs.CurrencyString, u"\u20AC");
  EXPECT_EQ(fs.CurrencyFormat, 3);  // "1 €"
  EXPECT_EQ(fs.NegCurrFormat, 8);   // "-1 €"
  // Format-context names: the forms used inside a date.
  EXPECT_EQ(fs.LongMonthNames[0], u"Januar");
  EXPECT_EQ(fs.LongMonthNames[2], u"M\u00E4rz");
  EXPECT_EQ(fs.LongDayNames[0], u"Sonntag");
}

TEST(TFormatSettingsCreate, French) {
  const TFormatSettings fs = TFormatSettings::Create(u"fr-FR");
  EXPECT_EQ(fs.ShortDateFormat, u"dd/mm/yyyy");
  EXPECT_EQ(fs.LongDateFormat, u"dddd d mmmm yyyy");
  EXPECT_EQ(fs.DateSeparator, u'/');
  EXPECT_EQ(fs.DecimalSeparator, u',');
  // Decision: the grouping separator is the locale's own, a narrow no-break
  // space (U+202F), not replaced by an ordinary or a no-break space.
  EXPECT_EQ(fs.ThousandSeparator, u'\u202F');
  EXPECT_EQ(fs.LongMonthNames[0], u"janvier");
  EXPECT_EQ(fs.LongMonthNames[7], u"ao\u00FBt");
  EXPECT_EQ(fs.LongDayNames[1], u"lundi");
}

TEST(TFormatSettingsCreate, Japanese) {
  const TFormatSettings fs = TFormatSettings::Create(u"ja-JP");
  EXPECT_EQ(fs.ShortDateFormat, u"yyyy/mm/dd");
  EXPECT_EQ(fs.DateSeparator, u'/');
  EXPECT_EQ(fs.ShortTimeFormat, u"h:nn");
  EXPECT_EQ(fs.LongMonthNames[0], u"1\u6708");
  EXPECT_EQ(fs.TimeAMString, u"\u5348\u524D");
  EXPECT_EQ(fs.CurrencyDecimals, 0);
}

TEST(TFormatSettingsCreate, ByLcid) {
  EXPECT_EQ(TFormatSettings::Create(LCID{0x0407}).LongMonthNames[0], u"Januar");
  EXPECT_EQ(TFormatSettings::Create(LCID{0x040C}).LongMonthNames[0], u"janvier");
  EXPECT_EQ(TFormatSettings::Create(LCID{0x0411}).ShortDateFormat, u"yyyy/mm/dd");
  // A sort-order LCID (German phone book) has the settings of its locale.
  EXPECT_EQ(TFormatSettings::Create(LCID{0x10407}).ShortDateFormat, u"dd.mm.yyyy");
}

TEST(TFormatSettingsCreate, SystemDefaultAndUnknownLcid) {
  ScopedEnv env{{"QUILL_SYSTEM_LOCALE", "de-DE"}, {"LC_ALL", "fr_FR.UTF-8"}};
  EXPECT_EQ(TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT).LongMonthNames[0], u"Januar");
  EXPECT_EQ(TFormatSettings::Create(LOCALE_USER_DEFAULT).LongMonthNames[0], u"janvier");
  EXPECT_EQ(TFormatSettings::Create().LongMonthNames[0], u"janvier");
  // Edge case: an LCID the fact table does not know gives the system default's.
  EXPECT_EQ(TFormatSettings::Create(LCID{0x7777}).LongMonthNames[0], u"Januar");
}

TEST(TFormatSettingsCreate, UnknownTagGivesRootSettings) {
  // Edge case: no data for the language: the root locale, not the machine's.
  const TFormatSettings fs = TFormatSettings::Create(u"xx-YY");
  EXPECT_EQ(fs.ShortDateFormat, u"yyyy-mm-dd");
  EXPECT_EQ(fs.DateSeparator, u'-');
  EXPECT_EQ(fs.CurrencyString, u"\u00A4");
}

TEST(FormatSettings, FollowsUserLocaleAndReset) {
  {
    ScopedEnv env{{"LC_ALL", "de_DE.UTF-8"}};
    EXPECT_EQ(FormatSettings().DecimalSeparator, u',');
    // Callers may change the process-wide settings; they stay changed...
    FormatSettings().DecimalSeparator = u'#';
    EXPECT_EQ(FormatSettings().DecimalSeparator, u'#');
    // ... until they are rebuilt.
    ResetFormatSettings();
    EXPECT_EQ(FormatSettings().DecimalSeparator, u',');
  }
  ScopedEnv env{{"LC_ALL", "en_US.UTF-8"}};
  EXPECT_EQ(FormatSettings().DecimalSeparator, u'.');
  EXPECT_EQ(FormatSettings().LongMonthNames[0], u"January");
}

}  // namespace
}  // namespace quill
