// ICU converters for Windows code pages, shared by the runtime's conversion,
// casing and comparison code. Not installed.
#pragma once

#include <unicode/ucnv.h>

#include "quill/rtl/types.h"

namespace quill::internal {

// Facts about one code page's converter, opened once per thread.
struct CodePageConverter {
  UConverter* conv = nullptr;  // nullptr when ICU has no converter for the page
  bool ascii_compatible = false;  // bytes 0x00..0x7F are the same characters in ASCII
  bool single_byte = false;       // every character is one byte
};

// The converter of `codepage` (CP_ACP resolved through GetACP()) for the
// calling thread. The converter is reset before it is returned; its
// substitution character for characters without a mapping is '?'.
// Never returns nullptr; `conv` is nullptr when the page is unknown.
[[nodiscard]] const CodePageConverter& ConverterFor(TCodePage codepage);

// The ICU converter name used for a Windows code page, or nullptr when the
// page has no known converter.
[[nodiscard]] const char* IcuConverterName(TCodePage codepage);

}  // namespace quill::internal
