// Input files read to their end, and output files written safely (io.h).
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <string>

#include "tools/quill/io.h"

namespace quilltool {
namespace {

std::string Reason(int err) { return ErrorText(err); }

// ---- removing the temporary file on a signal ----------------------------

// The temporary file to remove if the run is stopped; empty when none. Only
// async-signal-safe calls touch it from the handler.
char g_temp_path[PATH_MAX + 1];
volatile sig_atomic_t g_temp_set = 0;

extern "C" void RemoveTempAndDie(int sig) {
  if (g_temp_set) unlink(g_temp_path);
  signal(sig, SIG_DFL);
  raise(sig);
}

void WatchTemp(const std::string& path) {
  static bool installed = false;
  if (path.size() > PATH_MAX) return;
  g_temp_set = 0;
  std::memcpy(g_temp_path, path.c_str(), path.size() + 1);
  g_temp_set = 1;
  if (installed) return;
  installed = true;
  struct sigaction sa {};
  sa.sa_handler = RemoveTempAndDie;
  sigemptyset(&sa.sa_mask);
  for (int sig : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction old {};
    // A signal the caller ignores (nohup, a background job) stays ignored.
    if (sigaction(sig, nullptr, &old) == 0 && old.sa_handler == SIG_IGN) continue;
    sigaction(sig, &sa, nullptr);
  }
}

void UnwatchTemp() { g_temp_set = 0; }

// Follows symbolic links from `path` to the file they finally name (which
// may not exist yet).
std::string ResolveLinks(std::string path, const std::string& display) {
  for (int depth = 0; depth < 40; ++depth) {
    struct stat st {};
    if (lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return path;
    char buf[PATH_MAX];
    const ssize_t n = readlink(path.c_str(), buf, sizeof buf);
    if (n < 0) throw ToolError(kExitDataError, "cannot write " + display + ": " + Reason(errno));
    std::string next(buf, static_cast<size_t>(n));
    if (next.empty() || next[0] != '/') {
      const size_t slash = path.rfind('/');
      if (slash != std::string::npos) next = path.substr(0, slash + 1) + next;
    }
    path = next;
  }
  throw ToolError(kExitDataError, "cannot write " + display + ": " + Reason(ELOOP));
}

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

bool WriteAllFd(int fd, const char* p, size_t n) {
  while (n > 0) {
    const ssize_t w = ::write(fd, p, n);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) {
      if (w == 0) errno = EIO;
      return false;
    }
    p += w;
    n -= static_cast<size_t>(w);
  }
  return true;
}

}  // namespace

// ---- InputFile -----------------------------------------------------------

InputFile::InputFile(const std::string& name) {
  struct stat st {};
  if (name == "-") {
    display_ = "standard input";
    if (StdinWasClosed() || fstat(STDIN_FILENO, &st) != 0) {
      throw ToolError(kExitDataError, "cannot read standard input: it is closed");
    }
    fd_ = STDIN_FILENO;
  } else {
    display_ = name;
    if (name.empty()) throw ToolError(kExitUsage, "the input file name is empty");
    fd_ = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (fd_ < 0) throw ToolError(kExitDataError, "cannot open " + name + ": " + Reason(errno));
    owned_ = true;
    if (fstat(fd_, &st) != 0) {
      const int err = errno;
      ::close(fd_);
      throw ToolError(kExitDataError, "cannot read " + name + ": " + Reason(err));
    }
  }
  if (S_ISDIR(st.st_mode)) {
    if (owned_) ::close(fd_);
    throw ToolError(kExitDataError, "cannot read " + display_ + ": it is a directory");
  }
  if (S_ISREG(st.st_mode)) size_hint_ = st.st_size;
}

InputFile::~InputFile() {
  if (owned_) ::close(fd_);
}

size_t InputFile::Read(void* buffer, size_t n) {
  for (;;) {
    const ssize_t r = ::read(fd_, buffer, n);
    if (r >= 0) {
      consumed_ += r;
      return static_cast<size_t>(r);
    }
    if (errno == EINTR) continue;
    throw ToolError(kExitDataError, "cannot read " + display_ + ": " + Reason(errno));
  }
}

std::string InputFile::ReadAll() {
  std::string data;
  // A regular file's size is a good first guess; the loop does not rely on it.
  if (size_hint_ > 0) data.reserve(static_cast<size_t>(size_hint_) + 1);
  size_t used = 0;
  for (;;) {
    if (data.size() - used < (1 << 16)) data.resize(std::max(data.capacity(), used + (size_t{1} << 16)));
    const size_t got = Read(data.data() + used, data.size() - used);
    if (got == 0) break;
    used += got;
  }
  data.resize(used);
  return data;
}

// ---- OutputFile ----------------------------------------------------------

OutputFile::OutputFile(const std::string& name, bool force) : display_(name) {
  if (name == "-") {
    display_ = "standard output";
    to_stdout_ = true;
    return;
  }
  if (name.empty()) throw ToolError(kExitUsage, "the output file name is empty");
  target_ = ResolveLinks(name, display_);

  struct stat st {};
  if (stat(target_.c_str(), &st) == 0) {
    if (S_ISDIR(st.st_mode)) throw ToolError(kExitDataError, "cannot write " + display_ + ": it is a directory");
    if (!S_ISREG(st.st_mode)) {
      // Devices, FIFOs and the like are written, never replaced.
      fd_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
      if (fd_ < 0) throw ToolError(kExitDataError, "cannot write " + display_ + ": " + Reason(errno));
      return;
    }
    const bool no_write_bits = (st.st_mode & 0222) == 0;
    if (!force && (no_write_bits || access(target_.c_str(), W_OK) != 0)) {
      throw ToolError(kExitDataError, "cannot write " + display_ + ": it is write-protected (--force replaces it)");
    }
    had_target_ = true;
    target_mode_ = st.st_mode & 07777;
    target_uid_ = st.st_uid;
    target_gid_ = st.st_gid;
    in_place_copy_ = st.st_nlink > 1;
  } else if (errno != ENOENT) {
    throw ToolError(kExitDataError, "cannot write " + display_ + ": " + Reason(errno));
  }

  const std::string folder = FolderOf(target_);
  std::string temp = folder + "/.quill-XXXXXX";
  fd_ = mkostemp(temp.data(), O_CLOEXEC);
  if (fd_ < 0) {
    throw ToolError(kExitDataError, "cannot write " + display_ + ": cannot create a temporary file in " + folder +
                                        ": " + Reason(errno));
  }
  temp_ = temp;
  WatchTemp(temp_);
}

OutputFile::~OutputFile() {
  if (!committed_) Abandon();
}

void OutputFile::Abandon() noexcept {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  if (!temp_.empty()) {
    ::unlink(temp_.c_str());
    UnwatchTemp();
    temp_.clear();
  }
}

void OutputFile::Write(const void* buffer, size_t n) {
  if (to_stdout_) {
    Stdout().write(static_cast<const char*>(buffer), static_cast<std::streamsize>(n));
    CheckStdout();
    return;
  }
  if (!WriteAllFd(fd_, static_cast<const char*>(buffer), n)) {
    throw ToolError(kExitDataError, "cannot write " + display_ + ": " + Reason(errno));
  }
}

void OutputFile::Commit() {
  if (to_stdout_) {
    FlushStdout();
    committed_ = true;
    return;
  }
  auto fail = [this](int err) {
    Abandon();
    return ToolError(kExitDataError, "cannot write " + display_ + ": " + Reason(err));
  };
  if (temp_.empty()) {  // written directly
    const int fd = fd_;
    fd_ = -1;
    committed_ = true;
    if (::close(fd) != 0) throw ToolError(kExitDataError, "cannot write " + display_ + ": " + Reason(errno));
    return;
  }
  mode_t mode = 0;
  if (had_target_) {
    mode = static_cast<mode_t>(target_mode_);
    // Keeps the owner when allowed (root); otherwise the file becomes the
    // caller's, as any newly written file.
    if (fchown(fd_, target_uid_, target_gid_) != 0) mode &= 0777;
  } else {
    const mode_t mask = umask(0);
    umask(mask);
    mode = 0666 & ~mask;
  }
  if (fchmod(fd_, mode) != 0) throw fail(errno);
  if (fsync(fd_) != 0 && errno != EINVAL) throw fail(errno);
  if (in_place_copy_) {
    // Every hard link keeps seeing the file: its contents are replaced.
    const int out = ::open(target_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (out < 0) throw fail(errno);
    char buf[1 << 16];
    bool ok = lseek(fd_, 0, SEEK_SET) == 0;
    for (ssize_t n; ok && (n = ::read(fd_, buf, sizeof buf)) != 0;) {
      if (n < 0) {
        if (errno == EINTR) continue;
        ok = false;
        break;
      }
      ok = WriteAllFd(out, buf, static_cast<size_t>(n));
    }
    const int err = errno;
    if (::close(out) != 0 && ok) throw fail(errno);
    if (!ok) throw fail(err);
    Abandon();
    committed_ = true;
    return;
  }
  if (::close(fd_) != 0) {
    fd_ = -1;
    throw fail(errno);
  }
  fd_ = -1;
  if (::rename(temp_.c_str(), target_.c_str()) != 0) throw fail(errno);
  UnwatchTemp();
  temp_.clear();
  committed_ = true;
}

}  // namespace quilltool
