// Starting programs and opening files with their default application.
//
// An executable file is started directly, its parameters split into words
// the way a POSIX shell splits them (quotes and backslashes, no expansion),
// with the given directory as its working directory. Any other existing file
// or folder, and any URL ("scheme:..."), is handed to the desktop's opener:
// the command named by the environment variable QUILL_OPEN_COMMAND when it is
// set and not empty (itself split like parameters, the file appended as the
// last word), else `xdg-open`.
//
//   RunProgram(u"/bin/sh", u"-c 'exit 3'", u"/tmp", true);   // true: started and ended
//   RunProgram(u"/no/such/file", u"", u"", false);           // false: cannot start
#pragma once

#include <cstdint>
#include <functional>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// Lets the application process its pending events while RunProgram waits.
using TProcessMessagesHook = std::function<void()>;

// Installs the hook a waiting RunProgramEx calls between its polls of the
// child's state (a UI layer installs its event processing here); an empty
// function removes it. Returns the previous hook. Process-wide and not
// guarded: install it from the thread that runs the application's events.
QUILL_API TProcessMessagesHook SetProcessMessagesHook(TProcessMessagesHook Hook);

// RunProgramEx with show mode 2.
QUILL_API bool RunProgram(const UnicodeString& FileName, const UnicodeString& Params,
                          const UnicodeString& Directory, bool Wait);

// Starts `FileName` (see above) and returns whether it started.
// - A name without '/' is looked for on PATH first, then in the current
//   directory; other relative names are relative to the current directory
//   (not to `Directory`).
// - `Params` is passed to an executable; the opener gets only the file.
// - `Directory`, when not empty, is the child's working directory; a
//   directory that cannot be entered makes the start fail.
// - `ShowCmd` is accepted for the callers' sake and has no effect here.
// - Without `Wait` it returns true as soon as the child runs. With `Wait` it
//   asks for the child's state without pausing and, between the rounds,
//   calls the installed hook (or yields the processor when there is none);
//   it returns true once the child has ended. The exit code is not reported.
// Returns false, and starts nothing, when the file does not exist, the name
// is empty, the directory cannot be entered, or the program or the opener
// cannot be executed. Never raises.
QUILL_API bool RunProgramEx(const UnicodeString& FileName, const UnicodeString& Params,
                            const UnicodeString& Directory, int32_t ShowCmd, bool Wait);

}  // namespace quill::Gutils
