// Version information of Windows executables and DLLs (PE files).
//
// The version resource is read straight from the file with a bounds-checked
// reader of the PE resource directory; no part of the file is trusted, so a
// damaged file gives false, never a crash or a read outside the file.
//
//   TGVersionInfoRec rec;
//   if (GetVersionInfo(u"setup.exe", rec)) use(rec.FileVersion, rec.ProductName);
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// The text fields of a file's version information.
struct TGVersionInfoRec {
  UnicodeString CompanyName;
  UnicodeString FileDescription;
  UnicodeString FileVersion;
  UnicodeString InternalName;
  UnicodeString LegalCopyright;
  UnicodeString LegalTrademarks;
  UnicodeString OriginalFilename;
  UnicodeString ProductVersion;
  UnicodeString ProductName;
};

// Reads the version information of PE file `FileName` into `Rec`.
// - Returns false, leaving `Rec` untouched, when the file cannot be read, is
//   not a PE file (an ELF file, a text file), has no version resource, or
//   its headers, resource directory or version block are cut short or point
//   outside the file.
// - Otherwise fills CompanyName, FileDescription, FileVersion, InternalName,
//   LegalCopyright, OriginalFilename, ProductName and ProductVersion from the
//   string table of the block's FIRST translation (language and code page,
//   e.g. "040904B0"; names matched without regard to ASCII case), each field
//   empty when the table lacks it (all of them when the block lists no
//   translation), and returns true.
// - LegalTrademarks is never read or written: it keeps the caller's value.
[[nodiscard]] QUILL_API bool GetVersionInfo(const UnicodeString& FileName, TGVersionInfoRec& Rec);

// The string table GetVersionInfo reads its fields from: the key of the
// version block's first translation, language and code page as eight
// upper-case hexadecimal digits ("040904B0"); the empty string when the block
// lists no translation. Returns false, leaving `Translation` untouched,
// exactly when GetVersionInfo returns false. (For messages that explain why
// every field came out empty.)
[[nodiscard]] QUILL_API bool GetVersionTranslation(const UnicodeString& FileName, UnicodeString& Translation);

// GetVersionInfo of the file of module `Module`. Module 0 is the running
// program (on Linux an ELF file, so false); no other handle names a module
// here, so they give false as well. `Rec` is untouched when false.
[[nodiscard]] QUILL_API bool GetModuleVersionInfo(int32_t Module, TGVersionInfoRec& Rec);

}  // namespace quill::Gutils
