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

// Routes std::cout through the checked buffer; main() calls it first. It also
// notes which of the standard descriptors 0, 1 and 2 the caller closed and
// opens /dev/null on them, so that no file the tool opens later takes their
// place: reading "-" then still reports a closed standard input, and output
// to a closed standard output is an error.
void InstallCheckedStdout();

// True when the tool started with standard input closed.
bool StdinWasClosed();

// True when standard output is a regular file (not a terminal, pipe, socket
// or device such as /dev/null).
bool StdoutIsRegularFile();

// Throws ToolError(kExitDataError, "cannot write standard output: REASON")
// when a write to standard output has failed so far. Long-running commands
// call it now and then to stop early.
void CheckStdout();

// Writes out what is buffered, then CheckStdout().
void FlushStdout();

// strerror(err) as a std::string.
std::string ErrorText(int err);

}  // namespace quilltool

namespace quilltool {

// A file read from start to end, or standard input for "-". Reads go on until
// the system reports the end, whatever size it gave for the file (files in
// /proc and /sys report 0 or a wrong size).
class InputFile {
 public:
  // Opens `name`. Throws ToolError(kExitDataError, ...) when it cannot be
  // opened, is a directory, or (for "-") standard input is closed.
  explicit InputFile(const std::string& name);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  // Reads up to `n` bytes; 0 only at the end. A read error throws
  // ToolError(kExitDataError, "cannot read NAME: REASON").
  size_t Read(void* buffer, size_t n);
  // Reads everything left.
  std::string ReadAll();
  // Bytes read so far.
  [[nodiscard]] int64_t Consumed() const { return consumed_; }
  // The size a regular file reports (a guide for progress only), else -1.
  [[nodiscard]] int64_t SizeHint() const { return size_hint_; }
  // The name for messages: the file name, or "standard input".
  [[nodiscard]] const std::string& Name() const { return display_; }

 private:
  int fd_ = -1;
  bool owned_ = false;
  int64_t consumed_ = 0;
  int64_t size_hint_ = -1;
  std::string display_;
};

// An output file, or standard output for "-", written so that nothing is
// lost or damaged:
// - a regular file is written to a new temporary file in the same folder
//   (".quill-XXXXXX", created exclusively) which replaces it on Commit(); an
//   existing file keeps its mode (and its owner when the system allows); a
//   file with more than one hard link is rewritten in place on Commit(), so
//   that every link sees the new contents;
// - a symbolic link is followed: its target is the file written, the link
//   stays;
// - anything else that exists (a device such as /dev/null, a FIFO, a
//   socket) is opened and written directly, never replaced;
// - an existing file without write permission (for anyone, or for the
//   caller) is refused unless `force`;
// - the temporary file is removed when the object is destroyed without
//   Commit(), and on SIGINT, SIGTERM and SIGHUP.
// Every failure throws ToolError naming the file and the reason.
class OutputFile {
 public:
  OutputFile(const std::string& name, bool force);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(const void* buffer, size_t n);
  // Finishes the file: flushes, closes and moves it into place.
  void Commit();
  [[nodiscard]] const std::string& Name() const { return display_; }

 private:
  void Abandon() noexcept;

  std::string display_;  // the name as given, for messages
  std::string target_;   // the file finally written (symbolic links resolved)
  std::string temp_;     // the temporary file, when one is used
  int fd_ = -1;
  bool to_stdout_ = false;
  bool in_place_copy_ = false;  // hard-linked target: copy over it on Commit()
  bool committed_ = false;
  bool had_target_ = false;
  unsigned target_mode_ = 0;
  unsigned target_uid_ = 0, target_gid_ = 0;
};

}  // namespace quilltool
