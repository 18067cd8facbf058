// Small ICU helpers shared by the runtime and the units. Not installed.
#pragma once

#include <unicode/unistr.h>

#include "quill/rtl/types.h"

namespace quill::internal {

// True when ICU carries locale data (names, formats) for `language` ("de",
// "en"). ICU falls back to the process's default locale for a language it
// has none for, which would make answers depend on the machine; callers use
// this to pick a fixed fallback instead.
[[nodiscard]] bool IcuHasLanguageData(const char* language);

// An ICU string as a UnicodeString.
[[nodiscard]] UnicodeString FromIcuString(const icu::UnicodeString& s);

}  // namespace quill::internal
