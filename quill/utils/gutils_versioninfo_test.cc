// Tests of GetVersionInfo on small PE files that the tests build byte by byte.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

#include "quill/rtl/unicode.h"
#include "quill/utils/internal/pe_builder.h"
#include "quill/utils/internal/pe_reader.h"
#include "quill/utils/versioninfo.h"

namespace quill::Gutils {
namespace {

using testing::Bytes;
using testing::PeImage;
using testing::PeOptions;
using testing::SampleVersionResource;
using testing::VersionResource;

// A file under /tmp that is removed when the test ends.
class TempFile {
 public:
  explicit TempFile(const Bytes& bytes) {
    static int counter = 0;
    path_ = "/tmp/gutils_pe_" + std::to_string(getpid()) + "_" + std::to_string(++counter) + ".bin";
    std::ofstream out(path_, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
  ~TempFile() { std::remove(path_.c_str()); }
  [[nodiscard]] UnicodeString Name() const { return Utf8ToUnicode(path_); }

 private:
  std::string path_;
};

// A record whose every field holds a marker, to see what was touched.
TGVersionInfoRec Marked() {
  TGVersionInfoRec r;
  for (UnicodeString* f : {&r.CompanyName, &r.FileDescription, &r.FileVersion, &r.InternalName,
                           &r.LegalCopyright, &r.LegalTrademarks, &r.OriginalFilename,
                           &r.ProductVersion, &r.ProductName})
    *f = u"untouched";
  return r;
}

void ExpectUntouched(const TGVersionInfoRec& r) {
  for (const UnicodeString* f : {&r.CompanyName, &r.FileDescription, &r.FileVersion,
                                 &r.InternalName, &r.LegalCopyright, &r.LegalTrademarks,
                                 &r.OriginalFilename, &r.ProductVersion, &r.ProductName})
    EXPECT_EQ(*f, u"untouched");
}

bool ReadImage(const Bytes& img, TGVersionInfoRec& rec) {
  return internal::ReadVersionInfo(internal::MemorySource(img), rec);
}

// A file with a version block: the eight fields are read from it.
TEST(GetVersionInfo, ReadsAllFields) {
  TempFile f(PeImage(SampleVersionResource()));
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(GetVersionInfo(f.Name(), rec));
  EXPECT_EQ(rec.CompanyName, u"Example Corp");
  EXPECT_EQ(rec.FileDescription, u"Sample tool");
  EXPECT_EQ(rec.FileVersion, u"1.2.3.4");
  EXPECT_EQ(rec.InternalName, u"sample");
  EXPECT_EQ(rec.LegalCopyright, u"(c) 2024 Example");
  EXPECT_EQ(rec.OriginalFilename, u"sample.exe");
  EXPECT_EQ(rec.ProductName, u"Sample Suite");
  EXPECT_EQ(rec.ProductVersion, u"1.2");
}

// Edge case / deliberate: with version information present, LegalTrademarks
// keeps the caller's value although the file has one.
TEST(GetVersionInfo, LegalTrademarksNeverTouched) {
  TempFile f(PeImage(SampleVersionResource()));
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(GetVersionInfo(f.Name(), rec));
  EXPECT_EQ(rec.LegalTrademarks, u"untouched");
}

// The 64-bit optional header layout is read as well.
TEST(GetVersionInfo, Pe32PlusImage) {
  PeOptions o;
  o.pe32_plus = true;
  TempFile f(PeImage(SampleVersionResource(), o));
  TGVersionInfoRec rec;
  ASSERT_TRUE(GetVersionInfo(f.Name(), rec));
  EXPECT_EQ(rec.ProductName, u"Sample Suite");
}

// Deliberate: only the first translation counts, whatever the order of the
// string tables in the block.
TEST(GetVersionInfo, FirstTranslationOnly) {
  const Bytes res = VersionResource(
      {{u"040904B0", {{u"CompanyName", u"English Co"}, {u"ProductName", u"Thing"}}},
       {u"040704E4", {{u"CompanyName", u"Deutsche GmbH"}, {u"ProductName", u"Ding"}}}},
      {{0x0407, 0x04E4}, {0x0409, 0x04B0}});
  TGVersionInfoRec rec;
  ASSERT_TRUE(ReadImage(PeImage(res), rec));
  EXPECT_EQ(rec.CompanyName, u"Deutsche GmbH");
  EXPECT_EQ(rec.ProductName, u"Ding");

  const Bytes swapped = VersionResource(
      {{u"040904B0", {{u"CompanyName", u"English Co"}}},
       {u"040704E4", {{u"CompanyName", u"Deutsche GmbH"}}}},
      {{0x0409, 0x04B0}, {0x0407, 0x04E4}});
  ASSERT_TRUE(ReadImage(PeImage(swapped), rec));
  EXPECT_EQ(rec.CompanyName, u"English Co");
}

// The first translation names a table the block does not have: every field
// becomes empty (a second translation with a table is not tried).
TEST(GetVersionInfo, FirstTranslationWithoutTable) {
  const Bytes res = VersionResource({{u"040904B0", {{u"CompanyName", u"English Co"}}}},
                                    {{0x0410, 0x04E4}, {0x0409, 0x04B0}});
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(ReadImage(PeImage(res), rec));
  EXPECT_EQ(rec.CompanyName, u"");
  EXPECT_EQ(rec.ProductName, u"");
  EXPECT_EQ(rec.LegalTrademarks, u"untouched");
}

// Table keys and names match without regard to ASCII case ("040904b0").
TEST(GetVersionInfo, KeysMatchIgnoringCase) {
  const Bytes res = VersionResource({{u"040904b0", {{u"companyname", u"Lower Co"}}}},
                                    {{0x0409, 0x04B0}});
  TGVersionInfoRec rec;
  ASSERT_TRUE(ReadImage(PeImage(res), rec));
  EXPECT_EQ(rec.CompanyName, u"Lower Co");
}

// Fields the table lacks are set to the empty string (not left as they were).
TEST(GetVersionInfo, MissingFieldsBecomeEmpty) {
  const Bytes res = VersionResource({{u"040904B0", {{u"FileVersion", u"9.9"}}}}, {{0x0409, 0x04B0}});
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(ReadImage(PeImage(res), rec));
  EXPECT_EQ(rec.FileVersion, u"9.9");
  EXPECT_EQ(rec.CompanyName, u"");
  EXPECT_EQ(rec.ProductVersion, u"");
  EXPECT_EQ(rec.LegalTrademarks, u"untouched");
}

// A block without a translation list: true, with every read field empty.
TEST(GetVersionInfo, NoTranslationGivesEmptyFields) {
  const Bytes res = VersionResource({{u"040904B0", {{u"CompanyName", u"X"}}}}, {});
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(ReadImage(PeImage(res), rec));
  EXPECT_EQ(rec.CompanyName, u"");
  EXPECT_EQ(rec.LegalTrademarks, u"untouched");
}

// Non-ASCII text and an empty value are read as written.
TEST(GetVersionInfo, UnicodeAndEmptyValues) {
  const Bytes res = VersionResource(
      {{u"040704B0", {{u"CompanyName", u"Gr\u00FC\u00DFe \u20AC"}, {u"FileDescription", u""}}}},
      {{0x0407, 0x04B0}});
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(ReadImage(PeImage(res), rec));
  EXPECT_EQ(rec.CompanyName, u"Gr\u00FC\u00DFe \u20AC");
  EXPECT_EQ(rec.FileDescription, u"");
}

// Edge case: a PE file without version information gives false and leaves
// the record as it was.
TEST(GetVersionInfo, NoVersionResource) {
  PeOptions o;
  o.resource_type = 3;  // an icon, not a version block
  TempFile f(PeImage(SampleVersionResource(), o));
  TGVersionInfoRec rec = Marked();
  EXPECT_FALSE(GetVersionInfo(f.Name(), rec));
  ExpectUntouched(rec);
}

TEST(GetVersionInfo, NoResourceDirectory) {
  PeOptions o;
  o.with_resources = false;
  TGVersionInfoRec rec = Marked();
  EXPECT_FALSE(ReadImage(PeImage(SampleVersionResource(), o), rec));
  ExpectUntouched(rec);
}

// An ELF file (this test program), a text file, a missing file, a folder and
// an empty name all give false and leave the record alone.
TEST(GetVersionInfo, NotPeFiles) {
  TGVersionInfoRec rec = Marked();
  char exe[4096] = {};
  const ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
  ASSERT_GT(n, 0);
  EXPECT_FALSE(GetVersionInfo(Utf8ToUnicode(exe), rec));
  const std::string text = "MZ is not enough: this is a text file\n";
  TempFile t(Bytes(text.begin(), text.end()));
  EXPECT_FALSE(GetVersionInfo(t.Name(), rec));
  EXPECT_FALSE(GetVersionInfo(u"/tmp/gutils_no_such_file.exe", rec));
  EXPECT_FALSE(GetVersionInfo(u"/tmp", rec));
  EXPECT_FALSE(GetVersionInfo(u"", rec));
  TempFile empty(Bytes{});
  EXPECT_FALSE(GetVersionInfo(empty.Name(), rec));
  ExpectUntouched(rec);
}

// Edge case: a truncated PE gives false at every cut, on disk and in memory.
TEST(GetVersionInfo, TruncatedAtEveryLength) {
  const Bytes full = PeImage(SampleVersionResource());
  TGVersionInfoRec rec = Marked();
  for (size_t len = 0; len < full.size(); ++len) {
    const Bytes cut(full.begin(), full.begin() + static_cast<std::ptrdiff_t>(len));
    ASSERT_FALSE(ReadImage(cut, rec)) << "cut at " << len;
  }
  ExpectUntouched(rec);
  TempFile f(Bytes(full.begin(), full.end() - 7));
  EXPECT_FALSE(GetVersionInfo(f.Name(), rec));
  ExpectUntouched(rec);
}

// Corrupt headers and directories give false.
TEST(GetVersionInfo, CorruptStructures) {
  const Bytes good = PeImage(SampleVersionResource());
  TGVersionInfoRec rec = Marked();
  ASSERT_TRUE(ReadImage(good, rec));
  rec = Marked();
  auto corrupt = [&](size_t at, uint32_t value, int width) {
    Bytes b = good;
    if (width == 2) testing::Put16(b, at, value); else testing::Put32(b, at, value);
    return ReadImage(b, rec);
  };
  EXPECT_FALSE(corrupt(0, 'Z' | ('M' << 8), 2));          // DOS signature
  EXPECT_FALSE(corrupt(0x3C, 0xFFFFFFF0u, 4));            // PE header beyond the file
  EXPECT_FALSE(corrupt(0x40, 0x4550 + 1, 2));             // PE signature
  EXPECT_FALSE(corrupt(0x58, 0x999, 2));                  // optional header magic
  EXPECT_FALSE(corrupt(0x44 + 16, 8, 2));                 // optional header too short
  EXPECT_FALSE(corrupt(0x58 + 92, 2, 4));                 // too few data directories
  EXPECT_FALSE(corrupt(0x44 + 2, 0xFFFF, 2));             // section table beyond the file
  EXPECT_FALSE(corrupt(0x58 + 224 + 16, 0x10, 4));        // section raw size too small
  EXPECT_FALSE(corrupt(0x58 + 224 + 20, 0x7FFFFFF0u, 4)); // section data beyond the file
  EXPECT_FALSE(corrupt(0x200 + 14, 0xFFFF, 2));           // entry count beyond the file
  EXPECT_FALSE(corrupt(0x200 + 20, 0x80000000u | 0xFFFF0, 4));  // subdirectory outside
  EXPECT_FALSE(corrupt(0x200 + 20, 0x18, 4));             // type entry is a leaf
  EXPECT_FALSE(corrupt(0x200 + 0x30 + 20, 0x80000000u | 0x30, 4));  // language level loops
  EXPECT_FALSE(corrupt(0x200 + 0x48, 0xFFFFFF00u, 4));    // data address outside
  EXPECT_FALSE(corrupt(0x200 + 0x48 + 4, 0x7FFFFFFF, 4)); // data size beyond the file
  EXPECT_FALSE(corrupt(0x200 + 0x48 + 4, 4, 4));          // data too small for a block
  EXPECT_FALSE(corrupt(0x200 + 0x58, 4, 2));              // root shorter than its header
  ExpectUntouched(rec);
  // A root length beyond the data is cut to the data: still readable.
  EXPECT_TRUE(corrupt(0x200 + 0x58, 0xFFFF, 2));
  EXPECT_EQ(rec.ProductName, u"Sample Suite");
}

// A root block with another key is not a version block.
TEST(GetVersionInfo, WrongRootKey) {
  Bytes res = SampleVersionResource();
  res[6] = 'X';  // "XS_VERSION_INFO"
  TGVersionInfoRec rec = Marked();
  EXPECT_FALSE(ReadImage(PeImage(res), rec));
  ExpectUntouched(rec);
}

// A string value without its null is read up to its own block's end and no
// further, even though the next block's text follows.
TEST(GetVersionInfo, UnterminatedTextStopsAtBlockEnd) {
  const Bytes res = VersionResource(
      {{u"040904B0", {{u"CompanyName", u"Example"}, {u"FileDescription", u"Next"}}}},
      {{0x0409, 0x04B0}});
  Bytes img = PeImage(res);
  Bytes text;
  for (char16_t c : std::u16string(u"Example")) testing::Append16(text, c);
  auto it = std::search(img.begin(), img.end(), text.begin(), text.end());
  ASSERT_NE(it, img.end());
  const size_t null_at = static_cast<size_t>(it - img.begin()) + text.size();
  ASSERT_EQ(img[null_at], 0);
  img[null_at] = 'Z';  // the CompanyName block (48 bytes) ends right after this unit
  TGVersionInfoRec rec;
  ASSERT_TRUE(ReadImage(img, rec));
  EXPECT_EQ(rec.CompanyName, u"ExampleZ");
  EXPECT_EQ(rec.FileDescription, u"Next");
}

// Flipping any single byte of a good image never makes the reader fail
// badly; each answer is either false or a complete record.
TEST(GetVersionInfo, EverySingleByteCorruption) {
  const Bytes good = PeImage(SampleVersionResource());
  for (size_t i = 0; i < good.size(); ++i) {
    for (uint8_t v : {uint8_t{0x00}, uint8_t{0xFF}, static_cast<uint8_t>(good[i] ^ 0x80)}) {
      Bytes b = good;
      b[i] = v;
      TGVersionInfoRec rec = Marked();
      if (!ReadImage(b, rec)) {
        ExpectUntouched(rec);
      } else {
        EXPECT_EQ(rec.LegalTrademarks, u"untouched");
      }
    }
  }
}

// Module 0 is this program, an ELF file; other handles name no module.
TEST(GetModuleVersionInfo, ProgramIsNotPe) {
  TGVersionInfoRec rec = Marked();
  EXPECT_FALSE(GetModuleVersionInfo(0, rec));
  EXPECT_FALSE(GetModuleVersionInfo(12345, rec));
  ExpectUntouched(rec);
}

// GetVersionTranslation names the table GetVersionInfo read: the first
// translation's key, upper-case, whether or not that table exists.
TEST(GetVersionTranslation, FirstTranslationKey) {
  const Bytes res = VersionResource({{u"040904B0", {{u"CompanyName", u"English Co"}}}},
                                    {{0x0410, 0x04e4}, {0x0409, 0x04B0}});
  UnicodeString key = u"untouched";
  ASSERT_TRUE(internal::ReadVersionTranslation(internal::MemorySource(PeImage(res)), key));
  EXPECT_EQ(key, u"041004E4");
}

// No translation list: true, with the empty key.
TEST(GetVersionTranslation, NoTranslationGivesEmptyKey) {
  const Bytes res = VersionResource({{u"040904B0", {{u"CompanyName", u"X"}}}}, {});
  UnicodeString key = u"untouched";
  ASSERT_TRUE(internal::ReadVersionTranslation(internal::MemorySource(PeImage(res)), key));
  EXPECT_EQ(key, u"");
}

// Edge case: false, the key untouched, where GetVersionInfo gives false (no
// version resource, a missing file, an empty name).
TEST(GetVersionTranslation, FalseWhereGetVersionInfoIsFalse) {
  PeOptions o;
  o.resource_type = 3;  // an icon, not a version block
  UnicodeString key = u"untouched";
  EXPECT_FALSE(internal::ReadVersionTranslation(internal::MemorySource(PeImage(SampleVersionResource(), o)), key));
  EXPECT_FALSE(GetVersionTranslation(u"/nonexistent/file.exe", key));
  EXPECT_FALSE(GetVersionTranslation(u"", key));
  EXPECT_EQ(key, u"untouched");
  // A file on disk gives what the image gives.
  TempFile f(PeImage(VersionResource({{u"040904B0", {{u"CompanyName", u"X"}}}}, {{0x0409, 0x04B0}})));
  ASSERT_TRUE(GetVersionTranslation(f.Name(), key));
  EXPECT_EQ(key, u"040904B0");
}

}  // namespace
}  // namespace quill::Gutils
