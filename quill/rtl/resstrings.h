// Resource strings: message texts that a translation may replace.
//
// A TResStringRec names one message by its resource identifier and carries
// the built-in English text. The text is looked up each time it is loaded (at
// the moment an error is raised), so a translation installed later is used.
// Translations come from the gettext catalog of the text domain "quill23"
// (msgid = the English text) when one is installed for the current messages
// language; otherwise the English text is used.
// The language is gettext's: LANGUAGE, LC_ALL, LC_MESSAGES, LANG, and only
// once the program has set its messages locale (setlocale(LC_ALL, "")); in
// the plain "C" locale gettext never translates.
#pragma once

#include <cstdint>
#include <string>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

struct TResStringRec {
  uint32_t Identifier;
  const char16_t* Text;  // built-in English text
};

// The current text of `rec`: the catalog's translation or the built-in text.
[[nodiscard]] QUILL_API UnicodeString LoadResString(const TResStringRec& rec);

// Points the "quill23" text domain at a catalog directory (the layout
// DIR/<lang>/LC_MESSAGES/quill23.mo). By default the installed locale
// directory is used, overridden by the environment variable QUILL_LOCALEDIR.
QUILL_API void BindResourceCatalog(const std::string& dir);

}  // namespace quill
