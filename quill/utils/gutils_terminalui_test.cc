// Tests of the built-in terminal service: questions asked on a real
// pseudo-terminal, answered No without one, the information window's text on
// standard error.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "quill/utils/questions.h"
#include "quill/utils/uiservice.h"

namespace quill::Gutils {
namespace {

// Points descriptor `fd` at `target` until destroyed.
class Redirect {
 public:
  Redirect(int fd, int target) : fd_(fd), saved_(::dup(fd)) { ::dup2(target, fd); }
  ~Redirect() {
    ::dup2(saved_, fd_);
    ::close(saved_);
  }
  Redirect(const Redirect&) = delete;
  Redirect& operator=(const Redirect&) = delete;

 private:
  int fd_;
  int saved_;
};

// Standard error captured into a temporary file.
class CapturedError {
 public:
  CapturedError() : file_(std::tmpfile()), redirect_(STDERR_FILENO, ::fileno(file_)) {}
  ~CapturedError() { std::fclose(file_); }
  std::string Text() const {
    std::string s;
    ::lseek(::fileno(file_), 0, SEEK_SET);
    char buf[512];
    ssize_t n;
    while ((n = ::read(::fileno(file_), buf, sizeof buf)) > 0) s.append(buf, static_cast<size_t>(n));
    return s;
  }

 private:
  FILE* file_;
  Redirect redirect_;
};

// Standard input on the slave side of a fresh pseudo-terminal; what the test
// types goes in at the master side.
class Terminal {
 public:
  Terminal() {
    if (::openpty(&master_, &slave_, nullptr, nullptr, nullptr) != 0) return;
    redirect_ = std::make_unique<Redirect>(STDIN_FILENO, slave_);
  }
  ~Terminal() {
    redirect_.reset();
    if (slave_ >= 0) ::close(slave_);
    if (master_ >= 0) ::close(master_);
  }
  bool Ok() const { return redirect_ != nullptr; }
  void Type(const std::string& s) const { ASSERT_EQ(::write(master_, s.data(), s.size()), static_cast<ssize_t>(s.size())); }

 private:
  int master_ = -1;
  int slave_ = -1;
  std::unique_ptr<Redirect> redirect_;
};

// Runs each test with the terminal service in use.
class TerminalService : public ::testing::Test {
 protected:
  void SetUp() override { previous_ = InstallUIService(nullptr); }
  void TearDown() override {
    HideInfo();
    InstallUIService(previous_);
  }
  TUIService* previous_ = nullptr;
};

// Standard input is a pipe, not a terminal: both questions answer No (7)
// without asking and without reading the caller's input.
TEST_F(TerminalService, NoTerminalAnswersNo) {
  int fds[2];
  ASSERT_EQ(::pipe(fds), 0);
  ASSERT_EQ(::write(fds[1], "y\ny\n", 4), 4);
  ::close(fds[1]);
  CapturedError err;
  {
    Redirect in(STDIN_FILENO, fds[0]);
    EXPECT_EQ(Ask(u"Go on?"), IDNO);
    EXPECT_EQ(AskNo(u"Go on?"), IDNO);
  }
  char buf[8];
  EXPECT_EQ(::read(fds[0], buf, sizeof buf), 4);  // the input is still there
  ::close(fds[0]);
  EXPECT_EQ(err.Text(), "");  // and nothing was asked
}

// Standard input from /dev/null: No as well.
TEST_F(TerminalService, DevNullAnswersNo) {
  const int null = ::open("/dev/null", O_RDONLY);
  ASSERT_GE(null, 0);
  Redirect in(STDIN_FILENO, null);
  EXPECT_EQ(Ask(u"?"), IDNO);
  ::close(null);
}

// On a terminal: the question, the choices with the default in capitals,
// the typed letter decides.
TEST_F(TerminalService, TerminalYesAndNo) {
  Terminal tty;
  ASSERT_TRUE(tty.Ok());
  CapturedError err;
  tty.Type("y\n");
  EXPECT_EQ(Ask(u"Go on?"), IDYES);
  tty.Type("n\n");
  EXPECT_EQ(Ask(u"Go on?"), IDNO);
  tty.Type("Y\n");
  EXPECT_EQ(AskNo(u"Really?"), IDYES);
  EXPECT_EQ(err.Text(), "Go on? [Y/n] Go on? [Y/n] Really? [y/N] ");
}

// Enter alone takes the default button: Yes for Ask, No for AskNo.
TEST_F(TerminalService, EnterTakesTheDefault) {
  Terminal tty;
  ASSERT_TRUE(tty.Ok());
  CapturedError err;
  tty.Type("\n");
  EXPECT_EQ(Ask(u"a"), IDYES);
  tty.Type("  \n");
  EXPECT_EQ(AskNo(u"b"), IDNO);
}

// Whole words in any case count; anything else asks again.
TEST_F(TerminalService, WordsAndRetries) {
  Terminal tty;
  ASSERT_TRUE(tty.Ok());
  CapturedError err;
  tty.Type("maybe\nNO\n");
  EXPECT_EQ(Ask(u"q"), IDNO);
  EXPECT_EQ(err.Text(), "q [Y/n] q [Y/n] ");
  tty.Type("Yes\n");
  EXPECT_EQ(AskNo(u"q"), IDYES);
}

// End of input on the terminal (Ctrl-D) answers as if the box were closed.
TEST_F(TerminalService, EndOfInputAnswersNo) {
  Terminal tty;
  ASSERT_TRUE(tty.Ok());
  CapturedError err;
  tty.Type("\x04");
  EXPECT_EQ(Ask(u"q"), IDNO);
}

// The reads take one line only: the next line stays for the next question.
TEST_F(TerminalService, ReadsOneLineAtATime) {
  Terminal tty;
  ASSERT_TRUE(tty.Ok());
  CapturedError err;
  tty.Type("n\ny\n");
  EXPECT_EQ(Ask(u"first"), IDNO);
  EXPECT_EQ(AskNo(u"second"), IDYES);
}

// The information window writes its text to standard error, once per text.
TEST_F(TerminalService, InfoWritesToStandardError) {
  CapturedError err;
  ShowInfo(u"Working");
  EXPECT_TRUE(InfoIsShowing());
  UpdateInfo(u"Working");    // same text: nothing new
  UpdateInfo(u"Step 2 \u00e9");
  HideInfo();
  EXPECT_FALSE(InfoIsShowing());
  UpdateInfo(u"again");      // creates it again
  EXPECT_TRUE(InfoIsShowing());
  HideInfo();
  EXPECT_EQ(err.Text(), "Working\nStep 2 \xc3\xa9\nagain\n");
}

// A second ShowInfo makes a new window, which writes its text even when it
// is the same.
TEST_F(TerminalService, SecondShowInfoWritesAgain) {
  CapturedError err;
  ShowInfo(u"same");
  ShowInfo(u"same");
  EXPECT_EQ(err.Text(), "same\nsame\n");
}

// A caption, when given, comes first in the question; the other box types
// list their own letters.
TEST_F(TerminalService, OtherBoxes) {
  Terminal tty;
  ASSERT_TRUE(tty.Ok());
  CapturedError err;
  tty.Type("c\n");
  EXPECT_EQ(UIService().MessageBox(u"Save?", u"Editor", MB_YESNOCANCEL | MB_DEFBUTTON3), IDCANCEL);
  tty.Type("\n");
  EXPECT_EQ(UIService().MessageBox(u"Failed.", u"", MB_ABORTRETRYIGNORE | MB_DEFBUTTON2), IDRETRY);
  EXPECT_EQ(err.Text(), "Editor: Save? [y/n/C] Failed. [a/R/i] ");
}

}  // namespace
}  // namespace quill::Gutils
