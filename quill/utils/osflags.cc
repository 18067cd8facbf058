#include "quill/utils/osflags.h"

namespace quill::Gutils {

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
bool IsLinux = false;

TOSFlags ComputeOSFlags(const TOSVersionInfo& v) {
  constexpr uint32_t kConsumerLine = 1;
  constexpr uint32_t kNTLine = 2;
  TOSFlags f;
  f.IsWin95 = v.dwPlatformId == kConsumerLine;
  f.IsWin95OSR2 = v.dwPlatformId == kConsumerLine && (v.dwBuildNumber & 0xFFFFu) >= 1000;
  f.IsWinNT = v.dwPlatformId == kNTLine;
  f.IsWin2000 = v.dwPlatformId == kNTLine && v.dwMajorVersion >= 5;
  f.IsWinXP = v.dwPlatformId == kNTLine && v.dwMajorVersion == 5 && v.dwMinorVersion == 1;
  f.IsWin2000Up = f.IsWin2000 || f.IsWinXP;
  f.IsWinNTUp = f.IsWinNT || f.IsWin2000Up;
  // Kept as it stands: 6.0 has minor version 0 and so is not "XP or later".
  f.IsWinXPUp = v.dwPlatformId == kNTLine && v.dwMajorVersion >= 5 && v.dwMinorVersion >= 1;
  f.IsWin98 = v.dwPlatformId == kConsumerLine && v.dwMinorVersion > 0;
  f.IsWin98Up = f.IsWin98;
  f.IsWinME = v.dwPlatformId == kConsumerLine && v.dwMinorVersion >= 90;
  return f;
}

bool GetOSVersionRecord(TOSVersionInfo& v) {
  v.dwOSVersionInfoSize = 276;
  return false;  // Linux keeps no Windows version record.
}

void SetOSFlags(const TOSFlags& flags) {
  IsWin95 = flags.IsWin95;
  IsWin95OSR2 = flags.IsWin95OSR2;
  IsWinNT = flags.IsWinNT;
  IsWin2000 = flags.IsWin2000;
  IsWinXP = flags.IsWinXP;
  IsWin2000Up = flags.IsWin2000Up;
  IsWinNTUp = flags.IsWinNTUp;
  IsWinXPUp = flags.IsWinXPUp;
  IsWin98 = flags.IsWin98;
  IsWin98Up = flags.IsWin98Up;
  IsWinME = flags.IsWinME;
}

}  // namespace quill::Gutils
