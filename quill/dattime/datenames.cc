// Gdattime month names, GetDateName and the module-level name settings.
#include "quill/dattime/datenames.h"

#include "quill/dattime/internal/startup.h"
#include "quill/rtl/datetime.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/syslocale.h"

namespace quill::Gdattime {

UnicodeString ShortYearName;
std::array<UnicodeString, 13> LongMonthNames2;

UnicodeString GetDateName(TDateTime Date) {
  uint16_t year = 0, month = 0, day = 0;
  DecodeDate(Date, year, month, day);
  UnicodeString s = IntToStr(day);
  s += u' ';
  s += LongMonthNames2[month];  // month is 0..12; entry 0 is empty
  s += u' ';
  s += IntToStr(year);
  s += ShortYearName;
  return s;
}

void GetMonthNames(TStrings& List) {
  const TFormatSettings fs = TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT);
  List.Clear();
  for (const UnicodeString& name : fs.LongMonthNames) List.Add(name);
}

void InitDateTimeParams(const UnicodeString& YearName, std::span<const UnicodeString> Names) {
  ShortYearName = YearName;
  for (size_t i = 0; i < Names.size() && i < 12; ++i) LongMonthNames2[i + 1] = Names[i];
}

void InitDateTimeParams(const UnicodeString& YearName, std::initializer_list<UnicodeString> Names) {
  InitDateTimeParams(YearName, std::span<const UnicodeString>(Names.begin(), Names.size()));
}

namespace internal {

void FillMonthPhrases() {
  const TFormatSettings fs = TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT);
  for (size_t i = 0; i < 12; ++i) LongMonthNames2[i + 1] = u"of " + fs.LongMonthNames[i];
}

void ClearNames() {
  for (UnicodeString& s : LongMonthNames2) s.clear();
  ShortYearName.clear();
}

}  // namespace internal
}  // namespace quill::Gdattime
