// What the units' start-up builds and their shutdown releases, driven through
// the package entry points: built once by the first start, freed once by the
// last stop, untouched by the starts and stops in between.
#include <gtest/gtest.h>

#include "quill/dattime/datenames.h"
#include "quill/frame/quill23.h"
#include "quill/strings/charclass.h"
#include "quill/utils/osflags.h"

namespace quill {
namespace {

// Edge case: two starts and two stops free the separator sets once, at the
// last stop; one stop after two starts frees nothing.
TEST(UnitState, SeparatorSetsClearedOnlyByTheLastStop) {
  Initialize();
  Initialize();
  Gstrings::SetSeparatorList(std::string_view(",;"));
  Gstrings::SetSeparatorList(std::u16string_view(u"|"));
  Finalize();
  EXPECT_TRUE(Gstrings::IsSeparator(',')) << "not the last stop: nothing is freed";
  EXPECT_TRUE(Gstrings::IsSeparator(u'|'));
  Finalize();
  // Edge case: after the last stop both separator strings are empty.
  EXPECT_FALSE(Gstrings::IsSeparator(','));
  EXPECT_FALSE(Gstrings::IsSeparator(u'|'));
}

// The month phrases are built by the first start only, and cleared, with the
// short year name, by the last stop only.
TEST(UnitState, MonthPhrasesBuiltOnceAndFreedOnce) {
  Initialize();
  ASSERT_EQ(Gdattime::LongMonthNames2[1], u"of January");  // tests pin en-US
  Gdattime::LongMonthNames2[1] = u"changed";
  Gdattime::ShortYearName = u"y.";
  Initialize();  // a second start builds nothing again
  EXPECT_EQ(Gdattime::LongMonthNames2[1], u"changed");
  Finalize();
  EXPECT_EQ(Gdattime::ShortYearName, u"y.");
  Finalize();
  EXPECT_TRUE(Gdattime::LongMonthNames2[1].empty());
  EXPECT_TRUE(Gdattime::LongMonthNames2[12].empty());
  EXPECT_TRUE(Gdattime::ShortYearName.empty());
}

// On Linux there is no version record: the first start leaves every flag false.
TEST(UnitState, OSFlagsFalseAfterStart) {
  Gutils::SetOSFlags(Gutils::ComputeOSFlags({276, 6, 1, 7601, 2}));
  ASSERT_TRUE(Gutils::IsWinNT);
  Initialize();
  EXPECT_FALSE(Gutils::IsWinNT);
  EXPECT_FALSE(Gutils::IsWinXPUp);
  EXPECT_FALSE(Gutils::IsLinux);
  Finalize();
}

}  // namespace
}  // namespace quill
