// Tests of reading and writing date and time text under format settings.
//
// The settings are built in each test, never taken from the machine. Texts
// with two-digit years or without a year depend on the current year; their
// expectations are computed from CurrentYear(), and the century window is
// chosen relative to it so that the pivot year is fixed.
#include "quill/rtl/datetext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "quill/rtl/datetime.h"
#include "quill/rtl/exception.h"

namespace quill {
namespace {

TFormatSettings DayFirst() {
  TFormatSettings fs;
  fs.ShortDateFormat = u"dd/mm/yyyy";
  fs.LongDateFormat = u"dddd, d mmmm yyyy";
  fs.DateSeparator = u'/';
  fs.TimeSeparator = u':';
  fs.DecimalSeparator = u'.';
  fs.TwoDigitYearCenturyWindow = 50;
  fs.ShortTimeFormat = u"hh:nn";
  fs.LongTimeFormat = u"hh:nn:ss";
  const char16_t* shortm[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                              u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
  const char16_t* longm[] = {u"January", u"February", u"March",     u"April",   u"May",      u"June",
                             u"July",    u"August",   u"September", u"October", u"November", u"December"};
  for (int i = 0; i < 12; ++i) {
    fs.ShortMonthNames[i] = shortm[i];
    fs.LongMonthNames[i] = longm[i];
  }
  const char16_t* shortd[] = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};
  const char16_t* longd[] = {u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday"};
  for (int i = 0; i < 7; ++i) {
    fs.ShortDayNames[i] = shortd[i];
    fs.LongDayNames[i] = longd[i];
  }
  return fs;
}

// Settings whose century pivot is `pivot` whatever the current year.
TFormatSettings WithPivot(int pivot) {
  TFormatSettings fs = DayFirst();
  fs.TwoDigitYearCenturyWindow = static_cast<uint16_t>(CurrentYear() - pivot);
  return fs;
}

TDateTime DT(uint16_t y, uint16_t m, uint16_t d, uint16_t h = 0, uint16_t n = 0, uint16_t s = 0, uint16_t z = 0) {
  return EncodeDate(y, m, d) + EncodeTime(h, n, s, z);
}

// Reads `text`; returns NaN when it does not read.
double Read(std::u16string_view text, const TFormatSettings& fs) {
  TDateTime v = 0;
  return TryStrToDateTime(text, v, fs) ? v : std::nan("");
}

TEST(TryStrToDateTime, ThreeNumbersDayFirst) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(Read(u"25/12/2023", fs), DT(2023, 12, 25));
  EXPECT_EQ(Read(u"1/2/2024", fs), DT(2024, 2, 1));
  EXPECT_EQ(Read(u"29/02/2024", fs), DT(2024, 2, 29));  // edge: leap day
}

TEST(TryStrToDateTime, TwoDigitYearsFollowTheCenturyWindow) {
  // edge: pivot 1976: 75 is after the pivot's century start, 76 is the pivot
  TFormatSettings fs = WithPivot(1976);
  EXPECT_EQ(Read(u"25/12/23", fs), DT(2023, 12, 25));
  EXPECT_EQ(Read(u"25/12/75", fs), DT(2075, 12, 25));
  EXPECT_EQ(Read(u"25/12/76", fs), DT(1976, 12, 25));
  // the documented table: pivots 1948, 1970 and 2010 with 03, 50, 68
  fs = WithPivot(1948);
  EXPECT_EQ(Read(u"1/1/03", fs), DT(2003, 1, 1));
  EXPECT_EQ(Read(u"1/1/50", fs), DT(1950, 1, 1));
  EXPECT_EQ(Read(u"1/1/68", fs), DT(1968, 1, 1));
  fs = WithPivot(1970);
  EXPECT_EQ(Read(u"1/1/03", fs), DT(2003, 1, 1));
  EXPECT_EQ(Read(u"1/1/50", fs), DT(2050, 1, 1));
  EXPECT_EQ(Read(u"1/1/68", fs), DT(2068, 1, 1));
  fs = WithPivot(2010);
  EXPECT_EQ(Read(u"1/1/03", fs), DT(2103, 1, 1));
  EXPECT_EQ(Read(u"1/1/50", fs), DT(2050, 1, 1));
}

TEST(TryStrToDateTime, WindowZeroMeansTheCurrentCentury) {
  TFormatSettings fs = DayFirst();
  fs.TwoDigitYearCenturyWindow = 0;
  const uint16_t century = CurrentYear() / 100 * 100;
  EXPECT_EQ(Read(u"1/1/99", fs), DT(century + 99, 1, 1));
  EXPECT_EQ(Read(u"1/1/0", fs), DT(century, 1, 1));
}

TEST(TryStrToDateTime, YearsWithThreeOrMoreDigitsAreLiteral) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(Read(u"25/12/0005", fs), DT(5, 12, 25));  // edge: leading zeros keep it literal
  EXPECT_EQ(Read(u"25/12/023", fs), DT(23, 12, 25));
  EXPECT_EQ(Read(u"1/1/0001", fs), DT(1, 1, 1));       // edge: first day of the range
  EXPECT_EQ(Read(u"31/12/9999", fs), DT(9999, 12, 31));  // edge: last day of the range
  EXPECT_TRUE(std::isnan(Read(u"1/1/0000", fs)));
}

TEST(TryStrToDateTime, OneDigitYearIsWindowedToo) {
  const TFormatSettings fs = WithPivot(1976);
  EXPECT_EQ(Read(u"25/12/5", fs), DT(2005, 12, 25));
}

TEST(TryStrToDateTime, TwoNumbersMeanTheCurrentYear) {
  // edge: missing year
  const uint16_t y = CurrentYear();
  EXPECT_EQ(Read(u"25/12", DayFirst()), DT(y, 12, 25));
  TFormatSettings mdy = DayFirst();
  mdy.ShortDateFormat = u"m/d/yyyy";
  EXPECT_EQ(Read(u"12/25", mdy), DT(y, 12, 25));
  EXPECT_EQ(Read(u"12/25/2023", mdy), DT(2023, 12, 25));
  // year-first formats read a pair as month/day
  TFormatSettings ymd = DayFirst();
  ymd.ShortDateFormat = u"yyyy/mm/dd";
  EXPECT_EQ(Read(u"12/25", ymd), DT(y, 12, 25));
  EXPECT_EQ(Read(u"2023/12/25", ymd), DT(2023, 12, 25));
  ymd.TwoDigitYearCenturyWindow = static_cast<uint16_t>(CurrentYear() - 1976);
  EXPECT_EQ(Read(u"23/12/25", ymd), DT(2023, 12, 25));
}

TEST(TryStrToDateTime, OrderComesFromTheFirstDateLetter) {
  TFormatSettings fs = DayFirst();
  fs.ShortDateFormat = u"yyyy/dd/mm";  // edge: only three orders exist: read as y/m/d
  EXPECT_EQ(Read(u"2023/12/25", fs), DT(2023, 12, 25));
  fs.ShortDateFormat = u"ggg ee/mm/dd";  // the era letter counts as a year
  EXPECT_EQ(Read(u"2023/12/25", fs), DT(2023, 12, 25));
  fs.ShortDateFormat = u"";  // no letter: month first
  EXPECT_EQ(Read(u"12/25/2023", fs), DT(2023, 12, 25));
  fs.ShortDateFormat = u"DD.MM.YYYY";  // any case
  EXPECT_EQ(Read(u"25/12/2023", fs), DT(2023, 12, 25));
}

TEST(TryStrToDateTime, BlanksAroundNumbersAndATrailingSeparator) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(Read(u" 25 / 12 / 2023 ", fs), DT(2023, 12, 25));
  EXPECT_EQ(Read(u"25/12/2023/", fs), DT(2023, 12, 25));  // edge: one trailing separator
  EXPECT_TRUE(std::isnan(Read(u"25/12/2023//", fs)));
  // edge: only the space is a blank
  EXPECT_TRUE(std::isnan(Read(u"\t25/12/2023", fs)));
}

TEST(TryStrToDateTime, RejectedDates) {
  const TFormatSettings fs = DayFirst();
  for (const char16_t* text : {u"25", u"", u" ", u"25-12-2023", u"32/12/2023", u"29/02/2023", u"2023/12/25",
                               u"0/12/2023", u"25/0/2023", u"25/13/2023", u"/12/2023", u"25//2023", u"x25/12/2023",
                               u"+25/12/2023", u"25/12/2023x"}) {
    EXPECT_TRUE(std::isnan(Read(text, fs))) << std::string(text, text + std::char_traits<char16_t>::length(text));
  }
}

TEST(TryStrToDateTime, NumbersStopAtFourDigits) {
  // edge: "12345" is read as the year 1234; the "5" left over is then read
  // as an hour by the date-and-time reader and rejected by the date reader
  const TFormatSettings fs = DayFirst();
  // (a date before 1899 is negative, so its time is subtracted)
  EXPECT_EQ(Read(u"1/1/12345", fs), EncodeDate(1234, 1, 1) - EncodeTime(5, 0, 0, 0));
  TDateTime v = 0;
  EXPECT_FALSE(TryStrToDate(u"1/1/12345", v, fs));
  // leading zeros do not count against the limit
  EXPECT_EQ(Read(u"0000025/012/2023", fs), DT(2023, 12, 25));
}

TEST(TryStrToDateTime, DateAndTime) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(Read(u"25/12/2023 10:20", fs), DT(2023, 12, 25, 10, 20));
  EXPECT_EQ(Read(u"25/12/2023 10:20:30", fs), DT(2023, 12, 25, 10, 20, 30));
  EXPECT_EQ(Read(u"25/12/2023   10 : 20 : 30 ", fs), DT(2023, 12, 25, 10, 20, 30));
  EXPECT_EQ(Read(u"25/12/2023 10", fs), DT(2023, 12, 25, 10));  // edge: hour alone
  // edge: a year stops at four digits, so a time may follow it without a blank
  EXPECT_EQ(Read(u"25/12/202310:20", fs), DT(2023, 12, 25, 10, 20));
}

TEST(TryStrToDateTime, MillisecondsAreAnIntegerCount) {
  const TFormatSettings fs = DayFirst();
  // edge: ".5" is 5 ms, not half a second; ".1234" fails
  EXPECT_EQ(Read(u"25/12/2023 10:20:30.5", fs), DT(2023, 12, 25, 10, 20, 30, 5));
  EXPECT_EQ(Read(u"25/12/2023 10:20:30.500", fs), DT(2023, 12, 25, 10, 20, 30, 500));
  EXPECT_EQ(Read(u"25/12/2023 10:20:30.123", fs), DT(2023, 12, 25, 10, 20, 30, 123));
  EXPECT_TRUE(std::isnan(Read(u"25/12/2023 10:20:30.1234", fs)));
  EXPECT_TRUE(std::isnan(Read(u"25/12/2023 10:20.5", fs)));  // milliseconds only after seconds
  EXPECT_TRUE(std::isnan(Read(u"25/12/2023 10:20:30.", fs)));
}

TEST(TryStrToDateTime, AmPmWords) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(Read(u"25/12/2023 3:04 PM", fs), DT(2023, 12, 25, 15, 4));
  EXPECT_EQ(Read(u"25/12/2023 3:04 pm", fs), DT(2023, 12, 25, 15, 4));
  EXPECT_EQ(Read(u"25/12/2023 3:04PM", fs), DT(2023, 12, 25, 15, 4));
  EXPECT_EQ(Read(u"25/12/2023 PM 3:04", fs), DT(2023, 12, 25, 15, 4));  // edge: word before the time
  EXPECT_EQ(Read(u"25/12/2023 12:00 AM", fs), DT(2023, 12, 25, 0, 0));  // edge: 12 AM is midnight
  EXPECT_EQ(Read(u"25/12/2023 12:30 PM", fs), DT(2023, 12, 25, 12, 30));  // edge: 12 PM is noon
  EXPECT_EQ(Read(u"25/12/2023 11 am", fs), DT(2023, 12, 25, 11));
  for (const char16_t* text : {u"25/12/2023 0:30 AM", u"25/12/2023 13:00 PM", u"25/12/2023 25:00",
                               u"25/12/2023 AM 3:04 PM", u"25/12/2023 10:60", u"25/12/2023 10:20:60"}) {
    EXPECT_TRUE(std::isnan(Read(text, fs))) << std::string(text, text + std::char_traits<char16_t>::length(text));
  }
}

TEST(TryStrToDateTime, LocaleAmPmWordsComeFirst) {
  TFormatSettings fs = DayFirst();
  fs.TimeAMString = u"vorm.";
  fs.TimePMString = u"nachm.";
  EXPECT_EQ(Read(u"25/12/2023 3:04 nachm.", fs), DT(2023, 12, 25, 15, 4));
  EXPECT_EQ(Read(u"25/12/2023 3:04 VORM.", fs), DT(2023, 12, 25, 3, 4));
  EXPECT_EQ(Read(u"25/12/2023 3:04 PM", fs), DT(2023, 12, 25, 15, 4));  // the English words still work
  fs.TimeAMString = u"";  // an empty word never matches
  fs.TimePMString = u"";
  EXPECT_EQ(Read(u"25/12/2023 3:04 AM", fs), DT(2023, 12, 25, 3, 4));
}

TEST(TryStrToDateTime, TimeAloneIsDayZero) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(Read(u"10:20", fs), DT(1899, 12, 30, 10, 20));
  EXPECT_EQ(Read(u"10", fs), DT(1899, 12, 30, 10));  // one number that is no date reads as an hour
}

TEST(TryStrToDateTime, TrailingTextAfterTheTimeIsRejected) {
  // Deliberately strict: leftover text after a time is an error, never ignored.
  const TFormatSettings fs = DayFirst();
  EXPECT_TRUE(std::isnan(Read(u"25/12/2023 10:20 x", fs)));
  EXPECT_TRUE(std::isnan(Read(u"25/12/2023 10:20:30:40", fs)));
  EXPECT_TRUE(std::isnan(Read(u"10:20 x", fs)));
}

TEST(TryStrToDateTime, NegativeDatesSubtractTheTime) {
  const TFormatSettings fs = DayFirst();
  const double v = Read(u"29/12/1899 06:00", fs);
  EXPECT_EQ(v, -1.25);
  uint16_t h, n, s, z;
  DecodeTime(v, h, n, s, z);
  EXPECT_EQ(h, 6);
}

TEST(TryStrToDateTime, OtherSeparators) {
  TFormatSettings fs = DayFirst();
  fs.DateSeparator = u'.';
  fs.TimeSeparator = u'.';
  fs.DecimalSeparator = u',';
  EXPECT_EQ(Read(u"24.12.2023 18.30.15,250", fs), DT(2023, 12, 24, 18, 30, 15, 250));
  EXPECT_TRUE(std::isnan(Read(u"24/12/2023", fs)));
}

TEST(TryStrToDateTime, FailureLeavesTheResultAlone) {
  TDateTime v = 42;
  EXPECT_FALSE(TryStrToDateTime(u"nonsense", v, DayFirst()));
  EXPECT_EQ(v, 42);
}

TEST(TryStrToDate, WholeTextMustBeADate) {
  const TFormatSettings fs = DayFirst();
  TDateTime v = 0;
  EXPECT_TRUE(TryStrToDate(u"25/12/2023 ", v, fs));
  EXPECT_EQ(v, DT(2023, 12, 25));
  EXPECT_FALSE(TryStrToDate(u"25/12/2023 10:20", v, fs));
  EXPECT_FALSE(TryStrToDate(u"10:20", v, fs));
}

TEST(TryStrToTime, WholeTextMustBeATime) {
  const TFormatSettings fs = DayFirst();
  TDateTime v = 0;
  EXPECT_TRUE(TryStrToTime(u" 7:05:09 pm ", v, fs));
  EXPECT_EQ(v, EncodeTime(19, 5, 9, 0));
  EXPECT_FALSE(TryStrToTime(u"25/12/2023", v, fs));
  EXPECT_FALSE(TryStrToTime(u"", v, fs));
  EXPECT_FALSE(TryStrToTime(u"7:", v, fs));  // a separator needs the minutes after it
}

TEST(StrToDateTime, RaisesConvertErrorsWithTheText) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(StrToDateTime(u"25/12/2023 10:20", fs), DT(2023, 12, 25, 10, 20));
  try {
    (void)StrToDateTime(u"31/02/2023", fs);
    ADD_FAILURE();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'31/02/2023' is not a valid date and time");
  }
  try {
    (void)StrToDate(u"abc", fs);
    ADD_FAILURE();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'abc' is not a valid date");
  }
  try {
    (void)StrToTime(u"24:00", fs);
    ADD_FAILURE();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'24:00' is not a valid time");
  }
}

TEST(FormatDateTime, CommonLetters) {
  const TFormatSettings fs = DayFirst();
  const TDateTime v = DT(2024, 5, 5, 7, 8, 9, 45);
  EXPECT_EQ(FormatDateTime(u"yyyy-mm-dd hh:nn:ss.zzz", v, fs), u"2024-05-05 07:08:09.045");
  EXPECT_EQ(FormatDateTime(u"d/m/yy h:n:s.z", v, fs), u"5/5/24 7:8:9.45");
  EXPECT_EQ(FormatDateTime(u"ddd dddd mmm mmmm", v, fs), u"Sun Sunday May May");
  EXPECT_EQ(FormatDateTime(u"ddddd", v, fs), u"05/05/2024");
  EXPECT_EQ(FormatDateTime(u"dddddd", v, fs), u"Sunday, 5 May 2024");
  EXPECT_EQ(FormatDateTime(u"t|tt", v, fs), u"07:08|07:08:09");
  EXPECT_EQ(FormatDateTime(u"YYYY/MM/DD", v, fs), u"2024/05/05");
}

TEST(FormatDateTime, MonthLetterAfterAnHourIsMinutes) {
  const TFormatSettings fs = DayFirst();
  const TDateTime v = DT(2024, 3, 1, 14, 7);
  EXPECT_EQ(FormatDateTime(u"hh:mm", v, fs), u"14:07");
  EXPECT_EQ(FormatDateTime(u"mm hh", v, fs), u"03 14");
}

TEST(FormatDateTime, TwelveHourClock) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(FormatDateTime(u"h:nn am/pm", DT(2024, 1, 1, 15, 4), fs), u"3:04 pm");
  EXPECT_EQ(FormatDateTime(u"h:nn AM/PM", DT(2024, 1, 1, 0, 4), fs), u"12:04 AM");
  EXPECT_EQ(FormatDateTime(u"h a/p", DT(2024, 1, 1, 12, 0), fs), u"12 p");
  EXPECT_EQ(FormatDateTime(u"hh ampm", DT(2024, 1, 1, 9, 0), fs), u"09 AM");
}

TEST(FormatDateTime, SeparatorsAndLiterals) {
  TFormatSettings fs = DayFirst();
  fs.DateSeparator = u'.';
  fs.TimeSeparator = u'-';
  const TDateTime v = DT(2024, 12, 24, 18, 30);
  EXPECT_EQ(FormatDateTime(u"dd/mm/yyyy hh:nn", v, fs), u"24.12.2024 18-30");
  EXPECT_EQ(FormatDateTime(u"\"day\" d 'of' mmmm", v, fs), u"day 24 of December");
  EXPECT_EQ(FormatDateTime(u"'unterminated", v, fs), u"unterminated");
}

TEST(FormatDateTime, CFormDropsAZeroTime) {
  const TFormatSettings fs = DayFirst();
  EXPECT_EQ(FormatDateTime(u"c", DT(2024, 5, 5), fs), u"05/05/2024");
  EXPECT_EQ(FormatDateTime(u"c", DT(2024, 5, 5, 1, 2, 3), fs), u"05/05/2024 01:02:03");
  EXPECT_EQ(FormatDateTime(u"", DT(2024, 5, 5, 1, 2, 3), fs), u"05/05/2024 01:02:03");
  EXPECT_EQ(DateTimeToStr(DT(2024, 5, 5, 1, 2, 3), fs), u"05/05/2024 01:02:03");
  EXPECT_EQ(DateToStr(DT(2024, 5, 5, 1, 2, 3), fs), u"05/05/2024");
  EXPECT_EQ(TimeToStr(DT(2024, 5, 5, 1, 2, 3), fs), u"01:02:03");
}

TEST(FormatDateTime, SelfReferringFormatsStop) {
  TFormatSettings fs = DayFirst();
  fs.ShortDateFormat = u"ddddd";  // names itself
  EXPECT_NO_THROW((void)FormatDateTime(u"c", 1.5, fs));
}

TEST(FormatDateTime, RoundTripsThroughTheReader) {
  const TFormatSettings fs = DayFirst();
  for (TDateTime v : {DT(1, 1, 1), DT(9999, 12, 31, 23, 59, 59), DT(2024, 2, 29, 12, 0, 1), DT(1899, 12, 30, 0, 0, 1)}) {
    TDateTime back = 0;
    ASSERT_TRUE(TryStrToDateTime(FormatDateTime(u"dd/mm/yyyy hh:nn:ss", v, fs), back, fs));
    EXPECT_EQ(back, v);
  }
}

}  // namespace
}  // namespace quill

namespace quill {
namespace {

TEST(TryStrToDateTime, UnderLocaleSettings) {
  // German settings: day first, "." between the date parts
  const TFormatSettings de = TFormatSettings::Create(u"de-DE");
  TDateTime v = 0;
  ASSERT_TRUE(TryStrToDateTime(u"24.12.2023 18:30:15", v, de));
  EXPECT_EQ(v, EncodeDate(2023, 12, 24) + EncodeTime(18, 30, 15, 0));
  // American settings: month first, "/" between the date parts, AM/PM
  const TFormatSettings us = TFormatSettings::Create(u"en-US");
  ASSERT_TRUE(TryStrToDateTime(u"12/24/2023 6:30 PM", v, us));
  EXPECT_EQ(v, EncodeDate(2023, 12, 24) + EncodeTime(18, 30, 0, 0));
  EXPECT_FALSE(TryStrToDateTime(u"24.12.2023", v, us));
  // and what FormatDateTime writes with those settings reads back
  const TDateTime w = EncodeDate(2024, 2, 29) + EncodeTime(7, 5, 9, 0);
  for (const TFormatSettings* fs : {&de, &us}) {
    TDateTime back = 0;
    ASSERT_TRUE(TryStrToDateTime(FormatDateTime(u"ddddd tt", w, *fs), back, *fs));
    EXPECT_EQ(back, w);
  }
}

}  // namespace
}  // namespace quill
