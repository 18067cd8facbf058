// File names, extensions and paths in both forms, with their differences.
#include "quill/strings/paths.h"

#include <gtest/gtest.h>

#include <string>

namespace quill::Gstrings {
namespace {

std::u16string Wide(const std::string& s) { return std::u16string(s.begin(), s.end()); }

struct NameCase {
  const char* in;
  const char* out;
};

TEST(OnlyFileName, Table) {
  const NameCase cases[] = {
      {"C:\\a.b\\c", "C:\\a.b\\c"},  // a dot in a directory never counts
      {"x.", "x"},
      {".profile", ""},
      {"a.tar.gz", "a"},             // every extension goes
      {"C:\\dir\\file.txt", "C:\\dir\\file"},
      {"C:\\dir\\.hidden", "C:\\dir\\"},
      {"", ""},
      {"noext", "noext"},
      {"dir.d\\", "dir.d\\"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(OnlyFileName(c.in), c.out) << c.in;
    EXPECT_EQ(OnlyFileName(Wide(c.in)), Wide(c.out)) << c.in;
  }
  EXPECT_EQ(OnlyFileName(u"\u00E9t\u00E9.txt"), u"\u00E9t\u00E9");
  EXPECT_EQ(OnlyFileName("\xE9t\xE9.txt"), "\xE9t\xE9");
}

TEST(GChangeFileExt, NoDotAdded) {
  EXPECT_EQ(GChangeFileExt("a.tar.gz", ".txt"), "a.txt");
  EXPECT_EQ(GChangeFileExt(u"C:\\d.x\\f.bak", u"txt"), u"C:\\d.x\\ftxt");
  EXPECT_EQ(GChangeFileExt("", ".txt"), ".txt");
  EXPECT_EQ(GChangeFileExt(u"f.txt", u""), u"f");
}

TEST(GExtractFileExt, FromTheFirstDotAnywhere) {
  EXPECT_EQ(GExtractFileExt("README"), "");
  EXPECT_EQ(GExtractFileExt(u"README"), u"");
  EXPECT_EQ(GExtractFileExt("C:\\my.dir\\file.txt"), ".dir\\file.txt");
  EXPECT_EQ(GExtractFileExt(u"C:\\my.dir\\file.txt"), u".dir\\file.txt");
  EXPECT_EQ(GExtractFileExt("a.tar.gz"), ".tar.gz");
  EXPECT_EQ(GExtractFileExt(u"x."), u".");
  EXPECT_EQ(GExtractFileExt(u""), u"");
}

TEST(FixPath, AppendsOneBackslash) {
  EXPECT_EQ(FixPath("C:\\dir"), "C:\\dir\\");
  EXPECT_EQ(FixPath(u"C:\\dir\\"), u"C:\\dir\\");
  EXPECT_EQ(FixPath(""), "");
  EXPECT_EQ(FixPath(u""), u"");
  EXPECT_EQ(FixPath("C:/dir/"), "C:/dir/\\");
}

// The 8-bit form keeps exactly one backslash at the join; the UTF-16 form
// only adds one and keeps a doubled one.
TEST(ConcPath, FormsDifferAtADoubledJoin) {
  EXPECT_EQ(ConcPath("C:\\dir\\", "\\f"), "C:\\dir\\f");
  EXPECT_EQ(ConcPath(u"C:\\dir\\", u"\\f"), u"C:\\dir\\\\f");
  EXPECT_EQ(ConcPath("C:\\dir", "f"), "C:\\dir\\f");
  EXPECT_EQ(ConcPath(u"C:\\dir", u"f"), u"C:\\dir\\f");
  EXPECT_EQ(ConcPath("C:\\dir\\", "f"), "C:\\dir\\f");
  EXPECT_EQ(ConcPath(u"C:\\dir\\", u"f"), u"C:\\dir\\f");
  EXPECT_EQ(ConcPath("C:\\dir", "\\f"), "C:\\dir\\f");
  EXPECT_EQ(ConcPath(u"C:\\dir", u"\\f"), u"C:\\dir\\f");
  EXPECT_EQ(ConcPath("", "f"), "f");
  EXPECT_EQ(ConcPath(u"", u"f"), u"f");
  EXPECT_EQ(ConcPath("d", ""), "d");
  EXPECT_EQ(ConcPath(u"d", u""), u"d");
}

TEST(XConcPath, AnsiOneCharacterSeparator) {
  EXPECT_EQ(XConcPath("a", "b", "/"), "a/b");
  EXPECT_EQ(XConcPath("a/", "b", "/"), "a/b");
  EXPECT_EQ(XConcPath("a", "/b", "/"), "a/b");
  EXPECT_EQ(XConcPath("a/", "/b", "/"), "a/b");  // exactly one at the join
  EXPECT_EQ(XConcPath("", "/b", "/"), "/b");
  EXPECT_EQ(XConcPath("a/", "", "/"), "a/");
  // The 8-bit form does not care about a backslash when the separator differs.
  EXPECT_EQ(XConcPath("a\\", "b", "/"), "a\\/b");
}

// A separator longer than one character never matches in the 8-bit form.
TEST(XConcPath, AnsiLongSeparatorNeverMatches) {
  EXPECT_EQ(XConcPath("a::", "::b", "::"), "a::::::b");
  EXPECT_EQ(XConcPath("a", "b", "::"), "a::b");
  EXPECT_EQ(XConcPath("a", "b", ""), "ab");
}

TEST(XConcPath, WideDoublesAndWatchesBackslash) {
  EXPECT_EQ(XConcPath(u"a", u"b", u"/"), u"a/b");
  EXPECT_EQ(XConcPath(u"a/", u"b", u"/"), u"a/b");
  EXPECT_EQ(XConcPath(u"a", u"/b", u"/"), u"a/b");
  EXPECT_EQ(XConcPath(u"a/", u"/b", u"/"), u"a//b");  // doubled, on purpose
  // A trailing backslash suppresses the separator whatever it is.
  EXPECT_EQ(XConcPath(u"a\\", u"b", u"/"), u"a\\b");
  // Longer separators are compared over their full length.
  EXPECT_EQ(XConcPath(u"a::", u"b", u"::"), u"a::b");
  EXPECT_EQ(XConcPath(u"a", u"::b", u"::"), u"a::b");
  EXPECT_EQ(XConcPath(u"a", u"b", u"::"), u"a::b");
  EXPECT_EQ(XConcPath(u"", u"b", u"/"), u"b");
  EXPECT_EQ(XConcPath(u"a", u"", u"/"), u"a");
}

TEST(ConcNames, DottedJoin) {
  EXPECT_EQ(ConcNames("a", ""), "a");
  EXPECT_EQ(ConcNames(u"a", u""), u"a");
  EXPECT_EQ(ConcNames("", "b"), "b");
  EXPECT_EQ(ConcNames(u"a", u"b"), u"a.b");
  EXPECT_EQ(ConcNames("a.", ".b"), "a...b");
  EXPECT_EQ(ConcNames(u"", u""), u"");
}

}  // namespace
}  // namespace quill::Gstrings
