// Compiled help files: topics, the default topic, extraction into a private
// cache with untrusted contents.
#include "quill/htmlhlp/engine/chmarchive.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "quill/htmlhlp/internal/test_viewer.h"

namespace quill::Ghtmlhlp::engine {
namespace {

namespace fs = std::filesystem;
using testing::TestData;
using testing::ReadFile;
using testing::TRecordingViewer;

fs::path FreshFolder(const TRecordingViewer& v, const char* name) {
  const fs::path dir = v.Dir() / name;
  fs::create_directories(dir);
  return dir;
}

TEST(IsCompiledHelpFile, BySignature) {
  EXPECT_TRUE(IsCompiledHelpFile(TestData("test.chm")));
  EXPECT_FALSE(IsCompiledHelpFile(TestData("pages/index.htm")));
  EXPECT_FALSE(IsCompiledHelpFile("/nonexistent.chm"));
}

// Headers that would make chmlib allocate or read out of proportion are
// refused before chmlib sees the file.
TEST(HasSaneHeaders, HeaderBounds) {
  TRecordingViewer v;
  EXPECT_TRUE(HasSaneHeaders(TestData("test.chm")));
  EXPECT_FALSE(HasSaneHeaders(TestData("pages/index.htm")));
  const std::string good = ReadFile(TestData("test.chm"));
  auto patched = [&v, &good](size_t at, uint32_t value, size_t keep = std::string::npos) {
    std::string bytes = good.substr(0, keep);
    if (at + 4 <= bytes.size()) {
      for (int i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i));
    }
    const fs::path p = v.Dir() / "patched.chm";
    std::ofstream(p, std::ios::binary) << bytes;
    return HasSaneHeaders(p);
  };
  const size_t itsp = 120;  // the directory's offset in test.chm
  EXPECT_TRUE(patched(itsp + 0x10, 4096));
  EXPECT_FALSE(patched(itsp + 0x10, 0xF6000000u));  // a 4 GB directory chunk
  EXPECT_FALSE(patched(itsp + 0x10, 128));          // too small to hold an entry
  EXPECT_FALSE(patched(itsp + 0x2C, 2));            // more chunks than the directory holds
  EXPECT_FALSE(patched(0x48, 0x7FFFFFFFu));         // the directory beyond the file
  EXPECT_FALSE(patched(itsp, 0));                   // no "ITSP"
  EXPECT_FALSE(patched(0, 0, 0x40));                // cut inside the first header
  EXPECT_FALSE(patched(0, 0, itsp + 0x20));         // cut inside the directory header
  EXPECT_FALSE(TChmArchive((v.Dir() / "patched.chm").string()).IsOpen());
}

TEST(TChmArchive, OpensOnlyCompiledHelp) {
  EXPECT_TRUE(TChmArchive(TestData("test.chm")).IsOpen());
  EXPECT_FALSE(TChmArchive(TestData("pages/index.htm")).IsOpen());
  EXPECT_FALSE(TChmArchive("/nonexistent.chm").IsOpen());
}

// Topics are found without regard to case and come back as stored.
TEST(TChmArchive, ResolveTopic) {
  TChmArchive chm(TestData("test.chm"));
  EXPECT_EQ(chm.ResolveTopic("/pages/guide/compress.htm"), "/pages/guide/compress.htm");
  EXPECT_EQ(chm.ResolveTopic("/PAGES/Guide/Compress.HTM"), "/pages/guide/compress.htm");
  EXPECT_EQ(chm.ResolveTopic("/pages/missing.htm"), std::nullopt);
  EXPECT_EQ(chm.ResolveTopic("/pages/"), std::nullopt);  // a folder is no topic
  EXPECT_EQ(chm.ResolveTopic("/pages/../pages/index.htm"), std::nullopt);
}

// The default topic is the one the file's "#SYSTEM" names.
TEST(TChmArchive, DefaultTopic) {
  TChmArchive chm(TestData("test.chm"));
  EXPECT_EQ(chm.DefaultTopic(), "/pages/index.htm");
}

// Context numbers through the file's map. The compiler stored the pages'
// full paths from its own machine; the tails of those paths find the pages.
TEST(TChmArchive, ContextTopic) {
  TChmArchive chm(TestData("test.chm"));
  EXPECT_EQ(chm.ContextTopic(7), "/pages/index.htm");
  EXPECT_EQ(chm.ContextTopic(42), "/pages/guide/compress.htm");
  EXPECT_EQ(chm.ContextTopic(8), std::nullopt);
  EXPECT_EQ(chm.ContextTopic(0), std::nullopt);
}

TEST(TChmArchive, ExtractsEveryPage) {
  TRecordingViewer v;
  const fs::path dir = FreshFolder(v, "out");
  TChmArchive chm(TestData("test.chm"));
  uint32_t skipped = 99;
  ASSERT_TRUE(chm.ExtractTo(dir, TExtractLimits{}, &skipped));
  EXPECT_EQ(skipped, 0u);
  EXPECT_EQ(ReadFile(dir / "pages/index.htm"), ReadFile(TestData("pages/index.htm")));
  EXPECT_EQ(ReadFile(dir / "pages/guide/compress.htm"), ReadFile(TestData("pages/guide/compress.htm")));
  EXPECT_EQ(ReadFile(dir / "pages/zzescape.htm"), ReadFile(TestData("pages/zzescape.htm")));
  // The format's own objects ("#SYSTEM", "$FIftiMain", ...) are not pages.
  for (const auto& entry : fs::recursive_directory_iterator(dir)) {
    const std::string name = entry.path().filename().string();
    EXPECT_NE(name[0], '#') << name;
    EXPECT_NE(name[0], '$') << name;
  }
  // Files are the user's alone.
  struct stat st {};
  ASSERT_EQ(stat((dir / "pages/index.htm").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0600u);
}

// Edge case: a file whose object path climbs out of the folder
// ("/../../zzescape.htm"): that object is skipped, nothing is written outside,
// the other pages still arrive, and the path cannot be asked for as a topic.
TEST(TChmArchive, PathTraversalRejected) {
  TRecordingViewer v;
  const fs::path dir = FreshFolder(v, "a/b/out");
  TChmArchive chm(TestData("traversal.chm"));
  ASSERT_TRUE(chm.IsOpen());
  uint32_t skipped = 0;
  EXPECT_TRUE(chm.ExtractTo(dir, TExtractLimits{}, &skipped));
  EXPECT_EQ(skipped, 1u);
  EXPECT_TRUE(fs::exists(dir / "pages/index.htm"));
  for (const fs::path& outside : {v.Dir() / "a/zzescape.htm", v.Dir() / "a/b/zzescape.htm",
                                  v.Dir() / "zzescape.htm", dir / "zzescape.htm"}) {
    EXPECT_FALSE(fs::exists(outside)) << outside;
  }
  EXPECT_EQ(chm.ResolveTopic("/../../zzescape.htm"), std::nullopt);
}

// Limits: an object over the size cap is skipped; more than the total or the
// count fails the extraction.
TEST(TChmArchive, ExtractionLimits) {
  TChmArchive chm(TestData("test.chm"));
  TRecordingViewer v;
  TExtractLimits small_objects;
  small_objects.MaxObjectSize = 215;  // index.htm (222 bytes) and compress.htm (218) are larger
  uint32_t skipped = 0;
  EXPECT_TRUE(chm.ExtractTo(FreshFolder(v, "objects"), small_objects, &skipped));
  EXPECT_EQ(skipped, 2u);
  EXPECT_FALSE(fs::exists(v.Dir() / "objects/pages/guide/compress.htm"));
  EXPECT_TRUE(fs::exists(v.Dir() / "objects/pages/zzescape.htm"));  // 207 bytes

  TExtractLimits small_total;
  small_total.MaxTotalSize = 300;
  EXPECT_FALSE(chm.ExtractTo(FreshFolder(v, "total"), small_total));

  TExtractLimits few;
  few.MaxObjects = 2;
  EXPECT_FALSE(chm.ExtractTo(FreshFolder(v, "count"), few));
}

// The cache root: below XDG_CACHE_HOME when that is absolute, else below
// $HOME/.cache; private (0700), and made private again when it was not.
TEST(HelpCacheRoot, PrivateFolder) {
  TRecordingViewer v;
  const std::optional<fs::path> root = HelpCacheRoot();
  ASSERT_TRUE(root);
  EXPECT_EQ(*root, v.CacheRoot());
  struct stat st {};
  ASSERT_EQ(stat(root->c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);
  chmod(root->c_str(), 0755);
  ASSERT_TRUE(HelpCacheRoot());
  ASSERT_EQ(stat(root->c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);

  const char* old_home = std::getenv("HOME");
  const std::string saved = old_home != nullptr ? old_home : "";
  setenv("XDG_CACHE_HOME", "relative/cache", 1);  // not absolute: ignored
  setenv("HOME", (v.Dir() / "home").c_str(), 1);
  EXPECT_EQ(HelpCacheRoot(), v.Dir() / "home/.cache/quill/help");
  unsetenv("HOME");
  EXPECT_EQ(HelpCacheRoot(), std::nullopt);
  if (old_home != nullptr) setenv("HOME", saved.c_str(), 1);
}

// A cache root that is a link elsewhere is not used.
TEST(HelpCacheRoot, LinkRefused) {
  TRecordingViewer v;
  fs::create_directories(v.Dir() / "cache/quill");
  fs::create_directories(v.Dir() / "elsewhere");
  fs::create_directory_symlink(v.Dir() / "elsewhere", v.Dir() / "cache/quill/help");
  EXPECT_EQ(HelpCacheRoot(), std::nullopt);
}

// The first request extracts; later ones reuse the folder; a changed file
// gets a folder of its own.
TEST(ExtractedFolder, OncePerFileVersion) {
  TRecordingViewer v;
  const fs::path copy = v.Dir() / "copy.chm";
  fs::copy_file(TestData("test.chm"), copy);
  const std::optional<fs::path> root = HelpCacheRoot();
  ASSERT_TRUE(root);
  struct stat st {};
  ASSERT_EQ(stat(copy.c_str(), &st), 0);
  std::optional<fs::path> first;
  {
    TChmArchive chm(copy);
    first = ExtractedFolder(chm, copy, st, *root, TExtractLimits{});
  }
  ASSERT_TRUE(first);
  EXPECT_EQ(first->parent_path(), *root);
  EXPECT_TRUE(fs::exists(*first / "pages/index.htm"));
  fs::remove(*first / "pages/index.htm");  // a reused folder is not refilled
  {
    TChmArchive chm(copy);
    EXPECT_EQ(ExtractedFolder(chm, copy, st, *root, TExtractLimits{}), first);
  }
  EXPECT_FALSE(fs::exists(*first / "pages/index.htm"));

  struct stat changed = st;
  changed.st_mtim.tv_sec += 1;
  TChmArchive chm(copy);
  const std::optional<fs::path> second = ExtractedFolder(chm, copy, changed, *root, TExtractLimits{});
  ASSERT_TRUE(second);
  EXPECT_NE(second, first);
  EXPECT_TRUE(fs::exists(*second / "pages/index.htm"));
  // No temporary folders are left behind.
  for (const auto& entry : fs::directory_iterator(*root)) {
    EXPECT_NE(entry.path().filename().string().rfind(".extract-", 0), 0u) << entry.path();
  }
}

// A failed extraction leaves no folder: the next request tries again.
TEST(ExtractedFolder, FailureLeavesNothing) {
  TRecordingViewer v;
  const std::optional<fs::path> root = HelpCacheRoot();
  ASSERT_TRUE(root);
  struct stat st {};
  ASSERT_EQ(stat(TestData("test.chm").c_str(), &st), 0);
  TChmArchive chm(TestData("test.chm"));
  TExtractLimits tiny;
  tiny.MaxTotalSize = 10;
  EXPECT_EQ(ExtractedFolder(chm, TestData("test.chm"), st, *root, tiny), std::nullopt);
  EXPECT_TRUE(fs::is_empty(*root));
}

}  // namespace
}  // namespace quill::Ghtmlhlp::engine
