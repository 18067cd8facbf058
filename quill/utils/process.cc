// Program start on Linux: posix_spawn for executables and for the opener.
#include "quill/utils/process.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "quill/rtl/unicode.h"
#include "quill/utils/internal/shellwords.h"

extern char** environ;

namespace quill::Gutils {
namespace {

TProcessMessagesHook& Hook() {
  static TProcessMessagesHook hook;
  return hook;
}

// Children started without waiting. They are reaped, once ended, by later
// calls, so that finished children do not linger as zombies.
std::mutex g_unwaited_mutex;
std::vector<pid_t> g_unwaited;

void ReapEndedChildren() {
  std::lock_guard lock(g_unwaited_mutex);
  std::erase_if(g_unwaited, [](pid_t pid) {
    int status = 0;
    const pid_t r = waitpid(pid, &status, WNOHANG);
    return r == pid || (r == -1 && errno == ECHILD);
  });
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

// Starts argv[0] (searched on PATH when `search_path`) in `dir`; the child's
// id, or nullopt when it could not be started.
std::optional<pid_t> Spawn(const std::vector<std::string>& args, const std::string& dir,
                           bool search_path) {
  std::vector<char*> argv;
  argv.reserve(args.size() + 1);
  for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attr;
  posix_spawn_file_actions_init(&actions);
  posix_spawnattr_init(&attr);
  if (!dir.empty()) posix_spawn_file_actions_addchdir_np(&actions, dir.c_str());
  // The child starts with no blocked signals and default SIGPIPE handling,
  // whatever the host application set up.
  sigset_t empty, defaults;
  sigemptyset(&empty);
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  posix_spawnattr_setsigmask(&attr, &empty);
  posix_spawnattr_setsigdefault(&attr, &defaults);
  posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

  pid_t pid = 0;
  const int rc = search_path ? posix_spawnp(&pid, argv[0], &actions, &attr, argv.data(), environ)
                             : posix_spawn(&pid, argv[0], &actions, &attr, argv.data(), environ);
  posix_spawnattr_destroy(&attr);
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) return std::nullopt;
  return pid;
}

std::vector<std::string> OpenerCommand() {
  const char* env = std::getenv("QUILL_OPEN_COMMAND");
  if (env != nullptr) {
    std::vector<std::string> words = internal::SplitShellWords(env);
    if (!words.empty()) return words;
  }
  return {"xdg-open"};
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
    std::lock_guard lock(g_unwaited_mutex);
    g_unwaited.push_back(*pid);
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
