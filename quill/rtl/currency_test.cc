#include "quill/rtl/currency.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "quill/rtl/exception.h"
#include "quill/rtl/floatconv.h"

namespace quill {
namespace {

TFormatSettings DotSettings() {
  TFormatSettings fs;
  fs.DecimalSeparator = u'.';
  return fs;
}

TEST(Currency, RawCountOfTenThousandths) {
  EXPECT_EQ(Currency::FromInt(1).Raw(), 10000);
  EXPECT_EQ(Currency::FromRaw(15000).ToDouble(), 1.5);
  EXPECT_EQ((Currency::FromInt(2) - Currency::FromRaw(5)).Raw(), 19995);
  EXPECT_LT(Currency::FromRaw(-1), Currency());
}

TEST(CurrencyFromDouble, RoundsToNearestTenThousandth) {
  EXPECT_EQ(Currency::FromDouble(1.5).Raw(), 15000);
  EXPECT_EQ(Currency::FromDouble(-1.2345).Raw(), -12345);
  EXPECT_EQ(Currency::FromDouble(0.00004).Raw(), 0);
  EXPECT_EQ(Currency::FromDouble(0.00006).Raw(), 1);
  EXPECT_EQ(Currency::FromDouble(-0.00006).Raw(), -1);
}

TEST(CurrencyFromDouble, HalvesGoToEven) {
  // 1/32 and 3/32 are exact binary values whose count of ten-thousandths ends
  // in exactly one half: 312.5 goes down to 312, 937.5 up to 938.
  EXPECT_EQ(Currency::FromDouble(0.03125).Raw(), 312);
  EXPECT_EQ(Currency::FromDouble(0.09375).Raw(), 938);
  EXPECT_EQ(Currency::FromDouble(-0.03125).Raw(), -312);
  EXPECT_EQ(Currency::FromDouble(-0.09375).Raw(), -938);
}

TEST(CurrencyFromDouble, RoundsTheExactBinaryValue) {
  // Decimal halves are not exact doubles, so the stored value decides:
  // 0.00035 is stored as 0.000349999..., below the half;
  // 0.00025 is stored as 0.000250000...0052, above it;
  // 10.00005 is stored as 10.0000499999..., below it.
  EXPECT_EQ(Currency::FromDouble(0.00035).Raw(), 3);
  EXPECT_EQ(Currency::FromDouble(0.00025).Raw(), 3);
  EXPECT_EQ(Currency::FromDouble(10.00005).Raw(), 100000);
}

TEST(CurrToStr, Layout) {
  const TFormatSettings fs = DotSettings();
  EXPECT_EQ(CurrToStr(Currency::FromRaw(15000), fs), u"1.5");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(0), fs), u"0");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(-12345), fs), u"-1.2345");
  EXPECT_EQ(CurrToStr(Currency::FromInt(100), fs), u"100");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(std::numeric_limits<int64_t>::max()), fs), u"922337203685477.5807");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(std::numeric_limits<int64_t>::min()), fs), u"-922337203685477.5808");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(1), fs), u"0.0001");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(-5000), fs), u"-0.5");
  // No exponent, however large.
  EXPECT_EQ(CurrToStr(Currency::FromInt(100000000000000), fs), u"100000000000000");
}

TEST(CurrToStr, UsesDecimalSeparator) {
  TFormatSettings fs;
  fs.DecimalSeparator = u',';
  EXPECT_EQ(CurrToStr(Currency::FromRaw(15000), fs), u"1,5");
}

struct CurrCase {
  const char16_t* text;
  bool ok;
  int64_t raw;
};

const CurrCase kCurrCases[] = {
    {u"1.5", true, 15000},
    {u" -1.2345 ", true, -12345},
    {u"922337203685477.5807", true, INT64_MAX},
    {u"-922337203685477.5808", true, INT64_MIN},
    {u"922337203685477.5808", false, 0},  // one past the top
    {u"1e14", true, 1000000000000000000},
    {u"1e15", false, 0},
    {u"0.00005", true, 0},                // exact decimal half: to even (0)
    {u"0.00015", true, 2},                // to even (2)
    {u"0.000150001", true, 2},
    {u"0.0000500000000001", true, 1},     // just above the half
    {u"-0.00015", true, -2},
    {u"1.23456", true, 12346},
    {u"1e-4", true, 1},
    {u"1e-400", true, 0},
    {u"123e-2", true, 12300},
    {u"1,5", false, 0},
    {u"", false, 0},
    {u"INF", false, 0},
    {u"1e99999999", false, 0},
};

TEST(TryStrToCurr, ExactDecimalReading) {
  const TFormatSettings fs = DotSettings();
  for (const CurrCase& c : kCurrCases) {
    Currency v = Currency::FromRaw(777);
    EXPECT_EQ(TryStrToCurr(c.text, v, fs), c.ok) << static_cast<int>(c.text[0]);
    EXPECT_EQ(v.Raw(), c.ok ? c.raw : 777);
  }
}

TEST(StrToCurr, RaisesFloatMessage) {
  const TFormatSettings fs = DotSettings();
  EXPECT_EQ(StrToCurr(u"2.25", fs).Raw(), 22500);
  EXPECT_EQ(StrToCurr("-2.25", fs).Raw(), -22500);
  EXPECT_THROW((void)StrToCurr("2,25", fs), EConvertError);
  try {
    (void)StrToCurr(u"x1", fs);
    FAIL() << "no exception";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'x1' is not a valid floating point value");
  }
}

TEST(CurrToStr, RoundTripsThroughStrToCurr) {
  const TFormatSettings fs = DotSettings();
  for (int64_t raw : {int64_t{0}, int64_t{1}, int64_t{-1}, int64_t{123456789}, INT64_MAX, INT64_MIN}) {
    EXPECT_EQ(StrToCurr(CurrToStr(Currency::FromRaw(raw), fs), fs).Raw(), raw);
  }
}

}  // namespace
}  // namespace quill
