// The Qt module without a QApplication: its service is installed, but
// questions and the information window go to the terminal service, since no
// widget can be made yet.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <string>

#include "quill/qt/quillqt.h"
#include "quill/utils/questions.h"

namespace quill::Gutils {
namespace {

TEST(QtWithoutApplication, ServiceInstalledButTerminalAnswers) {
  ASSERT_EQ(QCoreApplication::instance(), nullptr);
  EXPECT_EQ(&UIService(), &QtUIService());

  // Standard input from /dev/null (not a terminal) and standard error into a
  // file, for the duration of the calls.
  const int saved_in = ::dup(STDIN_FILENO);
  const int saved_err = ::dup(STDERR_FILENO);
  const int null = ::open("/dev/null", O_RDONLY);
  FILE* err = std::tmpfile();
  ASSERT_GE(null, 0);
  ASSERT_NE(err, nullptr);
  ::dup2(null, STDIN_FILENO);
  ::dup2(::fileno(err), STDERR_FILENO);

  const int32_t ask = Ask(u"Go on?");
  ShowInfo(u"Working");
  const bool showing = InfoIsShowing();
  HideInfo();

  ::dup2(saved_in, STDIN_FILENO);
  ::dup2(saved_err, STDERR_FILENO);
  ::close(saved_in);
  ::close(saved_err);
  ::close(null);

  EXPECT_EQ(ask, IDNO);
  EXPECT_TRUE(showing);
  std::string text(64, '\0');
  ::lseek(::fileno(err), 0, SEEK_SET);
  text.resize(static_cast<size_t>(std::max<ssize_t>(0, ::read(::fileno(err), text.data(), text.size()))));
  std::fclose(err);
  EXPECT_EQ(text, "Working\n");
}

}  // namespace
}  // namespace quill::Gutils
