// Version information read from PE files on disk.
#include "quill/utils/versioninfo.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "quill/rtl/unicode.h"
#include "quill/utils/internal/module.h"
#include "quill/utils/internal/pe_reader.h"

namespace quill::Gutils {
namespace {

// A file read with pread; only the few structures the reader asks for are
// read, so large files cost no more than small ones.
class FileSource final : public internal::ByteSource {
 public:
  explicit FileSource(const std::string& path) : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    struct stat st {};
    if (fd_ >= 0 && fstat(fd_, &st) == 0 && S_ISREG(st.st_mode)) size_ = static_cast<uint64_t>(st.st_size);
  }
  ~FileSource() override {
    if (fd_ >= 0) close(fd_);
  }
  FileSource(const FileSource&) = delete;
  FileSource& operator=(const FileSource&) = delete;

  [[nodiscard]] bool Ok() const { return fd_ >= 0 && size_ > 0; }
  [[nodiscard]] uint64_t Size() const override { return size_; }
  [[nodiscard]] bool ReadAt(uint64_t offset, void* dst, size_t n) const override {
    if (offset > size_ || size_ - offset < n) return false;
    auto* out = static_cast<char*>(dst);
    while (n > 0) {
      const ssize_t got = pread(fd_, out, n, static_cast<off_t>(offset));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return false;
      out += got;
      offset += static_cast<uint64_t>(got);
      n -= static_cast<size_t>(got);
    }
    return true;
  }

 private:
  int fd_ = -1;
  uint64_t size_ = 0;
};

}  // namespace

bool GetVersionInfo(const UnicodeString& FileName, TGVersionInfoRec& Rec) {
  if (FileName.empty()) return false;
  FileSource file(UnicodeToUtf8(FileName));
  return file.Ok() && internal::ReadVersionInfo(file, Rec);
}

bool GetVersionTranslation(const UnicodeString& FileName, UnicodeString& Translation) {
  if (FileName.empty()) return false;
  FileSource file(UnicodeToUtf8(FileName));
  return file.Ok() && internal::ReadVersionTranslation(file, Translation);
}

bool GetModuleVersionInfo(int32_t Module, TGVersionInfoRec& Rec) {
  // Module names are cut at 260 units, as the system hands them over.
  constexpr size_t kMaxPath = 260;
  UnicodeString name = Utf8ToUnicode(internal::ModuleFileName(Module));
  if (name.size() > kMaxPath) name.resize(kMaxPath);
  return GetVersionInfo(name, Rec);
}

}  // namespace quill::Gutils
