// Ghtmlhlp: opening compiled HTML help files (.chm) and classic help files.
//
// The help engine is a library bound at run time, on the first OpenHtmlHelp:
// an application that never opens help never loads it. Its two entry points
// are published in HtmlHelpA/HtmlHelpW/HtmlHelp for callers that want to call
// the engine themselves; they are empty until the engine is loaded and again
// after the unit's last stop unloads it.
//
// On Linux the engine is the library's plugin libquill23-hhctrl.so, looked
// for in $QUILL_HELP_ENGINE when that is set, else next to libquill23.so (next
// to the program when the library is linked statically). It shows a topic of
// a compiled help file, or an HTML file, in the desktop's viewer (xdg-open, or
// $QUILL_OPEN_COMMAND); see docs/ghtmlhlp.md.
//
//   Ghtmlhlp::OpenHtmlHelp(u"/usr/share/doc/app/app.chm::/intro.htm", Ghtmlhlp::HH_DISPLAY_TOPIC, 0);
#pragma once

#include <cstdint>

#include "quill/frame/errors.h"
#include "quill/htmlhlp/htmlhelp_api.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Ghtmlhlp {

// The engine's entry points: owner window, file ("file.chm::/topic.htm"),
// command, command data; the result is the help window's handle, 0 when
// nothing is shown.
using TFNHtmlHelpA = HWND (*)(HWND hwndCaller, const AnsiChar* pszFile, UINT uCommand, DWORD_PTR dwData);
using TFNHtmlHelpW = HWND (*)(HWND hwndCaller, const WideChar* pszFile, UINT uCommand, DWORD_PTR dwData);

// The engine's 8-bit entry point "HtmlHelpA"; null while no engine is loaded.
QUILL_API extern TFNHtmlHelpA HtmlHelpA;
// The engine's UTF-16 entry point "HtmlHelpW"; null while no engine is loaded.
QUILL_API extern TFNHtmlHelpW HtmlHelpW;
// The same as HtmlHelpW: the routine OpenHtmlHelp calls.
QUILL_API extern TFNHtmlHelpW HtmlHelp;

// Shows `FileName` through the help engine: HtmlHelp(0, FileName, Command,
// Data). Returns -1 (all bits set) when the engine answered with a window
// handle, 0 when it answered 0 (nothing could be shown: a missing file or
// topic, an unknown command, no viewer).
// Loads the engine first when it is not loaded. Raises EHtmlHelpError
// "Can't load Library 'hhctrl.ocx'" when that fails (the name of the Windows
// engine, whatever file was looked for); every later call tries again.
QUILL_API int32_t OpenHtmlHelp(const UnicodeString& FileName, uint32_t Command, uint32_t Data);

// Shows the contents of the classic help file `FileName` and returns the
// help viewer's answer (non-zero: shown). Deliberately ignores `Command` and
// `Data`: it always asks for the contents (HELP_CONTENTS, 3).
// Linux has no classic help viewer: the result is 0 unless a viewer command
// is configured in $QUILL_WINHELP_COMMAND (split like shell words, the file
// appended) and the file exists and the command starts. Never raises.
QUILL_API int32_t OpenWinHelp(const UnicodeString& FileName, uint32_t Command, uint32_t Data);

}  // namespace quill::Ghtmlhlp
