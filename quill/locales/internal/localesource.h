// Where Glocales reads a locale's facts. Not installed.
#pragma once

#include "quill/rtl/types.h"

namespace quill::Glocales::internal {

// The text of LOCALE_IDEFAULTANSICODEPAGE for `Locale` ("1252"; "0" for a
// locale that has only Unicode; "" when the locale is unknown), from
// LocaleInfo. The one place that knows where that text comes from.
[[nodiscard]] UnicodeString AnsiCodePageText(LCID Locale);

// GetCodePageByLocale's reading of that text: GetACP() when empty, else the
// text as a number (EConvertError when it is none).
[[nodiscard]] int32_t CodePageFromText(const UnicodeString& Text);

}  // namespace quill::Glocales::internal
