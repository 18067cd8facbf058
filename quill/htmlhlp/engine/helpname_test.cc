// Reading help names and checking object paths before anything is written.
#include "quill/htmlhlp/engine/helpname.h"

#include <gtest/gtest.h>

namespace quill::Ghtmlhlp::engine {
namespace {

TEST(ParseHelpName, FileOnly) {
  const THelpName n = ParseHelpName("/usr/share/doc/app.chm");
  EXPECT_EQ(n.File, "/usr/share/doc/app.chm");
  EXPECT_EQ(n.Topic, "");
  EXPECT_EQ(n.Anchor, "");
}

TEST(ParseHelpName, FileAndTopic) {
  const THelpName n = ParseHelpName("app.chm::/guide/intro.htm");
  EXPECT_EQ(n.File, "app.chm");
  EXPECT_EQ(n.Topic, "/guide/intro.htm");
}

// A topic without its leading '/' gets one.
TEST(ParseHelpName, TopicWithoutSlash) { EXPECT_EQ(ParseHelpName("app.chm::intro.htm").Topic, "/intro.htm"); }

// "#anchor" ends the topic; ">window" after it is dropped.
TEST(ParseHelpName, AnchorAndWindow) {
  const THelpName n = ParseHelpName("app.chm::/intro.htm#part2>main");
  EXPECT_EQ(n.Topic, "/intro.htm");
  EXPECT_EQ(n.Anchor, "part2");
  EXPECT_EQ(ParseHelpName("app.chm::/intro.htm>main").Topic, "/intro.htm");
}

// The URL forms of the same name, prefixes in any case.
TEST(ParseHelpName, UrlPrefixes) {
  for (const char* name : {"mk:@MSITStore:app.chm::/a.htm", "MS-ITS:app.chm::/a.htm", "its:app.chm::/a.htm"}) {
    const THelpName n = ParseHelpName(name);
    EXPECT_EQ(n.File, "app.chm") << name;
    EXPECT_EQ(n.Topic, "/a.htm") << name;
  }
}

// The file ends at the first "::"; an empty topic after it names none.
TEST(ParseHelpName, FirstSeparatorWins) {
  EXPECT_EQ(ParseHelpName("a.chm::/b::c.htm").Topic, "/b::c.htm");
  const THelpName n = ParseHelpName("a.chm::");
  EXPECT_EQ(n.File, "a.chm");
  EXPECT_EQ(n.Topic, "");
  EXPECT_EQ(ParseHelpName("").File, "");
}

TEST(IsSafeObjectPath, OrdinaryPaths) {
  EXPECT_TRUE(IsSafeObjectPath("/index.htm"));
  EXPECT_TRUE(IsSafeObjectPath("/pages/guide/compress.htm"));
  EXPECT_TRUE(IsSafeObjectPath("/images/"));  // a folder
  EXPECT_TRUE(IsSafeObjectPath("/a..b.htm"));  // dots inside a name are fine
  EXPECT_TRUE(IsSafeObjectPath("/.hidden"));
}

// Every way out of the extraction folder is refused.
TEST(IsSafeObjectPath, TraversalRefused) {
  EXPECT_FALSE(IsSafeObjectPath("/../x.htm"));
  EXPECT_FALSE(IsSafeObjectPath("/../../zzescape.htm"));
  EXPECT_FALSE(IsSafeObjectPath("/a/../../x.htm"));
  EXPECT_FALSE(IsSafeObjectPath("/a/.."));
  EXPECT_FALSE(IsSafeObjectPath("/a/../"));
  EXPECT_FALSE(IsSafeObjectPath("/a\\..\\..\\x.htm"));  // backslashes separate too
  EXPECT_FALSE(IsSafeObjectPath("/./x.htm"));
  EXPECT_FALSE(IsSafeObjectPath("x.htm"));     // relative
  EXPECT_FALSE(IsSafeObjectPath("//etc/passwd"));
  EXPECT_FALSE(IsSafeObjectPath("/a//b"));
  EXPECT_FALSE(IsSafeObjectPath("/"));
  EXPECT_FALSE(IsSafeObjectPath(""));
}

TEST(IsSafeObjectPath, ControlCharactersAndLength) {
  EXPECT_FALSE(IsSafeObjectPath(std::string_view("/a\0b", 4)));
  EXPECT_FALSE(IsSafeObjectPath("/a\nb"));
  EXPECT_TRUE(IsSafeObjectPath("/" + std::string(511, 'a')));
  EXPECT_FALSE(IsSafeObjectPath("/" + std::string(512, 'a')));
}

TEST(FileUrl, EncodesPathAndAnchor) {
  EXPECT_EQ(FileUrl("/tmp/a b/c.htm", ""), "file:///tmp/a%20b/c.htm");
  EXPECT_EQ(FileUrl("/tmp/c.htm", "x y/z"), "file:///tmp/c.htm#x%20y%2Fz");
  EXPECT_EQ(FileUrl("/t/%#?.htm", ""), "file:///t/%25%23%3F.htm");
}

}  // namespace
}  // namespace quill::Ghtmlhlp::engine
