// AdjustLineBreaks: every line break becomes CR LF.
#include "quill/strings/linebreaks.h"

#include <gtest/gtest.h>

#include <vector>

namespace quill::Gstrings {
namespace {

TEST(AdjustLineBreaks, Table) {
  struct Case {
    UnicodeString in, out;
  };
  const std::vector<Case> cases = {
      {u"a\nb", u"a\r\nb"},           // LF alone
      {u"\r", u"\r\n"},               // CR alone, last character
      {u"a\rb", u"a\r\nb"},           // CR alone inside
      {u"\n\r", u"\r\n\r\n"},         // LF CR: two breaks
      {u"a\r\nb", u"a\r\nb"},         // CR LF stays
      {u"", u""},                     // empty
      {u"plain", u"plain"},           // no breaks
      {u"\n\n", u"\r\n\r\n"},         // two LFs
      {u"\r\r\n", u"\r\n\r\n"},       // CR then CR LF
      {u"\r\n\n", u"\r\n\r\n"},       // CR LF then LF
      {u"x\n", u"x\r\n"},             // LF at the end
      {u"\u2028\x85", u"\u2028\x85"}, // other separators untouched
  };
  for (const auto& c : cases) EXPECT_EQ(AdjustLineBreaks(c.in), c.out);
}

TEST(AdjustLineBreaks, UnchangedTextIsReturnedWithoutCopy) {
  // Passed as an rvalue, text already in CR LF form keeps its buffer.
  UnicodeString s(1000, u'x');
  for (size_t i = 10; i < s.size(); i += 50) {
    s[i] = u'\r';
    s[i + 1] = u'\n';
  }
  const char16_t* before = s.data();
  UnicodeString out = AdjustLineBreaks(std::move(s));
  EXPECT_EQ(out.data(), before);
}

TEST(AdjustLineBreaks, ChangedTextIsSizedExactly) {
  UnicodeString s;
  for (int i = 0; i < 100; ++i) s += u"line\n";
  const UnicodeString out = AdjustLineBreaks(s);
  EXPECT_EQ(out.size(), s.size() + 100);
  EXPECT_EQ(out.substr(0, 12), u"line\r\nline\r\n");
}

}  // namespace
}  // namespace quill::Gstrings
