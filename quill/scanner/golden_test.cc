// Token-by-token walks over a realistic file per style, compared with lists
// written by hand from the scanning rules (testdata/<file>.tokens).
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

std::string DataPath(const std::string& name) {
  return std::string(QUILL_SOURCE_DIR) + "/quill/scanner/testdata/" + name;
}

// The expected list without its comment lines.
std::vector<std::string> Expected(const std::string& name) {
  std::ifstream in(DataPath(name + ".tokens"));
  EXPECT_TRUE(in.good()) << name;
  std::vector<std::string> out;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line.rfind("//", 0) == 0) continue;
    out.push_back(line);
  }
  return out;
}

// "line:start-end type 'text'", with " nolocalize" for tokens scanned while
// Localize was off.
std::vector<std::string> Actual(TGScanner& sc, const std::string& name) {
  sc.Source().LoadFromFile(DataPath(name));
  std::vector<std::string> out;
  for (const TGToken& t : testing::Walk(sc)) {
    std::string s = std::to_string(t.TokLine) + ":" + std::to_string(t.TokStart) + "-" +
                    std::to_string(t.TokEnd) + " " + testing::TypeName(t.TokType) + " '" +
                    testing::Escaped(t.RealStr) + "'";
    if (!t.TokLocalize) s += " nolocalize";
    out.push_back(s);
  }
  return out;
}

void ExpectSameLists(const std::vector<std::string>& actual, const std::vector<std::string>& expected) {
  const size_t n = std::max(actual.size(), expected.size());
  for (size_t i = 0; i < n; ++i) {
    EXPECT_EQ(i < actual.size() ? actual[i] : "<none>", i < expected.size() ? expected[i] : "<none>")
        << "token " << i;
  }
}

TEST(GoldenWalk, PascalUnit) {
  TGScanner sc;
  ExpectSameLists(Actual(sc, "sample.pas"), Expected("sample.pas"));
}

TEST(GoldenWalk, CHeader) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  ExpectSameLists(Actual(sc, "sample.h"), Expected("sample.h"));
}

TEST(GoldenWalk, SqlQueryWithReservedWords) {
  TGScanner sc;
  sc.SetSourceStyle(ssSQL);
  sc.RWords().SetCommaText(u"select,from,where,and,as");
  ExpectSameLists(Actual(sc, "sample.sql"), Expected("sample.sql"));
}

TEST(GoldenWalk, PerlScript) {
  TGScanner sc;
  sc.SetSourceStyle(ssPerl);
  ExpectSameLists(Actual(sc, "sample.pl"), Expected("sample.pl"));
}

TEST(GoldenWalk, PlainTextInStyleNone) {
  TGScanner sc;
  sc.SetSourceStyle(ssNone);
  ExpectSameLists(Actual(sc, "sample.txt"), Expected("sample.txt"));
}

// TokPos over a whole file equals the offset in the text joined by CR LF.
TEST(GoldenWalk, TokPosMatchesTheJoinedText) {
  for (const char* name : {"sample.pas", "sample.h", "sample.sql", "sample.pl", "sample.txt"}) {
    TGScanner sc;
    sc.SetSourceStyle(ssC);
    sc.Source().LoadFromFile(DataPath(name));
    UnicodeString joined;
    for (int32_t i = 0; i < sc.Source().Count(); ++i) {
      if (i > 0) joined += u"\r\n";
      joined += sc.Source().Get(i);
    }
    for (const TGToken& t : testing::Walk(sc)) {
      if (t == TGToken{}) continue;
      const UnicodeString& line = sc.Source().Get(t.TokLine);
      ASSERT_LE(static_cast<size_t>(t.TokPos), joined.size()) << name;
      EXPECT_EQ(joined.substr(static_cast<size_t>(t.TokPos), 1), line.substr(static_cast<size_t>(t.TokStart) - 1, 1))
          << name << " " << testing::Describe(t);
    }
  }
}

}  // namespace
}  // namespace quill::Gscanner
