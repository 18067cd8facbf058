// The installed user-interface service.
#include "quill/utils/uiservice.h"

#include "quill/utils/internal/infowindow.h"
#include "quill/utils/internal/terminalui.h"

namespace quill::Gutils {

namespace {

// Constant-initialised, so that a UI module's static initialiser may install
// its service before (or after) this library's own initialisers run.
constinit TUIService* g_installed = nullptr;

}  // namespace

TInfoForm::~TInfoForm() = default;
TUIService::~TUIService() = default;

TUIService& TerminalUIService() {
  static internal::TTerminalUIService service;
  return service;
}

TUIService& UIService() {
  return g_installed != nullptr ? *g_installed : TerminalUIService();
}

TUIService* InstallUIService(TUIService* Service) {
  TUIService* previous = g_installed;
  g_installed = Service;
  return previous;
}

void UninstallUIService(TUIService* Service) {
  if (Service == nullptr || Service != g_installed) return;
  internal::DropInfoWindowOf(Service);
  g_installed = nullptr;
}

}  // namespace quill::Gutils

namespace quill::Gutils {

std::vector<int32_t> MessageBoxButtons(int32_t Flags) {
  switch (Flags & MB_TYPEMASK) {
    case MB_OKCANCEL: return {IDOK, IDCANCEL};
    case MB_ABORTRETRYIGNORE: return {IDABORT, IDRETRY, IDIGNORE};
    case MB_YESNOCANCEL: return {IDYES, IDNO, IDCANCEL};
    case MB_YESNO: return {IDYES, IDNO};
    case MB_RETRYCANCEL: return {IDRETRY, IDCANCEL};
    default: return {IDOK};
  }
}

int32_t MessageBoxDefaultAnswer(int32_t Flags) {
  const std::vector<int32_t> buttons = MessageBoxButtons(Flags);
  const size_t index = static_cast<size_t>((Flags & MB_DEFMASK) >> 8);
  return index < buttons.size() ? buttons[index] : buttons.front();
}

int32_t MessageBoxEscapeAnswer(int32_t Flags) {
  const std::vector<int32_t> buttons = MessageBoxButtons(Flags);
  for (int32_t answer : {IDCANCEL, IDNO, IDOK}) {
    for (int32_t b : buttons) {
      if (b == answer) return answer;
    }
  }
  return IDABORT;
}

}  // namespace quill::Gutils
