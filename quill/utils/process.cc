// Program start on Linux: posix_spawn for executables and for the opener.
#include "quill/utils/process.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "quill/rtl/unicode.h"
#include "quill/utils/internal/shellwords.h"
#include "quill/utils/internal/spawn.h"

namespace quill::Gutils {
namespace {

using internal::OpenerCommand;
using internal::ReapEndedChildren;
using internal::Spawn;

TProcessMessagesHook& Hook() {
  static TProcessMessagesHook hook;
  return hook;
}

bool IsExecutableFile(const std::string& path) {
  struct stat st {};
  return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && access(path.c_str(), X_OK) == 0;
}

bool Exists(const std::string& path) {
  struct stat st {};
  return stat(path.c_str(), &st) == 0;
}

// "scheme:" with a scheme of two or more characters (a letter, then letters,
// digits, '+', '-', '.'), so that "c:" style names never count as URLs.
bool LooksLikeUrl(const std::string& name) {
  const size_t colon = name.find(':');
  if (colon == std::string::npos || colon < 2) return false;
  auto alpha = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  if (!alpha(name[0])) return false;
  for (size_t i = 1; i < colon; ++i) {
    const char c = name[i];
    if (!alpha(c) && !(c >= '0' && c <= '9') && c != '+' && c != '-' && c != '.') return false;
  }
  return true;
}

std::optional<std::string> FindOnPath(const std::string& name) {
  const char* path = std::getenv("PATH");
  if (path == nullptr) return std::nullopt;
  std::string_view rest(path);
  for (;;) {
    const size_t colon = rest.find(':');
    std::string_view dir = rest.substr(0, colon);
    if (dir.empty()) dir = ".";  // an empty PATH entry is the current directory
    std::string candidate;
    candidate.reserve(dir.size() + 1 + name.size());
    candidate.append(dir);
    candidate.push_back('/');
    candidate.append(name);
    if (IsExecutableFile(candidate)) return candidate;
    if (colon == std::string_view::npos) return std::nullopt;
    rest.remove_prefix(colon + 1);
  }
}

std::string Absolute(const std::string& path) {
  std::error_code ec;
  std::filesystem::path p = std::filesystem::absolute(path, ec);
  return ec ? path : p.string();
}

}  // namespace

TProcessMessagesHook SetProcessMessagesHook(TProcessMessagesHook NewHook) {
  TProcessMessagesHook previous = std::move(Hook());
  Hook() = std::move(NewHook);
  return previous;
}

bool RunProgram(const UnicodeString& FileName, const UnicodeString& Params,
                const UnicodeString& Directory, bool Wait) {
  constexpr int32_t kShowMaximized = 2;
  return RunProgramEx(FileName, Params, Directory, kShowMaximized, Wait);
}

bool RunProgramEx(const UnicodeString& FileName, const UnicodeString& Params,
                  const UnicodeString& Directory, int32_t ShowCmd, bool Wait) {
  (void)ShowCmd;  // windows have no show mode to pass on here
  ReapEndedChildren();
  const std::string name = UnicodeToUtf8(FileName);
  const std::string dir = UnicodeToUtf8(Directory);
  if (name.empty()) return false;

  std::vector<std::string> args;
  bool search_path = false;
  if (LooksLikeUrl(name) && !Exists(name)) {
    args = OpenerCommand();
    args.push_back(name);
    search_path = true;
  } else {
    std::string path = name;
    if (name.find('/') == std::string::npos) {
      if (std::optional<std::string> found = FindOnPath(name)) path = *found;
    }
    if (!Exists(path)) return false;
    path = Absolute(path);  // the child's working directory may differ from ours
    if (IsExecutableFile(path)) {
      args.push_back(path);
      for (std::string& w : internal::SplitShellWords(UnicodeToUtf8(Params))) args.push_back(std::move(w));
    } else {
      args = OpenerCommand();
      args.push_back(path);
      search_path = true;
    }
  }

  const std::optional<pid_t> pid = Spawn(args, dir, search_path);
  if (!pid) return false;
  if (!Wait) {
    internal::ForgetChild(*pid);
    return true;
  }
  // Ask for the child's state without pausing; between the rounds the
  // application processes its pending events through the hook.
  for (;;) {
    int status = 0;
    const pid_t r = waitpid(*pid, &status, WNOHANG);
    if (r == *pid) break;
    if (r == -1 && errno != EINTR) break;  // reaped elsewhere (e.g. SIGCHLD ignored)
    if (const TProcessMessagesHook& hook = Hook()) {
      hook();
    } else {
      std::this_thread::yield();
    }
  }
  return true;
}

}  // namespace quill::Gutils
