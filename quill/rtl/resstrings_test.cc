// Resource strings: built-in English text and gettext translations.
#include "quill/rtl/resstrings.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "quill/frame/gconsts.h"
#include "quill/rtl/exception.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMsgfmt = "/usr/bin/msgfmt";

TEST(LoadResString, EnglishWithoutCatalog) {
  BindResourceCatalog("/nonexistent/quill-test-locale");
  EXPECT_EQ(LoadResString(Gconsts::_ERRStackFull), u"Stack is full");
  EXPECT_EQ(LoadResString(Gcompress::_SWrongStreamFormat), u"Wrong stream format");
  EXPECT_EQ(Exception(Gconsts::_ERRStackEmpty).Message(), u"Stack is empty");
  // Edge case: a record without text loads as empty.
  EXPECT_EQ(LoadResString(TResStringRec{1, nullptr}), u"");
}

// Compiles a German catalog into a fresh directory under /tmp, selects German
// for the messages category and checks that raised errors use it; then points
// the domain elsewhere and checks the English text is back.
//
// glibc ignores LANGUAGE while LC_MESSAGES is the plain "C" locale, but not
// under "C.UTF-8", which is built into glibc: that selects the language
// without any generated locale on the machine.
TEST(LoadResString, TranslationFromCatalogIsUsedWhenRaised) {
  if (access(kMsgfmt, X_OK) != 0) GTEST_SKIP() << "msgfmt is not installed";
  const fs::path root = fs::path("/tmp") / ("quill-resstrings-" + std::to_string(getpid()));
  const fs::path dir = root / "de" / "LC_MESSAGES";
  fs::create_directories(dir);
  const fs::path po = root / "quill23.po";
  {
    std::ofstream out(po);
    out << "msgid \"\"\nmsgstr \"\"\n\"Content-Type: text/plain; charset=UTF-8\\n\"\n\n"
        << "msgid \"Stack is full\"\nmsgstr \"Stapel ist voll\"\n\n"
        << "msgid \"Wrong stream format\"\nmsgstr \"Falsches Stromformat \xC3\xA4\"\n";
  }
  const std::string cmd = std::string(kMsgfmt) + " -o '" + (dir / "quill23.mo").string() + "' '" + po.string() + "'";
  ASSERT_EQ(std::system(cmd.c_str()), 0);

  const char* old_messages = std::setlocale(LC_MESSAGES, nullptr);
  const std::string saved = old_messages != nullptr ? old_messages : "C";
  ASSERT_NE(std::setlocale(LC_MESSAGES, "C.UTF-8"), nullptr);
  setenv("LANGUAGE", "de", 1);
  BindResourceCatalog(root.string());

  EXPECT_EQ(Exception(Gconsts::_ERRStackFull).Message(), u"Stapel ist voll");
  EXPECT_EQ(LoadResString(Gcompress::_SWrongStreamFormat), u"Falsches Stromformat \u00E4");
  // A text the catalog does not translate stays English.
  EXPECT_EQ(LoadResString(Gconsts::_ERRStackEmpty), u"Stack is empty");

  BindResourceCatalog((root / "empty").string());
  EXPECT_EQ(Exception(Gconsts::_ERRStackFull).Message(), u"Stack is full");

  unsetenv("LANGUAGE");
  std::setlocale(LC_MESSAGES, saved.c_str());
  fs::remove_all(root);
}

}  // namespace
}  // namespace quill
