// Date text under a few formats: no crash, no hang, and every text that is
// read gives a real date-time.
//
// Input: the first byte picks the format (one of a fixed list, or, when its
// high bit is set, a format taken from the input up to the first '|'); the
// rest is the text, UTF-8. For a text that reads, the value must decode to a
// date in 1..9999, and writing it out with all its fields and reading it back
// under fixed settings must give the same value. A fixed format never raises;
// a fuzzed one may raise only UnquotedString's errors for a quoted separator.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quill/dattime/gdattime.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace {

const char16_t* const kFormats[] = {
    u"dd.mm.yyyy",        u"dd/mm/yyyy",       u"mm/dd/yy",         u"yyyy-mm-dd",
    u"dd.mm.yyyy hh:nn",  u"d-m-y h:n:s",      u"dd\"-\"mm\"-\"yyyy", u"yy mm dd",
};

void CheckValue(quill::TDateTime v) {
  if (!std::isfinite(v)) std::abort();
  uint16_t y = 0, m = 0, d = 0, h = 0, n = 0, s = 0, z = 0;
  quill::DecodeDate(v, y, m, d);
  quill::DecodeTime(v, h, n, s, z);
  if (y < 1 || y > 9999 || m < 1 || m > 12 || d < 1 || d > quill::DaysInAMonth(y, m)) std::abort();
  if (h > 23 || n > 59 || s > 59 || z > 999) std::abort();

  quill::TFormatSettings fixed;
  fixed.ShortDateFormat = u"dd/mm/yyyy";
  const quill::UnicodeString text = quill::FormatDateTime(u"dd/mm/yyyy hh:nn:ss.zzz", v, fixed);
  quill::TDateTime back = 0;
  if (!quill::TryStrToDateTime(text, back, fixed) || back != v) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool started = [] {
    setenv("QUILL_SYSTEM_LOCALE", "en-US", 1);
    quill::ResetLocaleCache();
    return true;
  }();
  (void)started;
  if (size == 0) return 0;
  std::string rest(reinterpret_cast<const char*>(data + 1), size - 1);
  quill::UnicodeString format;
  bool fixed_format = true;
  if ((data[0] & 0x80) != 0) {
    const size_t bar = rest.find('|');
    if (bar == std::string::npos) return 0;
    format = quill::Utf8ToUnicode(rest.substr(0, bar));
    rest.erase(0, bar + 1);
    fixed_format = false;
  } else {
    format = kFormats[data[0] % (sizeof kFormats / sizeof kFormats[0])];
  }
  const quill::UnicodeString text = quill::Utf8ToUnicode(rest);

  quill::TDateTime v = -12345.5;
  bool ok = false;
  try {
    ok = quill::Gdattime::TryStrToDateTimeByFormat(format, text, v);
  } catch (const quill::Exception&) {
    if (fixed_format) std::abort();
    return 0;
  }
  if (ok) {
    CheckValue(v);
    // Writing the value with the fuzzed format must not fail either.
    (void)quill::FormatDateTime(format, v);
  } else if (v != -12345.5) {
    std::abort();  // a failed read leaves the result alone
  }
  return 0;
}
