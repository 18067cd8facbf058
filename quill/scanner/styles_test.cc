// Source styles: the configuration each installs, ssNone, setting the same
// style again, and the block-comment text in both directions.
#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"

namespace quill::Gscanner {
namespace {

struct Expected {
  TSourceStyle style;
  const char16_t* seps;
  char16_t str_quote;
  char16_t extra;
  char16_t char_quote;
  const char16_t* block;
};

// The four tables, character for character (the line comment is checked by
// the comment tests, as it has no property).
const Expected kStyles[] = {
    {ssPascal, u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= <> { } // (* *) #", u'\'', u'#',
     u'\'', u"(*-*),{-}"},
    {ssC, u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= != { } // # /* */ ->", u'"', u'\\', u'\'',
     u"/*-*/"},
    {ssSQL, u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= <> != { } // # /* */ ->", u'\'', u'\\',
     u'\'', u"/*-*/"},
    {ssPerl, u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= != { } # -> =~", u'"', u'\\', u'\'', u""},
};

TEST(SetSourceStyle, InstallsEachStylesConfiguration) {
  for (const Expected& e : kStyles) {
    TGScanner sc;
    sc.SetSourceStyle(ssNone);  // so that ssPascal is a change too
    sc.SetSourceStyle(e.style);
    EXPECT_EQ(sc.SourceStyle(), e.style);
    EXPECT_EQ(sc.Seps(), e.seps) << int(e.style);
    EXPECT_EQ(sc.StrQuote(), e.str_quote) << int(e.style);
    EXPECT_EQ(sc.ExtraCharSymbol(), e.extra) << int(e.style);
    EXPECT_EQ(sc.CharQuote(), e.char_quote) << int(e.style);
    EXPECT_EQ(sc.BlockComments(), e.block) << int(e.style);
  }
}

// Edge case: setting the current style again changes nothing, even after
// hand edits; another style and back reinstalls the table.
TEST(SetSourceStyle, SameStyleAgainKeepsHandEdits) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  sc.SetSeps(u"+ -");
  sc.SetStrQuote(u'`');
  sc.SetCharQuote(u'"');
  sc.SetExtraCharSymbol(u'%');
  sc.SetBlockComments(u"<-->");
  sc.SetSourceStyle(ssC);
  EXPECT_EQ(sc.Seps(), u"+ -");
  EXPECT_EQ(sc.StrQuote(), u'`');
  EXPECT_EQ(sc.CharQuote(), u'"');
  EXPECT_EQ(sc.ExtraCharSymbol(), u'%');
  EXPECT_EQ(sc.BlockComments(), u"<-->");

  sc.SetSourceStyle(ssPerl);
  sc.SetSourceStyle(ssC);
  EXPECT_EQ(sc.Seps(), kStyles[1].seps);
  EXPECT_EQ(sc.StrQuote(), u'"');
  EXPECT_EQ(sc.CharQuote(), u'\'');
  EXPECT_EQ(sc.ExtraCharSymbol(), u'\\');
  EXPECT_EQ(sc.BlockComments(), u"/*-*/");
}

// Edge case: ssNone after ssC keeps the C separators, quotes and "/*-*/".
TEST(SetSourceStyle, NoneKeepsTheSettingsInForce) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  sc.SetSourceStyle(ssNone);
  EXPECT_EQ(sc.SourceStyle(), ssNone);
  EXPECT_EQ(sc.Seps(), kStyles[1].seps);
  EXPECT_EQ(sc.StrQuote(), u'"');
  EXPECT_EQ(sc.CharQuote(), u'\'');
  EXPECT_EQ(sc.ExtraCharSymbol(), u'\\');
  EXPECT_EQ(sc.BlockComments(), u"/*-*/");
  // The C line comment is still in force as well.
  sc.Source().Add(u"a // b");
  sc.FirstToken();
  EXPECT_EQ(sc.RealStr(), u"a");
  sc.NextToken();
  EXPECT_EQ(sc.TokType(), ttUnknown);  // the extra empty token: b was a comment
}

TEST(SetSourceStyle, NoneFromANewScannerKeepsPascal) {
  TGScanner sc;
  sc.SetSourceStyle(ssNone);
  EXPECT_EQ(sc.Seps(), kStyles[0].seps);
  EXPECT_EQ(sc.ExtraCharSymbol(), u'#');
  EXPECT_EQ(sc.BlockComments(), u"(*-*),{-}");
}

TEST(GetBlockComments, EmptyWithoutPairs) {
  TGScanner sc;
  sc.SetBlockComments(u"");
  EXPECT_EQ(sc.BlockComments(), u"");
  sc.SetSourceStyle(ssPerl);
  EXPECT_EQ(sc.BlockComments(), u"");
}

// Edge case: a blank after the comma yields the same two pairs.
TEST(SetBlockComments, BlankAfterCommaGivesTheSamePairs) {
  TGScanner sc;
  sc.SetBlockComments(u"");
  sc.SetBlockComments(u"(*-*), {-}");
  EXPECT_EQ(sc.BlockComments(), u"(*-*),{-}");
}

// Edge case: an item without a dash yields no pair.
TEST(SetBlockComments, ItemWithoutDashIsSkipped) {
  TGScanner sc;
  sc.SetBlockComments(u"rem,/*-*/,#");
  EXPECT_EQ(sc.BlockComments(), u"/*-*/");
}

// Edge case: the first dash divides; further dashes belong to the closer.
TEST(SetBlockComments, FirstDashDivides) {
  TGScanner sc;
  sc.SetBlockComments(u"<!---->");
  EXPECT_EQ(sc.BlockComments(), u"<!---->");
  sc.Source().Add(u"a <!-- x --> b");
  // Opener "<!", closer "--->": never found here, so b is inside the comment.
  sc.FirstToken();
  EXPECT_EQ(sc.RealStr(), u"a");
  sc.NextToken();
  EXPECT_EQ(sc.RealStr(), u"");
  sc.SetBlockComments(u"a-b-c");
  EXPECT_EQ(sc.BlockComments(), u"a-b-c");
}

TEST(SetBlockComments, BlanksSeparateAndDoubleQuotesGroup) {
  TGScanner sc;
  sc.SetBlockComments(u"(*-*) {-}");
  EXPECT_EQ(sc.BlockComments(), u"(*-*),{-}");
  sc.SetBlockComments(u"\"<< - >>\"");
  EXPECT_EQ(sc.BlockComments(), u"<< - >>");
  sc.SetBlockComments(u"");
  EXPECT_EQ(sc.BlockComments(), u"");
}

TEST(SetBlockComments, OpenersAreTriedInListOrder) {
  TGScanner sc;
  sc.Source().Add(u"x (*) y *) z");
  // "(*" with ")" listed first: the comment closes at the first ")" after
  // the opener's first character.
  sc.SetBlockComments(u"(*-),(*-*)");
  sc.FirstToken();
  std::u16string seen;
  for (; !sc.EOS(); sc.NextToken()) seen += sc.RealStr() + u"|";
  EXPECT_EQ(seen, u"x|y|*)|z||");
}

// Edge case: TokLength of a one-character separator is 1.
TEST(TokLength, OneCharacterSeparatorIsOne) {
  TGScanner sc;
  sc.Source().Add(u";");
  sc.FirstToken();
  EXPECT_EQ(sc.TokType(), ttSeparator);
  EXPECT_EQ(sc.TokLength(), 1);
  sc.Source().Clear();
  sc.Source().Add(u":=");
  sc.FirstToken();
  EXPECT_EQ(sc.TokLength(), 2);
}

}  // namespace
}  // namespace quill::Gscanner
