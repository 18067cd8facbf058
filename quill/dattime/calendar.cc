// Gdattime calendar arithmetic: every routine decodes and encodes through the
// runtime calendar, so its range checks and errors are the runtime's.
#include "quill/dattime/calendar.h"

#include <cmath>

#include "quill/rtl/datetime.h"

namespace quill::Gdattime {
namespace {

struct Ymd {
  uint16_t year = 0, month = 0, day = 0;
};

Ymd Decode(TDateTime date) {
  Ymd r;
  DecodeDate(date, r.year, r.month, r.day);
  return r;
}

// 16-bit arithmetic, wrapping as the unsigned 16-bit arguments do.
uint16_t Add16(uint32_t a, uint32_t b) { return static_cast<uint16_t>(a + b); }

}  // namespace

TDateTime GetFirstYearDate(TDateTime Date) { return EncodeDate(Decode(Date).year, 1, 1); }

TDateTime GetLastYearDate(TDateTime Date) { return EncodeDate(Decode(Date).year, 12, 31); }

TDateTime GetFirstMonthDate(TDateTime Date) {
  const Ymd d = Decode(Date);
  return EncodeDate(d.year, d.month, 1);
}

TDateTime GetLastMonthDate(TDateTime Date) {
  const Ymd d = Decode(Date);
  return NextMonthFirstDay(d.year, d.month) - 1;
}

TDateTime NextMonthFirstDay(uint16_t Year, uint16_t Month) {
  if (Month == 12) return EncodeDate(Add16(Year, 1), 1, 1);
  return EncodeDate(Year, Add16(Month, 1), 1);
}

TDateTime GetFirstQuarterDate(uint16_t Year, uint16_t Quarter) {
  return EncodeDate(Year, static_cast<uint16_t>(3u * Quarter), 1);
}

TDateTime GetLastQuarterDate(uint16_t Year, uint16_t Quarter) {
  return LastMonthDate(Year, 3 * static_cast<int32_t>(Quarter));
}

TDateTime LastMonthDate(int32_t Year, int32_t Month) {
  if (Month == 12) return EncodeDate(static_cast<uint16_t>(Year + 1), 1, 1) - 1;
  return EncodeDate(static_cast<uint16_t>(Year), static_cast<uint16_t>(Month + 1), 1) - 1;
}

int32_t GetQuartal(TDateTime Date) { return (Decode(Date).month - 1) / 3 + 1; }

AnsiString GetQuartalWrite(uint16_t Quarter) {
  static constexpr const char* kNumerals[4] = {"I", "II", "III", "IV"};
  if (Quarter < 1 || Quarter > 4) return {};
  return kNumerals[Quarter - 1];
}

uint16_t GetYear(TDateTime Date) { return Decode(Date).year; }
uint16_t GetMonth(TDateTime Date) { return Decode(Date).month; }
uint16_t GetDay(TDateTime Date) { return Decode(Date).day; }

TDateTime AddDate(TDateTime Date, uint16_t Years, uint16_t Months, uint16_t Days) {
  Ymd d = Decode(Date + Days);
  d.month = Add16(d.month, Months);
  if (d.month > 12) {
    d.year = Add16(d.year, (d.month - 1) / 12);
    d.month = static_cast<uint16_t>((d.month - 1) % 12 + 1);
  }
  d.year = Add16(d.year, Years);
  return EncodeDate(d.year, d.month, d.day);
}

TDateTime AddTime(TDateTime Time, uint16_t Hours, uint16_t Minutes, uint16_t Seconds) {
  uint16_t hour = 0, min = 0, sec = 0, msec = 0;
  DecodeTime(Time, hour, min, sec, msec);
  sec = Add16(sec, Seconds);
  if (sec > 59) {
    min = Add16(min, sec / 60);
    sec = static_cast<uint16_t>(sec % 60);
  }
  min = Add16(min, Minutes);
  if (min > 59) {
    hour = Add16(hour, min / 60);
    min = static_cast<uint16_t>(min % 60);
  }
  hour = Add16(hour, Hours);
  uint16_t days = 0;
  if (hour > 23) {
    days = static_cast<uint16_t>(hour / 24);
    hour = static_cast<uint16_t>(hour % 24);
  }
  return std::trunc(Time) + days + EncodeTime(hour, min, sec, msec);
}

}  // namespace quill::Gdattime
