// Gdattime: calendar arithmetic, month names and the textual date, and
// reading dates by a caller's format.
//
//   #include <quill/dattime/gdattime.h>
//   using namespace quill::Gdattime;
//   GetQuartalWrite(GetQuartal(quill::EncodeDate(2024, 9, 30)));  // "III"
//   StrToDateTimeByFormat(u"dd.mm.yyyy hh:nn", u"24.12.2023 18:30");
//
// The unit has no error class of its own: impossible dates raise the
// runtime's EConvertError.
#pragma once

#include "quill/dattime/byformat.h"
#include "quill/dattime/calendar.h"
#include "quill/dattime/datenames.h"
#include "quill/rtl/datetext.h"
#include "quill/rtl/datetime.h"
