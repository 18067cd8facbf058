// Tests of ExpandEnvVars and DHGetFileName.
#include <gtest/gtest.h>
#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "quill/rtl/unicode.h"
#include "quill/utils/environment.h"

namespace quill::Gutils {
namespace {

UnicodeString WithNull(std::u16string_view s) {
  UnicodeString r(s);
  r.push_back(u'\0');
  return r;
}

class ExpandEnvVarsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("GUTILS_A", "alpha", 1);
    setenv("GUTILS_B", "beta", 1);
    setenv("GUTILS_EMPTY", "", 1);
    setenv("GUTILS_UTF8", "gr\xC3\xBC\xC3\x9F" "e", 1);
    unsetenv("GUTILS_UNSET");
  }
  void TearDown() override {
    for (const char* n : {"GUTILS_A", "GUTILS_B", "GUTILS_EMPTY", "GUTILS_UTF8"}) unsetenv(n);
  }
};

// Edge case / deliberate: a text without variables comes back followed by
// one null character.
TEST_F(ExpandEnvVarsTest, PlainTextGetsOneNull) {
  const UnicodeString r = ExpandEnvVars(u"no variables here");
  EXPECT_EQ(r.size(), 18u);
  EXPECT_EQ(r, WithNull(u"no variables here"));
  EXPECT_EQ(r.back(), u'\0');
}

// An empty text gives one null unit.
TEST_F(ExpandEnvVarsTest, EmptyGivesNull) { EXPECT_EQ(ExpandEnvVars(u""), UnicodeString(1, u'\0')); }

TEST_F(ExpandEnvVarsTest, ExpandsNames) {
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_A%"), WithNull(u"alpha"));
  EXPECT_EQ(ExpandEnvVars(u"x %GUTILS_A%/%GUTILS_B% y"), WithNull(u"x alpha/beta y"));
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_A%%GUTILS_B%"), WithNull(u"alphabeta"));
  EXPECT_EQ(ExpandEnvVars(u"[%GUTILS_EMPTY%]"), WithNull(u"[]"));
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_UTF8%"), WithNull(u"gr\u00FC\u00DFe"));
}

// Unknown names are left as they are, percent signs included, and scanning
// goes on after the closing percent sign.
TEST_F(ExpandEnvVarsTest, UnknownNamesKept) {
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_UNSET%"), WithNull(u"%GUTILS_UNSET%"));
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_UNSET%GUTILS_A%"), WithNull(u"%GUTILS_UNSET%GUTILS_A%"));
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_UNSET%%GUTILS_A%"), WithNull(u"%GUTILS_UNSET%alpha"));
}

// Names are case-sensitive, as the environment is.
TEST_F(ExpandEnvVarsTest, NamesCaseSensitive) {
  EXPECT_EQ(ExpandEnvVars(u"%gutils_a%"), WithNull(u"%gutils_a%"));
}

// Lone and doubled percent signs stay.
TEST_F(ExpandEnvVarsTest, LoneAndDoubledPercent) {
  EXPECT_EQ(ExpandEnvVars(u"100%"), WithNull(u"100%"));
  EXPECT_EQ(ExpandEnvVars(u"%%"), WithNull(u"%%"));
  EXPECT_EQ(ExpandEnvVars(u"50% of %GUTILS_A%"), WithNull(u"50% of %GUTILS_A%"));
  EXPECT_EQ(ExpandEnvVars(u"%GUTILS_A% 50%"), WithNull(u"alpha 50%"));
  EXPECT_EQ(ExpandEnvVars(u"%A=B%"), WithNull(u"%A=B%"));
}

// Linked into this test program, the routine names the program itself.
TEST(DHGetFileName, StaticLinkNamesProgram) {
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(DHGetFileName(), Utf8ToUnicode(exe.string()));
}

// Loaded as a shared library, it names the library. The library is looked
// for beside the build's unit folders (it exists once the whole project is
// built).
TEST(DHGetFileName, SharedLibraryNamesLibrary) {
  std::filesystem::path dir = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  std::filesystem::path lib;
  for (int up = 0; up < 4 && lib.empty(); ++up, dir = dir.parent_path())
    for (const char* name : {"libquill23.so", "lib/libquill23.so"})
      if (std::filesystem::exists(dir / name)) lib = std::filesystem::canonical(dir / name);
  if (lib.empty()) GTEST_SKIP() << "libquill23.so is not built";
  void* h = dlopen(lib.c_str(), RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(h, nullptr) << dlerror();
  using Fn = UnicodeString (*)();
  auto fn = reinterpret_cast<Fn>(dlsym(h, "_ZN5quill6Gutils13DHGetFileNameB5cxx11Ev"));
  ASSERT_NE(fn, nullptr);
  EXPECT_EQ(fn(), Utf8ToUnicode(lib.string()));
  dlclose(h);
}

}  // namespace
}  // namespace quill::Gutils
