// Integer, float, currency and boolean conversions.
#include "quill/strings/convert.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/trim.h"
#include "quill/rtl/syslocale.h"

namespace quill::Gstrings {
namespace {

// Pins a comma-decimal world for one test: the process's current settings
// use ',' and the system default locale is de-DE. Restores both afterwards.
class CommaDecimalWorld {
 public:
  CommaDecimalWorld() : saved_(FormatSettings()) {
    if (const char* v = std::getenv("QUILL_SYSTEM_LOCALE")) savedEnv_ = v;
    setenv("QUILL_SYSTEM_LOCALE", "de-DE", 1);
    ResetLocaleCache();
    FormatSettings().DecimalSeparator = u',';
    FormatSettings().ThousandSeparator = u'.';
  }
  ~CommaDecimalWorld() {
    if (savedEnv_) {
      setenv("QUILL_SYSTEM_LOCALE", savedEnv_->c_str(), 1);
    } else {
      unsetenv("QUILL_SYSTEM_LOCALE");
    }
    ResetLocaleCache();
    FormatSettings() = saved_;
  }

 private:
  TFormatSettings saved_;
  std::optional<std::string> savedEnv_;
};

TEST(CommaDecimalWorld, IsReallyPinned) {
  CommaDecimalWorld world;
  EXPECT_EQ(FormatSettings().DecimalSeparator, u',');
  EXPECT_EQ(TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT).DecimalSeparator, u',');
}

TEST(XStrToInt, BlankGivesZeroTrailingBlankRaises) {
  EXPECT_EQ(XStrToInt(u"   "), 0);
  EXPECT_EQ(XStrToInt(u""), 0);
  EXPECT_EQ(XStrToInt(u" \t\r\n"), 0);
  EXPECT_EQ(XStrToInt(u" 7"), 7);
  EXPECT_EQ(XStrToInt(u"-$10"), -16);
  EXPECT_EQ(XStrToInt(u"0x1F"), 31);
  EXPECT_THROW((void)XStrToInt(u"7 "), EConvertError);
  EXPECT_THROW((void)XStrToInt(u"abc"), EConvertError);
  EXPECT_THROW((void)XStrToInt(u"2147483648"), EConvertError);
}

TEST(XStrToInt, MessageNamesTheTextAsGiven) {
  try {
    (void)XStrToInt(u"7 ");
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'7 ' is not a valid integer value");
  }
}

TEST(ZStrToInt, NeverRaises) {
  EXPECT_EQ(ZStrToInt(u" 7 "), 7);
  EXPECT_EQ(ZStrToInt(u"x"), 0);  // "x" alone is a hex prefix without digits
  EXPECT_EQ(ZStrToInt(u""), 0);
  EXPECT_EQ(ZStrToInt(u"   "), 0);
  EXPECT_EQ(ZStrToInt(u"12abc"), 0);
  EXPECT_EQ(ZStrToInt(u"$ff"), 255);
  EXPECT_EQ(ZStrToInt(u"-2147483648"), INT32_MIN);
  EXPECT_EQ(ZStrToInt(u"2147483648"), 0);
  EXPECT_EQ(ZStrToInt(u"\u0661"), 0);  // Arabic-Indic digit one is not a digit
}

// The short-decimal fast path must answer exactly like the runtime's
// grammar on texts around its limits.
TEST(ZStrToInt, AgreesWithTheRuntimeGrammar) {
  for (const char16_t* t : {u"0", u"-0", u"+5", u"+", u"-", u"--1", u"+-1", u"123456789",
                            u"-123456789", u"999999999", u"1234567890", u"-2147483648",
                            u"2147483647", u"0000000001", u"1a", u"\u0031", u"$1F", u" 12",
                            u"1\u00B2", u"\uFF11"}) {
    int32_t v = 0;
    const bool ok = TryStrToInt(Trim(std::u16string_view(t)), v);
    EXPECT_EQ(ZStrToInt(t), ok ? v : 0) << std::u16string(t).size();
    int32_t w = 0;
    if (TryStrToInt(std::u16string_view(t), w)) {
      EXPECT_EQ(XStrToInt(t), w);
    } else {
      EXPECT_THROW((void)XStrToInt(t), EConvertError);
    }
  }
}

TEST(SafeStrToInt, ConvertsTrimmedText) {
  EXPECT_EQ(SafeStrToInt(u" 42 "), 42);
  EXPECT_EQ(SafeStrToInt(u""), 0);
  EXPECT_EQ(SafeStrToInt(u"\t-5\r\n"), -5);
}

// The fallback that would keep leading digits always fails: "12abc" does not
// give 12, "abc" does not give 0, and all-blank text fails too.
TEST(SafeStrToInt, FallbackAlwaysRaises) {
  EXPECT_THROW((void)SafeStrToInt(u"abc"), EConvertError);
  EXPECT_THROW((void)SafeStrToInt(u"12abc"), EConvertError);
  EXPECT_THROW((void)SafeStrToInt(u"   "), EConvertError);
  EXPECT_THROW((void)SafeStrToInt(u"99999999999"), EConvertError);
}

TEST(HexToInt, DigitsAndWrapping) {
  EXPECT_EQ(HexToInt(u"ff"), 255);
  EXPECT_EQ(HexToInt(u"FF"), 255);
  EXPECT_EQ(HexToInt(u""), 0);
  EXPECT_EQ(HexToInt(u"7FFFFFFF"), INT32_MAX);
  EXPECT_EQ(HexToInt(u"FFFFFFFF"), -1);
  EXPECT_EQ(HexToInt(u"100000000"), 0);       // a ninth digit wraps away
  EXPECT_EQ(HexToInt(u"123456789"), 0x23456789);
  EXPECT_EQ(HexToInt(u"0000000000a"), 10);
}

// Digits are judged by the low byte: U+0141 counts as 'A', U+0130 as '0'.
TEST(HexToInt, LowByteRule) {
  EXPECT_EQ(HexToInt(u"\u0141"), 10);
  EXPECT_EQ(HexToInt(u"\u0131\u0130"), 16);
  EXPECT_EQ(HexToInt(u"\uFF46"), 15);  // low byte 0x46 'F'
}

TEST(HexToInt, BadCharacterRaisesWithItsText) {
  try {
    (void)HexToInt(u"1G");
    FAIL() << "no exception";
  } catch (const EGStringsError& e) {
    EXPECT_EQ(e.Message(), u"G is not a hex digit");
  }
  // No prefix, sign or blank.
  for (const char16_t* bad : {u"$FF", u"0xFF", u"-1", u" 1", u"1 ", u"\u00E9"}) {
    EXPECT_THROW((void)HexToInt(bad), EGStringsError);
  }
  try {
    (void)HexToInt(u"\u00E9");
    FAIL() << "no exception";
  } catch (const EGStringsError& e) {
    EXPECT_EQ(e.Message(), u"\u00E9 is not a hex digit");
  }
}

TEST(OctToInt, DigitsWrappingAndErrors) {
  EXPECT_EQ(OctToInt(u"17"), 15);
  EXPECT_EQ(OctToInt(u""), 0);
  EXPECT_EQ(OctToInt(u"37777777777"), -1);
  EXPECT_EQ(OctToInt(u"40000000000"), 0);  // wraps
  EXPECT_EQ(OctToInt(u"\u0137"), 7);       // low byte '7'
  try {
    (void)OctToInt(u"18");
    FAIL() << "no exception";
  } catch (const EGStringsError& e) {
    EXPECT_EQ(e.Message(), u"8 is not an oct digit");
  }
  EXPECT_THROW((void)OctToInt(u"a"), EGStringsError);
  EXPECT_THROW((void)OctToInt(u"\u0138"), EGStringsError);
}

TEST(XStrToFloat, DefaultOnlyForEmptyText) {
  EXPECT_EQ(XStrToFloat(u"", 2.5), 2.5);
  EXPECT_EQ(XStrToFloat(u"1.5", 2.5), 1.5);
  EXPECT_EQ(XStrToFloat(u" 1e3 ", 0), 1000.0);
  EXPECT_THROW((void)XStrToFloat(u"abc", 2.5), EConvertError);
  EXPECT_THROW((void)XStrToFloat(u"1,5", 2.5), EConvertError);
}

// '.' whatever the locales say; ',' is then a bad character.
TEST(XStrToFloat, PointDecimalUnderCommaLocale) {
  CommaDecimalWorld world;
  EXPECT_EQ(XStrToFloat(u"1.5", 0), 1.5);
  EXPECT_THROW((void)XStrToFloat(u"1,5", 0), EConvertError);
  // The process's settings are not touched.
  EXPECT_EQ(FormatSettings().DecimalSeparator, u',');
}

TEST(ZStrToFloat, ProcessSettingsNeverRaises) {
  EXPECT_EQ(ZStrToFloat(u" 1.5 "), 1.5);
  EXPECT_EQ(ZStrToFloat(u""), 0.0);
  EXPECT_EQ(ZStrToFloat(u"abc"), 0.0);
  EXPECT_EQ(ZStrToFloat(u"1,5"), 0.0);
}

// ZStrToFloat follows the process's current (comma) separator.
TEST(ZStrToFloat, CommaDecimalLocalePinned) {
  CommaDecimalWorld world;
  EXPECT_EQ(ZStrToFloat(u"1,5"), 1.5);
  EXPECT_EQ(ZStrToFloat(u" -2,25 "), -2.25);
  EXPECT_EQ(ZStrToFloat(u"1.5"), 0.0);
}

TEST(XFloatToStr, GeneralFormatWithPoint) {
  EXPECT_EQ(XFloatToStr(1.5), u"1.5");
  EXPECT_EQ(XFloatToStr(0), u"0");
  EXPECT_EQ(XFloatToStr(100), u"100");
  EXPECT_EQ(XFloatToStr(1e15), u"1E15");
  EXPECT_EQ(XFloatToStr(1.0 / 3), u"0.333333333333333");
  EXPECT_EQ(XFloatToStr(-1.5e-7), u"-1.5E-7");
  EXPECT_EQ(XFloatToStr(1234567.5), u"1234567.5");
}

TEST(XFloatToStr, PointEvenWhereTheUserUsesComma) {
  CommaDecimalWorld world;
  EXPECT_EQ(XFloatToStr(1.5), u"1.5");
  EXPECT_EQ(XFloatToStr(1234567.25), u"1234567.25");
}

TEST(XCurrToStr, UpToFourDecimalsWithPoint) {
  EXPECT_EQ(XCurrToStr(Currency::FromRaw(15000)), u"1.5");
  EXPECT_EQ(XCurrToStr(Currency::FromRaw(0)), u"0");
  EXPECT_EQ(XCurrToStr(Currency::FromRaw(-12345)), u"-1.2345");
  EXPECT_EQ(XCurrToStr(Currency::FromInt(100)), u"100");
  EXPECT_EQ(XCurrToStr(Currency::FromRaw(INT64_MAX)), u"922337203685477.5807");
  CommaDecimalWorld world;
  EXPECT_EQ(XCurrToStr(Currency::FromRaw(12345678)), u"1234.5678");
}

TEST(BoolToStr, OrdinalText) {
  EXPECT_EQ(BoolToStr(false), u"0");
  EXPECT_EQ(BoolToStr(true), u"1");
}

struct BoolCase {
  const char16_t* text;
  bool x;  // XStrToBool
  bool n;  // NStrToBool
};

// The two differ only for the empty text.
TEST(XStrToBool, TableWithNStrToBool) {
  const BoolCase cases[] = {
      {u"", false, true},       {u"FALSE", false, false}, {u"false", false, false},
      {u"FaLsE", false, false}, {u"0", false, false},     {u"1", true, true},
      {u"no", true, true},      {u" false", true, true},  {u"false ", true, true},
      {u"00", true, true},      {u"true", true, true},    {u"\u0066alse", false, false},
      {u"f\u0430lse", true, true},  // Cyrillic a: not "false"
  };
  for (const auto& c : cases) {
    EXPECT_EQ(XStrToBool(c.text), c.x) << std::u16string(c.text).size();
    EXPECT_EQ(NStrToBool(c.text), c.n) << std::u16string(c.text).size();
  }
}

}  // namespace
}  // namespace quill::Gstrings
