#include "quill/rtl/trim.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

TEST(Trim, RemovesBlanksAndControlsAtBothEnds) {
  EXPECT_EQ(Trim("\t a b \r\n"), "a b");
  EXPECT_EQ(Trim(u"\t a b \r\n"), u"a b");
  // Inner blanks stay.
  EXPECT_EQ(Trim(u"  a \t b  "), u"a \t b");
}

TEST(Trim, KeepsNoBreakSpaceAndUnicodeSpaces) {
  // Code 160 is above 32, so it is text, not a blank.
  EXPECT_EQ(Trim(u"\u00A0a"), u"\u00A0a");
  EXPECT_EQ(Trim("\xA0" "a\xA0"), "\xA0" "a\xA0");
  EXPECT_EQ(Trim(u"\u2003x\u3000"), u"\u2003x\u3000");
  // DEL (127) is not trimmed either.
  EXPECT_EQ(Trim(u"\x7Fx\x7F"), u"\x7Fx\x7F");
}

TEST(Trim, RemovesNulCharacters) {
  EXPECT_EQ(Trim(std::string_view("\0x\0", 3)), "x");
  EXPECT_EQ(Trim(std::u16string_view(u"\0x\0", 3)), u"x");
}

TEST(Trim, EmptyAndAllBlank) {
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim(u"   \t\r\n"), u"");
  EXPECT_EQ(TrimLeft(u" \t "), u"");
  EXPECT_EQ(TrimRight(" \t "), "");
}

TEST(TrimLeft, OnlyTheLeftEnd) {
  EXPECT_EQ(TrimLeft("  x "), "x ");
  EXPECT_EQ(TrimLeft(u"  x "), u"x ");
}

TEST(TrimRight, OnlyTheRightEnd) {
  EXPECT_EQ(TrimRight(std::string_view(" x\0", 3)), " x");
  EXPECT_EQ(TrimRight(std::u16string_view(u" x\0", 3)), u" x");
}

TEST(Trim, AllByteValues) {
  // Bytes 0..32 are removed from either end; every other byte stays.
  for (int b = 0; b < 256; ++b) {
    const char c = static_cast<char>(b);
    const std::string s = std::string(1, c) + "m" + std::string(1, c);
    const bool blank = b <= 32;
    EXPECT_EQ(Trim(s), blank ? "m" : s) << b;
    EXPECT_EQ(TrimLeft(s), blank ? s.substr(1) : s) << b;
    EXPECT_EQ(TrimRight(s), blank ? s.substr(0, 2) : s) << b;
  }
}

TEST(Trim, WideCodeUnitsAboveByteRangeAreKept) {
  // Units whose low byte is a control code (U+0109, U+0120) are ordinary text.
  for (char16_t c : {u'\u0109', u'\u0120', u'\u0100', u'\uFF20'}) {
    const UnicodeString s{c, u'm', c};
    EXPECT_EQ(Trim(s), s);
  }
}

}  // namespace
}  // namespace quill
