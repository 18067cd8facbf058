// Conversions between UTF-8, UTF-16 and 8-bit code pages.
#include "quill/rtl/unicode.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "quill/rtl/syslocale.h"

namespace quill {
namespace {

TEST(Utf8ToUnicode, AsciiAndEmpty) {
  // Edge case: empty input gives empty output.
  EXPECT_EQ(Utf8ToUnicode(""), u"");
  EXPECT_EQ(Utf8ToUnicode("abc XYZ 09"), u"abc XYZ 09");
  // Edge case: an embedded NUL is an ordinary character.
  EXPECT_EQ(Utf8ToUnicode(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
}

TEST(Utf8ToUnicode, MultiByteAndSupplementary) {
  EXPECT_EQ(Utf8ToUnicode("\xC3\x84" "bc"), u"\u00C4bc");
  EXPECT_EQ(Utf8ToUnicode("\xE2\x82\xAC"), u"\u20AC");
  // Edge case: a supplementary character becomes a surrogate pair.
  EXPECT_EQ(Utf8ToUnicode("\xF0\x9F\x98\x80"), u"\U0001F600");
}

TEST(Utf8ToUnicode, IllFormedBecomesReplacementCharacter) {
  // Edge case: a lone continuation byte, a truncated sequence, an overlong form.
  EXPECT_EQ(Utf8ToUnicode("a\x80" "b"), u"a\uFFFDb");
  EXPECT_EQ(Utf8ToUnicode("a\xE2\x82"), u"a\uFFFD");
  EXPECT_EQ(Utf8ToUnicode("\xC0\xAF").find(u'/'), std::u16string::npos);
  EXPECT_NE(Utf8ToUnicode("\xC0\xAF").find(u'\uFFFD'), std::u16string::npos);
}

TEST(UnicodeToUtf8, RoundTripAndLoneSurrogates) {
  const std::u16string text = u"Stra\u00DFe \u20AC \U0001F600 \u65E5\u672C";
  EXPECT_EQ(Utf8ToUnicode(UnicodeToUtf8(text)), text);
  EXPECT_EQ(UnicodeToUtf8(u"\u00E4"), "\xC3\xA4");
  // Edge case: unpaired surrogates become U+FFFD (EF BF BD).
  EXPECT_EQ(UnicodeToUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
  EXPECT_EQ(UnicodeToUtf8(std::u16string{u'x', char16_t(0xDC00)}), "x\xEF\xBF\xBD");
  EXPECT_EQ(UnicodeToUtf8(u""), "");
}

TEST(AnsiToUnicode, Windows1252AllBytes) {
  // Every byte of code page 1252: ASCII maps to itself, 0x80 is the euro sign,
  // 0xA0..0xFF are Latin-1, and the five bytes without a character (81, 8D,
  // 8F, 90, 9D) decode to the C1 control of the same number, as on Windows.
  for (int b = 0; b < 256; ++b) {
    const std::u16string u = AnsiToUnicode(std::string(1, static_cast<char>(b)), 1252);
    ASSERT_EQ(u.size(), 1u) << b;
    if (b < 0x80 || b >= 0xA0) {
      EXPECT_EQ(u[0], char16_t(b)) << b;
    } else if (b == 0x81 || b == 0x8D || b == 0x8F || b == 0x90 || b == 0x9D) {
      EXPECT_EQ(u[0], char16_t(b)) << b;
    } else {
      EXPECT_GE(u[0], 0x100) << b;
    }
  }
  EXPECT_EQ(AnsiToUnicode("\x80", 1252), u"\u20AC");
  EXPECT_EQ(AnsiToUnicode("\x9F", 1252), u"\u0178");
}

TEST(AnsiToUnicode, Latin1AllBytesRoundTrip) {
  // Code page 28591 (ISO-8859-1) maps every byte to the same code point.
  for (int b = 0; b < 256; ++b) {
    const std::string s(1, static_cast<char>(b));
    EXPECT_EQ(AnsiToUnicode(s, 28591), std::u16string(1, char16_t(b))) << b;
    EXPECT_EQ(UnicodeToAnsi(std::u16string(1, char16_t(b)), 28591), s) << b;
  }
}

TEST(AnsiToUnicode, MultiBytePages) {
  // Shift_JIS: "日本" is 93 FA 96 7B.
  EXPECT_EQ(AnsiToUnicode("\x93\xFA\x96\x7B", 932), u"\u65E5\u672C");
  EXPECT_EQ(UnicodeToAnsi(u"\u65E5\u672C", 932), "\x93\xFA\x96\x7B");
  // GBK: "中" is D6 D0; Big5: "中" is A4 A4; UHC: "한" is C7 D1.
  EXPECT_EQ(AnsiToUnicode("\xD6\xD0", 936), u"\u4E2D");
  EXPECT_EQ(AnsiToUnicode("\xA4\xA4", 950), u"\u4E2D");
  EXPECT_EQ(AnsiToUnicode("\xC7\xD1", 949), u"\uD55C");
  EXPECT_EQ(AnsiToUnicode("\xC3\xA4", CP_UTF8), u"\u00E4");
}

TEST(AnsiToUnicode, OemAndCyrillicPages) {
  EXPECT_EQ(AnsiToUnicode("\x8E", 437), u"\u00C4");
  EXPECT_EQ(AnsiToUnicode("\xC0", 1251), u"\u0410");
  EXPECT_EQ(AnsiToUnicode("\x80", 866), u"\u0410");
  EXPECT_EQ(AnsiToUnicode("\xE1", 20866), u"\u0410");  // KOI8-R
}

TEST(UnicodeToAnsi, UnmappableBecomesQuestionMark) {
  // Edge case: characters the page lacks become '?', one per character.
  EXPECT_EQ(UnicodeToAnsi(u"a\u4E2Db", 1252), "a?b");
  EXPECT_EQ(UnicodeToAnsi(u"\u20AC", 1252), "\x80");
  EXPECT_EQ(UnicodeToAnsi(u"\u0410", 28591), "?");
}

TEST(AnsiToUnicode, DefaultPageFollowsOverride) {
  // CP_ACP is GetACP(); QUILL_ANSI_CODEPAGE pins it.
  setenv("QUILL_ANSI_CODEPAGE", "1251", 1);
  ResetLocaleCache();
  EXPECT_EQ(AnsiToUnicode("\xC0"), u"\u0410");
  EXPECT_EQ(UnicodeToAnsi(u"\u0410"), "\xC0");
  setenv("QUILL_ANSI_CODEPAGE", "65001", 1);
  ResetLocaleCache();
  EXPECT_EQ(AnsiToUnicode("\xD0\x90"), u"\u0410");
  unsetenv("QUILL_ANSI_CODEPAGE");
  ResetLocaleCache();
  EXPECT_EQ(AnsiToUnicode("\x80"), u"\u20AC");  // en-US: 1252
}

TEST(IsValidCodePage, KnownAndUnknown) {
  for (TCodePage cp : {437u, 850u, 866u, 874u, 932u, 936u, 949u, 950u, 1250u, 1251u, 1252u, 1253u,
                       1254u, 1255u, 1256u, 1257u, 1258u, 20127u, 20866u, 28591u, 28605u, 65001u}) {
    EXPECT_TRUE(IsValidCodePage(cp)) << cp;
  }
  // Edge case: 0 is "the default page", not a page of its own.
  EXPECT_FALSE(IsValidCodePage(0));
  EXPECT_FALSE(IsValidCodePage(12345));
  EXPECT_FALSE(IsValidCodePage(99999));
}

TEST(UnicodeToAnsi, StatefulPagesDoNotTakeTheAsciiShortcut) {
  // UTF-7 gives '+' a meaning of its own, so ASCII text is still converted.
  EXPECT_EQ(UnicodeToAnsi(u"a+b", 65000), "a+-b");
  EXPECT_EQ(AnsiToUnicode("a+-b", 65000), u"a+b");
}

}  // namespace
}  // namespace quill
