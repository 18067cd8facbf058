// Child processes on Linux: posix_spawn, and reaping of children nobody waits for.
#include "quill/utils/internal/spawn.h"

#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <mutex>

#include "quill/utils/internal/shellwords.h"

extern char** environ;

namespace quill::Gutils::internal {
namespace {

// Children started without waiting. They are reaped, once ended, by later
// calls, so that finished children do not linger as zombies.
std::mutex g_unwaited_mutex;
std::vector<pid_t> g_unwaited;

}  // namespace

void ForgetChild(pid_t pid) {
  std::lock_guard lock(g_unwaited_mutex);
  g_unwaited.push_back(pid);
}

void ReapEndedChildren() {
  std::lock_guard lock(g_unwaited_mutex);
  std::erase_if(g_unwaited, [](pid_t pid) {
    int status = 0;
    const pid_t r = waitpid(pid, &status, WNOHANG);
    return r == pid || (r == -1 && errno == ECHILD);
  });
}

std::optional<pid_t> Spawn(const std::vector<std::string>& args, const std::string& dir, bool search_path) {
  if (args.empty() || args[0].empty()) return std::nullopt;
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

std::vector<std::string> ConfiguredCommand(const char* variable) {
  const char* env = std::getenv(variable);
  if (env == nullptr) return {};
  return SplitShellWords(env);
}

std::vector<std::string> OpenerCommand() {
  std::vector<std::string> words = ConfiguredCommand("QUILL_OPEN_COMMAND");
  if (!words.empty()) return words;
  return {"xdg-open"};
}

std::optional<pid_t> StartDetached(std::vector<std::string> command, const std::string& file) {
  ReapEndedChildren();
  if (command.empty()) return std::nullopt;
  command.push_back(file);
  const std::optional<pid_t> pid = Spawn(command, std::string(), true);
  if (pid) ForgetChild(*pid);
  return pid;
}

}  // namespace quill::Gutils::internal
