// Name/value splitting: GetNameAndValueSep and GetNameAndValue in both forms.
#include "quill/strings/namevalue.h"

#include <gtest/gtest.h>

namespace quill::Gstrings {
namespace {

TEST(GetNameAndValueSep, MultiCharSeparatorDiffersBetweenForms) {
  // 8-bit: skips the whole separator.
  AnsiString n, v;
  GetNameAndValueSep("::", "key::val", n, v);
  EXPECT_EQ(n, "key");
  EXPECT_EQ(v, "val");
  // UTF-16: skips exactly one character, deliberately.
  UnicodeString un, uv;
  GetNameAndValueSep(u"::", u"key::val", un, uv);
  EXPECT_EQ(un, u"key");
  EXPECT_EQ(uv, u":val");
}

TEST(GetNameAndValueSep, NotFound) {
  AnsiString n = "old", v = "old";
  GetNameAndValueSep("=", "plain", n, v);
  EXPECT_EQ(n, "plain");
  EXPECT_EQ(v, "");
  UnicodeString un = u"old", uv = u"old";
  GetNameAndValueSep(u"=", u"plain", un, uv);
  EXPECT_EQ(un, u"plain");
  EXPECT_EQ(uv, u"");
}

TEST(GetNameAndValueSep, FirstOccurrenceAndNoTrimming) {
  AnsiString n, v;
  GetNameAndValueSep("=", " a = b=c ", n, v);
  EXPECT_EQ(n, " a ");
  EXPECT_EQ(v, " b=c ");
  UnicodeString un, uv;
  GetNameAndValueSep(u"=", u" a = b=c ", un, uv);
  EXPECT_EQ(un, u" a ");
  EXPECT_EQ(uv, u" b=c ");
}

TEST(GetNameAndValueSep, SeparatorAtEdges) {
  AnsiString n, v;
  GetNameAndValueSep("=", "=x", n, v);
  EXPECT_EQ(n, "");
  EXPECT_EQ(v, "x");
  GetNameAndValueSep("=", "x=", n, v);
  EXPECT_EQ(n, "x");
  EXPECT_EQ(v, "");
  UnicodeString un, uv;
  GetNameAndValueSep(u"=", u"=x", un, uv);
  EXPECT_EQ(un, u"");
  EXPECT_EQ(uv, u"x");
  GetNameAndValueSep(u"=", u"x=", un, uv);
  EXPECT_EQ(un, u"x");
  EXPECT_EQ(uv, u"");
}

TEST(GetNameAndValueSep, EmptySeparator) {
  // 8-bit: never found.
  AnsiString n, v = "old";
  GetNameAndValueSep("", "abc", n, v);
  EXPECT_EQ(n, "abc");
  EXPECT_EQ(v, "");
  // UTF-16: found at position 1 of a non-empty text.
  UnicodeString un, uv;
  GetNameAndValueSep(u"", u"abc", un, uv);
  EXPECT_EQ(un, u"");
  EXPECT_EQ(uv, u"bc");
  // ... and not in the empty text.
  GetNameAndValueSep(u"", u"", un, uv);
  EXPECT_EQ(un, u"");
  EXPECT_EQ(uv, u"");
}

TEST(GetNameAndValueSep, EmptyText) {
  AnsiString n = "x", v = "y";
  GetNameAndValueSep("=", "", n, v);
  EXPECT_EQ(n, "");
  EXPECT_EQ(v, "");
}

TEST(GetNameAndValueSep, TextMayAliasOutputs) {
  AnsiString s = "k=v";
  AnsiString v;
  GetNameAndValueSep("=", s, s, v);
  EXPECT_EQ(s, "k");
  EXPECT_EQ(v, "v");
  UnicodeString us = u"k=v";
  UnicodeString un;
  GetNameAndValueSep(u"=", us, un, us);
  EXPECT_EQ(un, u"k");
  EXPECT_EQ(us, u"v");
}

TEST(GetNameAndValue, UsesEqualsSign) {
  AnsiString n, v;
  GetNameAndValue("Font=Arial", n, v);
  EXPECT_EQ(n, "Font");
  EXPECT_EQ(v, "Arial");
  UnicodeString un, uv;
  GetNameAndValue(u"Font=Arial", un, uv);
  EXPECT_EQ(un, u"Font");
  EXPECT_EQ(uv, u"Arial");
  GetNameAndValue(u"a:b", un, uv);
  EXPECT_EQ(un, u"a:b");
  EXPECT_EQ(uv, u"");
}

}  // namespace
}  // namespace quill::Gstrings
