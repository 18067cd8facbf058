// OpenHtmlHelp and OpenWinHelp.
#include "quill/htmlhlp/ghtmlhlp.h"

#include "quill/htmlhlp/internal/engine.h"

namespace quill::Ghtmlhlp {

int32_t OpenHtmlHelp(const UnicodeString& FileName, uint32_t Command, uint32_t Data) {
  if (!internal::HtmlHelpLoaded() && !internal::LoadHtmlHelp()) {
    throw EHtmlHelpError(u"Can't load Library '%s'", {internal::kEngineDisplayName});
  }
  const HWND window = HtmlHelp(0, FileName.c_str(), Command, Data);
  return window != 0 ? -1 : 0;
}

int32_t OpenWinHelp(const UnicodeString& FileName, uint32_t Command, uint32_t Data) {
  // Deliberately not passed on: the contents are always asked for.
  (void)Command;
  (void)Data;
  return internal::WinHelpW(0, FileName, HELP_CONTENTS, 0);
}

}  // namespace quill::Ghtmlhlp
