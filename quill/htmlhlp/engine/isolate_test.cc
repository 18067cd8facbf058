// Reading untrusted files in a child process: results come back, crashes stay
// in the child.
#include "quill/htmlhlp/engine/isolate.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

namespace quill::Ghtmlhlp::engine {
namespace {

TEST(RunIsolated, ResultComesBack) {
  EXPECT_EQ(RunIsolated([] { return std::optional<std::string>("/cache/page.htm"); }), "/cache/page.htm");
  EXPECT_EQ(RunIsolated([] { return std::optional<std::string>(""); }), "");
  const std::string big(200000, 'x');  // more than a pipe holds at once
  EXPECT_EQ(RunIsolated([&big] { return std::optional<std::string>(big); }), big);
}

TEST(RunIsolated, NoResult) {
  EXPECT_EQ(RunIsolated([] { return std::optional<std::string>(); }), std::nullopt);
  // A zero byte cannot travel: the text counts as none.
  EXPECT_EQ(RunIsolated([] { return std::optional<std::string>(std::string("a\0b", 3)); }), std::nullopt);
}

// The work runs in another process: what it changes stays there.
TEST(RunIsolated, RunsInAnotherProcess) {
  static int touched = 0;
  EXPECT_TRUE(RunIsolated([] {
    touched = 1;
    return std::optional<std::string>("x");
  }));
  EXPECT_EQ(touched, 0);
}

// A crashing or killed child is "no result"; this process goes on.
TEST(RunIsolated, CrashStaysInTheChild) {
  EXPECT_EQ(RunIsolated([]() -> std::optional<std::string> { std::abort(); }), std::nullopt);
  EXPECT_EQ(RunIsolated([]() -> std::optional<std::string> {
              std::raise(SIGKILL);
              return "not reached";
            }),
            std::nullopt);
}

// With SIGCHLD ignored the child's status cannot be collected; a finished
// result still counts, and a crash still does not.
TEST(RunIsolated, SigchldIgnored) {
  struct sigaction ignore {}, old {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGCHLD, &ignore, &old);
  EXPECT_EQ(RunIsolated([] { return std::optional<std::string>("ok"); }), "ok");
  EXPECT_EQ(RunIsolated([]() -> std::optional<std::string> { std::abort(); }), std::nullopt);
  sigaction(SIGCHLD, &old, nullptr);
}

}  // namespace
}  // namespace quill::Ghtmlhlp::engine
