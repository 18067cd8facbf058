// fork, a pipe for the result, and waitpid.
#include "quill/htmlhlp/engine/isolate.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace quill::Ghtmlhlp::engine {
namespace {

// The result travels as its bytes followed by a zero byte, so that a child
// that dies half-way is told apart from one that finished.
constexpr char kDone = '\0';

bool WriteAll(int fd, const std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t w = write(fd, bytes.data() + done, bytes.size() - done);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) return false;
    done += static_cast<size_t>(w);
  }
  return true;
}

}  // namespace

std::optional<std::string> RunIsolated(const std::function<std::optional<std::string>()>& work) {
  int fds[2];
  if (pipe2(fds, O_CLOEXEC) != 0) return std::nullopt;
  const pid_t pid = fork();
  if (pid < 0) {
    close(fds[0]);
    close(fds[1]);
    return std::nullopt;
  }
  if (pid == 0) {
    close(fds[0]);
    const rlimit cpu{kIsolatedCpuSeconds, kIsolatedCpuSeconds};
    setrlimit(RLIMIT_CPU, &cpu);
    std::optional<std::string> result = work();
    bool ok = result.has_value() && result->find(kDone) == std::string::npos;
    if (ok) {
      result->push_back(kDone);
      ok = WriteAll(fds[1], *result);
    }
    _exit(ok ? 0 : 1);
  }
  close(fds[1]);
  std::string received;
  char buffer[4096];
  for (;;) {
    const ssize_t n = read(fds[0], buffer, sizeof(buffer));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    received.append(buffer, static_cast<size_t>(n));
  }
  close(fds[0]);
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  if (received.empty() || received.back() != kDone) return std::nullopt;
  received.pop_back();
  return received;
}

}  // namespace quill::Ghtmlhlp::engine
