// Yes/no questions and a borderless "please wait" window.
//
// Both go through the installed user-interface service (uiservice.h): with
// the Qt module loaded (libquill23-qt.so) a real message box and a real
// window; without it the terminal (a question on standard error answered on
// standard input, the window's text written to standard error).
//
//   if (Ask(u"Overwrite the file?") == IDYES) { ... }
//   ShowInfo(u"Reading the archive...");
//   for (...) UpdateInfo(u"Reading " + name);
//   HideInfo();
//
// Call them from the thread that owns the application's windows.
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/utils/uiservice.h"

namespace quill::Gutils {

// Asks `Question` in a message box with an empty title, the buttons Yes and
// No, the question icon and Yes as the default button (flags 36); returns
// the answer: 6 (IDYES) or 7 (IDNO; also for Escape and closing the box).
QUILL_API int32_t Ask(const UnicodeString& Question);

// Ask with No as the default button (flags 292: MB_DEFBUTTON2 added).
QUILL_API int32_t AskNo(const UnicodeString& Question);

// Shows the information window with `Text`, replacing (destroying without
// hiding) any window already showing. The window is as wide as `Text` in its
// font plus 10 pixels, however wide that is (wider than the screen when the
// text is), and 50 pixels high, centred on the screen, and is painted before
// the call returns.
QUILL_API void ShowInfo(const UnicodeString& Text);

// Changes the text of the information window (showing it first when there
// is none), sets its width again to the text's width plus 10 and paints it
// at once. The height stays 50.
QUILL_API void UpdateInfo(const UnicodeString& Text);

// Hides and destroys the information window; does nothing when there is none
// (so calling it twice is harmless).
QUILL_API void HideInfo();

// True while an information window exists (from ShowInfo/UpdateInfo until
// HideInfo). Library shut-down does not destroy a window still showing.
[[nodiscard]] QUILL_API bool InfoIsShowing();

}  // namespace quill::Gutils
