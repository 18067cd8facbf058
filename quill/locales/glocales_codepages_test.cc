// Code-page conversions, checked against ICU's own converters.
#include "quill/locales/codepages.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "quill/locales/internal/localesource.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace quill::Glocales {
namespace {

using quill::testing::ScopedEnv;

// Every page the library promises, with the ICU converter it must behave as
// (named here, independently of the library's own name table).
struct Page {
  int32_t cp;
  const char* icu;
};
constexpr Page kSingleBytePages[] = {
    {437, "ibm-437"},          {850, "ibm-850"},          {852, "ibm-852"},
    {866, "ibm-866"},          {874, "windows-874"},      {1250, "windows-1250"},
    {1251, "windows-1251"},    {1252, "windows-1252"},    {1253, "windows-1253"},
    {1254, "windows-1254"},    {1255, "windows-1255"},    {1256, "windows-1256"},
    {1257, "windows-1257"},    {1258, "windows-1258"},    {10000, "macintosh"},
    {20127, "US-ASCII"},       {20866, "KOI8-R"},         {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},     {28592, "ISO-8859-2"},     {28593, "ISO-8859-3"},
    {28594, "ISO-8859-4"},     {28595, "ISO-8859-5"},     {28596, "ISO-8859-6"},
    {28597, "ISO-8859-7"},     {28598, "ISO-8859-8"},     {28599, "ISO-8859-9"},
    {28603, "ISO-8859-13"},    {28605, "ISO-8859-15"},    {737, "ibm-737"},
    {775, "ibm-775"},          {855, "ibm-855"},          {857, "ibm-857"},
    {858, "ibm-858"},          {860, "ibm-860"},          {861, "ibm-861"},
    {862, "ibm-862"},          {863, "ibm-863"},          {864, "ibm-864"},
    {865, "ibm-865"},          {869, "ibm-869"},          {10007, "x-mac-cyrillic"},
};
constexpr Page kDoubleBytePages[] = {
    {932, "windows-932"}, {936, "windows-936"}, {949, "windows-949"}, {950, "windows-950"}};

struct Closer {
  void operator()(UConverter* c) const { ucnv_close(c); }
};
using Conv = std::unique_ptr<UConverter, Closer>;

Conv OpenIcu(const char* name) {
  UErrorCode err = U_ZERO_ERROR;
  Conv c(ucnv_open(name, &err));
  EXPECT_TRUE(U_SUCCESS(err)) << name;
  ucnv_setSubstChars(c.get(), "?", 1, &err);
  return c;
}

std::u16string IcuDecode(UConverter* c, std::string_view bytes) {
  std::u16string out(bytes.size() * 2 + 4, u'\0');
  UErrorCode err = U_ZERO_ERROR;
  ucnv_reset(c);
  const int32_t n = ucnv_toUChars(c, out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                                  static_cast<int32_t>(bytes.size()), &err);
  out.resize(U_SUCCESS(err) ? n : 0);
  return out;
}

std::string IcuEncode(UConverter* c, std::u16string_view units) {
  std::string out(units.size() * 4 + 8, '\0');
  UErrorCode err = U_ZERO_ERROR;
  ucnv_reset(c);
  const int32_t n = ucnv_fromUChars(c, out.data(), static_cast<int32_t>(out.size()), units.data(),
                                    static_cast<int32_t>(units.size()), &err);
  out.resize(U_SUCCESS(err) ? n : 0);
  return out;
}

// ICU's IBM-flavoured tables swap three controls; the library maps them
// straight, as Windows does. The expected unit of one byte.
char16_t Expected(bool ibm_swap, int byte, char16_t icu_unit) {
  if (ibm_swap && (byte == 0x1A || byte == 0x1C || byte == 0x7F)) return static_cast<char16_t>(byte);
  return icu_unit;
}

bool IcuSwapsControls(UConverter* c) {
  return IcuDecode(c, "\x1A") == u"\x1C" && IcuDecode(c, "\x7F") == u"\x1A";
}

TEST(StrToWideByCodePage, EmptyTextGivesEmpty) {
  // Edge case: an empty string gives an empty wide string, whatever the page.
  for (int32_t cp : {0, 1252, 65001, 932, 12345, -7}) {
    EXPECT_EQ(StrToWideByCodePage("", cp), u"") << cp;
  }
  EXPECT_EQ(WideToStrByCodePage(u"", 1252), "");
}

TEST(StrToWideByCodePage, Utf8TwoBytesGiveOneCharacter) {
  // Edge case: 65001 and C3 A9 give the single character U+00E9.
  EXPECT_EQ(StrToWideByCodePage("\xC3\xA9", 65001), u"\u00E9");
}

TEST(StrToWideByCodePage, SingleBytePagesMatchIcuForAll256Bytes) {
  for (const Page& p : kSingleBytePages) {
    Conv icu = OpenIcu(p.icu);
    const bool swap = IcuSwapsControls(icu.get());
    std::string all;
    std::u16string expected_all;
    for (int b = 0; b < 256; ++b) {
      const std::string byte(1, static_cast<char>(b));
      const std::u16string want = IcuDecode(icu.get(), byte);
      ASSERT_EQ(want.size(), 1u) << p.cp << " byte " << b;
      const char16_t unit = Expected(swap, b, want[0]);
      EXPECT_EQ(StrToWideByCodePage(byte, p.cp), std::u16string(1, unit)) << p.cp << " byte " << b;
      all += byte;
      expected_all.push_back(unit);
    }
    // The same bytes as one text.
    EXPECT_EQ(StrToWideByCodePage(all, p.cp), expected_all) << p.cp;
  }
}

TEST(WideToStrByCodePage, SingleBytePagesMatchIcuForEveryCharacterOfThePage) {
  for (const Page& p : kSingleBytePages) {
    Conv icu = OpenIcu(p.icu);
    const bool swap = IcuSwapsControls(icu.get());
    for (int b = 0; b < 256; ++b) {
      const std::u16string ch = IcuDecode(icu.get(), std::string(1, static_cast<char>(b)));
      if (ch == u"\uFFFD") continue;  // a byte the page leaves undefined
      const char16_t unit = Expected(swap, b, ch[0]);
      std::string want = IcuEncode(icu.get(), std::u16string(1, unit));
      if (swap && unit == b && (b == 0x1A || b == 0x1C || b == 0x7F)) want = std::string(1, char(b));
      EXPECT_EQ(WideToStrByCodePage(std::u16string(1, unit), p.cp), want) << p.cp << " U+" << std::hex << int(unit);
    }
    // Characters outside the page: a Han character, an emoji (one '?' for the
    // pair), a lone surrogate, exactly as ICU substitutes them.
    const std::u16string outside = u"a\u4E2D\U0001F600b\U000E0041\u200Bc";
    EXPECT_EQ(WideToStrByCodePage(outside, p.cp), IcuEncode(icu.get(), outside)) << p.cp;
    const std::u16string lone{u'x', char16_t(0xD800), u'y', char16_t(0xDC00)};
    EXPECT_EQ(WideToStrByCodePage(lone, p.cp), IcuEncode(icu.get(), lone)) << p.cp;
  }
}

TEST(WideToStrByCodePage, EveryBmpUnitMatchesIcuOnWindows1252AndIbm437) {
  // The encoder's table covers the whole BMP: every unit as ICU encodes it.
  for (const Page& p : {Page{1252, "windows-1252"}, Page{437, "ibm-437"}, Page{1251, "windows-1251"}}) {
    Conv icu = OpenIcu(p.icu);
    std::u16string all;
    for (uint32_t u = 0; u < 0x10000; ++u) {
      if (u >= 0xD800 && u <= 0xDFFF) continue;
      if (p.cp == 437 && (u == 0x1A || u == 0x1C || u == 0x7F)) continue;
      all.push_back(static_cast<char16_t>(u));
    }
    EXPECT_EQ(WideToStrByCodePage(all, p.cp), IcuEncode(icu.get(), all)) << p.cp;
  }
}

TEST(StrToWideByCodePage, IbmPagesMapTheAsciiControlsStraight) {
  // Deliberate: ICU's 437/850/866/932 tables read 1A as U+001C, 1C as U+007F
  // and 7F as U+001A; Windows (and this library) read them as themselves.
  for (int32_t cp : {437, 850, 852, 866, 932}) {
    EXPECT_EQ(StrToWideByCodePage(std::string("\x1A\x1C\x7F"), cp), u"\x1A\x1C\x7F") << cp;
    EXPECT_EQ(WideToStrByCodePage(u"\x1A\x1C\x7F", cp), "\x1A\x1C\x7F") << cp;
  }
}

TEST(StrToWideByCodePage, DoubleBytePagesMatchIcuForEveryLeadAndTrailByte) {
  for (const Page& p : kDoubleBytePages) {
    Conv icu = OpenIcu(p.icu);
    const bool swap = IcuSwapsControls(icu.get());
    for (int lead = 0; lead < 256; ++lead) {
      const std::string one(1, static_cast<char>(lead));
      std::u16string want = IcuDecode(icu.get(), one);
      if (swap && (lead == 0x1A || lead == 0x1C || lead == 0x7F)) want = std::u16string(1, char16_t(lead));
      EXPECT_EQ(StrToWideByCodePage(one, p.cp), want) << p.cp << " byte " << lead;
      if (lead < 0x81 || lead > 0xFE) continue;
      // Each lead byte with every trail byte, as one text per lead byte
      // (each pair followed by a blank so that pairs do not merge).
      std::string text;
      for (int trail = 0x40; trail <= 0xFE; ++trail) {
        if (swap && trail == 0x7F) continue;  // no trail byte: DEL after an invalid lead, checked below
        text += static_cast<char>(lead);
        text += static_cast<char>(trail);
        text += ' ';
      }
      const std::u16string got = StrToWideByCodePage(text, p.cp);
      EXPECT_EQ(got, IcuDecode(icu.get(), text)) << p.cp << " lead " << lead;
      // And back: what decoded to characters other than U+FFFD encodes as ICU encodes it.
      EXPECT_EQ(WideToStrByCodePage(got, p.cp), IcuEncode(icu.get(), got)) << p.cp << " lead " << lead;
    }
  }
}

TEST(StrToWideByCodePage, ShiftJisLeadByteBeforeDel) {
  // 7F is never a trail byte in 932: the lead byte alone is undecodable and
  // 7F is DEL (ICU's own table would give U+001A).
  EXPECT_EQ(StrToWideByCodePage("\x81\x7F", 932), u"\uFFFD\x7F");
  EXPECT_EQ(StrToWideByCodePage("\x88\x9F\x7F", 932), u"\u4E9C\x7F");
}

TEST(StrToWideByCodePage, Utf8MatchesIcuOnEveryOneAndTwoByteText) {
  // 65001 on every text of one or two bytes (valid, truncated, stray
  // continuation bytes), and on surrogates, overlongs and 4-byte forms.
  Conv icu = OpenIcu("UTF-8");
  for (int a = 0; a < 256; ++a) {
    for (int b = -1; b < 256; ++b) {
      std::string s(1, static_cast<char>(a));
      if (b >= 0) s += static_cast<char>(b);
      ASSERT_EQ(StrToWideByCodePage(s, 65001), IcuDecode(icu.get(), s)) << a << " " << b;
    }
  }
  for (const char* s : {"\xED\xA0\x80", "\xE0\x80\xAF", "\xF0\x9F\x98\x80", "\xF4\x90\x80\x80", "a\xF0\x9F\x98",
                        "\xEF\xBB\xBFx", "\xC3\xA9\xE2\x82\xAC"}) {
    EXPECT_EQ(StrToWideByCodePage(s, 65001), IcuDecode(icu.get(), s)) << s;
  }
}

TEST(WideToStrByCodePage, Utf8EncodesLoneSurrogatesAsReplacementCharacter) {
  // 65001 writes U+FFFD (EF BF BD) for an unpaired surrogate, as Windows does.
  EXPECT_EQ(WideToStrByCodePage(std::u16string{u'a', char16_t(0xD800), u'b'}, 65001), "a\xEF\xBF\xBD" "b");
  EXPECT_EQ(WideToStrByCodePage(u"\u00E9\U0001F600", 65001), "\xC3\xA9\xF0\x9F\x98\x80");
}

TEST(StrToWideByCodePage, UnknownPagesFallBackToTheDefaultAnsiPage) {
  // The fallback is visible only when the default page is not the asked one:
  // pin it to 1251, where C0 is U+0410.
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "1251"}};
  for (int32_t cp : {12345, 99999, -1, -65001, 1200, 1201, 12000, 12001, 42}) {
    EXPECT_EQ(StrToWideByCodePage("\xC0", cp), u"\u0410") << cp;
    EXPECT_EQ(WideToStrByCodePage(u"\u0410", cp), "\xC0") << cp;
  }
}

TEST(IsCodePageSupported, PagesTheConversionsUse) {
  for (int32_t cp : {0, 1, 2, 3, 437, 932, 1252, 20127, 28605, 54936, 65000, 65001}) {
    EXPECT_TRUE(IsCodePageSupported(cp)) << cp;
  }
  // The UTF-16/32 pages have converters but are no 8-bit encodings.
  for (int32_t cp : {1200, 1201, 12000, 12001, 42, 12345, -1, -65001}) {
    EXPECT_FALSE(IsCodePageSupported(cp)) << cp;
  }
}

TEST(StrToWideByCodePage, SpecialPageNumbers) {
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "1251"}, {"QUILL_SYSTEM_LOCALE", "en-US"}};
  // 0 and 3: the default ANSI page.
  EXPECT_EQ(StrToWideByCodePage("\xC0", CP_ACP), u"\u0410");
  EXPECT_EQ(StrToWideByCodePage("\xC0", CP_THREAD_ACP), u"\u0410");
  // 1: the OEM page of the system locale (437 for en-US): 8E is Ä.
  EXPECT_EQ(StrToWideByCodePage("\x8E", CP_OEMCP), u"\u00C4");
  EXPECT_EQ(WideToStrByCodePage(u"\u00C4", CP_OEMCP), "\x8E");
  // 2: Mac Roman: 8A is ä.
  EXPECT_EQ(StrToWideByCodePage("\x8A", CP_MACCP), u"\u00E4");
}

TEST(WideToStrByCodePage, UnmappableCharactersBecomeQuestionMarks) {
  EXPECT_EQ(WideToStrByCodePage(u"a\u4E2Db", 1252), "a?b");
  EXPECT_EQ(WideToStrByCodePage(u"\u0416", 1251), "\xC6");
  // The bytes are the asked page's, whatever the default page is.
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "1252"}};
  EXPECT_EQ(WideToStrByCodePage(u"\u0416", 866), "\x86");
}

TEST(ConvertWideStrByCodePage, RepairsAndMakesMisDecodedText) {
  // UTF-8 bytes once read as 1252 are repaired by encoding in 1252 and
  // decoding as UTF-8 ...
  EXPECT_EQ(ConvertWideStrByCodePage(u"Stra\u00C3\u0178e", 1252, 65001), u"Stra\u00DFe");
  // ... and the other way round the damage is made.
  EXPECT_EQ(ConvertWideStrByCodePage(u"\u00E9", 65001, 1252), u"\u00C3\u00A9");
  // Cyrillic KOI8-R text read as 1251.
  EXPECT_EQ(ConvertWideStrByCodePage(u"\u0436", 20866, 1251), StrToWideByCodePage("\xD6", 1251));
  EXPECT_EQ(ConvertWideStrByCodePage(u"", 1252, 65001), u"");
}

TEST(GetCodePageByLocale, KnownLocales) {
  EXPECT_EQ(GetCodePageByLocale(0x0409), 1252);
  EXPECT_EQ(GetCodePageByLocale(0x0419), 1251);
  EXPECT_EQ(GetCodePageByLocale(0x0411), 932);
  EXPECT_EQ(GetCodePageByLocale(0x0804), 936);
  EXPECT_EQ(GetCodePageByLocale(0x0412), 949);
  EXPECT_EQ(GetCodePageByLocale(0x0404), 950);
  EXPECT_EQ(GetCodePageByLocale(0x041E), 874);
  EXPECT_EQ(GetCodePageByLocale(0x0405), 1250);
  // Edge case: a locale with only Unicode has page 0 (the default page).
  EXPECT_EQ(GetCodePageByLocale(0x042B), 0);
}

TEST(GetCodePageByLocale, DefaultLocalesAndUnknownOnes) {
  ScopedEnv env{{"QUILL_SYSTEM_LOCALE", "ru-RU"}, {"QUILL_ANSI_CODEPAGE", "1250"}, {"LANG", "C"}};
  // 2048: the system default locale's page (not GetACP()).
  EXPECT_EQ(GetCodePageByLocale(LOCALE_SYSTEM_DEFAULT), 1251);
  // Edge case: an unknown locale gives GetACP().
  EXPECT_EQ(GetCodePageByLocale(0xABCD), 1250);
  EXPECT_EQ(GetCodePageByLocale(0x7FFFFFFF), 1250);
}

TEST(GetCodePageByLocale, TextThatIsNotANumberRaises) {
  // The locale text is read as a number; an empty text means GetACP().
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "1257"}};
  EXPECT_EQ(internal::CodePageFromText(u""), 1257);
  EXPECT_EQ(internal::CodePageFromText(u"1252"), 1252);
  EXPECT_EQ(internal::CodePageFromText(u"0"), 0);
  // Edge case: not a number raises the runtime's conversion error.
  EXPECT_THROW((void)internal::CodePageFromText(u"ANSI"), EConvertError);
  EXPECT_THROW((void)internal::CodePageFromText(u"12 52"), EConvertError);
  // The locale source gives the digits GetCodePageByLocale reads.
  EXPECT_EQ(internal::AnsiCodePageText(0x0419), u"1251");
  EXPECT_EQ(internal::AnsiCodePageText(0xABCD), u"");
}

TEST(StrToWideByLocale, UsesTheLocalesPage) {
  EXPECT_EQ(StrToWideByLocale("\xC0", 0x0419), u"\u0410");
  EXPECT_EQ(StrToWideByLocale("\x93\xFA", 0x0411), u"\u65E5");
  EXPECT_EQ(WideToStrByLocale(u"\u0410", 0x0419), "\xC0");
  EXPECT_EQ(WideToStrByLocale(u"\u00E9", 0x040C), "\xE9");
  // Greek read back as Russian: the same bytes, other letters.
  EXPECT_EQ(ConvertWideStrByLocale(u"\u03B1", 0x0408, 0x0419), StrToWideByCodePage("\xE1", 1251));
  // A Unicode-only locale (page 0) converts in the default page.
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "1251"}};
  EXPECT_EQ(StrToWideByLocale("\xC0", 0x042B), u"\u0410");
}

TEST(AdjustLineBreaksUtf8, NormalisesBreaksAndKeepsText) {
  EXPECT_EQ(AdjustLineBreaksUtf8("a\nb\rc\r\nd"), "a\r\nb\r\nc\r\nd");
  EXPECT_EQ(AdjustLineBreaksUtf8("\xC3\xA9\n\xE2\x82\xAC\r"), "\xC3\xA9\r\n\xE2\x82\xAC\r\n");
  // LF CR is two breaks.
  EXPECT_EQ(AdjustLineBreaksUtf8("x\n\ry"), "x\r\n\r\ny");
  EXPECT_EQ(AdjustLineBreaksUtf8(""), "");
  // Ill-formed UTF-8 comes back as U+FFFD.
  EXPECT_EQ(AdjustLineBreaksUtf8("a\xFF\n"), "a\xEF\xBF\xBD\r\n");
}

TEST(KnownCodePages, ListsEveryPageAUserMeets) {
  const std::vector<TCodePageInfo> pages = KnownCodePages();
  std::set<int32_t> numbers;
  for (size_t i = 0; i < pages.size(); ++i) {
    numbers.insert(pages[i].CodePage);
    if (i > 0) {
      EXPECT_LT(pages[i - 1].CodePage, pages[i].CodePage);
    }
    EXPECT_TRUE(IsValidCodePage(static_cast<TCodePage>(pages[i].CodePage))) << pages[i].CodePage;
    EXPECT_NE(pages[i].Name, nullptr);
    EXPECT_NE(pages[i].IcuName, nullptr);
  }
  for (const Page& p : kSingleBytePages) {
    EXPECT_TRUE(numbers.count(p.cp)) << p.cp;
  }
  for (const Page& p : kDoubleBytePages) {
    EXPECT_TRUE(numbers.count(p.cp)) << p.cp;
  }
  EXPECT_TRUE(numbers.count(65001));
  auto find = [&](int32_t cp) { return *std::find_if(pages.begin(), pages.end(), [&](auto& e) { return e.CodePage == cp; }); };
  EXPECT_TRUE(find(1252).SingleByte);
  EXPECT_FALSE(find(932).SingleByte);
  EXPECT_FALSE(find(65001).SingleByte);
}

}  // namespace
}  // namespace quill::Glocales
