// Gutils operating-system flags.
//
// The unit's start-up sets these exported flags from the operating system's
// version record. Linux has no such record, so there they all stay false;
// ComputeOSFlags() is the pure rule, usable with any record (tests feed it the
// records of the Windows versions that matter).
//
//   TOSVersionInfo v{276, 6, 1, 7601, 2};
//   ComputeOSFlags(v).IsWinXPUp;   // true: 6.1 counts as XP or later
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"

namespace quill::Gutils {

// The operating-system version record (the fields the flags read).
struct TOSVersionInfo {
  uint32_t dwOSVersionInfoSize = 276;
  uint32_t dwMajorVersion = 0;
  uint32_t dwMinorVersion = 0;
  uint32_t dwBuildNumber = 0;
  uint32_t dwPlatformId = 0;  // 1: the 16/32-bit consumer line; 2: the NT line
};

struct TOSFlags {
  bool IsWin95 = false;
  bool IsWin95OSR2 = false;
  bool IsWinNT = false;
  bool IsWin2000 = false;
  bool IsWinXP = false;
  bool IsWin2000Up = false;
  bool IsWinNTUp = false;
  bool IsWinXPUp = false;
  bool IsWin98 = false;
  bool IsWin98Up = false;
  bool IsWinME = false;
};

// The flags of version record `v`, each by its fixed rule. IsWinXPUp is
// deliberately "major >= 5 and minor >= 1", so 6.0 does not count as XP or
// later while 6.1 does; callers rely on that.
[[nodiscard]] QUILL_API TOSFlags ComputeOSFlags(const TOSVersionInfo& v);

// Asks the system for its version record (size field set to 276 first).
// Linux has none: returns false and leaves `v` as it is.
[[nodiscard]] QUILL_API bool GetOSVersionRecord(TOSVersionInfo& v);

// Sets the exported flags from `flags` (all false when the system has no
// version record). Called by the unit's first start.
QUILL_API void SetOSFlags(const TOSFlags& flags);

// The exported flags.
QUILL_API extern bool IsWin95;
QUILL_API extern bool IsWin95OSR2;
QUILL_API extern bool IsWinNT;
QUILL_API extern bool IsWin2000;
QUILL_API extern bool IsWinXP;
QUILL_API extern bool IsWin2000Up;
QUILL_API extern bool IsWinNTUp;
QUILL_API extern bool IsWinXPUp;
QUILL_API extern bool IsWin98;
QUILL_API extern bool IsWin98Up;
QUILL_API extern bool IsWinME;
// Never set by the library; stays false.
QUILL_API extern bool IsLinux;

}  // namespace quill::Gutils
