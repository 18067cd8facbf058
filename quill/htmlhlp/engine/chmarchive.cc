// Compiled help files through chmlib; the extraction cache.
#include "quill/htmlhlp/engine/chmarchive.h"

#include <chm_lib.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "quill/htmlhlp/engine/chmsystem.h"
#include "quill/htmlhlp/engine/helpname.h"

namespace quill::Ghtmlhlp::engine {
namespace {

namespace fs = std::filesystem;

constexpr size_t kPiece = 64 * 1024;
constexpr uint64_t kMaxSystemSize = 1 << 20;  // "#SYSTEM" is a few kilobytes in practice
constexpr uint64_t kMaxMapSize = 16 << 20;    // "#IVB" and "#STRINGS": the context map

bool EndsWithNoCase(std::string_view text, std::string_view suffix) {
  if (text.size() < suffix.size()) return false;
  return strncasecmp(text.data() + text.size() - suffix.size(), suffix.data(), suffix.size()) == 0;
}

bool IsPage(std::string_view path) { return EndsWithNoCase(path, ".htm") || EndsWithNoCase(path, ".html"); }

// Creates each missing folder of `relative` (a safe object path's folders)
// below `base`, mode 0700.
bool MakeParents(const fs::path& base, std::string_view relative) {
  std::string current = base.string();
  size_t start = 1;
  for (;;) {
    const size_t slash = relative.find('/', start);
    if (slash == std::string_view::npos) return true;
    current.append("/").append(relative.substr(start, slash - start));
    if (mkdir(current.c_str(), 0700) != 0 && errno != EEXIST) return false;
    struct stat st {};
    if (lstat(current.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) return false;
    start = slash + 1;
  }
}

// Copies object `ui` into a new file `target` in pieces; false (and no file
// left) when it cannot be created or read completely.
bool WriteObject(chmFile* file, chmUnitInfo& ui, const std::string& target) {
  const int fd = open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (fd < 0) return false;
  std::vector<unsigned char> buffer(kPiece);
  uint64_t done = 0;
  bool ok = true;
  while (ok && done < ui.length) {
    const uint64_t want = std::min<uint64_t>(kPiece, ui.length - done);
    const LONGINT64 got = chm_retrieve_object(file, &ui, buffer.data(), done, static_cast<LONGINT64>(want));
    if (got <= 0 || static_cast<uint64_t>(got) > want) {
      ok = false;
      break;
    }
    size_t written = 0;
    while (written < static_cast<size_t>(got)) {
      const ssize_t w = write(fd, buffer.data() + written, static_cast<size_t>(got) - written);
      if (w < 0 && errno == EINTR) continue;
      if (w <= 0) {
        ok = false;
        break;
      }
      written += static_cast<size_t>(w);
    }
    done += static_cast<uint64_t>(got);
  }
  if (close(fd) != 0) ok = false;
  if (!ok) unlink(target.c_str());
  return ok;
}

struct TExtraction {
  fs::path folder;
  TExtractLimits limits;
  uint64_t total = 0;
  uint32_t objects = 0;
  uint32_t skipped = 0;
  bool failed = false;
};

int ExtractOne(chmFile* file, chmUnitInfo* ui, void* context) {
  auto& x = *static_cast<TExtraction*>(context);
  if (++x.objects > x.limits.MaxObjects) {
    x.failed = true;
    return CHM_ENUMERATOR_FAILURE;
  }
  // chmlib ends the path with a zero within its buffer; never trust that.
  const std::string_view path(ui->path, strnlen(ui->path, sizeof(ui->path)));
  if (!IsSafeObjectPath(path) || path.back() == '/' || ui->length > x.limits.MaxObjectSize) {
    ++x.skipped;
    return CHM_ENUMERATOR_CONTINUE;
  }
  if (ui->length > x.limits.MaxTotalSize - x.total) {
    x.failed = true;
    return CHM_ENUMERATOR_FAILURE;
  }
  x.total += ui->length;
  if (!MakeParents(x.folder, path) || !WriteObject(file, *ui, x.folder.string() + std::string(path))) ++x.skipped;
  return CHM_ENUMERATOR_CONTINUE;
}

struct TFirstPage {
  std::optional<std::string> path;
};

int FindFirstPage(chmFile*, chmUnitInfo* ui, void* context) {
  const std::string_view path(ui->path, strnlen(ui->path, sizeof(ui->path)));
  if (IsSafeObjectPath(path) && IsPage(path)) {
    static_cast<TFirstPage*>(context)->path = std::string(path);
    return CHM_ENUMERATOR_SUCCESS;
  }
  return CHM_ENUMERATOR_CONTINUE;
}

uint64_t Fnv1a(uint64_t hash, std::string_view bytes) {
  for (const char c : bytes) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 1099511628211ull;
  }
  return hash;
}

// Makes `dir` if missing; true when it is then a folder owned by the user
// that nobody else can enter.
bool PrivateFolder(const fs::path& dir) {
  if (mkdir(dir.c_str(), 0700) != 0 && errno != EEXIST) return false;
  struct stat st {};
  if (lstat(dir.c_str(), &st) != 0 || !S_ISDIR(st.st_mode) || st.st_uid != geteuid()) return false;
  if ((st.st_mode & 077) != 0 && chmod(dir.c_str(), 0700) != 0) return false;
  return true;
}

}  // namespace

bool IsCompiledHelpFile(const std::string& path) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  std::array<char, 4> head{};
  const ssize_t n = read(fd, head.data(), head.size());
  close(fd);
  return n == 4 && std::memcmp(head.data(), "ITSF", 4) == 0;
}

bool HasSaneHeaders(const std::string& path) {
  constexpr size_t kItsfSize = 0x58;  // through the directory's offset and length
  constexpr size_t kItspSize = 0x54;
  constexpr uint32_t kMinChunk = 256;
  constexpr uint32_t kMaxChunk = 64 * 1024;
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  struct stat st {};
  std::array<uint8_t, kItsfSize> itsf{};
  std::array<uint8_t, kItspSize> itsp{};
  bool ok = fstat(fd, &st) == 0 && st.st_size >= 0 &&
            pread(fd, itsf.data(), itsf.size(), 0) == static_cast<ssize_t>(itsf.size()) &&
            std::memcmp(itsf.data(), "ITSF", 4) == 0;
  auto u32 = [](const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) | (static_cast<uint32_t>(p[2]) << 16) |
           (static_cast<uint32_t>(p[3]) << 24);
  };
  auto u64 = [&u32](const uint8_t* p) { return static_cast<uint64_t>(u32(p)) | (static_cast<uint64_t>(u32(p + 4)) << 32); };
  if (ok) {
    const uint64_t size = static_cast<uint64_t>(st.st_size);
    const uint64_t dir_offset = u64(itsf.data() + 0x48);
    const uint64_t dir_len = u64(itsf.data() + 0x50);
    ok = dir_offset <= size && dir_len <= size - dir_offset && dir_len >= kItspSize &&
         pread(fd, itsp.data(), itsp.size(), static_cast<off_t>(dir_offset)) == static_cast<ssize_t>(itsp.size()) &&
         std::memcmp(itsp.data(), "ITSP", 4) == 0;
    if (ok) {
      const uint32_t header_len = u32(itsp.data() + 0x08);
      const uint32_t chunk = u32(itsp.data() + 0x10);
      const uint32_t chunks = u32(itsp.data() + 0x2C);  // the directory's chunk count
      ok = header_len >= kItspSize && header_len <= dir_len && chunk >= kMinChunk && chunk <= kMaxChunk &&
           static_cast<uint64_t>(chunk) * chunks <= dir_len - header_len;
    }
  }
  close(fd);
  return ok;
}

TChmArchive::TChmArchive(const std::string& path)
    : file_(HasSaneHeaders(path) ? chm_open(path.c_str()) : nullptr) {}

TChmArchive::~TChmArchive() {
  if (file_ != nullptr) chm_close(file_);
}

std::optional<std::string> TChmArchive::ResolveTopic(const std::string& topic) {
  if (file_ == nullptr || !IsSafeObjectPath(topic) || topic.back() == '/') return std::nullopt;
  chmUnitInfo ui{};
  if (chm_resolve_object(file_, topic.c_str(), &ui) != CHM_RESOLVE_SUCCESS) return std::nullopt;
  const std::string_view stored(ui.path, strnlen(ui.path, sizeof(ui.path)));
  if (!IsSafeObjectPath(stored) || stored.back() == '/') return std::nullopt;
  return std::string(stored);
}

std::optional<std::vector<uint8_t>> TChmArchive::ReadObject(const char* path, uint64_t max_size) {
  if (file_ == nullptr) return std::nullopt;
  chmUnitInfo ui{};
  if (chm_resolve_object(file_, path, &ui) != CHM_RESOLVE_SUCCESS || ui.length > max_size) return std::nullopt;
  std::vector<uint8_t> data(ui.length);
  if (data.empty()) return data;
  const LONGINT64 got = chm_retrieve_object(file_, &ui, data.data(), 0, static_cast<LONGINT64>(data.size()));
  if (got <= 0) return std::nullopt;
  data.resize(std::min<size_t>(data.size(), static_cast<size_t>(got)));
  return data;
}

std::optional<std::string> TChmArchive::DefaultTopic() {
  if (file_ == nullptr) return std::nullopt;
  if (const std::optional<std::vector<uint8_t>> system = ReadObject("/#SYSTEM", kMaxSystemSize)) {
    if (std::optional<std::string> named = DefaultTopicFromSystem(*system)) {
      if (std::optional<std::string> stored = ResolveTopic(*named)) return stored;
    }
  }
  for (const char* guess : {"/index.htm", "/index.html", "/default.htm", "/default.html"}) {
    if (std::optional<std::string> stored = ResolveTopic(guess)) return stored;
  }
  TFirstPage first;
  chm_enumerate(file_, CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, FindFirstPage, &first);
  return first.path;
}

std::optional<std::string> TChmArchive::ContextTopic(uint32_t context) {
  const std::optional<std::vector<uint8_t>> ivb = ReadObject("/#IVB", kMaxMapSize);
  const std::optional<std::vector<uint8_t>> strings = ReadObject("/#STRINGS", kMaxMapSize);
  if (!ivb || !strings) return std::nullopt;
  std::optional<std::string> name = ContextFileName(*ivb, *strings, context);
  if (!name) return std::nullopt;
  if (const size_t hash = name->find('#'); hash != std::string::npos) name->resize(hash);
  std::replace(name->begin(), name->end(), '\\', '/');
  std::string_view rest = *name;
  for (;;) {
    while (!rest.empty() && rest.front() == '/') rest.remove_prefix(1);
    if (rest.empty()) return std::nullopt;
    std::string candidate(1, '/');
    candidate.append(rest);  // appended, not "/" + string: GCC 12 misreports that form at -O3
    if (std::optional<std::string> stored = ResolveTopic(candidate)) return stored;
    const size_t slash = rest.find('/');
    if (slash == std::string_view::npos) return std::nullopt;
    rest.remove_prefix(slash + 1);
  }
}

bool TChmArchive::ExtractTo(const fs::path& folder, const TExtractLimits& limits, uint32_t* skipped) {
  if (file_ == nullptr) return false;
  TExtraction x{folder, limits};
  const int rc = chm_enumerate(file_, CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, ExtractOne, &x);
  if (skipped != nullptr) *skipped = x.skipped;
  return rc != 0 && !x.failed;
}

std::optional<fs::path> HelpCacheRoot() {
  fs::path base;
  if (const char* xdg = std::getenv("XDG_CACHE_HOME"); xdg != nullptr && xdg[0] == '/') {
    base = xdg;
  } else if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') {
    base = fs::path(home) / ".cache";
  } else {
    return std::nullopt;
  }
  std::error_code ec;
  fs::create_directories(base, ec);  // the user's own cache folder: ordinary permissions
  const fs::path quill = base / "quill";
  const fs::path help = quill / "help";
  if (!PrivateFolder(quill) || !PrivateFolder(help)) return std::nullopt;
  return help;
}

std::optional<fs::path> ExtractedFolder(TChmArchive& archive, const std::string& path, const struct stat& st,
                                        const fs::path& root, const TExtractLimits& limits) {
  uint64_t key = 14695981039346656037ull;
  key = Fnv1a(key, path);
  key = Fnv1a(key, std::string_view("\0", 1));
  key = Fnv1a(key, std::to_string(st.st_size) + ":" + std::to_string(st.st_mtim.tv_sec) + "." +
                       std::to_string(st.st_mtim.tv_nsec) + ":" + std::to_string(st.st_ino));
  char name[17];
  std::snprintf(name, sizeof(name), "%016llx", static_cast<unsigned long long>(key));
  const fs::path folder = root / name;

  struct stat existing {};
  if (lstat(folder.c_str(), &existing) == 0) {
    if (S_ISDIR(existing.st_mode) && existing.st_uid == geteuid()) return folder;
    return std::nullopt;  // something else has the name: leave it alone
  }
  std::string temp = (root / ".extract-XXXXXX").string();
  if (mkdtemp(temp.data()) == nullptr) return std::nullopt;
  std::error_code ec;
  if (!archive.ExtractTo(temp, limits)) {
    fs::remove_all(temp, ec);
    return std::nullopt;
  }
  if (rename(temp.c_str(), folder.c_str()) != 0) {
    // Another process finished the same extraction first: use its folder.
    fs::remove_all(temp, ec);
    if (lstat(folder.c_str(), &existing) != 0 || !S_ISDIR(existing.st_mode)) return std::nullopt;
  }
  return folder;
}

}  // namespace quill::Ghtmlhlp::engine
