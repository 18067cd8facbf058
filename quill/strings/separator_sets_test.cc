// The two separator sets: empty by default, independent of each other,
// cleared by the unit's last stop.
#include <gtest/gtest.h>

#include <string>

#include "quill/frame/units.h"
#include "quill/strings/charclass.h"
#include "quill/strings/slicing.h"

namespace quill::Gstrings {
namespace {

bool AnyAnsiSeparator() {
  for (unsigned v = 0; v < 256; ++v) {
    if (IsSeparator(static_cast<char>(v))) return true;
  }
  return false;
}

bool AnyWideSeparator() {
  for (unsigned v = 0; v < 0x10000; ++v) {
    if (IsSeparator(static_cast<char16_t>(v))) return true;
  }
  return false;
}

// Runs first in this program: nothing has set the sets yet.
TEST(IsSeparator, FalseForEveryCharacterBeforeAnySet) {
  EXPECT_FALSE(IsSeparator(' '));
  EXPECT_FALSE(IsSeparator(','));
  EXPECT_FALSE(IsSeparator(u' '));
  EXPECT_FALSE(IsSeparator(u','));
  EXPECT_FALSE(AnyAnsiSeparator());
  EXPECT_FALSE(AnyWideSeparator());
}

// The 8-bit set does not reach the UTF-16 set, and back.
TEST(SetSeparatorList, FormsAreIndependent) {
  SetSeparatorList(std::string_view(",;"));
  EXPECT_TRUE(IsSeparator(','));
  EXPECT_TRUE(IsSeparator(';'));
  EXPECT_FALSE(IsSeparator('.'));
  EXPECT_FALSE(IsSeparator(u','));
  EXPECT_FALSE(AnyWideSeparator());

  SetSeparatorList(std::u16string_view(u"|\u00A7"));
  EXPECT_TRUE(IsSeparator(u'|'));
  EXPECT_TRUE(IsSeparator(u'\u00A7'));
  EXPECT_FALSE(IsSeparator(u','));
  // The 8-bit set is unchanged by the UTF-16 setter.
  EXPECT_TRUE(IsSeparator(','));
  EXPECT_FALSE(IsSeparator('|'));

  SetSeparatorListW(u"#");
  EXPECT_TRUE(IsSeparator(u'#'));
  EXPECT_FALSE(IsSeparator(u'|'));
  EXPECT_TRUE(IsSeparator(','));

  SetSeparatorList(std::string_view());
  SetSeparatorList(std::u16string_view());
  EXPECT_FALSE(AnyAnsiSeparator());
  EXPECT_FALSE(AnyWideSeparator());
}

// Bytes above 127 are ordinary members of the 8-bit set.
TEST(SetSeparatorList, HighBytesAndRepetition) {
  SetSeparatorList(std::string_view("\xA7\xA7,,"));
  EXPECT_TRUE(IsSeparator('\xA7'));
  EXPECT_TRUE(IsSeparator(','));
  EXPECT_FALSE(IsSeparator('\xA8'));
  SetSeparatorList(std::string_view());
}

// Two starts and one stop free nothing; the last stop clears both sets.
TEST(GstringsUnit, LastStopClearsBothSeparatorSets) {
  const int32_t before = StartCount();
  initialization();
  initialization();
  SetSeparatorList(std::string_view(","));
  SetSeparatorList(std::u16string_view(u";"));
  Finalization();
  EXPECT_TRUE(IsSeparator(','));
  EXPECT_TRUE(IsSeparator(u';'));
  // Balance any start the library's own loading made, then the last stop.
  while (StartCount() < -1) Finalization();
  Finalization();
  EXPECT_EQ(StartCount(), 0);
  EXPECT_FALSE(AnyAnsiSeparator());
  EXPECT_FALSE(AnyWideSeparator());
  // Restore the start count found.
  while (StartCount() > before) initialization();
}

// With the sets empty a token is the next run of non-space characters.
TEST(GetToken, EmptySetsGiveRunsOfNonSpace) {
  SetSeparatorList(std::string_view());
  std::string s = " a,b c";
  EXPECT_EQ(GetToken(s), "a,b");
  EXPECT_EQ(s, " c");
}

}  // namespace
}  // namespace quill::Gstrings
