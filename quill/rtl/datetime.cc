// The runtime calendar: proleptic Gregorian day numbers relative to
// 30 December 1899, and the local clock.
#include "quill/rtl/datetime.h"

#include <cmath>
#include <ctime>

#include "quill/rtl/exception.h"

namespace quill {
namespace {

// Day number (TDateTime days) of 1 January 1970, the epoch of the civil-day
// arithmetic below.
constexpr int64_t kUnixEpochDays = 25569;

// Days since 1 January 1970 of a proleptic Gregorian date. The year is
// shifted to start in March so that the leap day is the last day of its year;
// eras of 400 years (146097 days) repeat exactly.
constexpr int64_t DaysFromCivil(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2 ? 1 : 0;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;                                // 0..399
  const int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;  // 0..365
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;         // 0..146096
  return era * 146097 + doe - 719468;
}

struct Civil {
  int64_t year;
  int64_t month;
  int64_t day;
};

// Inverse of DaysFromCivil.
constexpr Civil CivilFromDays(int64_t z) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  const int64_t d = doy - (153 * mp + 2) / 5 + 1;
  const int64_t m = mp < 10 ? mp + 3 : mp - 9;
  return {yoe + era * 400 + (m <= 2 ? 1 : 0), m, d};
}

static_assert(DaysFromCivil(1899, 12, 30) == -kUnixEpochDays);
static_assert(DaysFromCivil(1, 1, 1) + kUnixEpochDays == MinDateTimeDays);
static_assert(DaysFromCivil(9999, 12, 31) + kUnixEpochDays == MaxDateTimeDays);

// A TDateTime split into a signed day number and a time of day in
// milliseconds, after rounding to the nearest millisecond (the runtime's
// time stamp). The day is truncated toward zero; the time is taken from the
// absolute value. Values that are not finite, or too far out to be a date,
// give day 0 with ok = false.
struct Stamp {
  int64_t day = 0;
  int64_t msec = 0;
  bool ok = false;
};

Stamp ToStamp(TDateTime value) {
  Stamp s;
  // About 27 million years: far beyond any date, still exact in a double.
  if (!std::isfinite(value) || std::fabs(value) > 1e10) return s;
  const bool negative = value < 0;
  const int64_t total = std::llround(std::fabs(value) * MSecsPerDay);
  s.day = total / MSecsPerDay;
  s.msec = total % MSecsPerDay;
  if (negative) s.day = -s.day;
  s.ok = true;
  return s;
}

struct LocalClock {
  std::tm tm{};
  int32_t msec = 0;
};

LocalClock ReadLocalClock() {
  timespec ts{};
  clock_gettime(CLOCK_REALTIME, &ts);
  LocalClock c;
  const time_t secs = ts.tv_sec;
  localtime_r(&secs, &c.tm);
  c.msec = static_cast<int32_t>(ts.tv_nsec / 1000000);
  return c;
}

TDateTime DateOf(const std::tm& tm) {
  return static_cast<TDateTime>(DaysFromCivil(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday) +
                                kUnixEpochDays);
}

TDateTime TimeOf(const LocalClock& c) {
  // A leap second (tm_sec 60) is folded into the last second of the minute.
  const int sec = c.tm.tm_sec > 59 ? 59 : c.tm.tm_sec;
  const int64_t ms =
      ((static_cast<int64_t>(c.tm.tm_hour) * 60 + c.tm.tm_min) * 60 + sec) * 1000 + c.msec;
  return static_cast<TDateTime>(ms) / MSecsPerDay;
}

}  // namespace

bool IsLeapYear(uint16_t year) noexcept {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

uint16_t DaysInAMonth(uint16_t year, uint16_t month) noexcept {
  static constexpr uint16_t kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

bool TryEncodeDate(uint16_t year, uint16_t month, uint16_t day, TDateTime& value) noexcept {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 ||
      day > DaysInAMonth(year, month)) {
    return false;
  }
  value = static_cast<TDateTime>(DaysFromCivil(year, month, day) + kUnixEpochDays);
  return true;
}

TDateTime EncodeDate(uint16_t year, uint16_t month, uint16_t day) {
  TDateTime value = 0;
  if (!TryEncodeDate(year, month, day, value)) throw EConvertError(rtlmsg::SDateEncodeError);
  return value;
}

bool TryEncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec, TDateTime& value) noexcept {
  if (hour >= 24 || min >= 60 || sec >= 60 || msec >= 1000) return false;
  const int32_t ms = ((hour * 60 + min) * 60 + sec) * 1000 + msec;
  value = static_cast<TDateTime>(ms) / MSecsPerDay;
  return true;
}

TDateTime EncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec) {
  TDateTime value = 0;
  if (!TryEncodeTime(hour, min, sec, msec, value)) throw EConvertError(rtlmsg::STimeEncodeError);
  return value;
}

void DecodeDate(TDateTime value, uint16_t& year, uint16_t& month, uint16_t& day) noexcept {
  const Stamp s = ToStamp(value);
  if (!s.ok || s.day < MinDateTimeDays || s.day > MaxDateTimeDays) {
    year = month = day = 0;
    return;
  }
  const Civil c = CivilFromDays(s.day - kUnixEpochDays);
  year = static_cast<uint16_t>(c.year);
  month = static_cast<uint16_t>(c.month);
  day = static_cast<uint16_t>(c.day);
}

void DecodeTime(TDateTime value, uint16_t& hour, uint16_t& min, uint16_t& sec, uint16_t& msec) noexcept {
  const Stamp s = ToStamp(value);
  int64_t ms = s.ok ? s.msec : 0;
  msec = static_cast<uint16_t>(ms % 1000);
  ms /= 1000;
  sec = static_cast<uint16_t>(ms % 60);
  ms /= 60;
  min = static_cast<uint16_t>(ms % 60);
  hour = static_cast<uint16_t>(ms / 60);
}

uint16_t DayOfWeek(TDateTime value) noexcept {
  const Stamp s = ToStamp(value);
  // Day 0 (30 December 1899) was a Saturday (7).
  const int64_t r = ((s.day % 7) + 7 + 6) % 7;  // 0 = Sunday
  return static_cast<uint16_t>(r + 1);
}

TDateTime Date() { return DateOf(ReadLocalClock().tm); }

TDateTime Time() { return TimeOf(ReadLocalClock()); }

TDateTime Now() {
  const LocalClock c = ReadLocalClock();
  return DateOf(c.tm) + TimeOf(c);
}

uint16_t CurrentYear() { return static_cast<uint16_t>(ReadLocalClock().tm.tm_year + 1900); }

}  // namespace quill
