// Starting child processes without a shell, shared by the program starter
// (RunProgramEx), the help launcher and its viewer plugin.
//
// Nothing here raises: a child that cannot be started is an empty optional.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace quill::Gutils::internal {

// Starts `args[0]` with the arguments `args` (searched on PATH when
// `search_path`, else taken as a path), in the working directory `dir` when
// not empty, with no blocked signals and default SIGPIPE handling. The
// child's id, or nullopt when it could not be started (an empty `args` too).
[[nodiscard]] std::optional<pid_t> Spawn(const std::vector<std::string>& args, const std::string& dir,
                                         bool search_path);

// Remembers a child that nobody waits for; it is reaped once it has ended by
// a later call of ReapEndedChildren. Thread-safe.
void ForgetChild(pid_t pid);

// Reaps the remembered children that have ended. Thread-safe.
void ReapEndedChildren();

// The words of the command in environment variable `variable`, split like
// shell words (see shellwords.h); empty when the variable is unset or blank.
[[nodiscard]] std::vector<std::string> ConfiguredCommand(const char* variable);

// The desktop's opener: QUILL_OPEN_COMMAND's words when set and not blank,
// else {"xdg-open"}. The file to open is appended as the last word.
[[nodiscard]] std::vector<std::string> OpenerCommand();

// Starts `command` with `file` appended as the last word (the command
// searched on PATH), without waiting: the child is remembered and reaped
// later. The child's id, or nullopt when `command` is empty or cannot be
// started.
[[nodiscard]] std::optional<pid_t> StartDetached(std::vector<std::string> command, const std::string& file);

}  // namespace quill::Gutils::internal
