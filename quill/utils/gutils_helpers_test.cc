// Tests of the small Gutils helpers: integer minimum and maximum, font-style
// packing, random items, text scrambling and the current formats.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "quill/rtl/formatsettings.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/tlist.h"
#include "quill/utils/fontstyle.h"
#include "quill/utils/helpers.h"

namespace quill::Gutils {
namespace {

// Edge case: MinInt(-1, 1) is -1; MaxInt(3, 3) is 3.
TEST(MinMaxInt, Examples) {
  EXPECT_EQ(MinInt(-1, 1), -1);
  EXPECT_EQ(MinInt(1, -1), -1);
  EXPECT_EQ(MaxInt(3, 3), 3);
  EXPECT_EQ(MinInt(3, 3), 3);
  EXPECT_EQ(MaxInt(-1, 1), 1);
  EXPECT_EQ(MaxInt(INT32_MIN, INT32_MAX), INT32_MAX);
  EXPECT_EQ(MinInt(INT32_MIN, INT32_MAX), INT32_MIN);
}

// Edge case: IntToFontStyle(5) is bold and underline.
TEST(IntToFontStyle, FiveIsBoldUnderline) {
  EXPECT_EQ(IntToFontStyle(5), (TFontStyles{fsBold, fsUnderline}));
}

// Edge case: IntToFontStyle(16) is the empty set; other bits are ignored.
TEST(IntToFontStyle, OtherBitsIgnored) {
  EXPECT_TRUE(IntToFontStyle(16).Empty());
  EXPECT_EQ(IntToFontStyle(16 + 2), TFontStyles{fsItalic});
  EXPECT_EQ(IntToFontStyle(-1), (TFontStyles{fsBold, fsItalic, fsUnderline, fsStrikeOut}));
}

// Edge case: FontStyleToInt of all four is 15; every value 0..15 round-trips.
TEST(FontStyleToInt, AllFourIsFifteenAndRoundTrip) {
  EXPECT_EQ(FontStyleToInt(TFontStyles{fsBold, fsItalic, fsUnderline, fsStrikeOut}), 15);
  EXPECT_EQ(FontStyleToInt(TFontStyles{}), 0);
  EXPECT_EQ(FontStyleToInt(TFontStyles{fsStrikeOut}), 8);
  for (int32_t v = 0; v < 16; ++v) EXPECT_EQ(FontStyleToInt(IntToFontStyle(v)), v) << v;
}

TEST(TFontStyles, SetOperations) {
  TFontStyles s{fsBold};
  s.Include(fsItalic).Exclude(fsBold);
  EXPECT_EQ(s, TFontStyles{fsItalic});
  EXPECT_EQ((TFontStyles{fsBold, fsItalic} - TFontStyles{fsBold}), TFontStyles{fsItalic});
  EXPECT_EQ((TFontStyles{fsBold} + TFontStyles{fsItalic}).Bits(), 3);
  EXPECT_EQ((TFontStyles{fsBold, fsItalic} * TFontStyles{fsItalic}), TFontStyles{fsItalic});
}

// Edge case: Encrypt1("abc", "k") shifts each unit by 107 and wraps: 'a'
// (97) becomes 204 - 95 = 109 ('m'); Decrypt1 restores "abc".
TEST(Encrypt1, ExampleWithWrap) {
  const UnicodeString enc = Encrypt1(u"abc", u"k");
  EXPECT_EQ(enc, u"mno");
  EXPECT_EQ(Decrypt1(enc, u"k"), u"abc");
}

// The key cycles over the text.
TEST(Encrypt1, KeyCycles) {
  // ' ' + 1 = '!', ' ' + 2 = '"', then the key starts over.
  EXPECT_EQ(Encrypt1(u"   ", UnicodeString{u'\x01', u'\x02'}), u"!\"!");
}

// Edge case: an empty key or text gives the text unchanged.
TEST(Encrypt1, EmptyKeyOrText) {
  EXPECT_EQ(Encrypt1(u"abc", u""), u"abc");
  EXPECT_EQ(Decrypt1(u"abc", u""), u"abc");
  EXPECT_EQ(Encrypt1(u"", u"key"), u"");
  EXPECT_EQ(Decrypt1(u"", u"key"), u"");
}

// Deliberate: the pair is an inverse for units 32..126 whatever the key.
TEST(Encrypt1, InverseOverPrintableAscii) {
  UnicodeString all;
  for (char16_t c = 32; c <= 126; ++c) all.push_back(c);
  for (const UnicodeString& key : {UnicodeString(u"k"), UnicodeString(u"Secret Key!"),
                                   UnicodeString(u"~~~"), UnicodeString(u"  ")}) {
    const UnicodeString enc = Encrypt1(all, key);
    EXPECT_EQ(enc.size(), all.size());
    EXPECT_EQ(Decrypt1(enc, key), all);
  }
}

// Units outside 32..126 follow the same rule, cut to 16 bits, without the
// inverse guarantee.
TEST(Encrypt1, WideUnitsKeptAsSixteenBits) {
  const UnicodeString s{u'\xFFFF'};
  const UnicodeString k{u'\x0002'};
  // 65535 + 2 - 95 = 65442.
  EXPECT_EQ(Encrypt1(s, k), UnicodeString{static_cast<char16_t>(65442)});
  // 0 - 2 + 95 = 93.
  EXPECT_EQ(Decrypt1(UnicodeString{u'\0'}, k), UnicodeString{u']'});
  // 1 - 200 + 95 = -104, kept as the 16-bit unit 65432.
  EXPECT_EQ(Decrypt1(UnicodeString{u'\x01'}, UnicodeString{static_cast<char16_t>(200)}),
            UnicodeString{static_cast<char16_t>(65432)});
}

// GetRandomItem never returns the excluded item and reaches every other one.
TEST(GetRandomItem, SkipsExcludedAndCoversOthers) {
  int a = 0, b = 0, c = 0;
  TList list;
  list.Add(&a);
  list.Add(&b);
  list.Add(&c);
  std::set<void*> seen;
  for (int i = 0; i < 300; ++i) {
    void* item = GetRandomItem(list, &b);
    ASSERT_NE(item, &b);
    seen.insert(item);
  }
  EXPECT_EQ(seen, (std::set<void*>{&a, &c}));
}

// A list of one item other than the excluded one always gives that item.
TEST(GetRandomItem, SingleCandidate) {
  int a = 0, b = 0;
  TList list;
  list.Add(&b);
  list.Add(&a);
  list.Add(&b);
  for (int i = 0; i < 20; ++i) EXPECT_EQ(GetRandomItem(list, &b), &a);
}

// GetCurrentFormats gives the system default locale's settings, not the
// user's: with the system locale pinned to de-DE (and the user locale left
// as the test environment sets it) the settings are German ones.
TEST(GetCurrentFormats, UsesSystemDefaultLocale) {
  const char* old = std::getenv("QUILL_SYSTEM_LOCALE");
  const std::string saved = old ? old : "";
  setenv("QUILL_SYSTEM_LOCALE", "de-DE", 1);
  ResetLocaleCache();
  TFormatSettings fs;
  fs.DecimalSeparator = u'?';
  GetCurrentFormats(fs);
  if (old) setenv("QUILL_SYSTEM_LOCALE", saved.c_str(), 1); else unsetenv("QUILL_SYSTEM_LOCALE");
  ResetLocaleCache();
  EXPECT_EQ(fs.DecimalSeparator, u',');
  EXPECT_EQ(fs.LongMonthNames[0], u"Januar");
}

}  // namespace
}  // namespace quill::Gutils
