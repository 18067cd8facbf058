// Ask, AskNo and the information window, on top of the installed
// user-interface service.
#include "quill/utils/questions.h"

#include <memory>

#include "quill/utils/internal/infowindow.h"

namespace quill::Gutils {

namespace {

// The one information window and the service that made it. Plain pointers
// that nothing destroys at exit: a window still showing when the library
// shuts down is the caller's to hide.
constinit TInfoForm* g_info = nullptr;
constinit const TUIService* g_info_owner = nullptr;

constexpr int32_t kInfoHeight = 50;
constexpr int32_t kInfoTextMargin = 10;

void DestroyInfo() {
  TInfoForm* form = g_info;
  g_info = nullptr;
  g_info_owner = nullptr;
  delete form;
}

}  // namespace

namespace internal {

void DropInfoWindowOf(const TUIService* Service) {
  if (g_info != nullptr && g_info_owner == Service) DestroyInfo();
}

}  // namespace internal

int32_t Ask(const UnicodeString& Question) {
  return UIService().MessageBox(Question, UnicodeString(), MB_YESNO | MB_ICONQUESTION);
}

int32_t AskNo(const UnicodeString& Question) {
  return UIService().MessageBox(Question, UnicodeString(),
                                MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
}

void ShowInfo(const UnicodeString& Text) {
  // A window already showing is destroyed as it is, without hiding it first.
  if (g_info != nullptr) DestroyInfo();
  TUIService& service = UIService();
  std::unique_ptr<TInfoForm> form = service.CreateInfoForm();
  form->SetWidth(form->TextWidth(Text) + kInfoTextMargin);
  form->SetHeight(kInfoHeight);
  form->CreatePanel(Text);
  g_info = form.release();
  g_info_owner = &service;
  g_info->Show();
  g_info->Repaint();
}

void UpdateInfo(const UnicodeString& Text) {
  if (g_info == nullptr) ShowInfo(Text);
  g_info->SetPanelCaption(Text);
  g_info->SetWidth(g_info->TextWidth(Text) + kInfoTextMargin);
  g_info->Repaint();
}

void HideInfo() {
  if (g_info == nullptr) return;
  g_info->Hide();
  DestroyInfo();
}

bool InfoIsShowing() { return g_info != nullptr; }

}  // namespace quill::Gutils
