// A compiled help file opened with chmlib, and the extraction of its pages
// into a private cache folder.
//
// The file's contents are untrusted: object paths are checked with
// IsSafeObjectPath before anything is written, every object is read in
// bounded pieces, files are created fresh (never followed through links),
// and sizes and counts are capped by TExtractLimits.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct chmFile;

namespace quill::Ghtmlhlp::engine {

// Whether the file starts with the compiled help signature "ITSF".
[[nodiscard]] bool IsCompiledHelpFile(const std::string& path);

struct TExtractLimits {
  uint64_t MaxObjectSize = 64ull << 20;  // larger objects are skipped
  uint64_t MaxTotalSize = 512ull << 20;  // more in all fails the extraction
  uint32_t MaxObjects = 100000;          // more objects fail the extraction
};

// Whether the headers of the compiled help file `path` are in bounds before
// chmlib reads them: the "ITSF" header, the "ITSP" directory header inside
// the file, a directory chunk size of 256 bytes to 64 KiB (chmlib allocates
// one chunk at once; real files use 4 or 8 KiB) and directory chunks that
// fit in the directory. False for anything else.
[[nodiscard]] bool HasSaneHeaders(const std::string& path);

class TChmArchive {
 public:
  // Opens `path` with chmlib when HasSaneHeaders(path); else IsOpen() is false.
  explicit TChmArchive(const std::string& path);
  ~TChmArchive();
  TChmArchive(const TChmArchive&) = delete;
  TChmArchive& operator=(const TChmArchive&) = delete;

  // False when chmlib could not open the file.
  [[nodiscard]] bool IsOpen() const { return file_ != nullptr; }

  // The stored path of the object `topic` (looked up without regard to case,
  // as the format does), when it exists, is a file and its path is safe.
  [[nodiscard]] std::optional<std::string> ResolveTopic(const std::string& topic);

  // The file's default topic: the one "#SYSTEM" names, else the first of
  // /index.htm, /index.html, /default.htm, /default.html that exists, else
  // the first .htm/.html page in the archive's order. Stored paths.
  [[nodiscard]] std::optional<std::string> DefaultTopic();

  // The topic the file's context map ("#IVB" with "#STRINGS") gives context
  // number `context`, as a stored path; nullopt when the file has no map or
  // the number is not in it. The map's file names are relative to the help
  // project, but some compilers store the full path the page had on their
  // machine: the name is tried whole, then ever shorter tails of it
  // ("/build/help/pages/a.htm", "/help/pages/a.htm", "/pages/a.htm", "/a.htm").
  [[nodiscard]] std::optional<std::string> ContextTopic(uint32_t context);

  // Writes every page (the objects outside the format's own "#" and "$"
  // entries) below `folder`, which must exist and be empty. Objects with
  // unsafe paths, over-long objects and objects that cannot be read are
  // skipped; exceeding the total size or the object count fails. Returns
  // whether the extraction completed; the number of skipped objects goes to
  // `skipped` when given.
  bool ExtractTo(const std::filesystem::path& folder, const TExtractLimits& limits, uint32_t* skipped = nullptr);

 private:
  // The whole object `path` when it exists and has at most `max_size` bytes.
  std::optional<std::vector<uint8_t>> ReadObject(const char* path, uint64_t max_size);

  chmFile* file_ = nullptr;
};

// The root of the extraction cache, created with mode 0700 when missing:
// $XDG_CACHE_HOME/quill/help when XDG_CACHE_HOME is an absolute path, else
// $HOME/.cache/quill/help. nullopt when there is no home, the folder cannot be
// made, or it exists but is not a folder owned by the user (it is then left
// alone); a folder of the user's that others may enter is made private again.
[[nodiscard]] std::optional<std::filesystem::path> HelpCacheRoot();

// The cache folder holding the pages of the compiled help file `path`
// (described by `st`), extracted on the first request: a folder of `root`
// named after the file's path, size and change time, so that an edited file
// is extracted afresh. Extraction goes to a private temporary folder that is
// renamed into place once complete. nullopt when extraction fails.
[[nodiscard]] std::optional<std::filesystem::path> ExtractedFolder(TChmArchive& archive, const std::string& path,
                                                                   const struct stat& st,
                                                                   const std::filesystem::path& root,
                                                                   const TExtractLimits& limits);

}  // namespace quill::Ghtmlhlp::engine
