// Gdattime: settings derived from a caller's date format, and the readers
// that use them.
#include "quill/dattime/byformat.h"

#include <cstdint>

#include "quill/rtl/datetext.h"
#include "quill/rtl/datetime.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/internal/localecache.h"
#include "quill/rtl/syslocale.h"
#include "quill/strings/namevalue.h"
#include "quill/strings/quoting.h"

namespace quill::Gdattime {
namespace {

bool IsDateLetter(char16_t c) {
  switch (c) {
    case u'd': case u'D': case u'm': case u'M': case u'y': case u'Y': return true;
    default: return false;
  }
}

// The text between the first run of date letters and the next date letter.
std::u16string_view SeparatorText(std::u16string_view format) {
  size_t start = 0;
  while (start < format.size() && IsDateLetter(format[start])) ++start;
  size_t end = start;
  while (end < format.size() && !IsDateLetter(format[end])) ++end;
  return format.substr(start, end - start);
}

// Applies a caller's format to a copy of the system default settings.
void DeriveSettings(std::u16string_view format, TFormatSettings& fs) {
  const std::u16string_view sep = SeparatorText(format);
  if (!sep.empty() && sep.front() == u'"') {
    // UnquotedString never returns an empty text for a non-empty input.
    fs.DateSeparator = Gstrings::UnquotedString(sep, u'"').front();
  } else if (sep == u"/") {
    // "/" in a date format stands for the locale's separator: keep it.
  } else if (!sep.empty()) {
    fs.DateSeparator = sep.front();
  }
  UnicodeString date_format;
  UnicodeString time_format;
  Gstrings::GetNameAndValueSep(u" ", format, date_format, time_format);
  fs.ShortDateFormat = std::move(date_format);
  if (!time_format.empty()) fs.ShortTimeFormat = std::move(time_format);
}

// Per-thread memory of the system default settings and of the settings
// derived from the last format, rebuilt when the runtime's locale caches are
// reset (a changed QUILL_SYSTEM_LOCALE) or another format comes.
struct DerivedCache {
  uint64_t generation = 0;
  bool has_base = false;
  TFormatSettings base;
  bool has_derived = false;
  UnicodeString format;
  TFormatSettings derived;
};

const TFormatSettings& SettingsFor(std::u16string_view format) {
  thread_local DerivedCache cache;
  const uint64_t generation = internal::LocaleCacheGeneration();
  if (!cache.has_base || cache.generation != generation) {
    cache.base = TFormatSettings::Create(LOCALE_SYSTEM_DEFAULT);
    cache.generation = generation;
    cache.has_base = true;
    cache.has_derived = false;
  }
  if (!cache.has_derived || cache.format != format) {
    cache.has_derived = false;  // stays false if the format's quoted separator raises
    cache.derived = cache.base;
    DeriveSettings(format, cache.derived);
    cache.format.assign(format);
    cache.has_derived = true;
  }
  return cache.derived;
}

}  // namespace

bool TryStrToDateTimeByFormat(std::u16string_view Format, std::u16string_view Value, TDateTime& Result) {
  return TryStrToDateTime(Value, Result, SettingsFor(Format));
}

TDateTime StrToDateTimeByFormat(std::u16string_view Format, std::u16string_view Value) {
  TDateTime result = 0;
  if (TryStrToDateTimeByFormat(Format, Value, result)) return result;
  return Date();
}

}  // namespace quill::Gdattime
