// Win9x_LoadStringW over PE images built byte by byte in the test.
#include "quill/locales/loadstring.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/unicode.h"
#include "quill/utils/internal/pe_builder.h"

namespace quill::Glocales {
namespace {

namespace peb = Gutils::testing;
using quill::testing::ScopedEnv;

constexpr uint32_t kRtString = 6;

// Block 1 holds IDs 0..15, block 2 IDs 16..31 (in German and English).
std::array<std::u16string, 16> Block1() {
  std::array<std::u16string, 16> s;
  s[0] = u"zero";
  s[1] = u"";  // an empty string
  s[2] = u"Hello";
  s[3] = std::u16string(300, u'x');
  s[15] = u"last \u00E9\U0001F600";
  return s;
}

peb::Bytes SampleImage(bool pe32_plus = false) {
  std::array<std::u16string, 16> de, en;
  de[0] = u"Hallo 16";
  en[0] = u"Hello 16";
  return peb::PeImageWithResources({{kRtString, 1, 0x0409, peb::StringTableData(Block1())},
                                    {kRtString, 2, 0x0407, peb::StringTableData(de)},
                                    {kRtString, 2, 0x0409, peb::StringTableData(en)},
                                    {16, 1, 0x0409, peb::Bytes(8, 0)}},
                                   pe32_plus);
}

class Module {
 public:
  explicit Module(const peb::Bytes& image) : h_(LoadResourceModuleFromMemory(image)) {}
  ~Module() { FreeResourceModule(h_); }
  HMODULE get() const { return h_; }

 private:
  HMODULE h_;
};

std::u16string Load(HMODULE m, uint32_t id) {
  std::vector<char16_t> buf(70000, u'#');
  const int32_t n = Win9x_LoadStringW(m, id, buf.data(), static_cast<int32_t>(buf.size()));
  return n > 0 ? std::u16string(buf.data(), static_cast<size_t>(n)) : std::u16string();
}

TEST(Win9x_LoadStringW, ReadsEachStringOfABlock) {
  Module m(SampleImage());
  ASSERT_NE(m.get(), 0u);
  EXPECT_EQ(Load(m.get(), 0), u"zero");
  EXPECT_EQ(Load(m.get(), 2), u"Hello");
  EXPECT_EQ(Load(m.get(), 3), std::u16string(300, u'x'));
  EXPECT_EQ(Load(m.get(), 15), u"last \u00E9\U0001F600");
  // Entries nobody filled are empty.
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 7, nullptr, 0), 0);
}

TEST(Win9x_LoadStringW, SixtyFourBitImage) {
  Module m(SampleImage(true));
  EXPECT_EQ(Load(m.get(), 2), u"Hello");
}

TEST(Win9x_LoadStringW, NoBufferReturnsTheLength) {
  // Edge case: without a buffer the length comes back and nothing is copied.
  Module m(SampleImage());
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, nullptr, 0), 5);
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, nullptr, 100), 5);
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 3, nullptr, 1), 300);
}

TEST(Win9x_LoadStringW, BufferOfOneUnitReturnsZeroAndWritesNothing) {
  // Edge case: BufferMax 1 gives 0 and leaves the buffer as it was.
  Module m(SampleImage());
  char16_t buf[4] = {u'#', u'#', u'#', u'#'};
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, 1), 0);
  EXPECT_EQ(buf[0], u'#');
}

TEST(Win9x_LoadStringW, BufferOfZeroUnitsReturnsMinusOneAndWritesNothing) {
  // Deliberate: N = BufferMax - 1 = -1 is returned as it is.
  Module m(SampleImage());
  char16_t buf[2] = {u'#', u'#'};
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, 0), -1);
  EXPECT_EQ(buf[0], u'#');
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, -5), -6);
  EXPECT_EQ(buf[0], u'#');
  // The smallest count does not wrap round into a copy.
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, INT32_MIN), INT32_MIN);
  EXPECT_EQ(buf[0], u'#');
}

TEST(Win9x_LoadStringW, ShortBufferGetsATruncatedTerminatedString) {
  Module m(SampleImage());
  char16_t buf[8];
  std::fill(std::begin(buf), std::end(buf), u'#');
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, 3), 2);
  EXPECT_EQ(std::u16string(buf, 4), std::u16string(u"He\0#", 4));
  // Exactly length + 1: the whole string and its terminator.
  std::fill(std::begin(buf), std::end(buf), u'#');
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, 6), 5);
  EXPECT_EQ(std::u16string(buf, 7), std::u16string(u"Hello\0#", 7));
  // A buffer of 2 holds one unit.
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 2, buf, 2), 1);
  EXPECT_EQ(std::u16string(buf, 2), std::u16string(u"H\0", 2));
}

TEST(Win9x_LoadStringW, EmptyStringWritesATerminatorWhenThereIsRoom) {
  Module m(SampleImage());
  char16_t buf[4] = {u'#', u'#', u'#', u'#'};
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 1, buf, 4), 0);
  EXPECT_EQ(buf[0], u'\0');
  EXPECT_EQ(buf[1], u'#');
  buf[0] = u'#';
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 1, buf, 2), 0);
  EXPECT_EQ(buf[0], u'\0');
  // BufferMax 1 and 0: nothing written, 0 and -1.
  buf[0] = u'#';
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 1, buf, 1), 0);
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 1, buf, 0), -1);
  EXPECT_EQ(buf[0], u'#');
}

TEST(Win9x_LoadStringW, NegativeIdentifierIsNegated) {
  // An ID whose high 16 bits are all ones is -ID: 0xFFFFFFFE is 2.
  Module m(SampleImage());
  EXPECT_EQ(Load(m.get(), 0xFFFFFFFEu), u"Hello");
  EXPECT_EQ(Load(m.get(), 0u - 15u), u"last \u00E9\U0001F600");
  // Only all-ones high bits count: 0xFFF00002 is not negated; it names
  // block (0xFFF00002 >> 4 AND 0xFFFF) + 1 = 1, entry 2. Negated it would
  // name block 0x1000.
  EXPECT_EQ(Load(m.get(), 0xFFF00002u), u"Hello");
}

TEST(Win9x_LoadStringW, MissingBlockOrModuleGivesZero) {
  Module m(SampleImage());
  char16_t buf[4] = {u'#'};
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 40, buf, 4), 0);  // block 3 is not there
  EXPECT_EQ(buf[0], u'#');
  EXPECT_EQ(Win9x_LoadStringW(0, 2, buf, 4), 0);
  EXPECT_EQ(Win9x_LoadStringW(0x12345, 2, buf, 4), 0);
  // Block 65536 (ID 0xFFFF0 .. 0xFFFFF) cannot exist.
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 0xFFFF5, nullptr, 0), 0);
}

TEST(Win9x_LoadStringW, LanguageFollowsTheUserLocale) {
  Module m(SampleImage());
  {
    ScopedEnv env{{"LC_ALL", "de_DE.UTF-8"}, {"QUILL_SYSTEM_LOCALE", "en-US"}};
    EXPECT_EQ(Load(m.get(), 16), u"Hallo 16");
  }
  {
    ScopedEnv env{{"LC_ALL", "fr_FR.UTF-8"}, {"QUILL_SYSTEM_LOCALE", "de-DE"}};
    EXPECT_EQ(Load(m.get(), 16), u"Hallo 16");  // the system locale's next
  }
  {
    ScopedEnv env{{"LC_ALL", "fr_FR.UTF-8"}, {"QUILL_SYSTEM_LOCALE", "fr-FR"}};
    EXPECT_EQ(Load(m.get(), 16), u"Hello 16");  // then English
  }
  // A neutral-language table wins over all.
  std::array<std::u16string, 16> neutral, de;
  neutral[0] = u"neutral";
  de[0] = u"deutsch";
  Module n(peb::PeImageWithResources({{kRtString, 2, 0x0407, peb::StringTableData(de)},
                                      {kRtString, 2, 0x0000, peb::StringTableData(neutral)}}));
  ScopedEnv env{{"LC_ALL", "de_DE.UTF-8"}};
  EXPECT_EQ(Load(n.get(), 16), u"neutral");
  // None of the preferred languages: the first one.
  std::array<std::u16string, 16> ja;
  ja[0] = u"\u65E5\u672C";
  Module j(peb::PeImageWithResources({{kRtString, 2, 0x0411, peb::StringTableData(ja)},
                                      {kRtString, 2, 0x0412, peb::StringTableData(de)}}));
  EXPECT_EQ(Load(j.get(), 16), u"\u65E5\u672C");
}

TEST(Win9x_LoadStringW, BlocksCutShortStayInBounds) {
  // The entry before the asked one claims more units than the block has.
  peb::Bytes bad;
  peb::Append16(bad, 100);  // entry 0 says 100 units, only 2 follow
  peb::Append16(bad, u'a');
  peb::Append16(bad, u'b');
  Module m(peb::PeImageWithResources({{kRtString, 1, 0x0409, bad}}));
  // Entry 0 itself gives the units that are there.
  EXPECT_EQ(Load(m.get(), 0), u"ab");
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 0, nullptr, 0), 2);
  // Entry 1 lies beyond the end: 0.
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 1, nullptr, 0), 0);
  // An empty block has no entries at all.
  Module e(peb::PeImageWithResources({{kRtString, 1, 0x0409, {}}}));
  EXPECT_EQ(Win9x_LoadStringW(e.get(), 0, nullptr, 0), 0);
}

TEST(Win9x_LoadStringW, LibraryModuleAnswersTheResourceStrings) {
  const HMODULE q = QuillModuleHandle();
  EXPECT_EQ(Load(q, 65520), u"Stack is full");
  EXPECT_EQ(Load(q, 65521), u"Stack is empty");
  EXPECT_EQ(Load(q, 65522), u"Source stream is not defined");
  EXPECT_EQ(Load(q, 65523), u"Destination stream is not defined");
  EXPECT_EQ(Load(q, 65524), u"Wrong stream format");
  EXPECT_EQ(Win9x_LoadStringW(q, 65520, nullptr, 0), 13);
  // The rest of block 4096 is empty; other blocks are not there.
  char16_t buf[4] = {u'#'};
  EXPECT_EQ(Win9x_LoadStringW(q, 65525, buf, 4), 0);
  EXPECT_EQ(buf[0], u'\0');
  buf[0] = u'#';
  EXPECT_EQ(Win9x_LoadStringW(q, 65519, buf, 4), 0);
  EXPECT_EQ(buf[0], u'#');
  // -65520 (0xFFFF0010) is 65520.
  EXPECT_EQ(Load(q, 0u - 65520u), u"Stack is full");
  // The library's own handle cannot be freed.
  EXPECT_FALSE(FreeResourceModule(q));
  EXPECT_EQ(Load(q, 65520), u"Stack is full");
}

TEST(LoadResourceModule, FromFileAndClose) {
  const std::string path = ::testing::TempDir() + "quill_loadstring_test.dll";
  const peb::Bytes image = SampleImage();
  {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
  }
  const HMODULE h = LoadResourceModule(Utf8ToUnicode(path));
  ASSERT_NE(h, 0u);
  EXPECT_EQ(Load(h, 2), u"Hello");
  EXPECT_TRUE(FreeResourceModule(h));
  // Closed: the handle names nothing any more.
  EXPECT_EQ(Win9x_LoadStringW(h, 2, nullptr, 0), 0);
  EXPECT_FALSE(FreeResourceModule(h));
  std::remove(path.c_str());
}

TEST(LoadResourceModule, RejectsWhatIsNoPeImage) {
  EXPECT_EQ(LoadResourceModule(u""), 0u);
  EXPECT_EQ(LoadResourceModule(u"/nonexistent/quill.dll"), 0u);
  const std::string path = ::testing::TempDir() + "quill_loadstring_not_pe.txt";
  { std::ofstream(path) << "MZ but not a PE file"; }
  EXPECT_EQ(LoadResourceModule(Utf8ToUnicode(path)), 0u);
  std::remove(path.c_str());
  const peb::Bytes empty;
  EXPECT_EQ(LoadResourceModuleFromMemory(empty), 0u);
  peb::Bytes cut = SampleImage();
  cut.resize(0x50);
  EXPECT_EQ(LoadResourceModuleFromMemory(cut), 0u);
  EXPECT_FALSE(FreeResourceModule(0));
}

TEST(LoadResourceModule, ImageWithoutResourcesOpensButFindsNothing) {
  peb::PeOptions opt;
  opt.with_resources = false;
  Module m(peb::PeImage({}, opt));
  ASSERT_NE(m.get(), 0u);
  EXPECT_EQ(Win9x_LoadStringW(m.get(), 0, nullptr, 0), 0);
}

TEST(LoadResourceModule, HandlesAreDistinctAndIndependent) {
  std::array<std::u16string, 16> other;
  other[2] = u"Other";
  Module a(SampleImage());
  Module b(peb::PeImageWithResources({{kRtString, 1, 0x0409, peb::StringTableData(other)}}));
  EXPECT_NE(a.get(), b.get());
  EXPECT_NE(a.get(), QuillModuleHandle());
  EXPECT_EQ(Load(a.get(), 2), u"Hello");
  EXPECT_EQ(Load(b.get(), 2), u"Other");
}

TEST(Win9x_LoadStringW, EveryTruncationOfAnImageIsSafe) {
  // Every prefix of a valid image: no crash, no read outside, and either
  // nothing or the right text.
  const peb::Bytes image = SampleImage();
  for (size_t len = 0; len <= image.size(); ++len) {
    const peb::Bytes cut(image.begin(), image.begin() + static_cast<std::ptrdiff_t>(len));
    const HMODULE h = LoadResourceModuleFromMemory(cut);
    if (h == 0) continue;
    const std::u16string got = Load(h, 2);
    EXPECT_TRUE(got.empty() || got == u"Hello") << len;
    FreeResourceModule(h);
  }
}

}  // namespace
}  // namespace quill::Glocales
