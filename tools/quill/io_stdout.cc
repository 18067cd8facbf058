// The checked standard output: a std::streambuf writing to file descriptor 1
// with a 64 KiB buffer, remembering the first failed write.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <streambuf>

#include "tools/quill/io.h"

namespace quilltool {
namespace {

class CheckedOutBuf : public std::streambuf {
 public:
  CheckedOutBuf() { setp(buffer_, buffer_ + sizeof buffer_); }
  int Error() const { return error_; }

 protected:
  int_type overflow(int_type ch) override {
    if (!Drain()) return traits_type::eof();
    if (!traits_type::eq_int_type(ch, traits_type::eof())) {
      *pptr() = traits_type::to_char_type(ch);
      pbump(1);
    }
    return traits_type::not_eof(ch);
  }
  std::streamsize xsputn(const char* s, std::streamsize n) override {
    if (error_ != 0) return 0;
    if (n <= epptr() - pptr()) {
      std::memcpy(pptr(), s, static_cast<size_t>(n));
      pbump(static_cast<int>(n));
      return n;
    }
    if (!Drain()) return 0;
    if (n >= static_cast<std::streamsize>(sizeof buffer_)) return WriteAll(s, static_cast<size_t>(n)) ? n : 0;
    std::memcpy(pptr(), s, static_cast<size_t>(n));
    pbump(static_cast<int>(n));
    return n;
  }
  int sync() override { return Drain() ? 0 : -1; }

 private:
  bool Drain() {
    const size_t n = static_cast<size_t>(pptr() - pbase());
    setp(buffer_, buffer_ + sizeof buffer_);
    return error_ == 0 && WriteAll(buffer_, n);
  }
  bool WriteAll(const char* p, size_t n) {
    if (closed_ && n > 0) {
      error_ = EBADF;
      return false;
    }
    while (n > 0) {
      const ssize_t w = ::write(STDOUT_FILENO, p, n);
      if (w < 0 && errno == EINTR) continue;
      if (w <= 0) {
        error_ = w < 0 ? errno : EIO;
        return false;
      }
      p += w;
      n -= static_cast<size_t>(w);
    }
    return true;
  }

  char buffer_[1 << 16];
  int error_ = 0;
  bool closed_ = false;

 public:
  // Standard output was closed by the caller: the first byte written fails.
  void MarkClosed() { closed_ = true; }
};

bool g_stdin_closed = false;
bool g_stdout_closed = false;

// Never destroyed: std::cout may still be flushed while the program exits.
CheckedOutBuf& Buf() {
  static auto* buf = new CheckedOutBuf;
  return *buf;
}

}  // namespace

std::ostream& Stdout() { return std::cout; }

bool StdinWasClosed() { return g_stdin_closed; }

bool StdoutIsRegularFile() {
  struct stat st {};
  return !g_stdout_closed && fstat(STDOUT_FILENO, &st) == 0 && S_ISREG(st.st_mode);
}

void InstallCheckedStdout() {
  bool closed[3] = {};
  for (int fd = 0; fd < 3; ++fd) closed[fd] = fcntl(fd, F_GETFD) < 0 && errno == EBADF;
  for (int fd = 0; fd < 3; ++fd) {
    // open() takes the lowest free descriptor: the closed one.
    if (closed[fd] && ::open("/dev/null", fd == 0 ? O_RDONLY : O_WRONLY) != fd) break;
  }
  g_stdin_closed = closed[0];
  g_stdout_closed = closed[1];
  if (closed[1]) Buf().MarkClosed();
  std::ios::sync_with_stdio(false);
  std::cout.rdbuf(&Buf());
}

void CheckStdout() {
  if (Buf().Error() != 0) {
    throw ToolError(kExitDataError, "cannot write standard output: " +
                                        (g_stdout_closed ? std::string("it is closed") : ErrorText(Buf().Error())));
  }
  if (!std::cout) throw ToolError(kExitDataError, "cannot write standard output");
}

void FlushStdout() {
  std::cout.flush();
  CheckStdout();
}

std::string ErrorText(int err) { return std::strerror(err); }

}  // namespace quilltool
