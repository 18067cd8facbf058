#include "quill/utils/osflags.h"

#include <gtest/gtest.h>

namespace quill::Gutils {
namespace {

TOSVersionInfo Record(uint32_t major, uint32_t minor, uint32_t build, uint32_t platform) {
  TOSVersionInfo v;
  v.dwMajorVersion = major;
  v.dwMinorVersion = minor;
  v.dwBuildNumber = build;
  v.dwPlatformId = platform;
  return v;
}

// Edge case: a 6.0 NT-line system is NT, 2000 and NT-or-later, but neither XP
// nor "XP or later" (the minor-version test is kept as it stands).
TEST(ComputeOSFlags, Version60IsNotXPUp) {
  TOSFlags f = ComputeOSFlags(Record(6, 0, 6002, 2));
  EXPECT_TRUE(f.IsWinNT);
  EXPECT_TRUE(f.IsWin2000);
  EXPECT_TRUE(f.IsWin2000Up);
  EXPECT_TRUE(f.IsWinNTUp);
  EXPECT_FALSE(f.IsWinXP);
  EXPECT_FALSE(f.IsWinXPUp);
  EXPECT_FALSE(f.IsWin95);
  EXPECT_FALSE(f.IsWin98);
  EXPECT_FALSE(f.IsWinME);
}

// Edge case: on 6.1 IsWinXPUp is true, IsWinXP still false.
TEST(ComputeOSFlags, Version61IsXPUp) {
  TOSFlags f = ComputeOSFlags(Record(6, 1, 7601, 2));
  EXPECT_TRUE(f.IsWinXPUp);
  EXPECT_FALSE(f.IsWinXP);
  EXPECT_TRUE(f.IsWinNTUp);
}

// 5.1 is XP itself.
TEST(ComputeOSFlags, Version51IsXP) {
  TOSFlags f = ComputeOSFlags(Record(5, 1, 2600, 2));
  EXPECT_TRUE(f.IsWinXP);
  EXPECT_TRUE(f.IsWinXPUp);
  EXPECT_TRUE(f.IsWin2000);
  EXPECT_TRUE(f.IsWin2000Up);
}

// 5.0 is 2000 but not XP.
TEST(ComputeOSFlags, Version50Is2000) {
  TOSFlags f = ComputeOSFlags(Record(5, 0, 2195, 2));
  EXPECT_TRUE(f.IsWin2000);
  EXPECT_FALSE(f.IsWinXP);
  EXPECT_FALSE(f.IsWinXPUp);
}

// NT 4: NT but not 2000.
TEST(ComputeOSFlags, Version40NT) {
  TOSFlags f = ComputeOSFlags(Record(4, 0, 1381, 2));
  EXPECT_TRUE(f.IsWinNT);
  EXPECT_TRUE(f.IsWinNTUp);
  EXPECT_FALSE(f.IsWin2000);
  EXPECT_FALSE(f.IsWin2000Up);
}

// The consumer line: 95, 95 OSR2 (build low word >= 1000), 98 (minor > 0), ME (minor >= 90).
TEST(ComputeOSFlags, ConsumerLine) {
  TOSFlags w95 = ComputeOSFlags(Record(4, 0, 950, 1));
  EXPECT_TRUE(w95.IsWin95);
  EXPECT_FALSE(w95.IsWin95OSR2);
  EXPECT_FALSE(w95.IsWin98);
  EXPECT_FALSE(w95.IsWinNT);

  // Only the low 16 bits of the build number count: 0x04000457 -> 1111.
  TOSFlags osr2 = ComputeOSFlags(Record(4, 0, 0x04000457, 1));
  EXPECT_TRUE(osr2.IsWin95OSR2);
  TOSFlags high_only = ComputeOSFlags(Record(4, 0, 0x00010000 + 999, 1));
  EXPECT_FALSE(high_only.IsWin95OSR2);

  TOSFlags w98 = ComputeOSFlags(Record(4, 10, 1998, 1));
  EXPECT_TRUE(w98.IsWin98);
  EXPECT_TRUE(w98.IsWin98Up);
  EXPECT_FALSE(w98.IsWinME);

  TOSFlags me = ComputeOSFlags(Record(4, 90, 3000, 1));
  EXPECT_TRUE(me.IsWinME);
  EXPECT_TRUE(me.IsWin98);
  EXPECT_FALSE(me.IsWinNTUp);
}

// No record (Linux): every flag false, IsLinux false too.
TEST(OSFlags, LinuxHasNoRecordSoAllFalse) {
  TOSVersionInfo v;
  EXPECT_FALSE(GetOSVersionRecord(v));
  EXPECT_EQ(v.dwOSVersionInfoSize, 276u);
  SetOSFlags(ComputeOSFlags(Record(6, 1, 7601, 2)));
  EXPECT_TRUE(IsWinXPUp);
  SetOSFlags(TOSFlags{});
  EXPECT_FALSE(IsWin95 || IsWin95OSR2 || IsWinNT || IsWin2000 || IsWinXP || IsWin2000Up ||
               IsWinNTUp || IsWinXPUp || IsWin98 || IsWin98Up || IsWinME);
  EXPECT_FALSE(IsLinux);
}

}  // namespace
}  // namespace quill::Gutils
