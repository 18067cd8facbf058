// Tests of Gdattime's month names, GetDateName and the unit's start and stop.
//
// The system default locale is pinned through QUILL_SYSTEM_LOCALE for each
// test (and the user locale set to something else, to show it is not used).
#include "quill/dattime/datenames.h"

#include <gtest/gtest.h>

#include <vector>

#include "quill/frame/units.h"
#include "quill/rtl/datetime.h"
#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/tstrings.h"

namespace quill::Gdattime {
namespace {

using quill::testing::ScopedEnv;

// Runs the unit's first start under `system_locale` with a different user
// locale, and its last stop at the end of the scope.
class StartedUnit {
 public:
  explicit StartedUnit(const char* system_locale)
      : env_({{"QUILL_SYSTEM_LOCALE", system_locale}, {"LC_ALL", "ja_JP.UTF-8"}}) {
    EXPECT_EQ(StartCount(), 0);
    initialization();
  }
  ~StartedUnit() { Finalization(); }

 private:
  ScopedEnv env_;
};

TEST(LongMonthNames2, EnglishSystemLocale) {
  StartedUnit unit("en-US");
  EXPECT_EQ(LongMonthNames2[1], u"of January");
  EXPECT_EQ(LongMonthNames2[5], u"of May");
  EXPECT_EQ(LongMonthNames2[12], u"of December");
  EXPECT_EQ(LongMonthNames2[0], u"");  // index 0 is unused
}

TEST(LongMonthNames2, GermanSystemLocale) {
  StartedUnit unit("de-DE");
  EXPECT_EQ(LongMonthNames2[1], u"of Januar");
  EXPECT_EQ(LongMonthNames2[3], u"of M\u00e4rz");
  EXPECT_EQ(LongMonthNames2[12], u"of Dezember");
}

TEST(LongMonthNames2, FrenchSystemLocale) {
  StartedUnit unit("fr-FR");
  EXPECT_EQ(LongMonthNames2[2], u"of f\u00e9vrier");
  EXPECT_EQ(LongMonthNames2[8], u"of ao\u00fbt");
}

TEST(GdattimeUnit, TwoStartsAndTwoStopsBuildAndClearOnce) {
  ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "en-US"}});
  ASSERT_EQ(StartCount(), 0);
  initialization();
  InitDateTimeParams(u" AD", {u"Jan."});
  initialization();  // edge: a second start builds nothing (keeps our change)
  EXPECT_EQ(LongMonthNames2[1], u"Jan.");
  EXPECT_EQ(StartCount(), -2);
  Finalization();  // edge: one stop after two starts frees nothing
  EXPECT_EQ(LongMonthNames2[1], u"Jan.");
  EXPECT_EQ(ShortYearName, u" AD");
  Finalization();  // the last stop clears the phrases and the year name
  EXPECT_EQ(StartCount(), 0);
  for (const UnicodeString& s : LongMonthNames2) EXPECT_EQ(s, u"");
  EXPECT_EQ(ShortYearName, u"");
}

TEST(GetDateName, WithTheStartUpPhrases) {
  StartedUnit unit("en-US");
  // edge: 5 May 2024 gives "5 of May 2024" (no leading zeros)
  EXPECT_EQ(GetDateName(EncodeDate(2024, 5, 5)), u"5 of May 2024");
  // edge: noon of 1 January 0001 is written day - 0.5 (negative values
  // subtract their time of day)
  EXPECT_EQ(GetDateName(EncodeDate(1, 1, 1) - 0.5), u"1 of January 1");
  EXPECT_EQ(GetDateName(EncodeDate(9999, 12, 31) + 0.5), u"31 of December 9999");
  ShortYearName = u"y.";
  EXPECT_EQ(GetDateName(EncodeDate(2024, 12, 31)), u"31 of December 2024y.");
}

TEST(GetDateName, BeforeTheFirstYearDecodesAsZeros) {
  StartedUnit unit("en-US");
  EXPECT_EQ(GetDateName(-700000), u"0  0");
}

TEST(InitDateTimeParams, ReplacesYearNameAndLeadingMonths) {
  StartedUnit unit("de-DE");
  InitDateTimeParams(u" r.", {u"stycznia", u"lutego"});
  EXPECT_EQ(ShortYearName, u" r.");
  EXPECT_EQ(LongMonthNames2[1], u"stycznia");
  EXPECT_EQ(LongMonthNames2[2], u"lutego");
  EXPECT_EQ(LongMonthNames2[3], u"of M\u00e4rz");  // months not given stay
  EXPECT_EQ(GetDateName(EncodeDate(2024, 2, 9)), u"9 lutego 2024 r.");
}

TEST(InitDateTimeParams, MoreThanTwelveNamesAreIgnoredPastTheTwelfth) {
  StartedUnit unit("en-US");
  std::vector<UnicodeString> names(14, u"x");
  names[11] = u"twelfth";
  InitDateTimeParams(u"", names);
  EXPECT_EQ(LongMonthNames2[12], u"twelfth");
  EXPECT_EQ(LongMonthNames2[0], u"");
  InitDateTimeParams(u"", std::span<const UnicodeString>());  // no names: only the year name
  EXPECT_EQ(LongMonthNames2[12], u"twelfth");
}

TEST(GetMonthNames, SystemLocaleNeverTheUsers) {
  for (auto [tag, first, third] : {std::tuple{"en-US", u"January", u"March"},
                                   std::tuple{"de-DE", u"Januar", u"M\u00e4rz"},
                                   std::tuple{"fr-FR", u"janvier", u"mars"}}) {
    ScopedEnv env({{"QUILL_SYSTEM_LOCALE", tag}, {"LC_ALL", "ja_JP.UTF-8"}, {"LANG", "ja_JP.UTF-8"}});
    TStringList list;
    list.Add(u"stale entry");
    GetMonthNames(list);
    ASSERT_EQ(list.Count(), 12) << tag;
    EXPECT_EQ(list.Get(0), first) << tag;
    EXPECT_EQ(list.Get(2), third) << tag;
  }
}

}  // namespace
}  // namespace quill::Gdattime
