// TFileStream: a stream over a POSIX file descriptor.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "quill/rtl/exception.h"
#include "quill/rtl/streams.h"
#include "quill/rtl/unicode.h"

namespace quill {

namespace {

// The system's text for `err`, without the trailing period or line break
// some systems add, so that it reads well after "Cannot open file "...". ".
UnicodeString SystemErrorText(int err) {
  char buf[256];
  // GNU strerror_r: returns a pointer to the text (possibly static).
  const char* text = strerror_r(err, buf, sizeof buf);
  std::string s(text ? text : "");
  while (!s.empty() && (s.back() == '.' || s.back() == '\n' || s.back() == '\r' || s.back() == ' ')) {
    s.pop_back();
  }
  return Utf8ToUnicode(s);
}

// The full absolute path of `name` with "." and ".." resolved lexically, as
// the error messages show it.
UnicodeString ExpandedName(const std::string& name) {
  std::error_code ec;
  std::filesystem::path p = std::filesystem::absolute(std::filesystem::path(name), ec);
  if (ec) return Utf8ToUnicode(name);
  return Utf8ToUnicode(p.lexically_normal().string());
}

// Read and write move at most this much per system call.
constexpr int64_t kMaxTransfer = int64_t{1} << 30;

}  // namespace

TFileStream::TFileStream(const std::string& file_name, uint16_t mode) : file_name_(file_name) {
  if ((mode & 0xFF00) == fmCreate) {
    fd_ = ::open(file_name.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd_ < 0) {
      const int err = errno;
      throw EFCreateError(rtlmsg::SFCreateErrorEx, {ExpandedName(file_name), SystemErrorText(err)});
    }
    return;
  }
  int flags = O_RDONLY;
  switch (mode & 0x3) {
    case fmOpenWrite: flags = O_WRONLY; break;
    case fmOpenReadWrite: flags = O_RDWR; break;
    default: break;
  }
  // Share modes (fmShareDenyWrite...) have no POSIX counterpart and are
  // accepted without effect.
  fd_ = ::open(file_name.c_str(), flags | O_CLOEXEC);
  if (fd_ < 0) {
    const int err = errno;
    throw EFOpenError(rtlmsg::SFOpenErrorEx, {ExpandedName(file_name), SystemErrorText(err)});
  }
  // Opening a directory succeeds on POSIX but reading it fails later; report
  // it now the way a failed open is reported.
  struct stat st {};
  if (::fstat(fd_, &st) == 0 && S_ISDIR(st.st_mode)) {
    ::close(fd_);
    fd_ = -1;
    throw EFOpenError(rtlmsg::SFOpenErrorEx, {ExpandedName(file_name), SystemErrorText(EISDIR)});
  }
}

TFileStream::~TFileStream() {
  if (fd_ >= 0) ::close(fd_);
}

int64_t TFileStream::Read(void* buffer, int64_t count) {
  auto* out = static_cast<uint8_t*>(buffer);
  int64_t done = 0;
  while (done < count) {
    const ssize_t n = ::read(fd_, out + done, static_cast<size_t>(std::min(count - done, kMaxTransfer)));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += n;
  }
  return done;
}

int64_t TFileStream::Write(const void* buffer, int64_t count) {
  const auto* in = static_cast<const uint8_t*>(buffer);
  int64_t done = 0;
  while (done < count) {
    const ssize_t n = ::write(fd_, in + done, static_cast<size_t>(std::min(count - done, kMaxTransfer)));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += n;
  }
  return done;
}

int64_t TFileStream::Seek(int64_t offset, TSeekOrigin origin) {
  int whence = SEEK_SET;
  if (origin == soCurrent) whence = SEEK_CUR;
  if (origin == soEnd) whence = SEEK_END;
  // -1 when the system refuses (e.g. a negative resulting position).
  return static_cast<int64_t>(::lseek(fd_, static_cast<off_t>(offset), whence));
}

int64_t TFileStream::Size() {
  struct stat st {};
  if (::fstat(fd_, &st) != 0) return TStream::Size();
  return static_cast<int64_t>(st.st_size);
}

void TFileStream::SetSize(int64_t new_size) {
  if (new_size < 0 || ::ftruncate(fd_, static_cast<off_t>(new_size)) != 0) {
    throw EWriteError(rtlmsg::SWriteError);
  }
  // As with memory streams, a position beyond the new end moves to the end.
  if (Position() > new_size) Seek(new_size, soBeginning);
}

}  // namespace quill
