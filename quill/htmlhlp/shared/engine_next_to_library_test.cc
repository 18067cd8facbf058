// Through libquill23.so itself: the engine plugin is found next to the shared
// library without any configuration, and the package's Finalize (the unit's
// last stop) unloads it.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "quill/frame/quill23.h"
#include "quill/htmlhlp/ghtmlhlp.h"
#include "quill/htmlhlp/internal/test_viewer.h"
#include "quill/rtl/unicode.h"

namespace quill::Ghtmlhlp {
namespace {

TEST(SharedLibrary, EngineFoundNextToLibrary) {
  unsetenv("QUILL_HELP_ENGINE");
  testing::TRecordingViewer viewer;
  ASSERT_EQ(Ghtmlhlp::HtmlHelp, nullptr);
  EXPECT_EQ(OpenHtmlHelp(Utf8ToUnicode(testing::TestData("test.chm")) + u"::/pages/guide/compress.htm", HH_DISPLAY_TOPIC, 0), -1);
  EXPECT_NE(Ghtmlhlp::HtmlHelp, nullptr);
  EXPECT_EQ(std::filesystem::path(viewer.Asked().at(0)).filename(), "compress.htm");

  // The library was started when it was loaded; its Finalize is the last stop.
  Finalize();
  EXPECT_EQ(Ghtmlhlp::HtmlHelpA, nullptr);
  EXPECT_EQ(Ghtmlhlp::HtmlHelpW, nullptr);
  EXPECT_EQ(Ghtmlhlp::HtmlHelp, nullptr);
  Initialize();
}

}  // namespace
}  // namespace quill::Ghtmlhlp
