#include "quill/rtl/format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/intconv.h"

namespace quill {
namespace {

// Runs `f` and returns the EConvertError message it raises ("" if none).
template <class F>
UnicodeString ConvertErrorOf(F f) {
  try {
    (void)f();
  } catch (const EConvertError& e) {
    return e.Message();
  }
  return u"";
}

// Pins the process settings to the default (en-US-like) layout for a test.
class SettingsGuard {
 public:
  SettingsGuard() : saved_(FormatSettings()) { FormatSettings() = TFormatSettings{}; }
  ~SettingsGuard() { FormatSettings() = saved_; }

 private:
  TFormatSettings saved_;
};

TEST(Format, IntegerInMessage) {
  EXPECT_EQ(Format(u"Token %d is not available", {5}), u"Token 5 is not available");
  EXPECT_EQ(Format(u"Token %d is not available", {-11}), u"Token -11 is not available");
}

TEST(Format, StringInMessage) {
  EXPECT_EQ(Format(u"\"%s\" not a character", {u"#300"}), u"\"#300\" not a character");
}

TEST(Format, WidthPadsLeftOrRight) {
  EXPECT_EQ(Format(u"%5d", {42}), u"   42");
  EXPECT_EQ(Format(u"%-5d", {42}), u"42   ");
  // Width smaller than the text: never truncates.
  EXPECT_EQ(Format(u"%1d", {12345}), u"12345");
}

TEST(Format, PrecisionIsMinimumDigitsSignNotCounted) {
  EXPECT_EQ(Format(u"%.3d", {7}), u"007");
  EXPECT_EQ(Format(u"%.3d", {-7}), u"-007");
  EXPECT_EQ(Format(u"%6.3d|", {-7}), u"  -007|");
}

TEST(Format, HexIsUpperCase) {
  EXPECT_EQ(Format(u"%x", {255}), u"FF");
  EXPECT_EQ(Format(u"%.4x", {255}), u"00FF");
  EXPECT_EQ(Format(u"%X", {0xabcdef}), u"ABCDEF");
}

TEST(Format, NegativeIntegersShowTheirPatternInTheArgumentWidth) {
  // A 32-bit argument gives the 32-bit pattern, a 64-bit one all 64 bits.
  EXPECT_EQ(Format(u"%x", {-1}), u"FFFFFFFF");
  EXPECT_EQ(Format(u"%x", {int64_t{-1}}), u"FFFFFFFFFFFFFFFF");
  EXPECT_EQ(Format(u"%u", {-1}), u"4294967295");
  EXPECT_EQ(Format(u"%u", {int64_t{-1}}), u"18446744073709551615");
  EXPECT_EQ(Format(u"%u", {uint32_t{4000000000u}}), u"4000000000");
}

TEST(Format, Int64Extremes) {
  EXPECT_EQ(Format(u"%d", {INT64_MIN}), u"-9223372036854775808");
  EXPECT_EQ(Format(u"%d", {INT64_MAX}), u"9223372036854775807");
}

TEST(Format, StringWidthAndPrecision) {
  EXPECT_EQ(Format(u"[%5s][%-5s][%.2s]", {u"ab", u"ab", u"abcdef"}), u"[   ab][ab   ][ab]");
  // Precision longer than the string keeps it whole; .0 keeps nothing.
  EXPECT_EQ(Format(u"[%.10s][%.0s]", {u"abc", u"abc"}), u"[abc][]");
}

TEST(Format, IndexResetsTheArgumentPointer) {
  EXPECT_EQ(Format(u"%1:s %0:s|%s", {u"a", u"b"}), u"b a|b");
  EXPECT_EQ(Format(u"%d %d %0:d %d", {10, 20}), u"10 20 10 20");
}

TEST(Format, IndexWithWidthAndLeftAlign) {
  EXPECT_EQ(Format(u"[%1:-4d][%0:3d]", {1, 2}), u"[2   ][  1]");
}

TEST(Format, StarTakesWidthAndPrecisionFromArguments) {
  EXPECT_EQ(Format(u"%*d", {5, 42}), u"   42");
  EXPECT_EQ(Format(u"%.*d", {4, 42}), u"0042");
  EXPECT_EQ(Format(u"%*.*d|", {6, 3, 7}), u"   007|");
  // A negative width from '*' pads on the right.
  EXPECT_EQ(Format(u"%*d|", {-4, 7}), u"7   |");
}

TEST(Format, PercentPercent) {
  EXPECT_EQ(Format(u"100%%", {}), u"100%");
  EXPECT_EQ(Format(u"%d%%", {50}), u"50%");
}

TEST(Format, NoSpecifiersCopiesText) {
  EXPECT_EQ(Format(u"", {}), u"");
  EXPECT_EQ(Format(u"plain text", {1, 2}), u"plain text");
}

TEST(Format, TypeLettersAnyCase) {
  EXPECT_EQ(Format(u"%D/%S", {3, u"x"}), u"3/x");
}

TEST(Format, CharacterArguments) {
  EXPECT_EQ(Format(u"[%s%s]", {u'W', 'a'}), u"[Wa]");
}

TEST(Format, EightBitStringsAreWidened) {
  EXPECT_EQ(Format(u"%s-%s", {std::string("ansi"), "lit"}), u"ansi-lit");
}

TEST(Format, TemporaryStringArguments) {
  // Arguments refer to their strings; temporaries live through the call.
  EXPECT_EQ(Format(u"[%s|%s]", {IntToStr(-42), UnicodeString(40, u'z')}), u"[-42|" + UnicodeString(40, u'z') + u"]");
  EXPECT_EQ(Format("[%s]", {std::string(30, 'q')}), "[" + std::string(30, 'q') + "]");
}

TEST(Format, EightBitForm) {
  EXPECT_EQ(Format("Token %d is not available", {5}), "Token 5 is not available");
  EXPECT_EQ(Format("[%5s][%-5s][%.2s]", {"ab", "ab", "abcdef"}), "[   ab][ab   ][ab]");
  EXPECT_EQ(Format("%1:s %0:s|%s", {"a", "b"}), "b a|b");
  // A UTF-16 ASCII argument is narrowed.
  EXPECT_EQ(Format("<%s>", {u"wide"}), "<wide>");
  EXPECT_EQ(Format("%x", {255}), "FF");
}

TEST(Format, WrongArgumentTypeRaises) {
  // The message carries the whole format string.
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%d", {u"x"}); }),
            u"Format '%d' invalid or incompatible with argument");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%.0f MB", {5}); }),
            u"Format '%.0f MB' invalid or incompatible with argument");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%s", {1}); }),
            u"Format '%s' invalid or incompatible with argument");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%d", {1.5}); }),
            u"Format '%d' invalid or incompatible with argument");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%*d", {u"w", 1}); }),
            u"Format '%*d' invalid or incompatible with argument");
}

TEST(Format, UnknownTypeLetterRaises) {
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"a %k b", {1}); }),
            u"Format 'a %k b' invalid or incompatible with argument");
  // A specifier cut off by the end of the string.
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"50%", {}); }),
            u"Format '50%' invalid or incompatible with argument");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%5.", {1}); }),
            u"Format '%5.' invalid or incompatible with argument");
}

TEST(Format, MissingArgumentRaises) {
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%d and %d", {1}); }), u"No argument for format '%d and %d'");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%s", {}); }), u"No argument for format '%s'");
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%2:s", {u"a", u"b"}); }), u"No argument for format '%2:s'");
}

TEST(Format, ErrorMessageKeepsPercentSignsLiterally) {
  // The message is built without formatting the format string again, so its
  // own '%' specifiers appear unchanged.
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%s %d %s", {u"a"}); }), u"No argument for format '%s %d %s'");
}

TEST(Format, EightBitFormErrors) {
  EXPECT_EQ(ConvertErrorOf([] { return Format("%d", {"x"}); }), u"Format '%d' invalid or incompatible with argument");
  EXPECT_EQ(ConvertErrorOf([] { return Format("%d %d", {1}); }), u"No argument for format '%d %d'");
}

TEST(Format, HugeWidthIsInvalid) {
  // Widths beyond a million characters are rejected rather than honoured.
  EXPECT_EQ(ConvertErrorOf([] { return Format(u"%99999999999d", {1}); }),
            u"Format '%99999999999d' invalid or incompatible with argument");
}

TEST(Format, FixedPoint) {
  SettingsGuard guard;
  EXPECT_EQ(Format(u"%f", {1.5}), u"1.50");
  EXPECT_EQ(Format(u"%.2f", {3.14159}), u"3.14");
  EXPECT_EQ(Format(u"%.0f MB", {1536.0 / 1024}), u"2 MB");
  EXPECT_EQ(Format(u"%.3f", {-0.0005}), u"-0.001");
  EXPECT_EQ(Format(u"%8.2f|", {-1.005}), u"   -1.00|");  // -1.005 is really -1.00499999...
  // Exact halves round away from zero.
  EXPECT_EQ(Format(u"%.2f", {0.125}), u"0.13");
  EXPECT_EQ(Format(u"%.0f", {2.5}), u"3");
  EXPECT_EQ(Format(u"%.0f", {-2.5}), u"-3");
  // A value rounding to zero has no minus sign.
  EXPECT_EQ(Format(u"%.1f", {-0.01}), u"0.0");
}

TEST(Format, FixedUsesDecimalSeparator) {
  SettingsGuard guard;
  FormatSettings().DecimalSeparator = u',';
  EXPECT_EQ(Format(u"%.2f", {1.5}), u"1,50");
  EXPECT_EQ(Format("%.1f", {2.25}), "2,3");
}

TEST(Format, ScientificAndGeneral) {
  SettingsGuard guard;
  EXPECT_EQ(Format(u"%e", {1.5}), u"1.50000000000000E+000");
  EXPECT_EQ(Format(u"%.3e", {-123456.0}), u"-1.23E+005");
  EXPECT_EQ(Format(u"%.2e", {1e-10}), u"1.0E-010");
  EXPECT_EQ(Format(u"%g", {0.1 + 0.2}), u"0.3");
  EXPECT_EQ(Format(u"%g", {1e20}), u"1E20");
  EXPECT_EQ(Format(u"%.3g", {1234.5}), u"1.23E3");
}

TEST(Format, NumberWithThousands) {
  SettingsGuard guard;
  EXPECT_EQ(Format(u"%n", {1234567.891}), u"1,234,567.89");
  EXPECT_EQ(Format(u"%.0n", {-999.0}), u"-999");
  EXPECT_EQ(Format(u"%.0n", {-1000.0}), u"-1,000");
}

TEST(Format, Money) {
  SettingsGuard guard;
  TFormatSettings& fs = FormatSettings();
  fs.CurrencyString = u"$";
  fs.CurrencyFormat = 0;
  fs.NegCurrFormat = 0;
  fs.CurrencyDecimals = 2;
  EXPECT_EQ(Format(u"%m", {1234.5}), u"$1,234.50");
  EXPECT_EQ(Format(u"%m", {-1234.5}), u"($1,234.50)");
  fs.CurrencyString = u"EUR";
  fs.CurrencyFormat = 3;
  fs.NegCurrFormat = 8;
  EXPECT_EQ(Format(u"%.0m", {5.0}), u"5 EUR");
  EXPECT_EQ(Format(u"%.0m", {-5.0}), u"-5 EUR");
}

TEST(Format, NonFiniteFloats) {
  SettingsGuard guard;
  EXPECT_EQ(Format(u"%f|%g", {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}),
            u"INF|-INF");
  EXPECT_EQ(Format(u"%e", {std::numeric_limits<double>::quiet_NaN()}), u"NAN");
}

TEST(Format, Pointer) {
  EXPECT_EQ(Format(u"%p", {uint64_t{0xdeadbeef}}), u"00000000DEADBEEF");
  int object = 0;
  const void* address = &object;
  const UnicodeString text = Format(u"%p", {address});
  ASSERT_EQ(text.size(), 16u);
  EXPECT_EQ(std::stoull(std::string(text.begin(), text.end()), nullptr, 16), reinterpret_cast<uintptr_t>(address));
}

TEST(Format, LongLongArguments) {
  EXPECT_EQ(Format(u"%d/%u/%x", {-5LL, 7ULL, -1LL}), u"-5/7/FFFFFFFFFFFFFFFF");
}

}  // namespace
}  // namespace quill
