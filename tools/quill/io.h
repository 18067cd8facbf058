// The quill tool's error type, exit statuses and checked standard output.
//
// Every command reports a failure by throwing ToolError; main() prints
// "quill: MESSAGE" on standard error and exits with its status. Everything a
// command prints goes through Stdout() (std::cout is routed through the same
// checked buffer), and main() flushes it at the end: a write that fails, as
// on a full disk or `> /dev/full`, ends the run with status 1 and the reason.
#pragma once

#include <ostream>
#include <stdexcept>
#include <string>

namespace quilltool {

// Exit statuses of every command.
inline constexpr int kExitDone = 0;
inline constexpr int kExitDataError = 1;  // a file could not be read or written, or its data is bad
inline constexpr int kExitUsage = 2;      // wrong command line, or an input in the wrong format

// A failure that ends the command: `status` becomes the exit status, `what()`
// the message (without the "quill: " prefix, which main() adds).
class ToolError : public std::runtime_error {
 public:
  ToolError(int status, const std::string& message) : std::runtime_error(message), status_(status) {}
  [[nodiscard]] int Status() const { return status_; }

 private:
  int status_;
};

// The checked standard output (the same stream as std::cout once
// InstallCheckedStdout() ran). Output is buffered; a failed write is
// remembered and later output is dropped.
std::ostream& Stdout();

// Routes std::cout through the checked buffer; main() calls it first.
void InstallCheckedStdout();

// Throws ToolError(kExitDataError, "cannot write standard output: REASON")
// when a write to standard output has failed so far. Long-running commands
// call it now and then to stop early.
void CheckStdout();

// Writes out what is buffered, then CheckStdout().
void FlushStdout();

// strerror(err) as a std::string.
std::string ErrorText(int err);

}  // namespace quilltool
