// Showing a help topic in the desktop's viewer.
#include "quill/htmlhlp/engine/showhelp.h"

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

#include "quill/htmlhlp/engine/chmarchive.h"
#include "quill/htmlhlp/engine/helpname.h"
#include "quill/htmlhlp/engine/isolate.h"
#include "quill/htmlhlp/htmlhelp_api.h"
#include "quill/utils/internal/spawn.h"

namespace quill::Ghtmlhlp::engine {
namespace {

namespace fs = std::filesystem;

// What names the page of a compiled help file: its topic, or a context number.
struct TTopicRequest {
  std::string topic;  // "" for the default topic
  std::optional<uint32_t> context;
};

// The extracted file of the requested topic of the compiled help file `file`.
std::optional<std::string> CompiledTopicFile(const std::string& file, const struct stat& st,
                                             const TTopicRequest& request) {
  TChmArchive archive(file);
  if (!archive.IsOpen()) return std::nullopt;
  const std::optional<std::string> stored = request.context     ? archive.ContextTopic(*request.context)
                                            : request.topic.empty() ? archive.DefaultTopic()
                                                                    : archive.ResolveTopic(request.topic);
  if (!stored) return std::nullopt;
  const std::optional<fs::path> root = HelpCacheRoot();
  if (!root) return std::nullopt;
  const std::optional<fs::path> folder = ExtractedFolder(archive, file, st, *root, TExtractLimits{});
  if (!folder) return std::nullopt;
  const std::string page = folder->string() + *stored;
  struct stat page_st {};
  if (lstat(page.c_str(), &page_st) != 0 || !S_ISREG(page_st.st_mode)) return std::nullopt;
  return page;
}

}  // namespace

uintptr_t ShowHelp(std::string_view name, uint32_t command, uintptr_t data) {
  bool by_context = false;
  switch (command) {
    case HH_DISPLAY_TOPIC:
    case HH_DISPLAY_TOC:
    case HH_DISPLAY_INDEX:
    case HH_DISPLAY_SEARCH:
      break;
    case HH_HELP_CONTEXT:
      by_context = true;
      break;
    default:
      return 0;
  }
  const THelpName help = ParseHelpName(name);
  if (help.File.empty()) return 0;
  std::error_code ec;
  const std::string file = fs::absolute(help.File, ec).string();
  if (ec) return 0;
  struct stat st {};
  if (stat(file.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return 0;

  std::string page;
  if (IsCompiledHelpFile(file)) {
    TTopicRequest request;
    if (by_context) {
      if (data > UINT32_MAX) return 0;  // context numbers are 32-bit
      request.context = static_cast<uint32_t>(data);
    } else {
      request.topic = help.Topic;
    }
    // The file is read in a child process: a damaged one that crashes chmlib
    // must not take the application with it.
    std::optional<std::string> extracted = RunIsolated([&] { return CompiledTopicFile(file, st, request); });
    if (!extracted) return 0;
    page = std::move(*extracted);
  } else {
    if (!help.Topic.empty() || by_context) return 0;  // only compiled help files hold topics
    page = file;
  }
  const std::string target = help.Anchor.empty() || by_context ? page : FileUrl(page, help.Anchor);
  const std::optional<pid_t> viewer = Gutils::internal::StartDetached(Gutils::internal::OpenerCommand(), target);
  return viewer ? static_cast<uintptr_t>(*viewer) : 0;
}

}  // namespace quill::Ghtmlhlp::engine
