// Tests of Gdattime's calendar arithmetic.
#include "quill/dattime/calendar.h"

#include <gtest/gtest.h>

#include "quill/rtl/datetime.h"
#include "quill/rtl/exception.h"

namespace quill::Gdattime {
namespace {

TDateTime D(uint16_t y, uint16_t m, uint16_t d) { return EncodeDate(y, m, d); }
TDateTime T(uint16_t h, uint16_t n, uint16_t s, uint16_t z = 0) { return EncodeTime(h, n, s, z); }

TEST(GetFirstYearDate, FirstAndLastDayOfTheYear) {
  EXPECT_EQ(GetFirstYearDate(D(2024, 7, 14) + T(13, 0, 0)), D(2024, 1, 1));  // the time is dropped
  EXPECT_EQ(GetLastYearDate(D(2024, 7, 14) + T(13, 0, 0)), D(2024, 12, 31));
  EXPECT_EQ(GetFirstYearDate(D(1, 5, 5)), D(1, 1, 1));          // edge: 1 January 0001
  EXPECT_EQ(GetLastYearDate(D(9999, 5, 5)), D(9999, 12, 31));   // edge: 31 December 9999
  EXPECT_EQ(GetFirstYearDate(-1.25), D(1899, 1, 1));            // edge: a negative date-time
}

TEST(GetFirstMonthDate, DayOne) {
  EXPECT_EQ(GetFirstMonthDate(D(2024, 2, 29)), D(2024, 2, 1));
  EXPECT_EQ(GetFirstMonthDate(-1.25), D(1899, 12, 1));
}

TEST(GetLastMonthDate, FebruaryOfALeapYearAndDecember) {
  // edge: any day of February 2024 gives 29 February 2024
  for (uint16_t d = 1; d <= 29; ++d) EXPECT_EQ(GetLastMonthDate(D(2024, 2, d)), D(2024, 2, 29)) << d;
  EXPECT_EQ(GetLastMonthDate(D(2023, 2, 10)), D(2023, 2, 28));
  EXPECT_EQ(GetLastMonthDate(D(1900, 2, 10)), D(1900, 2, 28));  // 1900 is no leap year
  // edge: 15 December 2023 gives 31 December 2023 (through January 2024)
  EXPECT_EQ(GetLastMonthDate(D(2023, 12, 15)), D(2023, 12, 31));
  EXPECT_EQ(GetLastMonthDate(D(2023, 4, 1)), D(2023, 4, 30));
}

TEST(GetLastMonthDate, LastDecemberOfTheRangeRaises) {
  // 31 December 9999 is found through 1 January 10000, which cannot be encoded
  EXPECT_THROW((void)GetLastMonthDate(D(9999, 12, 1)), EConvertError);
}

TEST(NextMonthFirstDay, RollsOverAfterDecember) {
  EXPECT_EQ(NextMonthFirstDay(2023, 12), D(2024, 1, 1));  // edge: December
  EXPECT_EQ(NextMonthFirstDay(2024, 1), D(2024, 2, 1));
  EXPECT_EQ(NextMonthFirstDay(2024, 0), D(2024, 1, 1));
  EXPECT_THROW((void)NextMonthFirstDay(2024, 13), EConvertError);
}

TEST(GetFirstQuarterDate, IsTheFirstDayOfTheQuartersLastMonth) {
  // Deliberate: quarter 1 gives 1 March, not 1 January.
  EXPECT_EQ(GetFirstQuarterDate(2024, 1), D(2024, 3, 1));
  EXPECT_EQ(GetFirstQuarterDate(2024, 2), D(2024, 6, 1));
  EXPECT_EQ(GetFirstQuarterDate(2024, 3), D(2024, 9, 1));
  EXPECT_EQ(GetFirstQuarterDate(2024, 4), D(2024, 12, 1));
}

TEST(GetFirstQuarterDate, QuarterZeroAndFiveRaise) {
  try {
    (void)GetFirstQuarterDate(2024, 0);
    ADD_FAILURE();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"Invalid argument to date encode");
  }
  EXPECT_THROW((void)GetFirstQuarterDate(2024, 5), EConvertError);
}

TEST(GetLastQuarterDate, IsTheTrueLastDayOfTheQuarter) {
  EXPECT_EQ(GetLastQuarterDate(2024, 1), D(2024, 3, 31));
  EXPECT_EQ(GetLastQuarterDate(2024, 2), D(2024, 6, 30));
  EXPECT_EQ(GetLastQuarterDate(2024, 3), D(2024, 9, 30));
  EXPECT_EQ(GetLastQuarterDate(2024, 4), D(2024, 12, 31));
  EXPECT_THROW((void)GetLastQuarterDate(2024, 5), EConvertError);
}

TEST(GetLastQuarterDate, QuarterZeroIsTheLastDayOfThePreviousYear) {
  // edge: month 0 means the day before 1 January: no error
  EXPECT_EQ(GetLastQuarterDate(2024, 0), D(2023, 12, 31));
}

TEST(LastMonthDate, AllMonthsAndRollOver) {
  const uint16_t days[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int32_t m = 1; m <= 12; ++m) EXPECT_EQ(LastMonthDate(2024, m), D(2024, m, days[m - 1])) << m;
  EXPECT_EQ(LastMonthDate(2024, 0), D(2023, 12, 31));
  EXPECT_THROW((void)LastMonthDate(2024, 13), EConvertError);
  EXPECT_THROW((void)LastMonthDate(2024, -1), EConvertError);
  EXPECT_THROW((void)LastMonthDate(0, 5), EConvertError);
}

TEST(GetQuartal, MonthsToQuarters) {
  const int32_t expected[12] = {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4};
  for (uint16_t m = 1; m <= 12; ++m) EXPECT_EQ(GetQuartal(D(2023, m, 15)), expected[m - 1]) << m;
  EXPECT_EQ(GetQuartal(D(2023, 9, 30)), 3);  // edge: 30 September
  EXPECT_EQ(GetQuartal(D(2023, 10, 1)), 4);
}

TEST(GetQuartalWrite, RomanNumerals) {
  EXPECT_EQ(GetQuartalWrite(1), "I");
  EXPECT_EQ(GetQuartalWrite(2), "II");
  EXPECT_EQ(GetQuartalWrite(3), "III");
  EXPECT_EQ(GetQuartalWrite(4), "IV");
  // outside the contract: our choice is the empty string, never a stray read
  EXPECT_EQ(GetQuartalWrite(0), "");
  EXPECT_EQ(GetQuartalWrite(5), "");
}

TEST(GetYear, Parts) {
  const TDateTime v = D(2024, 2, 29) + T(23, 0, 0);
  EXPECT_EQ(GetYear(v), 2024);
  EXPECT_EQ(GetMonth(v), 2);
  EXPECT_EQ(GetDay(v), 29);
  EXPECT_EQ(GetYear(-693594), 0);  // before 1 January 0001
}

TEST(AddDate, MonthsCarryIntoYears) {
  // edge: 31 March 2024 + 10 months is 31 January 2025
  EXPECT_EQ(AddDate(D(2024, 3, 31), 0, 10, 0), D(2025, 1, 31));
  // edge: 15 November 2023 + 14 months: month 25 gives year + 2, month 1
  EXPECT_EQ(AddDate(D(2023, 11, 15), 0, 14, 0), D(2025, 1, 15));
  EXPECT_EQ(AddDate(D(2023, 12, 15), 0, 12, 0), D(2024, 12, 15));
  EXPECT_EQ(AddDate(D(2023, 1, 15), 1, 0, 0), D(2024, 1, 15));
}

TEST(AddDate, DayIsNotClamped) {
  // Deliberate: 31 March + 1 month is 31 April, which raises.
  try {
    (void)AddDate(D(2024, 3, 31), 0, 1, 0);
    ADD_FAILURE() << "31 April must not be clamped to 30 April";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"Invalid argument to date encode");
  }
  EXPECT_THROW((void)AddDate(D(2024, 1, 31), 0, 1, 0), EConvertError);  // not the end of February
  EXPECT_THROW((void)AddDate(D(2024, 2, 29), 1, 0, 0), EConvertError);  // 29 February 2025
}

TEST(AddDate, DaysComeFirstAndTheTimeIsDropped) {
  // 31 January + 1 day is 1 February, then + 1 month is 1 March
  EXPECT_EQ(AddDate(D(2024, 1, 31) + T(18, 0, 0), 0, 1, 1), D(2024, 3, 1));
  EXPECT_EQ(AddDate(D(2024, 12, 31), 0, 0, 1), D(2025, 1, 1));
}

TEST(AddDate, SixteenBitMonthSum) {
  // 65535 months wrap with the month: 3 + 65535 = 2 (mod 65536), so February
  EXPECT_EQ(AddDate(D(2024, 3, 10), 0, 65535, 0), D(2024, 2, 10));
  // beyond the last year raises
  EXPECT_THROW((void)AddDate(D(9999, 12, 1), 0, 1, 0), EConvertError);
}

TEST(AddTime, CarriesIntoTheNextDayAndKeepsMilliseconds) {
  // edge: 23:59:30 + 45 s is 00:00:15 of the next day; milliseconds kept
  const TDateTime v = AddTime(D(2024, 5, 5) + T(23, 59, 30, 250), 0, 0, 45);
  uint16_t y, m, d, h, n, s, z;
  DecodeDate(v, y, m, d);
  DecodeTime(v, h, n, s, z);
  EXPECT_EQ(d, 6);
  EXPECT_EQ(h, 0);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(s, 15);
  EXPECT_EQ(z, 250);
}

TEST(AddTime, CarriesOncePerField) {
  // 65535 s = 1092 min 15 s; + 65535 min... all within one carry per field
  const TDateTime v = AddTime(D(2024, 1, 1), 0, 0, 65535);
  EXPECT_DOUBLE_EQ(v, D(2024, 1, 1) + 65535.0 / SecsPerDay);
  const TDateTime w = AddTime(D(2024, 1, 1) + T(10, 0, 0), 48, 90, 0);
  EXPECT_DOUBLE_EQ(w, D(2024, 1, 3) + T(11, 30, 0));
}

TEST(AddTime, SixteenBitSumsWrap) {
  // 0 h + 65535 h is 65535 h = 2730 days 15 h; 1 h + 65535 h wraps to 0 h
  EXPECT_DOUBLE_EQ(AddTime(D(2024, 1, 1), 65535, 0, 0), D(2024, 1, 1) + 2730 + T(15, 0, 0));
  EXPECT_DOUBLE_EQ(AddTime(D(2024, 1, 1) + T(1, 0, 0), 65535, 0, 0), D(2024, 1, 1));
}

TEST(AddTime, NegativeDatesUseTheIntegerPartTowardZero) {
  // -1.25 is 29 December 1899 06:00: integer part -1, time 06:00 + 1 h
  EXPECT_DOUBLE_EQ(AddTime(-1.25, 1, 0, 0), -1 + T(7, 0, 0));
}

}  // namespace
}  // namespace quill::Gdattime
