// Binding the help engine: where its library is looked for, loading it with
// its two entry points, unloading it; and the classic help viewer.
#pragma once

#include <string>

#include "quill/htmlhlp/htmlhelp_api.h"
#include "quill/rtl/types.h"

namespace quill::Ghtmlhlp::internal {

// File name of the engine library on Linux.
inline constexpr char kEngineFileName[] = "libquill23-hhctrl.so";
// The name the failure message gives: the Windows engine's.
inline constexpr char16_t kEngineDisplayName[] = u"hhctrl.ocx";

// The engine library to load: $QUILL_HELP_ENGINE when set and not empty,
// else kEngineFileName in the folder of the object holding the library's
// code (libquill23.so, or the program it is linked into).
[[nodiscard]] std::string EnginePath();

// Loads the engine when it is not loaded and binds HtmlHelpA, HtmlHelpW and
// HtmlHelp. False, with everything cleared, when the library cannot be loaded
// or lacks either entry point. True at once when already loaded.
bool LoadHtmlHelp();

// Unloads the engine when loaded and clears the three variables and the
// handle. True when nothing was loaded or the library was closed.
bool UnloadHtmlHelp();

// Whether the engine library is loaded (its handle is set).
[[nodiscard]] bool HtmlHelpLoaded();

// The classic help viewer: with `uCommand` HELP_CONTENTS it starts the
// command of $QUILL_WINHELP_COMMAND with the file appended and returns 1;
// 0 when no command is configured, the file does not exist, the command does
// not start, or another command is asked for.
int32_t WinHelpW(HWND hWndMain, const UnicodeString& lpszHelp, UINT uCommand, DWORD_PTR dwData);

}  // namespace quill::Ghtmlhlp::internal
