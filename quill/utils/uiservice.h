// The user-interface services the core library calls: a message box and the
// borderless information window of Ask/AskNo/ShowInfo (questions.h).
//
// The core library links no user-interface toolkit. It calls whichever
// service is installed; a UI module (the Qt module, libquill23-qt.so)
// installs its own when it is loaded and removes it when it is unloaded. With
// nothing installed, the built-in terminal service answers:
// - MessageBox asks on the terminal when standard input is one (a letter per
//   button, Enter takes the default button) and otherwise answers without
//   asking, with the button that Escape would press (No for a Yes/No box);
// - an information form writes its text to standard error, one line each
//   time it is repainted with a text it has not written yet.
//
//   class MyService : public TUIService { ... };
//   MyService service;
//   TUIService* previous = InstallUIService(&service);
//   ...
//   UninstallUIService(&service);        // the terminal service answers again
//
// Process-wide and not guarded: install and call from the thread that owns
// the application's windows.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// Message-box flags (the platform's numbering): buttons in the low 4 bits,
// the icon in bits 4..7, the default button in bits 8..11.
inline constexpr int32_t MB_OK = 0x0;
inline constexpr int32_t MB_OKCANCEL = 0x1;
inline constexpr int32_t MB_ABORTRETRYIGNORE = 0x2;
inline constexpr int32_t MB_YESNOCANCEL = 0x3;
inline constexpr int32_t MB_YESNO = 0x4;
inline constexpr int32_t MB_RETRYCANCEL = 0x5;
inline constexpr int32_t MB_ICONHAND = 0x10;
inline constexpr int32_t MB_ICONQUESTION = 0x20;
inline constexpr int32_t MB_ICONEXCLAMATION = 0x30;
inline constexpr int32_t MB_ICONASTERISK = 0x40;
inline constexpr int32_t MB_DEFBUTTON1 = 0x000;
inline constexpr int32_t MB_DEFBUTTON2 = 0x100;
inline constexpr int32_t MB_DEFBUTTON3 = 0x200;
inline constexpr int32_t MB_TYPEMASK = 0xF;
inline constexpr int32_t MB_ICONMASK = 0xF0;
inline constexpr int32_t MB_DEFMASK = 0xF00;

// Message-box answers.
inline constexpr int32_t IDOK = 1;
inline constexpr int32_t IDCANCEL = 2;
inline constexpr int32_t IDABORT = 3;
inline constexpr int32_t IDRETRY = 4;
inline constexpr int32_t IDIGNORE = 5;
inline constexpr int32_t IDYES = 6;
inline constexpr int32_t IDNO = 7;

// One information form of a service. A new form is hidden, has no owner, no
// border, no border icons and an empty caption, stays above other windows
// and is placed at the centre of the screen when it is first shown. The core
// drives it step by step; destroying the object destroys the form (without
// hiding it first).
class QUILL_API TInfoForm {
 public:
  virtual ~TInfoForm();
  // Width of `Text` in pixels in the form's canvas font.
  [[nodiscard]] virtual int32_t TextWidth(const UnicodeString& Text) = 0;
  // Outer size in pixels; nothing limits the width.
  virtual void SetWidth(int32_t Width) = 0;
  virtual void SetHeight(int32_t Height) = 0;
  [[nodiscard]] virtual int32_t Width() const = 0;
  [[nodiscard]] virtual int32_t Height() const = 0;
  // Creates the form's one panel: owned and parented by the form, filling
  // the whole form, with `Caption` as its text. Called once per form.
  virtual void CreatePanel(const UnicodeString& Caption) = 0;
  // Sets the text of the form's first owned component (the panel).
  virtual void SetPanelCaption(const UnicodeString& Caption) = 0;
  [[nodiscard]] virtual UnicodeString PanelCaption() const = 0;
  virtual void Show() = 0;
  virtual void Hide() = 0;
  // Paints the form now, before returning, so that its text is visible even
  // while the caller keeps the thread busy afterwards.
  virtual void Repaint() = 0;
};

// The services a UI layer provides.
class QUILL_API TUIService {
 public:
  virtual ~TUIService();
  // Shows a modal message box with `Text`, the title `Caption` and the
  // buttons, icon and default button that `Flags` name (MB_*); returns the
  // answer (ID*). Escape and closing the box give MessageBoxEscapeAnswer.
  virtual int32_t MessageBox(const UnicodeString& Text, const UnicodeString& Caption,
                             int32_t Flags) = 0;
  // A new, hidden information form (see TInfoForm). Never null.
  [[nodiscard]] virtual std::unique_ptr<TInfoForm> CreateInfoForm() = 0;
};

// Helpers for services: the buttons a box of `Flags` has, in order (ID*
// values; an unknown button type gives OK alone).
[[nodiscard]] QUILL_API std::vector<int32_t> MessageBoxButtons(int32_t Flags);

// The default button's answer: the button that MB_DEFBUTTONn names, the
// first one when the box has fewer buttons.
[[nodiscard]] QUILL_API int32_t MessageBoxDefaultAnswer(int32_t Flags);

// The answer that Escape or closing the box gives: Cancel when the box has
// one, else No, else OK, else Abort.
[[nodiscard]] QUILL_API int32_t MessageBoxEscapeAnswer(int32_t Flags);

// The service in use: the last one installed, or the terminal service.
[[nodiscard]] QUILL_API TUIService& UIService();

// The built-in terminal service (used when nothing is installed; a UI layer
// may also hand calls to it, e.g. when it has no application object yet).
[[nodiscard]] QUILL_API TUIService& TerminalUIService();

// Makes `Service` the one in use and returns the one installed before
// (nullptr when none was). Passing nullptr goes back to the terminal service.
// The caller keeps ownership; `Service` must outlive its installation.
QUILL_API TUIService* InstallUIService(TUIService* Service);

// Removes `Service` if it is the one in use (the terminal service takes
// over); otherwise does nothing. An information window that `Service` made
// and that is still showing is destroyed first, since its code may be about
// to go away (a module being unloaded).
QUILL_API void UninstallUIService(TUIService* Service);

}  // namespace quill::Gutils
