// ASCII-only and locale-aware case mapping in both string forms.
#include "quill/rtl/casing.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/unicode.h"

namespace quill {
namespace {

using testing::ScopedEnv;

// Pins the ANSI code page and a neutral user locale for 8-bit tests.
ScopedEnv Cp(const char* page) {
  return ScopedEnv{{"QUILL_ANSI_CODEPAGE", page}, {"LC_ALL", "en_US.UTF-8"}};
}

TEST(LowerCase, OnlyAsciiLettersChangeOnAllBytes) {
  // Byte class: every one of the 256 values; only 'A'..'Z' change.
  for (int b = 0; b < 256; ++b) {
    const char c = static_cast<char>(b);
    const char want = (b >= 'A' && b <= 'Z') ? static_cast<char>(b + 32) : c;
    EXPECT_EQ(LowerCase(std::string(1, c)), std::string(1, want)) << b;
    const char wantu = (b >= 'a' && b <= 'z') ? static_cast<char>(b - 32) : c;
    EXPECT_EQ(UpperCase(std::string(1, c)), std::string(1, wantu)) << b;
  }
}

TEST(LowerCase, NonAsciiStaysInBothForms) {
  // Deliberate: the plain forms never touch non-ASCII letters.
  EXPECT_EQ(LowerCase(u"\u00C4BC"), u"\u00C4bc");
  EXPECT_EQ(UpperCase(u"stra\u00DFe \u00E4"), u"STRA\u00DFE \u00E4");
  EXPECT_EQ(LowerCase("\xC4" "BC"), "\xC4" "bc");
  EXPECT_EQ(LowerCase(u""), u"");
}

TEST(AnsiLowerCase, UmlautBothForms) {
  auto env = Cp("1252");
  EXPECT_EQ(AnsiLowerCase(u"\u00C4BC"), u"\u00E4bc");
  EXPECT_EQ(AnsiLowerCase("\xC4" "BC"), "\xE4" "bc");
  EXPECT_EQ(AnsiUpperCase(u"\u00E4bc"), u"\u00C4BC");
  EXPECT_EQ(AnsiUpperCase("\xE4" "bc"), "\xC4" "BC");
  // Edge case: empty input.
  EXPECT_EQ(AnsiLowerCase(u""), u"");
  EXPECT_EQ(AnsiUpperCase(""), "");
}

TEST(AnsiUpperCase, SharpSKeepsLength) {
  // Deliberate: U+00DF would become "SS"; it stays so the length is kept.
  auto env = Cp("1252");
  EXPECT_EQ(AnsiUpperCase(u"stra\u00DFe"), u"STRA\u00DFE");
  EXPECT_EQ(AnsiUpperCase("stra\xDF" "e"), "STRA\xDF" "E");
  // Other one-to-many mappings: the ligature U+FB01 and U+0149.
  EXPECT_EQ(AnsiUpperCase(u"\uFB01x\u0149"), u"\uFB01X\u0149");
}

TEST(AnsiUpperCase, Windows1252AllBytes) {
  // Byte class: every byte of code page 1252 against the page's letter pairs.
  auto env = Cp("1252");
  for (int b = 0; b < 256; ++b) {
    int up = b;
    if (b >= 'a' && b <= 'z') up = b - 32;
    if (b >= 0xE0 && b <= 0xFE && b != 0xF7) up = b - 32;
    if (b == 0x9A) up = 0x8A;  // s caron
    if (b == 0x9C) up = 0x8C;  // oe
    if (b == 0x9E) up = 0x8E;  // z caron
    if (b == 0xFF) up = 0x9F;  // y diaeresis
    // 0xB5 (micro sign) upper-cases to U+039C, which 1252 lacks: unchanged.
    // 0xDF (sharp s) has no one-character upper case: unchanged.
    EXPECT_EQ(static_cast<unsigned char>(AnsiUpperChar(static_cast<char>(b))), up) << b;
    EXPECT_EQ(static_cast<unsigned char>(AnsiUpperCase(std::string(1, static_cast<char>(b)))[0]), up) << b;
  }
}

TEST(AnsiLowerCase, Windows1252AllBytes) {
  auto env = Cp("1252");
  for (int b = 0; b < 256; ++b) {
    int low = b;
    if (b >= 'A' && b <= 'Z') low = b + 32;
    if (b >= 0xC0 && b <= 0xDE && b != 0xD7) low = b + 32;
    if (b == 0x8A) low = 0x9A;
    if (b == 0x8C) low = 0x9C;
    if (b == 0x8E) low = 0x9E;
    if (b == 0x9F) low = 0xFF;
    EXPECT_EQ(static_cast<unsigned char>(AnsiLowerChar(static_cast<char>(b))), low) << b;
  }
}

TEST(AnsiUpperCase, WideAsciiFastPathMatchesAllAscii) {
  // Byte class over the ASCII range of the UTF-16 form.
  auto env = Cp("1252");
  for (char16_t c = 0; c < 0x80; ++c) {
    const char16_t up = (c >= u'a' && c <= u'z') ? char16_t(c - 32) : c;
    const char16_t low = (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c;
    EXPECT_EQ(AnsiUpperChar(c), up) << int(c);
    EXPECT_EQ(AnsiLowerChar(c), low) << int(c);
  }
}

TEST(AnsiUpperCase, GreekAndCyrillic) {
  auto env = Cp("1252");
  EXPECT_EQ(AnsiUpperCase(u"\u03B1\u03B2\u03B3 \u03AC"), u"\u0391\u0392\u0393 \u0386");
  // Decision: characters map one by one, so a final capital sigma lowers to
  // U+03C3, not to the word-final U+03C2.
  EXPECT_EQ(AnsiLowerCase(u"\u039F\u0394\u039F\u03A3"), u"\u03BF\u03B4\u03BF\u03C3");
  EXPECT_EQ(AnsiUpperCase(u"\u043F\u0440\u0438\u0432\u0435\u0442"), u"\u041F\u0420\u0418\u0412\u0415\u0422");
  EXPECT_EQ(AnsiLowerCase(u"\u0401\u0416"), u"\u0451\u0436");
}

TEST(AnsiUpperCase, CyrillicCodePage1251) {
  auto env = Cp("1251");
  // "привет" in 1251 -> "ПРИВЕТ"; "ё" (B8) -> "Ё" (A8).
  EXPECT_EQ(AnsiUpperCase("\xEF\xF0\xE8\xE2\xE5\xF2"), "\xCF\xD0\xC8\xC2\xC5\xD2");
  EXPECT_EQ(AnsiUpperCase("\xB8"), "\xA8");
  EXPECT_EQ(AnsiLowerCase("\xC0Z"), "\xE0z");
}

TEST(AnsiUpperCase, SurrogatePairs) {
  auto env = Cp("1252");
  // Deseret U+10428 <-> U+10400: a pair maps to a pair.
  EXPECT_EQ(AnsiUpperCase(u"\U00010428x"), u"\U00010400X");
  EXPECT_EQ(AnsiLowerCase(u"\U00010400"), u"\U00010428");
  // Edge case: lone surrogates stay as they are.
  const std::u16string lone{char16_t(0xD801), u'a', char16_t(0xDC28)};
  EXPECT_EQ(AnsiUpperCase(lone), (std::u16string{char16_t(0xD801), u'A', char16_t(0xDC28)}));
  // A pair at the very end of the string.
  EXPECT_EQ(AnsiLowerCase(u"A\U00010400"), u"a\U00010428");
}

TEST(AnsiLowerCase, DottedCapitalIKeepsLength) {
  // U+0130 lowers to "i" + U+0307 in most locales; the one-unit rule keeps "i".
  auto env = Cp("1252");
  EXPECT_EQ(AnsiLowerCase(u"\u0130X"), u"ix");
  EXPECT_EQ(AnsiLowerCase(u"\u0130X").size(), 2u);
  EXPECT_EQ(AnsiUpperCase(u"i\u0131"), u"II");
}

TEST(AnsiLowerCase, TurkishUserLocale) {
  ScopedEnv env{{"LC_ALL", "tr_TR.UTF-8"}, {"QUILL_ANSI_CODEPAGE", "1254"}};
  // Turkish pairs: I <-> dotless i, dotted I <-> i; the length is kept.
  EXPECT_EQ(AnsiLowerCase(u"I\u0130"), u"\u0131i");
  EXPECT_EQ(AnsiUpperCase(u"i\u0131"), u"\u0130I");
  EXPECT_EQ(AnsiUpperCase(u"istanbul"), u"\u0130STANBUL");
  // 1254 has both: I (49) -> dotless i (FD), i (69) -> dotted I (DD).
  EXPECT_EQ(AnsiLowerCase("I"), "\xFD");
  EXPECT_EQ(AnsiUpperCase("i"), "\xDD");
  // The ASCII-only forms stay ASCII-only.
  EXPECT_EQ(LowerCase(u"I"), u"i");
}

TEST(AnsiUpperCase, Utf8AnsiPage) {
  auto env = Cp("65001");
  EXPECT_EQ(AnsiUpperCase("stra\xC3\x9F" "e \xC3\xA4"), "STRA\xC3\x9F" "E \xC3\x84");
  EXPECT_EQ(AnsiLowerCase("\xD0\x9F\xD0\xA0"), "\xD0\xBF\xD1\x80");
  // Deliberate: U+0131 (2 bytes) upper-cases to 'I' (1 byte), U+017F (2
  // bytes) to 'S'; the byte length would change, so both stay.
  EXPECT_EQ(AnsiUpperCase("\xC4\xB1\xC5\xBFx"), "\xC4\xB1\xC5\xBFX");
  // ... while the UTF-16 form, where the unit count is kept, maps them.
  EXPECT_EQ(AnsiUpperCase(u"\u0131\u017F"), u"IS");
  // Ill-formed bytes pass through untouched.
  EXPECT_EQ(AnsiUpperCase("a\xFF" "b"), "A\xFF" "B");
  EXPECT_EQ(AnsiUpperCase("\xF0\x90\x90\xA8"), "\xF0\x90\x90\x80");
}

TEST(AnsiUpperCase, ShiftJisPage) {
  auto env = Cp("932");
  // Full-width a (82 81) -> full-width A (82 60); a trail byte that looks
  // like an ASCII letter ("\x83\x61") is not touched.
  EXPECT_EQ(AnsiUpperCase("\x82\x81" "a"), "\x82\x60" "A");
  EXPECT_EQ(AnsiUpperCase("\x83\x61"), "\x83\x61");
  EXPECT_EQ(AnsiLowerCase("\x83\x41" "B"), "\x83\x41" "b");
}

TEST(AnsiUpperCase, ThreadsKeepTheirOwnCaches) {
  // Edge case: several threads map at once; each builds its own converter
  // and tables, and all get the same answers.
  auto env = Cp("1252");
  std::vector<int> wrong(4, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t, &wrong] {
      for (int i = 0; i < 500; ++i) {
        if (AnsiUpperCase(u"stra\u00DFe \u00E4\u03B1") != u"STRA\u00DFE \u00C4\u0391") ++wrong[t];
        if (AnsiUpperCase("\xE4" "b") != "\xC4" "B") ++wrong[t];
      }
    });
  }
  for (auto& th : threads) th.join();
  for (int t = 0; t < 4; ++t) EXPECT_EQ(wrong[t], 0) << t;
}

}  // namespace
}  // namespace quill
