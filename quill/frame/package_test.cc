// The unit table, its order and the start counts, driven through the package
// entry points (this test links the units statically, so no load hook has
// started them: every count begins at 0).
#include "quill/frame/quill23.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill {
namespace {

std::vector<std::string> EntryNames() {
  const TPackageInfoTable* table = GetPackageInfoTable();
  std::vector<std::string> names;
  for (int32_t i = 0; i < table->UnitCount; ++i) names.emplace_back(table->UnitInfo[i].Name);
  return names;
}

std::vector<int32_t> Counts() {
  return {Gconsts::StartCount(),  Gstrings::StartCount(), Gutils::StartCount(),
          Gdattime::StartCount(), Gscanner::StartCount(), Glocales::StartCount(),
          Gcompress::StartCount(), Ghtmlhlp::StartCount()};
}

// The library's own units start in the fixed order, each after the runtime
// entries it needs, and the table ends with the package unit itself.
TEST(GetPackageInfoTable, UnitOrder) {
  std::vector<std::string> names = EntryNames();
  const std::vector<std::string> expected{"System",   "SysInit",  "Gconsts",   "SysUtils",
                                          "Classes",  "Gstrings", "Registry",  "Controls",
                                          "Gutils",   "Gdattime", "Gscanner",  "Glocales",
                                          "Gcompress", "Ghtmlhlp", "Quill23"};
  EXPECT_EQ(names, expected);
}

// Each unit's entry points at that unit's own routines; the package entry has none.
TEST(GetPackageInfoTable, EntriesCarryTheUnitsRoutines) {
  const TPackageInfoTable* t = GetPackageInfoTable();
  ASSERT_EQ(t->UnitCount, 15);
  EXPECT_EQ(t->UnitInfo[2].Init, &Gconsts::initialization);
  EXPECT_EQ(t->UnitInfo[5].Init, &Gstrings::initialization);
  EXPECT_EQ(t->UnitInfo[8].FInit, &Gutils::Finalization);
  EXPECT_EQ(t->UnitInfo[9].Init, &Gdattime::initialization);
  EXPECT_EQ(t->UnitInfo[10].Init, &Gscanner::initialization);
  EXPECT_EQ(t->UnitInfo[11].FInit, &Glocales::Finalization);
  EXPECT_EQ(t->UnitInfo[12].Init, &Gcompress::initialization);
  EXPECT_EQ(t->UnitInfo[13].FInit, &Ghtmlhlp::Finalization);
  EXPECT_EQ(t->UnitInfo[14].Init, nullptr);
  EXPECT_EQ(t->UnitInfo[14].FInit, nullptr);
}

// Initialize and Finalize move every unit's count; a second start only moves
// the count further, and the first stop after two starts is not the last.
TEST(Initialize, StartCountsAreReferenceCounts) {
  ASSERT_EQ(Counts(), std::vector<int32_t>(8, 0));
  Initialize();
  EXPECT_EQ(Counts(), std::vector<int32_t>(8, -1));
  Initialize();
  EXPECT_EQ(Counts(), std::vector<int32_t>(8, -2));
  Finalize();
  EXPECT_EQ(Counts(), std::vector<int32_t>(8, -1));
  Finalize();
  EXPECT_EQ(Counts(), std::vector<int32_t>(8, 0));
}

TEST(PackageInfo, NamesThePackageAndItsUnits) {
  const TPackageInfo& info = PackageInfo();
  EXPECT_STREQ(info.PackageName, "Quill23");
  ASSERT_EQ(info.Contains.size(), 10u);
  EXPECT_STREQ(info.Contains[0], "Quill23");
  EXPECT_STREQ(info.Contains[2], "SysInit");
  EXPECT_EQ(info.Requires.size(), 2u);
  EXPECT_STREQ(info.Version, QuillVersionString());
  EXPECT_NE(std::string(info.Description).find("Quill"), std::string::npos);
}

// The entry records the module on every call, joins the module list on attach
// and leaves it on detach, and always answers true.
TEST(LibraryEntry, AttachAndDetach) {
  EXPECT_TRUE(LibraryEntry(1));
  EXPECT_TRUE(LibModule().IsLibrary);
  EXPECT_TRUE(LibModule().Registered);
  EXPECT_FALSE(LibModule().FileName.empty());
  EXPECT_TRUE(LibraryEntry(0));
  EXPECT_FALSE(LibModule().Registered);
  EXPECT_TRUE(LibModule().IsLibrary);
}

}  // namespace
}  // namespace quill
