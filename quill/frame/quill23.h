// The package frame of libquill23: entry points, the unit table and the
// package information.
//
// Loading libquill23.so starts the eight units in the fixed order Gconsts,
// Gstrings, Gutils, Gdattime, Gscanner, Glocales, Gcompress, Ghtmlhlp (each
// placed after the runtime entries it needs) and unloading stops them in
// reverse order; a linked application needs no call of its own. A host that
// calls Initialize/Finalize itself only moves the units' start counts.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "quill/frame/errors.h"
#include "quill/frame/gconsts.h"
#include "quill/frame/units.h"
#include "quill/rtl/export.h"

namespace quill {

// One entry of the unit table: a named pair of start-up and shutdown routines,
// either of which may be absent (null).
struct TPackageUnitEntry {
  const char* Name;
  void (*Init)();
  void (*FInit)();
};

// The unit table: entry count followed by the entries.
struct TPackageInfoTable {
  int32_t UnitCount;
  const TPackageUnitEntry* UnitInfo;
};

// The package-information record.
struct TPackageInfo {
  const char* PackageName;                      // "Quill23"
  std::span<const char* const> Requires;        // the host runtime's packages
  std::span<const char* const> Contains;        // the contained units
  const char* Description;                      // one-line description
  const char* Version;                          // "23.0.0"
};

extern "C" {
// Starts every entry of the unit table in table order.
QUILL_API void Initialize();
// Stops every entry of the unit table in reverse table order.
QUILL_API void Finalize();
// The unit table.
QUILL_API const TPackageInfoTable* GetPackageInfoTable();
}

// The package-information record of the library.
[[nodiscard]] QUILL_API const TPackageInfo& PackageInfo();

// "23.0.0".
[[nodiscard]] QUILL_API const char* QuillVersionString();

// Module state recorded by the library entry: whether the module is a
// library (always true for libquill23), its path, and whether it is
// registered with the runtime's module list.
struct TLibModule {
  bool IsLibrary = false;
  bool Registered = false;
  std::string FileName;
};
[[nodiscard]] QUILL_API const TLibModule& LibModule();

// The operating-system load notifications, called by the library's load and
// unload hooks; exposed so that tests can drive them. Reason 1 = process
// attach, 0 = process detach. Always returns true.
QUILL_API bool LibraryEntry(int reason);

}  // namespace quill
