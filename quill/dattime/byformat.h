// Gdattime: reading a date and time by a format the caller gives.
//
// The format uses the runtime's date letters d, m and y (any case), a
// separator between the date parts, and optionally a blank followed by a
// time format. The routines derive three settings from it and leave the
// reading to the runtime's date-time reader (quill/rtl/datetext.h):
//   1. start from the format settings of the system default locale (2048);
//   2. the separator text is what lies between the first run of date letters
//      and the next date letter;
//   3. a separator text beginning with a double quote is unquoted
//      (UnquotedString with '"') and its first character used; exactly "/"
//      keeps the locale's own date separator; otherwise its first character
//      is the date separator;
//   4. the format is split at its first blank (GetNameAndValueSep with " "):
//      the part before is the short date format (which gives the order of
//      day, month and year), the part after, when not empty, the short time
//      format.
// The time separator, decimal separator and AM/PM words stay the locale's;
// GetDateName's settings (InitDateTimeParams) are not used.
//
//   TDateTime v;
//   quill::Gdattime::TryStrToDateTimeByFormat(u"dd.mm.yyyy", u"24.12.2023", v);  // true
//
// The derived settings of the last format used are kept per thread, so
// reading many texts with one format does not allocate.
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gdattime {

// True, with `Result` set, when `Value` reads as a date (optionally followed
// by a time, or a time alone) under the settings derived from `Format`; false,
// with `Result` untouched, otherwise. A format without a separator between its
// first run of date letters and the next date letter is outside the contract:
// the locale's separator is then kept. The only error that can pass is
// UnquotedString's, for a quoted separator with a bad "#" character code.
QUILL_API bool TryStrToDateTimeByFormat(std::u16string_view Format, std::u16string_view Value,
                                        TDateTime& Result);

// The value read by TryStrToDateTimeByFormat, or, when it cannot be read,
// today's date with time 0. Deliberately never raises for unreadable text.
[[nodiscard]] QUILL_API TDateTime StrToDateTimeByFormat(std::u16string_view Format, std::u16string_view Value);

}  // namespace quill::Gdattime
