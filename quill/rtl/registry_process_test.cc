// The registry shared between processes: concurrent writers lose no update,
// and a writer killed at any moment loses no committed value and leaves a
// sound database.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "quill/rtl/intconv.h"
#include "quill/rtl/internal/temp_registry_for_test.h"
#include "quill/rtl/registry.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"

namespace quill {
namespace {

using testing::TempRegistry;

// Forks a child that waits until the pipe `gate` reaches end of file (the
// parent closes its write end), runs `body` and exits with its result. The
// child never returns into the test.
template <typename Body>
pid_t ForkChild(const int (&gate)[2], Body body) {
  const pid_t pid = fork();
  if (pid == 0) {
    close(gate[1]);
    char c;
    while (read(gate[0], &c, 1) > 0) {
    }
    int rc = 1;
    try {
      rc = body();
    } catch (...) {
      rc = 2;
    }
    _exit(rc);
  }
  return pid;
}

int ExitCode(pid_t pid) {
  int status = 0;
  if (waitpid(pid, &status, 0) != pid) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

std::string IntegrityCheck(const std::string& path) {
  sqlite3* db = nullptr;
  std::string result = "(cannot open)";
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW) {
      result = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
    }
    sqlite3_finalize(st);
  }
  sqlite3_close(db);
  return result;
}

constexpr int kCounters = 3;

// Read-modify-write of shared counters, each in one transaction, plus one
// value of its own per step.
int Incrementer(int child, int steps) {
  TRegistry reg;
  for (int i = 0; i < steps; ++i) {
    TRegistryTransaction tx(reg);
    if (!reg.OpenKey(u"\\Shared\\C" + IntToStr(i % kCounters), true)) return 3;
    const int32_t n = reg.ValueExists(u"N") ? reg.ReadInteger(u"N") : 0;
    reg.WriteInteger(u"N", n + 1);
    reg.WriteInteger(u"p" + IntToStr(child) + u"_" + IntToStr(i), i);
    tx.Commit();
    reg.CloseKey();
  }
  // Plain single writes to the same values too.
  if (!reg.OpenKey(u"\\Shared\\Plain", true)) return 3;
  for (int i = 0; i < steps; ++i) reg.WriteInteger(u"v" + IntToStr(i % 10), i);
  return 0;
}

TEST(RegistryProcesses, ConcurrentWritersLoseNoUpdate) {
  TempRegistry tmp;  // the database does not exist yet: the children race to create it
  constexpr int kChildren = 3;
  constexpr int kSteps = 200;
  int gate[2];
  ASSERT_EQ(pipe(gate), 0);
  std::vector<pid_t> kids;
  for (int k = 0; k < kChildren; ++k) {
    kids.push_back(ForkChild(gate, [k] { return Incrementer(k, kSteps); }));
    ASSERT_GT(kids.back(), 0);
  }
  close(gate[0]);
  close(gate[1]);  // all start at once
  for (pid_t pid : kids) EXPECT_EQ(ExitCode(pid), 0);

  TRegistry reg;
  int total = 0;
  for (int c = 0; c < kCounters; ++c) {
    ASSERT_TRUE(reg.OpenKey(u"\\Shared\\C" + IntToStr(c), false));
    total += reg.ReadInteger(u"N");
    for (int k = 0; k < kChildren; ++k) {
      for (int i = c; i < kSteps; i += kCounters) {
        EXPECT_TRUE(reg.ValueExists(u"p" + IntToStr(k) + u"_" + IntToStr(i)));
      }
    }
  }
  EXPECT_EQ(total, kChildren * kSteps);
  EXPECT_EQ(IntegrityCheck(tmp.Path()), "ok");
}

// Writes until killed; after each commit, reports the record's id on `fd`.
// Ids cycle through three shapes: an integer, a string in a deeper key, and a
// batch of five values in one transaction.
// Before the first write it reports kReady, once its connection is open.
constexpr int32_t kReady = -1;

[[noreturn]] void CrashWriter(int32_t first, int fd) {
  TRegistry reg;
  (void)reg.KeyExists(u"\\Crash");
  if (write(fd, &kReady, sizeof kReady) != sizeof kReady) _exit(4);
  for (int32_t id = first;; ++id) {
    switch (id % 3) {
      case 0:
        reg.OpenKey(u"\\Crash\\K" + IntToStr(id % 5), true);
        reg.WriteInteger(u"i" + IntToStr(id), id);
        break;
      case 1:
        reg.OpenKey(u"\\Crash\\K" + IntToStr(id % 5) + u"\\Deep", true);
        reg.WriteString(u"s" + IntToStr(id), u"text " + IntToStr(id));
        break;
      default: {
        TRegistryTransaction tx(reg);
        reg.OpenKey(u"\\Crash\\B" + IntToStr(id % 7), true);
        for (int j = 0; j < 5; ++j) reg.WriteInteger(u"b" + IntToStr(id) + u"_" + IntToStr(j), id);
        tx.Commit();
        break;
      }
    }
    if (write(fd, &id, sizeof id) != sizeof id) _exit(4);
  }
}

// Checks the record `id` is there in full; returns what is wrong.
std::string CheckRecord(TRegistry& reg, int32_t id) {
  switch (id % 3) {
    case 0:
      if (!reg.OpenKey(u"\\Crash\\K" + IntToStr(id % 5), false)) return "key missing";
      if (!reg.ValueExists(u"i" + IntToStr(id)) || reg.ReadInteger(u"i" + IntToStr(id)) != id) return "integer";
      return "";
    case 1:
      if (!reg.OpenKey(u"\\Crash\\K" + IntToStr(id % 5) + u"\\Deep", false)) return "deep key missing";
      if (reg.ReadString(u"s" + IntToStr(id)) != u"text " + IntToStr(id)) return "string";
      return "";
    default:
      if (!reg.OpenKey(u"\\Crash\\B" + IntToStr(id % 7), false)) return "batch key missing";
      for (int j = 0; j < 5; ++j) {
        const UnicodeString name = u"b" + IntToStr(id) + u"_" + IntToStr(j);
        if (!reg.ValueExists(name) || reg.ReadInteger(name) != id) return "batch value " + std::to_string(j);
      }
      return "";
  }
}

TEST(RegistryProcesses, KilledWriterLosesNoCommittedValue) {
  TempRegistry tmp;
  const unsigned seed = static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 rng(seed);
  std::uniform_int_distribution<int> commitsFirst(0, 20);
  std::uniform_int_distribution<int> delayUs(0, 3000);
  constexpr int kRounds = 60;
  std::vector<int32_t> committed;
  int roundsWithCommits = 0;
  for (int round = 0; round < kRounds; ++round) {
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    const int32_t first = round * 1000000;
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      close(fds[0]);
      try {
        CrashWriter(first, fds[1]);
      } catch (...) {
        _exit(3);
      }
    }
    close(fds[1]);
    int32_t id = 0;
    ASSERT_EQ(read(fds[0], &id, sizeof id), static_cast<ssize_t>(sizeof id));
    ASSERT_EQ(id, kReady);
    // Let a random number of commits happen, then kill at a random moment
    // after them (the machine may be busy: counting commits keeps every round
    // meaningful however slowly the writer runs).
    size_t before = committed.size();
    for (int n = commitsFirst(rng); n > 0 && read(fds[0], &id, sizeof id) == sizeof id; --n) committed.push_back(id);
    std::this_thread::sleep_for(std::chrono::microseconds(delayUs(rng)));
    kill(pid, SIGKILL);
    // A writer that stopped by itself failed: that is an error, not a crash.
    EXPECT_EQ(ExitCode(pid), 100 + SIGKILL) << "round " << round;
    while (read(fds[0], &id, sizeof id) == sizeof id) committed.push_back(id);
    close(fds[0]);
    if (committed.size() > before) ++roundsWithCommits;
  }
  // Most rounds got some writes in before the kill.
  EXPECT_GT(roundsWithCommits, kRounds / 2);
  EXPECT_GT(committed.size(), 100u);

  TRegistry reg;
  int bad = 0;
  for (int32_t id : committed) {
    const std::string problem = CheckRecord(reg, id);
    if (!problem.empty() && ++bad <= 5) ADD_FAILURE() << "record " << id << ": " << problem;
  }
  EXPECT_EQ(bad, 0) << "of " << committed.size() << " committed records";
  regstore::CloseIdle();
  EXPECT_EQ(IntegrityCheck(tmp.Path()), "ok");
}

TEST(RegistryProcesses, BatchesAreAllOrNothingAfterAKill) {
  TempRegistry tmp;
  std::mt19937 rng(12345);
  std::uniform_int_distribution<int> delayUs(2000, 20000);
  for (int round = 0; round < 10; ++round) {
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      close(fds[0]);
      try {
        TRegistry reg;
        (void)reg.KeyExists(u"\\All");
        if (write(fds[1], &kReady, sizeof kReady) != sizeof kReady) _exit(4);
        for (int32_t b = round * 100000;; ++b) {
          TRegistryTransaction tx(reg);
          reg.OpenKey(u"\\All\\B" + IntToStr(b), true);
          for (int j = 0; j < 20; ++j) reg.WriteInteger(u"v" + IntToStr(j), b);
          tx.Commit();
        }
      } catch (...) {
        _exit(3);
      }
    }
    close(fds[1]);
    int32_t ready = 0;
    ASSERT_EQ(read(fds[0], &ready, sizeof ready), static_cast<ssize_t>(sizeof ready));
    close(fds[0]);
    std::this_thread::sleep_for(std::chrono::microseconds(delayUs(rng)));
    kill(pid, SIGKILL);
    EXPECT_EQ(ExitCode(pid), 100 + SIGKILL);
  }
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"\\All", false));
  TStringList batches;
  reg.GetKeyNames(batches);
  EXPECT_GT(batches.Count(), 0);
  for (int32_t i = 0; i < batches.Count(); ++i) {
    TRegistry b;
    ASSERT_TRUE(b.OpenKey(u"\\All\\" + batches.Strings(i), false));
    TStringList values;
    b.GetValueNames(values);
    EXPECT_EQ(values.Count(), 20) << UnicodeToUtf8(batches.Strings(i));
  }
  regstore::CloseIdle();
  EXPECT_EQ(IntegrityCheck(tmp.Path()), "ok");
}

}  // namespace
}  // namespace quill
