// ICU converters for Windows code pages, shared by the runtime's conversion,
// casing and comparison code. Not installed.
#pragma once

#include <unicode/ucnv.h>

#include <cstdint>

#include "quill/rtl/types.h"

namespace quill::internal {

// Facts about one code page's converter, opened once per thread.
struct CodePageConverter {
  UConverter* conv = nullptr;  // nullptr when ICU has no converter for the page
  bool ascii_compatible = false;  // bytes 0x00..0x7F are the same characters in ASCII
  bool single_byte = false;       // every character is one byte
  // ICU's IBM-flavoured tables (437, 850, 866, 932, ...) swap three ASCII
  // controls (byte 1A is U+001C, 1C is U+007F, 7F is U+001A); Windows maps
  // them straight. When set, the runtime's conversions undo the swap.
  bool ibm_controls = false;
  // Single-byte pages whose every byte decodes to one UTF-16 unit: the 256
  // units ICU gives (the control swap already undone), else nullptr.
  const char16_t* to_unicode = nullptr;
  TCodePage page = 0;  // the code page the converter is for (CP_ACP resolved)
};

// The converter of `codepage` (CP_ACP resolved through GetACP()) for the
// calling thread. The converter is reset before it is returned; its
// substitution character for characters without a mapping is '?'.
// Never returns nullptr; `conv` is nullptr when the page is unknown.
[[nodiscard]] const CodePageConverter& ConverterFor(TCodePage codepage);

// For a page with a `to_unicode` table: what ICU writes for every BMP unit
// (65536 entries, built from ICU on first use and kept for the process): the
// byte, '?' for units the page cannot encode and for surrogates, kDropUnit
// for the default-ignorable units ICU leaves out. nullptr for other pages.
inline constexpr uint16_t kDropUnit = 0xFFFF;
[[nodiscard]] const uint16_t* FromUnicodeTable(const CodePageConverter& cp);

// The ICU converter name used for a Windows code page, or nullptr when the
// page has no known converter.
[[nodiscard]] const char* IcuConverterName(TCodePage codepage);

}  // namespace quill::internal
