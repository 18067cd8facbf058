// The engine's whole path: a help name in, the viewer started with a page.
#include "quill/htmlhlp/engine/showhelp.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "quill/htmlhlp/htmlhelp_api.h"
#include "quill/htmlhlp/internal/test_viewer.h"

namespace quill::Ghtmlhlp::engine {
namespace {

namespace fs = std::filesystem;
using testing::TestData;
using testing::ReadFile;
using testing::TRecordingViewer;

uintptr_t Show(std::string_view name, uint32_t command, uintptr_t data = 0) { return ShowHelp(name, command, data); }

// A topic of a compiled help file is extracted into the private cache and
// its page handed to the viewer; the result is the viewer's process id.
TEST(ShowHelp, CompiledTopic) {
  TRecordingViewer v;
  EXPECT_GT(Show(TestData("test.chm") + "::/pages/guide/compress.htm", HH_DISPLAY_TOPIC), 0u);
  const std::vector<std::string> asked = v.Asked();
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(fs::path(asked[0]).parent_path().parent_path().parent_path().parent_path(), v.CacheRoot());
  EXPECT_EQ(ReadFile(asked[0]), ReadFile(TestData("pages/guide/compress.htm")));
}

// No topic: the file's default one. The navigation commands show the same
// page (a desktop viewer has no panes to open); their data is not used.
TEST(ShowHelp, DefaultTopicForEveryDisplayCommand) {
  TRecordingViewer v;
  for (const uint32_t command : {HH_DISPLAY_TOPIC, HH_DISPLAY_TOC, HH_DISPLAY_INDEX, HH_DISPLAY_SEARCH}) {
    EXPECT_GT(Show(TestData("test.chm"), command, 42), 0u) << command;
  }
  const std::vector<std::string> asked = v.Asked(4);
  ASSERT_EQ(asked.size(), 4u);
  for (const std::string& page : asked) {
    EXPECT_EQ(ReadFile(page), ReadFile(TestData("pages/index.htm")));
    EXPECT_EQ(page, asked[0]);  // the same extraction each time
  }
}

// Context help: the data is the context number, looked up in the file's
// map; a topic or anchor in the name does not matter.
TEST(ShowHelp, ContextHelpMapsTheNumber) {
  TRecordingViewer v;
  EXPECT_GT(Show(TestData("test.chm") + "::/pages/index.htm#top", HH_HELP_CONTEXT, 42), 0u);
  const std::string asked = v.Asked().at(0);
  EXPECT_EQ(ReadFile(asked), ReadFile(TestData("pages/guide/compress.htm"))) << asked;
}

// A number the map does not hold, a number wider than 32 bits, and context
// help asked of an HTML page show nothing.
TEST(ShowHelp, ContextHelpUnmapped) {
  TRecordingViewer v;
  EXPECT_EQ(Show(TestData("test.chm"), HH_HELP_CONTEXT, 8), 0u);
  EXPECT_EQ(Show(TestData("test.chm"), HH_HELP_CONTEXT, (uintptr_t{1} << 32) | 42), 0u);
  EXPECT_EQ(Show(TestData("pages/index.htm"), HH_HELP_CONTEXT, 7), 0u);
  EXPECT_EQ(v.Asked(0), std::vector<std::string>{});
}

// An anchor turns the page into a file:// URL ending in it.
TEST(ShowHelp, AnchorGivesUrl) {
  TRecordingViewer v;
  EXPECT_GT(Show("ms-its:" + TestData("test.chm") + "::/pages/guide/compress.htm#lzg>main", HH_DISPLAY_TOPIC),
            0u);
  const std::string asked = v.Asked().at(0);
  EXPECT_EQ(asked.rfind("file:///", 0), 0u) << asked;
  EXPECT_EQ(asked.substr(asked.size() - 17), "/compress.htm#lzg") << asked;
}

// An HTML file is handed on as it is; relative names become absolute.
TEST(ShowHelp, HtmlFile) {
  TRecordingViewer v;
  EXPECT_GT(Show(TestData("pages/index.htm"), HH_DISPLAY_TOPIC), 0u);
  const fs::path cwd = fs::current_path();
  fs::current_path(QUILL_HELP_TESTDATA);
  EXPECT_GT(Show("pages/index.htm", HH_DISPLAY_TOPIC), 0u);
  fs::current_path(cwd);
  EXPECT_EQ(v.Asked(2), std::vector<std::string>(2, TestData("pages/index.htm")));
}

// Nothing to show gives 0 and starts no viewer.
TEST(ShowHelp, NothingShown) {
  TRecordingViewer v;
  EXPECT_EQ(Show(TestData("test.chm") + "::/pages/missing.htm", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(Show("/nonexistent/help.chm", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(Show("", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(Show(QUILL_HELP_TESTDATA, HH_DISPLAY_TOPIC), 0u);  // a folder
  EXPECT_EQ(Show(TestData("pages/index.htm") + "::/a.htm", HH_DISPLAY_TOPIC), 0u);  // no topics in HTML
  EXPECT_EQ(Show(TestData("test.chm"), HH_CLOSE_ALL), 0u);
  EXPECT_EQ(Show(TestData("test.chm"), 0x0004 /* HH_SET_WIN_TYPE */), 0u);
  EXPECT_EQ(v.Asked(0), std::vector<std::string>{});
}

// Edge case: a topic path that climbs out of the cache is refused, in a
// clean file and in one whose own contents try it.
TEST(ShowHelp, TraversalTopicRefused) {
  TRecordingViewer v;
  EXPECT_EQ(Show(TestData("test.chm") + "::/../../zzescape.htm", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(Show(TestData("test.chm") + "::../pages/index.htm", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(Show(TestData("traversal.chm") + "::/../../zzescape.htm", HH_DISPLAY_TOPIC), 0u);
  // The file's safe pages still open.
  EXPECT_GT(Show(TestData("traversal.chm") + "::/pages/index.htm", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(v.Asked().size(), 1u);
  EXPECT_FALSE(fs::exists(v.Dir() / "cache/zzescape.htm"));
  EXPECT_FALSE(fs::exists(v.Dir() / "cache/quill/zzescape.htm"));
  EXPECT_FALSE(fs::exists(v.CacheRoot() / "zzescape.htm"));
}

// A damaged file that makes chmlib itself crash (a forged compression
// header: a division by zero inside chm_open, found by fuzzing) shows
// nothing, and the application lives on.
TEST(ShowHelp, FileThatCrashesTheReader) {
  TRecordingViewer v;
  EXPECT_EQ(Show(TestData("chmlib-fpe.chm") + "::/pages/index.htm", HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(Show(TestData("chmlib-fpe.chm"), HH_HELP_CONTEXT, 42), 0u);
  EXPECT_EQ(v.Asked(0), std::vector<std::string>{});
  // The reader itself is fine afterwards.
  EXPECT_GT(Show(TestData("test.chm"), HH_DISPLAY_TOPIC), 0u);
  EXPECT_EQ(v.Asked(1).size(), 1u);
}

// A viewer command that cannot be started shows nothing.
TEST(ShowHelp, ViewerThatCannotStart) {
  TRecordingViewer v;
  setenv("QUILL_OPEN_COMMAND", "/nonexistent/viewer", 1);
  EXPECT_EQ(Show(TestData("pages/index.htm"), HH_DISPLAY_TOPIC), 0u);
}

}  // namespace
}  // namespace quill::Ghtmlhlp::engine
