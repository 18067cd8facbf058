// FitToTemplate with "*" templates. Templates holding "?" are never passed:
// matching that reaches a "?" does not return.
#include "quill/strings/templates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::Gstrings {
namespace {

struct Case {
  std::string s;
  std::string t;
  bool fits;
};

UnicodeString W(const std::string& s) {
  UnicodeString r;
  for (unsigned char c : s) r.push_back(c);
  return r;
}

TEST(FitToTemplate, CaseSensitiveTable) {
  const std::vector<Case> cases = {
      {"", "", true},                 // both empty
      {"abc", "", false},             // empty template
      {"", "a", false},               // empty text
      {"", "*", true},                // "*" alone
      {"anything", "*", true},        // "*" alone
      {"abc", "abc", true},           // literal
      {"abcd", "abc", false},         // must end at the template's end
      {"ab", "abc", false},           // text too short
      {"a.txt", "*.txt", true},       // leading star
      {"a.txt.txt", "*.txt", true},   // later occurrence tried
      {"a.txt.doc", "*.txt", false},  // occurrence not at the end
      {"abc", "ab*", true},           // trailing star
      {"ab", "ab*", true},            // trailing star, empty tail
      {"abcd", "a*c", false},         // must end with the last literal
      {"abc", "a*c", true},
      {"axbxc", "a*b*c", true},       // two stars
      {"axcxb", "a*b*c", false},
      {"abab", "*ab", true},
      {"xaab", "x*ab", true},         // overlapping candidates
      {"abc", "a**", false},          // "**" not at the end: never matches
      {"abc", "**", false},           // "*" followed by "*" in the middle
      {"ABC", "abc", false},          // case counts
      {"abc", "b*", false},           // leading literal required
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FitToTemplate(c.s, c.t, true), c.fits) << c.s << " ~ " << c.t;
    EXPECT_EQ(FitToTemplate(W(c.s), W(c.t), true), c.fits) << c.s << " ~ " << c.t;
  }
}

TEST(FitToTemplate, CaseInsensitive) {
  EXPECT_TRUE(FitToTemplate(u"Readme.TXT", u"*.txt", false));
  EXPECT_FALSE(FitToTemplate(u"Readme.TXT", u"*.txt", true));
  EXPECT_TRUE(FitToTemplate(std::string("Readme.TXT"), std::string("*.txt"), false));
  EXPECT_FALSE(FitToTemplate(std::string("Readme.TXT"), std::string("*.txt"), true));
  // Locale-aware lowering in the UTF-16 form.
  EXPECT_TRUE(FitToTemplate(u"\u00C9T\u00C9.DOC", u"\u00E9t\u00E9*", false));
}

TEST(FitToTemplate, StarMatchesEverything) {
  for (const char* s : {"", "a", "*", "?", "long text with * and ?"}) {
    for (bool cs : {false, true}) {
      EXPECT_TRUE(FitToTemplate(std::string(s), std::string("*"), cs)) << s;
      EXPECT_TRUE(FitToTemplate(W(s), u"*", cs)) << s;
    }
  }
}

TEST(FitToTemplate, EmptyTemplate) {
  for (bool cs : {false, true}) {
    EXPECT_TRUE(FitToTemplate(u"", u"", cs));
    EXPECT_FALSE(FitToTemplate(u"abc", u"", cs));
    EXPECT_FALSE(FitToTemplate(std::string("abc"), std::string(""), cs));
  }
}

TEST(FitToTemplate, ManyStarsStayFast) {
  // A template that would make a plain backtracking matcher explode.
  const std::string s(2000, 'a');
  std::string t;
  for (int i = 0; i < 30; ++i) t += "*a";
  t += "b";
  EXPECT_FALSE(FitToTemplate(s, t, true));
  EXPECT_TRUE(FitToTemplate(s + "b", t, true));
}

}  // namespace
}  // namespace quill::Gstrings
