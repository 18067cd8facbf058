// The classic help viewer on Linux: a configured command, or nothing.
#include <sys/stat.h>

#include "quill/htmlhlp/internal/engine.h"
#include "quill/rtl/unicode.h"
#include "quill/utils/internal/spawn.h"

namespace quill::Ghtmlhlp::internal {

int32_t WinHelpW(HWND hWndMain, const UnicodeString& lpszHelp, UINT uCommand, DWORD_PTR dwData) {
  (void)hWndMain;  // no owner window to attach a viewer to
  (void)dwData;    // HELP_CONTENTS takes none
  if (uCommand != HELP_CONTENTS) return 0;
  std::vector<std::string> command = Gutils::internal::ConfiguredCommand("QUILL_WINHELP_COMMAND");
  if (command.empty()) return 0;  // Linux has no classic help viewer of its own
  const std::string file = UnicodeToUtf8(lpszHelp);
  struct stat st {};
  if (file.empty() || stat(file.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return 0;
  return Gutils::internal::StartDetached(std::move(command), file) ? 1 : 0;
}

}  // namespace quill::Ghtmlhlp::internal
