// Tests of the runtime calendar: encode, decode, ranges, negative values.
#include "quill/rtl/datetime.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "quill/rtl/exception.h"

namespace quill {
namespace {

struct Ymd {
  uint16_t y, m, d;
};
Ymd Dec(TDateTime v) {
  Ymd r{};
  DecodeDate(v, r.y, r.m, r.d);
  return r;
}
struct Hmsz {
  uint16_t h, n, s, z;
};
Hmsz DecT(TDateTime v) {
  Hmsz r{};
  DecodeTime(v, r.h, r.n, r.s, r.z);
  return r;
}

TEST(IsLeapYear, GregorianRule) {
  EXPECT_TRUE(IsLeapYear(2024));
  EXPECT_TRUE(IsLeapYear(2000));   // divisible by 400
  EXPECT_FALSE(IsLeapYear(1900));  // century not divisible by 400
  EXPECT_FALSE(IsLeapYear(2023));
  EXPECT_TRUE(IsLeapYear(4));
  EXPECT_FALSE(IsLeapYear(1));
}

TEST(DaysInAMonth, AllMonthsAndOutOfRange) {
  const uint16_t expected[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (uint16_t m = 1; m <= 12; ++m) EXPECT_EQ(DaysInAMonth(2023, m), expected[m - 1]) << m;
  EXPECT_EQ(DaysInAMonth(2024, 2), 29);
  EXPECT_EQ(DaysInAMonth(2024, 0), 0);   // edge: month 0
  EXPECT_EQ(DaysInAMonth(2024, 13), 0);  // edge: month 13
}

TEST(EncodeDate, KnownDayNumbers) {
  EXPECT_EQ(EncodeDate(1899, 12, 30), 0);
  EXPECT_EQ(EncodeDate(1900, 1, 1), 2);
  EXPECT_EQ(EncodeDate(1996, 1, 1), 35065);
  EXPECT_EQ(EncodeDate(2000, 1, 1), 36526);
  EXPECT_EQ(EncodeDate(1899, 12, 29), -1);
  // edge: the first and the last day of the range
  EXPECT_EQ(EncodeDate(1, 1, 1), -693593);
  EXPECT_EQ(EncodeDate(9999, 12, 31), 2958465);
}

TEST(EncodeDate, ImpossibleCombinationsRaise) {
  for (auto [y, m, d] : {Ymd{2023, 2, 29}, Ymd{0, 1, 1}, Ymd{10000, 1, 1}, Ymd{2023, 0, 1},
                         Ymd{2023, 13, 1}, Ymd{2023, 4, 31}, Ymd{2023, 1, 0}}) {
    try {
      (void)EncodeDate(y, m, d);
      ADD_FAILURE() << y << "-" << m << "-" << d;
    } catch (const EConvertError& e) {
      EXPECT_EQ(e.Message(), u"Invalid argument to date encode");
    }
  }
}

TEST(TryEncodeDate, LeapDayAndUntouchedResult) {
  TDateTime v = 123;
  EXPECT_TRUE(TryEncodeDate(2024, 2, 29, v));
  EXPECT_EQ(Dec(v).d, 29);
  v = 123;
  EXPECT_FALSE(TryEncodeDate(1900, 2, 29, v));  // 1900 was not a leap year
  EXPECT_EQ(v, 123);                            // a failed encode leaves the result alone
}

TEST(DecodeDate, RoundTripsEveryDayOfSomeYears) {
  for (uint16_t y : {1, 4, 100, 1582, 1899, 1900, 2000, 2023, 2024, 9999}) {
    for (uint16_t m = 1; m <= 12; ++m) {
      for (uint16_t d = 1; d <= DaysInAMonth(y, m); ++d) {
        const Ymd r = Dec(EncodeDate(y, m, d));
        ASSERT_EQ(r.y, y);
        ASSERT_EQ(r.m, m);
        ASSERT_EQ(r.d, d);
      }
    }
  }
}

TEST(DecodeDate, ConsecutiveDayNumbersAcrossTheWholeRange) {
  // Every day from 1 January 0001 to 31 December 9999 decodes to the day after
  // the previous one.
  Ymd prev = Dec(MinDateTimeDays);
  EXPECT_EQ(prev.y, 1);
  for (int32_t n = MinDateTimeDays + 1; n <= MaxDateTimeDays; ++n) {
    const Ymd cur = Dec(n);
    const bool next_day = cur.y == prev.y && cur.m == prev.m && cur.d == prev.d + 1;
    const bool next_month = cur.y == prev.y && cur.m == prev.m + 1 && cur.d == 1 &&
                            prev.d == DaysInAMonth(prev.y, prev.m);
    const bool next_year = cur.y == prev.y + 1 && cur.m == 1 && cur.d == 1 && prev.m == 12 && prev.d == 31;
    ASSERT_TRUE(next_day || next_month || next_year) << n;
    prev = cur;
  }
  EXPECT_EQ(prev.y, 9999);
}

TEST(DecodeDate, NegativeValuesTruncateTowardZero) {
  // edge: -1.25 is 29 December 1899 06:00; -0.25 reads like +0.25
  Ymd r = Dec(-1.25);
  EXPECT_EQ(r.y, 1899);
  EXPECT_EQ(r.m, 12);
  EXPECT_EQ(r.d, 29);
  r = Dec(-0.25);
  EXPECT_EQ(r.d, 30);
  Hmsz t = DecT(-1.25);
  EXPECT_EQ(t.h, 6);
  t = DecT(-0.25);
  EXPECT_EQ(t.h, 6);
  r = Dec(2.75);
  EXPECT_EQ(r.y, 1900);
  EXPECT_EQ(r.m, 1);
  EXPECT_EQ(r.d, 1);
  EXPECT_EQ(DecT(2.75).h, 18);
}

TEST(DecodeDate, OutsideTheRangeGivesZeros) {
  // edge: the day before 1 January 0001, the day after 31 December 9999, NaN
  for (double v : {-693594.0, 2958466.0, std::numeric_limits<double>::quiet_NaN(),
                   std::numeric_limits<double>::infinity(), 1e300}) {
    const Ymd r = Dec(v);
    EXPECT_EQ(r.y, 0) << v;
    EXPECT_EQ(r.m, 0) << v;
    EXPECT_EQ(r.d, 0) << v;
  }
}

TEST(DecodeDate, RoundsToTheNearestMillisecondFirst) {
  // edge: less than half a millisecond before midnight is the next day
  const double quarter_ms = 0.25 / MSecsPerDay;
  const Ymd r = Dec(1 - quarter_ms);
  EXPECT_EQ(r.d, 31);
  const Hmsz t = DecT(1 - quarter_ms);
  EXPECT_EQ(t.h + t.n + t.s + t.z, 0);
  // and just under 0.75 ms before midnight stays on the same day
  const Hmsz t2 = DecT(1 - 3 * quarter_ms);
  EXPECT_EQ(t2.h, 23);
  EXPECT_EQ(t2.z, 999);
  EXPECT_EQ(Dec(1 - 3 * quarter_ms).d, 30);
}

TEST(EncodeTime, ValuesAndLimits) {
  EXPECT_EQ(EncodeTime(0, 0, 0, 0), 0);
  EXPECT_EQ(EncodeTime(12, 0, 0, 0), 0.5);
  EXPECT_EQ(EncodeTime(18, 0, 0, 0), 0.75);
  EXPECT_DOUBLE_EQ(EncodeTime(23, 59, 59, 999), 86399999.0 / 86400000.0);
  for (auto [h, n, s, z] : {Hmsz{24, 0, 0, 0}, Hmsz{0, 60, 0, 0}, Hmsz{0, 0, 60, 0}, Hmsz{0, 0, 0, 1000}}) {
    try {
      (void)EncodeTime(h, n, s, z);
      ADD_FAILURE() << h << ":" << n << ":" << s << "." << z;
    } catch (const EConvertError& e) {
      EXPECT_EQ(e.Message(), u"Invalid argument to time encode");
    }
  }
}

TEST(DecodeTime, RoundTripsEveryMinuteAndSomeMilliseconds) {
  for (uint16_t h = 0; h < 24; ++h) {
    for (uint16_t n = 0; n < 60; ++n) {
      for (uint16_t z : {0, 1, 499, 500, 999}) {
        const Hmsz t = DecT(EncodeDate(2024, 5, 5) + EncodeTime(h, n, 59, z));
        ASSERT_EQ(t.h, h);
        ASSERT_EQ(t.n, n);
        ASSERT_EQ(t.s, 59);
        ASSERT_EQ(t.z, z);
      }
    }
  }
}

TEST(DecodeTime, HalfMillisecondRoundsUp) {
  const Hmsz t = DecT(0.5 + 0.5 / MSecsPerDay);
  EXPECT_EQ(t.h, 12);
  EXPECT_EQ(t.z, 1);
}

TEST(DayOfWeek, KnownDays) {
  EXPECT_EQ(DayOfWeek(0), 7);                          // 30 December 1899: Saturday
  EXPECT_EQ(DayOfWeek(EncodeDate(2024, 5, 5)), 1);     // Sunday
  EXPECT_EQ(DayOfWeek(EncodeDate(2023, 12, 25)), 2);   // Monday
  EXPECT_EQ(DayOfWeek(EncodeDate(1, 1, 1)), 2);        // proleptic: Monday
  EXPECT_EQ(DayOfWeek(-1.25), 6);                      // 29 December 1899: Friday
}

TEST(Now, DateIsTheWholeDayOfNow) {
  const TDateTime before = Date();
  const TDateTime now = Now();
  const TDateTime after = Date();
  EXPECT_EQ(before, std::floor(before));
  EXPECT_GE(now, before);
  EXPECT_LT(now, after + 1);
  const TDateTime t = Time();
  EXPECT_GE(t, 0);
  EXPECT_LT(t, 1);
  uint16_t y, m, d;
  DecodeDate(Date(), y, m, d);
  EXPECT_EQ(CurrentYear(), y);
  EXPECT_GE(y, 2024);
}

}  // namespace
}  // namespace quill
