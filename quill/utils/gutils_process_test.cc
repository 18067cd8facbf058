// Tests of RunProgram / RunProgramEx with real programs and scripts written
// to /tmp, and of the shell-style splitting of their parameters.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "quill/rtl/unicode.h"
#include "quill/utils/internal/shellwords.h"
#include "quill/utils/process.h"

namespace quill::Gutils {
namespace {

namespace fs = std::filesystem;
using internal::SplitShellWords;
using Words = std::vector<std::string>;

// ---- parameter splitting ----

TEST(SplitShellWords, BlanksSeparate) {
  EXPECT_EQ(SplitShellWords("a  b\tc\nd"), (Words{"a", "b", "c", "d"}));
  EXPECT_EQ(SplitShellWords(""), Words{});
  EXPECT_EQ(SplitShellWords("   "), Words{});
}

TEST(SplitShellWords, Quotes) {
  EXPECT_EQ(SplitShellWords("'b c' \"d e\""), (Words{"b c", "d e"}));
  EXPECT_EQ(SplitShellWords("'it''s'"), Words{"its"});
  EXPECT_EQ(SplitShellWords("a'b c'd"), Words{"ab cd"});
  EXPECT_EQ(SplitShellWords("'' \"\""), (Words{"", ""}));  // empty words are kept
  EXPECT_EQ(SplitShellWords("'\\n $HOME'"), Words{"\\n $HOME"});  // single quotes keep all
}

TEST(SplitShellWords, Backslashes) {
  EXPECT_EQ(SplitShellWords("a\\ b"), Words{"a b"});
  EXPECT_EQ(SplitShellWords("\"say \\\"hi\\\"\""), Words{"say \"hi\""});
  EXPECT_EQ(SplitShellWords("\"a\\b\""), Words{"a\\b"});  // only $ ` \" \\ are escaped
  EXPECT_EQ(SplitShellWords("x\\"), Words{"x\\"});
  EXPECT_EQ(SplitShellWords("a\\\nb"), Words{"ab"});
}

// Edge case: an unclosed quote runs to the end.
TEST(SplitShellWords, UnclosedQuote) {
  EXPECT_EQ(SplitShellWords("a 'b c"), (Words{"a", "b c"}));
  EXPECT_EQ(SplitShellWords("a \"b c"), (Words{"a", "b c"}));
}

// ---- program start ----

class RunProgramTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::path("/tmp") / ("gutils_proc_" + std::to_string(getpid()) + "_" +
                               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(dir_);
    fs::create_directories(dir_ / "work dir");
    const char* old = std::getenv("QUILL_OPEN_COMMAND");
    had_opener_ = old != nullptr;
    if (old) old_opener_ = old;
  }
  void TearDown() override {
    if (had_opener_) setenv("QUILL_OPEN_COMMAND", old_opener_.c_str(), 1);
    else unsetenv("QUILL_OPEN_COMMAND");
    fs::remove_all(dir_);
  }

  // Writes an executable script.
  fs::path Script(const std::string& name, const std::string& body) {
    const fs::path p = dir_ / name;
    std::ofstream(p) << "#!/bin/sh\n" << body;
    chmod(p.c_str(), 0755);
    return p;
  }
  // A script that records its working directory and its arguments, one a line.
  fs::path Recorder(const std::string& name, const fs::path& out) {
    return Script(name, "pwd > '" + out.string() + ".tmp'\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done >> '" +
                            out.string() + ".tmp'\nmv '" + out.string() + ".tmp' '" + out.string() + "'\n");
  }
  static std::string Read(const fs::path& p) {
    std::ifstream in(p);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
  }
  // Waits up to 10 s for a file a child writes.
  static bool WaitFor(const fs::path& p) {
    for (int i = 0; i < 1000; ++i) {
      if (fs::exists(p)) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
  }
  static UnicodeString U(const fs::path& p) { return Utf8ToUnicode(p.string()); }

  fs::path dir_;
  bool had_opener_ = false;
  std::string old_opener_;
};

// A real program, waited for.
TEST_F(RunProgramTest, StartsTrueAndWaits) {
  EXPECT_TRUE(RunProgram(u"/bin/true", u"", u"", true));
}

// The exit code is not reported: a failing program that started is true.
TEST_F(RunProgramTest, ExitCodeNotReported) {
  EXPECT_TRUE(RunProgram(u"/bin/sh", u"-c 'exit 3'", u"", true));
}

// With waiting, the call returns only after the program has ended.
TEST_F(RunProgramTest, WaitReturnsAfterEnd) {
  const fs::path done = dir_ / "done";
  const fs::path s = Script("slow.sh", "sleep 0.3\ntouch '" + done.string() + "'\n");
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(RunProgram(U(s), u"", u"", true));
  EXPECT_TRUE(fs::exists(done));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(250));
}

// Without waiting, the call returns while the program still runs.
TEST_F(RunProgramTest, NoWaitReturnsAtOnce) {
  const fs::path done = dir_ / "done";
  const fs::path s = Script("slow.sh", "sleep 0.5\ntouch '" + done.string() + "'\n");
  ASSERT_TRUE(RunProgram(U(s), u"", u"", false));
  EXPECT_FALSE(fs::exists(done));
  EXPECT_TRUE(WaitFor(done));
}

// Edge case: parameters with blanks and quotes are split as a shell would,
// and the directory becomes the working directory.
TEST_F(RunProgramTest, ParamsWithBlanksAndQuotes) {
  const fs::path out = dir_ / "args";
  const fs::path s = Recorder("rec.sh", out);
  ASSERT_TRUE(RunProgramEx(U(s), u"one 'two three' \"four \\\"five\\\"\" it\\'s", U(dir_ / "work dir"), 1, true));
  EXPECT_EQ(Read(out), (dir_ / "work dir").string() + "\none\ntwo three\nfour \"five\"\nit's\n");
}

// Without waiting, the same script still gets its arguments.
TEST_F(RunProgramTest, NoWaitPassesParams) {
  const fs::path out = dir_ / "args";
  const fs::path s = Recorder("rec.sh", out);
  ASSERT_TRUE(RunProgram(U(s), u"x \"y z\"", u"", false));
  ASSERT_TRUE(WaitFor(out));
  const std::string got = Read(out);
  EXPECT_EQ(got.substr(got.find('\n') + 1), "x\ny z\n");
}

// Edge case: a bad path does not start and gives false.
TEST_F(RunProgramTest, BadPathIsFalse) {
  EXPECT_FALSE(RunProgram(U(dir_ / "no such program"), u"", u"", true));
  EXPECT_FALSE(RunProgram(u"/no/such/dir/prog", u"", u"", false));
  EXPECT_FALSE(RunProgram(u"", u"", u"", false));
  EXPECT_FALSE(RunProgram(u"gutils-no-such-command-on-path", u"", u"", true));
}

// A working directory that does not exist makes the start fail.
TEST_F(RunProgramTest, MissingWorkingDirectoryIsFalse) {
  EXPECT_FALSE(RunProgram(u"/bin/true", u"", U(dir_ / "missing"), true));
}

// An executable file that is no program (no #! line, not a binary) fails.
TEST_F(RunProgramTest, NotAProgramIsFalse) {
  const fs::path p = dir_ / "junk";
  std::ofstream(p) << "just text\n";
  chmod(p.c_str(), 0755);
  EXPECT_FALSE(RunProgram(U(p), u"", u"", true));
}

// A bare name is looked up on PATH.
TEST_F(RunProgramTest, BareNameOnPath) {
  const fs::path out = dir_ / "args";
  Recorder("gutils-rec", out);
  const std::string old_path = std::getenv("PATH") ? std::getenv("PATH") : "";
  setenv("PATH", (dir_.string() + ":" + old_path).c_str(), 1);
  const bool ok = RunProgram(u"gutils-rec", u"p", u"", true);
  setenv("PATH", old_path.c_str(), 1);
  ASSERT_TRUE(ok);
  EXPECT_NE(Read(out).find("\np\n"), std::string::npos);
}

// Edge case: a directory is opened with the opener, which gets its full path.
TEST_F(RunProgramTest, DirectoryGoesToOpener) {
  const fs::path out = dir_ / "opened";
  const fs::path opener = Recorder("opener.sh", out);
  setenv("QUILL_OPEN_COMMAND", opener.c_str(), 1);
  ASSERT_TRUE(RunProgram(U(dir_ / "work dir"), u"ignored", u"", true));
  const std::string got = Read(out);
  EXPECT_EQ(got.substr(got.find('\n') + 1), (dir_ / "work dir").string() + "\n");
}

// A document (not executable) and a URL go to the opener too; the opener
// command may carry words of its own.
TEST_F(RunProgramTest, DocumentAndUrlGoToOpener) {
  const fs::path out = dir_ / "opened";
  const fs::path opener = Recorder("opener.sh", out);
  setenv("QUILL_OPEN_COMMAND", ("/bin/sh '" + opener.string() + "' --flag").c_str(), 1);
  const fs::path doc = dir_ / "notes.txt";
  std::ofstream(doc) << "hello\n";
  ASSERT_TRUE(RunProgram(U(doc), u"", u"", true));
  std::string got = Read(out);
  EXPECT_EQ(got.substr(got.find('\n') + 1), "--flag\n" + doc.string() + "\n");
  fs::remove(out);
  ASSERT_TRUE(RunProgram(u"https://example.org/a b", u"", u"", true));
  got = Read(out);
  EXPECT_EQ(got.substr(got.find('\n') + 1), "--flag\nhttps://example.org/a b\n");
}

// When the opener cannot be started, opening gives false.
TEST_F(RunProgramTest, MissingOpenerIsFalse) {
  setenv("QUILL_OPEN_COMMAND", (dir_ / "no-opener").c_str(), 1);
  EXPECT_FALSE(RunProgram(U(dir_ / "work dir"), u"", u"", true));
  EXPECT_FALSE(RunProgram(u"mailto:someone@example.org", u"", u"", false));
}

// A relative name is relative to the current directory, not to Directory.
TEST_F(RunProgramTest, RelativeNameFromCurrentDirectory) {
  const fs::path out = dir_ / "args";
  Recorder("rel.sh", out);
  const fs::path old = fs::current_path();
  fs::current_path(dir_);
  const bool ok = RunProgram(u"./rel.sh", u"", U(dir_ / "work dir"), true);
  fs::current_path(old);
  ASSERT_TRUE(ok);
  EXPECT_EQ(Read(out), (dir_ / "work dir").string() + "\n");
}

// While waiting, the installed hook runs between the polls; removing it
// gives back the hook.
TEST_F(RunProgramTest, HookRunsWhileWaiting) {
  int calls = 0;
  TProcessMessagesHook previous = SetProcessMessagesHook([&calls] { ++calls; });
  const bool ok = RunProgram(u"/bin/sh", u"-c 'sleep 0.2'", u"", true);
  TProcessMessagesHook mine = SetProcessMessagesHook(std::move(previous));
  ASSERT_TRUE(ok);
  EXPECT_GT(calls, 0);
  ASSERT_TRUE(mine);
  const int before = calls;
  mine();
  EXPECT_EQ(calls, before + 1);
  // Without waiting, the hook is not called.
  SetProcessMessagesHook([&calls] { ++calls; });
  const int at_start = calls;
  EXPECT_TRUE(RunProgram(u"/bin/true", u"", u"", false));
  SetProcessMessagesHook(nullptr);
  EXPECT_EQ(calls, at_start);
}

}  // namespace
}  // namespace quill::Gutils
