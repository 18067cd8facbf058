// Tests of right-to-left detection, both platform families.
#include "quill/locales/middleeast.h"

#include <gtest/gtest.h>

#include <set>

#include "quill/locales/localeinfo.h"
#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/localefacts.h"

namespace quill::Glocales {
namespace {

// The NT family: Arabic-script locales of code page 1256 are right-to-left.
TEST(IsMiddleEast, ArabicCodePage) {
  for (LCID l : {0x0401u, 0x0801u, 0x0C01u, 0x3801u, 0x4001u, 0x0420u, 0x0429u, 0x0859u, 0x0846u}) {
    EXPECT_TRUE(IsMiddleEast(l)) << std::hex << l;
  }
}

// Deliberately only 0x80..0xBF are looked at: code page 1255 has its Hebrew
// letters from 0xE0, so Hebrew is not right-to-left on this branch. Thai
// letters are left-to-right anyway.
TEST(IsMiddleEast, HebrewAndThaiAreNot) {
  EXPECT_FALSE(IsMiddleEast(0x040D));
  EXPECT_FALSE(IsMiddleEast(0x041E));
  EXPECT_FALSE(IsMiddleEast(0x0409));
  EXPECT_FALSE(IsMiddleEast(0x0411));  // a double-byte page: lead bytes followed by 0
}

// Unknown locales give false.
TEST(IsMiddleEast, UnknownLocale) {
  EXPECT_FALSE(IsMiddleEast(0xABCD));
  EXPECT_FALSE(IsMiddleEast(0x0001'0000));
}

// Every supported locale: true exactly for those whose ANSI code page is 1256
// (the system page here is 1252, which Unicode-only locales use).
TEST(IsMiddleEast, EverySupportedLocaleByCodePage) {
  int rtl = 0;
  for (LCID l : EnumSystemLocales()) {
    const bool arabic_page = LocaleInfo(l, LOCALE_IDEFAULTANSICODEPAGE) == u"1256";
    EXPECT_EQ(IsMiddleEast(l), arabic_page) << std::hex << l;
    rtl += arabic_page ? 1 : 0;
  }
  EXPECT_GT(rtl, 20);
}

// A locale with no code page of its own is classified in the system's: the
// answer follows the system page, not the language.
TEST(IsMiddleEast, UnicodeOnlyLocaleUsesSystemPage) {
  ASSERT_EQ(LocaleInfo(0x045A, LOCALE_IDEFAULTANSICODEPAGE), u"0");  // Syriac
  EXPECT_FALSE(IsMiddleEast(0x045A));
  {
    testing::ScopedEnv env({{"QUILL_ANSI_CODEPAGE", "1256"}});
    EXPECT_TRUE(IsMiddleEast(0x045A));
    EXPECT_TRUE(IsMiddleEast(0x0439));  // Hindi too: the page decides
    EXPECT_FALSE(IsMiddleEast(0x040D));  // a locale with its own page keeps it
  }
  testing::ScopedEnv env({{"QUILL_ANSI_CODEPAGE", "65001"}});
  EXPECT_FALSE(IsMiddleEast(0x045A));  // lone UTF-8 continuation bytes are no letters
}

// The older platforms' rule, for every primary language: exactly 0x01, 0x0D,
// 0x1E, 0x20 and 0x29; sublanguage bits do not matter.
TEST(IsMiddleEastFor, OlderPlatformsByLanguage) {
  const std::set<LCID> rtl = {0x01, 0x0D, 0x1E, 0x20, 0x29};
  for (LCID p = 0; p < 0x400; ++p) {
    EXPECT_EQ(IsMiddleEastFor(p, VER_PLATFORM_WIN32_WINDOWS), rtl.count(p) == 1) << std::hex << p;
    EXPECT_EQ(IsMiddleEastFor(0x2C00 | p, 0), rtl.count(p) == 1) << std::hex << p;
  }
  // Languages 64 and above are false even where their low 6 bits name one of
  // the five (0x41 = 64 + 0x01).
  EXPECT_FALSE(IsMiddleEastFor(0x41, VER_PLATFORM_WIN32_WINDOWS));
  EXPECT_FALSE(IsMiddleEastFor(0x4D, VER_PLATFORM_WIN32_WINDOWS));
}

// The two families disagree on Hebrew and Thai; the NT identifier selects
// IsMiddleEast.
TEST(IsMiddleEastFor, FamiliesDiffer) {
  EXPECT_TRUE(IsMiddleEastFor(0x040D, VER_PLATFORM_WIN32_WINDOWS));
  EXPECT_FALSE(IsMiddleEastFor(0x040D, VER_PLATFORM_WIN32_NT));
  EXPECT_TRUE(IsMiddleEastFor(0x041E, VER_PLATFORM_WIN32_WINDOWS));
  EXPECT_FALSE(IsMiddleEastFor(0x041E, VER_PLATFORM_WIN32_NT));
  EXPECT_TRUE(IsMiddleEastFor(0x0401, VER_PLATFORM_WIN32_NT));
  // Sindhi uses code page 1256 but is not among the five languages.
  EXPECT_FALSE(IsMiddleEastFor(0x0859, VER_PLATFORM_WIN32_WINDOWS));
  EXPECT_TRUE(IsMiddleEastFor(0x0859, VER_PLATFORM_WIN32_NT));
}

}  // namespace
}  // namespace quill::Glocales
