// OpenHtmlHelp and the engine binding: load on first use, the load error and
// the retry after it, the exported variables, unloading at the unit's last
// stop; OpenWinHelp's fixed contents request.
#include "quill/htmlhlp/ghtmlhlp.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "quill/frame/units.h"
#include "quill/htmlhlp/internal/engine.h"
#include "quill/htmlhlp/internal/test_viewer.h"
#include "quill/rtl/unicode.h"

namespace quill::Ghtmlhlp {
namespace {

using testing::TestData;
using testing::TRecordingViewer;

UnicodeString WTestData(const char* name) { return Utf8ToUnicode(TestData(name)); }

// Each test starts with the unit started once and no engine loaded, and
// stops the unit again at the end.
class HtmlHelp : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(StartCount(), 0);
    initialization();
  }
  void TearDown() override {
    Finalization();
    unsetenv("QUILL_HELP_ENGINE");
  }
  static void UseMissingEngine() { setenv("QUILL_HELP_ENGINE", "/nonexistent/libquill23-hhctrl.so", 1); }
#ifdef QUILL_HELP_ENGINE_FILE
  static void UseBuiltEngine() { setenv("QUILL_HELP_ENGINE", QUILL_HELP_ENGINE_FILE, 1); }
#endif
};

void ExpectCleared() {
  EXPECT_EQ(Ghtmlhlp::HtmlHelpA, nullptr);
  EXPECT_EQ(Ghtmlhlp::HtmlHelpW, nullptr);
  EXPECT_EQ(Ghtmlhlp::HtmlHelp, nullptr);
}

// Edge case: without the engine, OpenHtmlHelp raises each time it is called
// and the variables stay empty.
TEST_F(HtmlHelp, MissingEngineRaisesEachTime) {
  UseMissingEngine();
  for (int call = 0; call < 3; ++call) {
    try {
      (void)OpenHtmlHelp(WTestData("test.chm"), HH_DISPLAY_TOPIC, 0);
      ADD_FAILURE() << "call " << call << " did not raise";
    } catch (const EHtmlHelpError& e) {
      // The Windows engine's name, whatever file was looked for.
      EXPECT_EQ(e.Message(), u"Can't load Library 'hhctrl.ocx'");
    }
    ExpectCleared();
    EXPECT_FALSE(internal::HtmlHelpLoaded());
  }
}

// A library without the two entry points is not an engine: the load fails,
// the library is let go and everything stays cleared.
TEST_F(HtmlHelp, LibraryWithoutEntryPointsIsRefused) {
  setenv("QUILL_HELP_ENGINE", "libm.so.6", 1);
  EXPECT_THROW((void)OpenHtmlHelp(u"x.chm", HH_DISPLAY_TOPIC, 0), EHtmlHelpError);
  ExpectCleared();
  EXPECT_FALSE(internal::HtmlHelpLoaded());
}

// The error is the unit's class, which callers may catch as the base class.
TEST_F(HtmlHelp, LoadErrorIsAnException) {
  UseMissingEngine();
  EXPECT_THROW((void)OpenHtmlHelp(u"", 0, 0), quill::Exception);
}

// Without QUILL_HELP_ENGINE the engine is looked for next to the code of the
// library: here the test program, which links the unit statically.
TEST_F(HtmlHelp, EngineLookedForNextToTheLibrary) {
  unsetenv("QUILL_HELP_ENGINE");
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(internal::EnginePath(), (self.parent_path() / "libquill23-hhctrl.so").string());
  setenv("QUILL_HELP_ENGINE", "/opt/engine.so", 1);
  EXPECT_EQ(internal::EnginePath(), "/opt/engine.so");
  setenv("QUILL_HELP_ENGINE", "", 1);  // empty counts as unset
  EXPECT_EQ(internal::EnginePath(), (self.parent_path() / "libquill23-hhctrl.so").string());
}

// Edge case: the unit's shutdown with the engine never loaded changes nothing.
TEST_F(HtmlHelp, ShutdownWithoutEngineChangesNothing) {
  Finalization();
  ExpectCleared();
  EXPECT_TRUE(internal::UnloadHtmlHelp());
  initialization();
}

#ifdef QUILL_HELP_ENGINE_FILE

// The first OpenHtmlHelp loads the engine and binds the three variables;
// HtmlHelp is HtmlHelpW. A topic of a compiled help file is extracted and its
// page handed to the viewer; the result is -1 (all bits set).
TEST_F(HtmlHelp, FirstUseLoadsEngineAndShowsTopic) {
  TRecordingViewer viewer;
  UseBuiltEngine();
  ExpectCleared();
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm") + u"::/pages/guide/compress.htm", HH_DISPLAY_TOPIC, 0), -1);
  ASSERT_TRUE(internal::HtmlHelpLoaded());
  EXPECT_NE(Ghtmlhlp::HtmlHelpA, nullptr);
  EXPECT_NE(Ghtmlhlp::HtmlHelpW, nullptr);
  EXPECT_EQ(Ghtmlhlp::HtmlHelp, Ghtmlhlp::HtmlHelpW);

  const std::vector<std::string> asked = viewer.Asked();
  ASSERT_EQ(asked.size(), 1u);
  const std::filesystem::path page = asked[0];
  EXPECT_EQ(page.filename(), "compress.htm");
  EXPECT_EQ(page.parent_path().parent_path().parent_path().parent_path(), viewer.CacheRoot());
  EXPECT_NE(testing::ReadFile(page).find("LZGCompressStream packs a stream"), std::string::npos);
}

// Data reaches the engine: context help shows the page the file's context
// map gives the number.
TEST_F(HtmlHelp, DataReachesTheEngine) {
  TRecordingViewer viewer;
  UseBuiltEngine();
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_HELP_CONTEXT, 42), -1);
  EXPECT_EQ(std::filesystem::path(viewer.Asked().at(0)).filename(), "compress.htm");
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_HELP_CONTEXT, 43), 0);
}

// A file that cannot be shown gives 0, not an error; the engine stays loaded.
TEST_F(HtmlHelp, NothingShownGivesZero) {
  TRecordingViewer viewer;
  UseBuiltEngine();
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm") + u"::/no/such/topic.htm", HH_DISPLAY_TOPIC, 0), 0);
  EXPECT_EQ(OpenHtmlHelp(u"/nonexistent/help.chm", HH_DISPLAY_TOPIC, 0), 0);
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_CLOSE_ALL, 0), 0);
  EXPECT_TRUE(internal::HtmlHelpLoaded());
}

// A failed load leaves everything cleared, so the next call tries again and
// succeeds once the engine can be found.
TEST_F(HtmlHelp, RetriesAfterFailedLoad) {
  TRecordingViewer viewer;
  UseMissingEngine();
  EXPECT_THROW((void)OpenHtmlHelp(WTestData("test.chm"), HH_DISPLAY_TOPIC, 0), EHtmlHelpError);
  ExpectCleared();
  UseBuiltEngine();
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_DISPLAY_TOPIC, 0), -1);
  EXPECT_NE(Ghtmlhlp::HtmlHelp, nullptr);
  const std::vector<std::string> asked = viewer.Asked();
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(std::filesystem::path(asked[0]).filename(), "index.htm");  // the file's default topic
}

// Once loaded, the engine is kept: changing where it is looked for does not
// matter until it is unloaded.
TEST_F(HtmlHelp, EngineKeptOnceLoaded) {
  TRecordingViewer viewer;
  UseBuiltEngine();
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_DISPLAY_TOPIC, 0), -1);
  const TFNHtmlHelpW bound = Ghtmlhlp::HtmlHelp;
  UseMissingEngine();
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_DISPLAY_TOPIC, 0), -1);
  EXPECT_EQ(Ghtmlhlp::HtmlHelp, bound);
  EXPECT_EQ(viewer.Asked(2).size(), 2u);
}

// The unit's last stop unloads the engine and clears the variables; a stop
// that is not the last one keeps it.
TEST_F(HtmlHelp, LastStopUnloadsAndClears) {
  TRecordingViewer viewer;
  UseBuiltEngine();
  initialization();  // started twice now
  EXPECT_EQ(OpenHtmlHelp(WTestData("test.chm"), HH_DISPLAY_TOPIC, 0), -1);
  Finalization();
  EXPECT_TRUE(internal::HtmlHelpLoaded()) << "not the last stop";
  EXPECT_NE(Ghtmlhlp::HtmlHelpW, nullptr);
  Finalization();
  EXPECT_FALSE(internal::HtmlHelpLoaded());
  ExpectCleared();
  EXPECT_EQ(viewer.Asked(1).size(), 1u);
  initialization();  // for TearDown
}

// The variables are the engine's own entry points: callable directly, in
// both text forms.
TEST_F(HtmlHelp, VariablesCallTheEngine) {
  TRecordingViewer viewer;
  UseBuiltEngine();
  EXPECT_EQ(OpenHtmlHelp(u"/nonexistent.chm", HH_DISPLAY_TOPIC, 0), 0);  // loads
  const std::string html = TestData("pages/index.htm");
  EXPECT_NE(Ghtmlhlp::HtmlHelpA(0, html.c_str(), HH_DISPLAY_TOPIC, 0), 0u);
  const UnicodeString wide(html.begin(), html.end());  // the path is ASCII
  EXPECT_NE(Ghtmlhlp::HtmlHelpW(0, wide.c_str(), HH_DISPLAY_TOPIC, 0), 0u);
  const std::vector<std::string> asked = viewer.Asked(2);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0], html);
  EXPECT_EQ(asked[1], html);
}

#endif  // QUILL_HELP_ENGINE_FILE

// Linux has no classic help viewer: without a configured command the result
// is 0 whatever is asked.
TEST(OpenWinHelp, FailsWithoutViewerCommand) {
  unsetenv("QUILL_WINHELP_COMMAND");
  EXPECT_EQ(OpenWinHelp(WTestData("test.hhp"), HELP_CONTENTS, 0), 0);
  EXPECT_EQ(OpenWinHelp(WTestData("test.hhp"), 1, 42), 0);
}

// Edge case: any Command and Data make the same call, the contents request;
// with a configured viewer the file is handed to it each time.
TEST(OpenWinHelp, AlwaysAsksForTheContents) {
  TRecordingViewer viewer;
  const std::string file = TestData("test.hhp");
  EXPECT_NE(OpenWinHelp(Utf8ToUnicode(file), HELP_CONTENTS, 0), 0);
  EXPECT_NE(OpenWinHelp(Utf8ToUnicode(file), 1 /* HELP_CONTEXT */, 42), 0);
  EXPECT_NE(OpenWinHelp(Utf8ToUnicode(file), 0x0102 /* HELP_SETPOPUP_POS */, 0xFFFFFFFFu), 0);
  const std::vector<std::string> asked = viewer.Asked(3);
  EXPECT_EQ(asked, std::vector<std::string>(3, file));
}

// The viewer underneath answers only the contents command; OpenWinHelp never
// passes another one on, so its Command cannot make it fail.
TEST(OpenWinHelp, ViewerAnswersOnlyContents) {
  TRecordingViewer viewer;
  const std::string file = TestData("test.hhp");
  EXPECT_EQ(internal::WinHelpW(0, Utf8ToUnicode(file), 1, 42), 0);
  EXPECT_EQ(internal::WinHelpW(0, Utf8ToUnicode(file), HELP_CONTENTS, 0), 1);
  EXPECT_EQ(internal::WinHelpW(0, u"/nonexistent/file.hlp", HELP_CONTENTS, 0), 0);
  EXPECT_EQ(viewer.Asked(1), std::vector<std::string>{file});
}

}  // namespace
}  // namespace quill::Ghtmlhlp
