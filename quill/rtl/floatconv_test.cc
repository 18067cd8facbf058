#include "quill/rtl/floatconv.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <new>
#include <limits>
#include <string>

#include "quill/rtl/exception.h"

// Counts global allocations so tests can check that readers do not allocate.
#include "quill/rtl/internal/alloc_counter_for_test.h"
using quill::testing_support::g_allocations;

namespace quill {
namespace {

TFormatSettings DotSettings() {
  TFormatSettings fs;
  fs.DecimalSeparator = u'.';
  fs.ThousandSeparator = u',';
  return fs;
}

TFormatSettings CommaSettings() {
  TFormatSettings fs;
  fs.DecimalSeparator = u',';
  fs.ThousandSeparator = u'.';
  return fs;
}

UnicodeString Widen(std::string_view s) { return UnicodeString(s.begin(), s.end()); }

struct FloatCase {
  const char* text;
  bool ok;
  double value;
};

// The float grammar with '.' as the decimal separator.
const FloatCase kDotCases[] = {
    {"1.5", true, 1.5},
    {" 1.5 ", true, 1.5},   // leading and trailing blanks are ignored
    {"+1.5", true, 1.5},
    {"-1.5", true, -1.5},
    {".5", true, 0.5},
    {"5.", true, 5.0},
    {"1e3", true, 1000.0},
    {"1E+3", true, 1000.0},
    {"1e-3", true, 0.001},
    {"1e", true, 1.0},      // the exponent's number is optional
    {"1e+", true, 1.0},
    {"2.5E-", true, 2.5},
    {"007", true, 7.0},
    {"0.1", true, 0.1},
    {".", false, 0},        // a mantissa needs a digit
    {"e3", false, 0},
    {"-", false, 0},
    {"-.e1", false, 0},
    {"1,5", false, 0},      // ',' is not the separator here
    {"1,000.5", false, 0},  // no thousands separators
    {"1 000", false, 0},
    {"10 E 2", false, 0},
    {"$10", false, 0},
    {"0x10", false, 0},     // no hexadecimal
    {"", false, 0},
    {"   ", false, 0},
    {"1.5x", false, 0},
    {"1..5", false, 0},
    {"1.5.", false, 0},
    {"1e3.5", false, 0},
    {"INF", false, 0},      // infinities and NaN are not numbers here
    {"-INF", false, 0},
    {"NAN", false, 0},
    {"inf", false, 0},
    {"\t1.5", false, 0},    // blanks are code 32 only
    {"1.5\n", false, 0},
    {"\xA0" "1.5", false, 0},
    {"1e400", false, 0},    // beyond the double range
    {"-1e400", false, 0},
    {"1e99999999999999999999", false, 0},
    {"1e-400", true, 0.0},  // below the smallest denormal: zero
    {"1e-99999999999999999999", true, 0.0},
    {"1.7976931348623157e308", true, 1.7976931348623157e308},
    {"4.9406564584124654e-324", true, 4.9406564584124654e-324},
};

TEST(TryStrToFloat, GrammarWithDotSeparator) {
  const TFormatSettings fs = DotSettings();
  for (const FloatCase& c : kDotCases) {
    double v = 777;
    EXPECT_EQ(TryStrToFloat(std::string_view(c.text), v, fs), c.ok) << "'" << c.text << "'";
    EXPECT_EQ(v, c.ok ? c.value : 777) << "'" << c.text << "'";
    double w = 777;
    EXPECT_EQ(TryStrToFloat(Widen(c.text), w, fs), c.ok) << "'" << c.text << "'";
    EXPECT_EQ(w, c.ok ? c.value : 777) << "'" << c.text << "'";
  }
}

TEST(TryStrToFloat, CommaSeparatorMakesDotInvalid) {
  const TFormatSettings fs = CommaSettings();
  double v = 0;
  EXPECT_TRUE(TryStrToFloat(u"1,5", v, fs));
  EXPECT_EQ(v, 1.5);
  EXPECT_FALSE(TryStrToFloat(u"1.5", v, fs));
  EXPECT_FALSE(TryStrToFloat(u"1.000,5", v, fs));
  EXPECT_FALSE(TryStrToFloat("1.5", v, fs));
  EXPECT_TRUE(TryStrToFloat(" -2,25e1 ", v, fs));
  EXPECT_EQ(v, -22.5);
}

TEST(TryStrToFloat, NegativeZeroKeepsItsSign) {
  double v = 1;
  EXPECT_TRUE(TryStrToFloat(u"-0", v, DotSettings()));
  EXPECT_EQ(v, 0.0);
  EXPECT_TRUE(std::signbit(v));
}

TEST(TryStrToFloat, RoundsCorrectly) {
  // Values right at the rounding edge of a double; the result must be the
  // nearest double, as from_chars gives it.
  const TFormatSettings fs = DotSettings();
  double v = 0;
  ASSERT_TRUE(TryStrToFloat(u"0.30000000000000004", v, fs));
  EXPECT_EQ(v, 0.1 + 0.2);
  ASSERT_TRUE(TryStrToFloat(u"9007199254740993", v, fs));  // 2^53 + 1: ties to even
  EXPECT_EQ(v, 9007199254740992.0);
  ASSERT_TRUE(TryStrToFloat(u"123456789.123456789", v, fs));
  EXPECT_EQ(v, 123456789.123456789);
}

TEST(TryStrToFloat, VeryLongMantissa) {
  // More digits than a double can use: the tail still decides the rounding.
  const TFormatSettings fs = DotSettings();
  // 2^53 + 1 followed by a long tail of zeros and a final 1: just above the
  // tie, so it rounds up to 2^53 + 2.
  std::string text = "9007199254740993." + std::string(2000, '0') + "1";
  double v = 0;
  ASSERT_TRUE(TryStrToFloat(text, v, fs));
  EXPECT_EQ(v, 9007199254740994.0);
  text = "9007199254740993." + std::string(2000, '0');
  ASSERT_TRUE(TryStrToFloat(text, v, fs));
  EXPECT_EQ(v, 9007199254740992.0);
  // 2000 integer digits: too large.
  EXPECT_FALSE(TryStrToFloat(std::string(2000, '9'), v, fs));
  // Long run of leading zeros before the digits.
  text = "0." + std::string(3000, '0') + "1e3010";
  ASSERT_TRUE(TryStrToFloat(text, v, fs));
  EXPECT_EQ(v, 1e9);
}

TEST(TryStrToFloat, AllSingleBytes) {
  // Exactly the ten digits convert as one-character texts.
  const TFormatSettings fs = DotSettings();
  for (int b = 0; b < 256; ++b) {
    const char c = static_cast<char>(b);
    double v = -1;
    const bool ok = TryStrToFloat(std::string_view(&c, 1), v, fs);
    EXPECT_EQ(ok, b >= '0' && b <= '9') << b;
  }
}

TEST(TryStrToFloat, NonAsciiDigitsFail) {
  double v = 0;
  EXPECT_FALSE(TryStrToFloat(u"\uFF11", v, DotSettings()));
  EXPECT_FALSE(TryStrToFloat(u"\u0661.5", v, DotSettings()));
  EXPECT_FALSE(TryStrToFloat(u"1\u0130", v, DotSettings()));
}

TEST(TryStrToFloat, DoesNotAllocate) {
  const TFormatSettings fs = DotSettings();
  // Long enough that a std::string copy could not use the small buffer.
  const UnicodeString wide = u"  -123456789.123456789123456789e-5  ";
  const std::string narrow = "0.000000000000000000000000000000000000000000001";
  double a = 0, b = 0;
  Currency c;
  const long before = g_allocations.load();
  const bool ok = TryStrToFloat(wide, a, fs) && TryStrToFloat(narrow, b, fs) && TryStrToCurr(u"12.5", c, fs) &&
                  !TryStrToFloat(u"1.5.5", a, fs);
  const long after = g_allocations.load();
  EXPECT_TRUE(ok);
  EXPECT_EQ(after - before, 0);
}

TEST(FloatToStr, AllocatesOnlyTheResult) {
  const TFormatSettings fs = DotSettings();
  const long before = g_allocations.load();
  const UnicodeString text = FloatToStr(-1.2345678901234567e-300, fs);
  const long after = g_allocations.load();
  EXPECT_EQ(text, u"-1.23456789012346E-300");
  // Exactly one: the result string (too long for the small-string buffer).
  EXPECT_EQ(after - before, 1);
}

TEST(StrToFloat, RaisesWithTextAsGiven) {
  try {
    (void)StrToFloat(u" 1,5 ", DotSettings());
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"' 1,5 ' is not a valid floating point value");
  }
  try {
    (void)StrToFloat("abc", DotSettings());
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'abc' is not a valid floating point value");
  }
  EXPECT_EQ(StrToFloat(u"2.5", DotSettings()), 2.5);
}

TEST(StrToFloat, ProcessSettingsWhenOmitted) {
  TFormatSettings& fs = FormatSettings();
  const WideChar saved = fs.DecimalSeparator;
  fs.DecimalSeparator = u',';
  double v = 0;
  EXPECT_TRUE(TryStrToFloat(u"3,5", v));
  EXPECT_EQ(v, 3.5);
  EXPECT_FALSE(TryStrToFloat("3.5", v));
  EXPECT_THROW((void)StrToFloat(u"3.5"), EConvertError);
  fs.DecimalSeparator = u'.';
  EXPECT_EQ(StrToFloat("3.5"), 3.5);
  fs.DecimalSeparator = saved;
}

struct ToStrCase {
  double value;
  const char16_t* text;
};

// Fifteen significant digits; fixed notation for 1E-4 <= |v| < 1E15.
const ToStrCase kToStrCases[] = {
    {0.0, u"0"},
    {1.5, u"1.5"},
    {100.0, u"100"},
    {-2.0, u"-2"},
    {1e14, u"100000000000000"},
    {999999999999999.0, u"999999999999999"},
    {1e15, u"1E15"},
    {1234567890123456.0, u"1.23456789012346E15"},
    {1e20, u"1E20"},
    {1.5e20, u"1.5E20"},
    {1e100, u"1E100"},
    {0.0001, u"0.0001"},
    {0.00015, u"0.00015"},
    {0.00001, u"1E-5"},  // the switch happens below 1E-4, not 1E-5
    {1.5e-5, u"1.5E-5"},
    {4.42615029219009e-5, u"4.42615029219009E-5"},
    {1e-6, u"1E-6"},
    {-1.5e-7, u"-1.5E-7"},
    {1.0 / 3.0, u"0.333333333333333"},
    {2.0 / 3.0, u"0.666666666666667"},
    {0.1 + 0.2, u"0.3"},
    {123456789.123456789, u"123456789.123457"},
    {1.7976931348623157e308, u"1.79769313486232E308"},
    {5e-324, u"4.94065645841247E-324"},
    {-0.0, u"0"},
    {999999999999999.9, u"1E15"},  // rounds up into the next decade
    {0.00009999999999999999, u"0.0001"},
    {2.384185791015625e-7, u"2.38418579101563E-7"},  // exact tie: away from zero
    {-2.384185791015625e-7, u"-2.38418579101563E-7"},
    {1000000000000005.0, u"1.00000000000001E15"},    // integer tie: away from zero
    {1000000000000015.0, u"1.00000000000002E15"},
    {1000000000000004.0, u"1E15"},
    {0.5, u"0.5"},
};

TEST(FloatToStr, GeneralFifteenDigits) {
  const TFormatSettings fs = DotSettings();
  for (const ToStrCase& c : kToStrCases) {
    EXPECT_EQ(FloatToStr(c.value, fs), UnicodeString(c.text)) << c.value;
  }
}

TEST(FloatToStr, NonFinite) {
  const TFormatSettings fs = DotSettings();
  EXPECT_EQ(FloatToStr(std::numeric_limits<double>::infinity(), fs), u"INF");
  EXPECT_EQ(FloatToStr(-std::numeric_limits<double>::infinity(), fs), u"-INF");
  EXPECT_EQ(FloatToStr(std::numeric_limits<double>::quiet_NaN(), fs), u"NAN");
}

TEST(FloatToStr, UsesDecimalSeparator) {
  EXPECT_EQ(FloatToStr(1.5, CommaSettings()), u"1,5");
  EXPECT_EQ(FloatToStr(-1.25e-7, CommaSettings()), u"-1,25E-7");
  // No thousands separators ever.
  EXPECT_EQ(FloatToStr(1234567.0, CommaSettings()), u"1234567");
}

TEST(FloatToStr, LargestDoubleTextDoesNotReadBack) {
  // Fifteen digits round the largest double up to 1.79769313486232E308,
  // which lies beyond the double range: the text is right, reading it fails.
  const TFormatSettings fs = DotSettings();
  const UnicodeString text = FloatToStr(std::numeric_limits<double>::max(), fs);
  EXPECT_EQ(text, u"1.79769313486232E308");
  double v = 0;
  EXPECT_FALSE(TryStrToFloat(text, v, fs));
}

TEST(FloatToStr, RoundTripsFifteenDigitValues) {
  const TFormatSettings fs = DotSettings();
  for (double v : {1.5, 0.1, 123.456, 1e-10, 9.87654321e200, -4.2e-300}) {
    double back = 0;
    ASSERT_TRUE(TryStrToFloat(FloatToStr(v, fs), back, fs)) << v;
    EXPECT_EQ(back, v);
  }
}

}  // namespace
}  // namespace quill
