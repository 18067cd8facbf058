// Glocales: string resources read from PE files (Windows executables and
// DLLs) without the system's string loader.
//
// A module handle names a PE image opened for its resources (from a file or
// from bytes in memory), or the library's own module, whose string table
// holds the library's resource strings 65520..65524 (block 4096).
//
//   HMODULE m = LoadResourceModule(u"/opt/app/lang/app.de.dll");
//   char16_t text[256];
//   if (m != 0 && Win9x_LoadStringW(m, 1001, text, 256) > 0) { ... }
//   FreeResourceModule(m);
//   Win9x_LoadStringW(QuillModuleHandle(), 65520, text, 256);   // "Stack is full"
#pragma once

#include <cstdint>
#include <span>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// A module handle; 0 names no module.
using HMODULE = uintptr_t;

// Opens the PE file `FileName` for its resources (the file is read whole and
// not kept open). Returns 0 when the file cannot be read, is larger than
// 1 GiB, or is no PE image. An image without resources opens; every lookup
// in it then fails. Each handle stays valid until FreeResourceModule.
[[nodiscard]] QUILL_API HMODULE LoadResourceModule(const UnicodeString& FileName);

// The same for a PE image in memory; the bytes are copied.
[[nodiscard]] QUILL_API HMODULE LoadResourceModuleFromMemory(std::span<const uint8_t> Image);

// Closes a handle from LoadResourceModule*; false (and nothing done) for 0,
// for unknown or already closed handles and for QuillModuleHandle().
QUILL_API bool FreeResourceModule(HMODULE Module);

// The library's own module. Its string table has block 4096 only, whose
// strings 0..4 are the resource strings 65520..65524 in their current text
// (a catalog translation when one is installed) and whose other strings are
// empty.
[[nodiscard]] QUILL_API HMODULE QuillModuleHandle();

// Loads string `ID` of `Module`'s string table into `Buffer`, reading the
// table by hand:
// - An ID whose high 16 bits are all ones (a negative number) is negated first.
// - The string is entry ID AND 15 of the string-table resource named
//   (ID >> 4 AND 0xFFFF) + 1. The resource's language is the first present of
//   neutral (0), the user locale's, the system locale's, 0x0400 and English
//   (0x0409), else the first one. No such resource (or no module): 0.
// - `Buffer` nullptr: the string's length, nothing copied.
// - Otherwise N = min(BufferMax - 1, length): N >= 1 copies N units, writes a
//   0 after them and returns N. When N < 1 and BufferMax > 1 (an empty
//   string) it writes a 0 and returns 0. Otherwise nothing is written and N
//   is returned: BufferMax 0 gives -1 and BufferMax 1 gives 0, deliberately
//   without a terminator (a negative BufferMax gives BufferMax - 1, but
//   never less than INT32_MIN).
//   REQUIRES: `Buffer` holds `BufferMax` units.
// Never reads outside the image: a string table cut short gives 0, a string
// cut short by the end of its block gives the units that are there.
QUILL_API int32_t Win9x_LoadStringW(HMODULE Module, uint32_t ID, WideChar* Buffer, int32_t BufferMax);

}  // namespace quill::Glocales
