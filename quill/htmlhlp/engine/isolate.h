// Running the reading of an untrusted compiled help file in a child process.
//
// chmlib trusts the numbers in a file more than it should (a forged header
// can make it divide by zero), so the engine reads compiled help files in a
// forked child: a file that crashes the reader takes down only the child, and
// the host application sees "nothing shown".
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace quill::Ghtmlhlp::engine {

// Runs `work` in a forked child (CPU time limited to kIsolatedCpuSeconds)
// and returns the text it produced, or nullopt when it produced none (or a
// text holding a zero byte), or the child crashed, was killed or could not be
// started. The child leaves with
// _exit, so the host's exit handlers never run in it. The host's SIGCHLD
// setting does not matter: the result counts once the child has handed it
// over completely.
// REQUIRES: `work` uses nothing that another thread of the host could hold
// locked across fork() except malloc (which glibc keeps usable in the child).
[[nodiscard]] std::optional<std::string> RunIsolated(const std::function<std::optional<std::string>()>& work);

inline constexpr int kIsolatedCpuSeconds = 60;

}  // namespace quill::Ghtmlhlp::engine
