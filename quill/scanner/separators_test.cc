// IsSeparator: substring tests over the whole separator text, the two-character
// rule, and how separators cut words.
#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::Probe;
using testing::SetLines;
using testing::WalkDescribed;

// Every code 0..255 alone on a line is a separator exactly when it occurs
// somewhere in the separator text, in every style.
TEST(IsSeparator, SingleCharacterIsMembershipOfAll256Codes) {
  for (TSourceStyle style : {ssPascal, ssC, ssSQL, ssPerl}) {
    Probe sc;
    sc.SetSourceStyle(style);
    for (int code = 0; code < 256; ++code) {
      const UnicodeString line(1, static_cast<char16_t>(code));
      int32_t i = 1;
      const bool expected = sc.Seps().find(static_cast<char16_t>(code)) != UnicodeString::npos;
      EXPECT_EQ(sc.IsSeparator(line, i), expected) << "style " << int(style) << " code " << code;
      EXPECT_EQ(i, 1);
    }
  }
}

// The blank is part of the separator text, so it tests as a separator; the
// scanner never asks, since blanks are skipped first.
TEST(IsSeparator, BlankIsInTheText) {
  Probe sc;
  int32_t i = 1;
  EXPECT_TRUE(sc.IsSeparator(u" ", i));
}

// Every pair of codes 33..126 followed by a letter-free second character is a
// two-character separator exactly when it occurs as a substring.
TEST(IsSeparator, PairsAreSubstringsOfTheText) {
  for (TSourceStyle style : {ssPascal, ssC, ssSQL, ssPerl}) {
    Probe sc;
    sc.SetSourceStyle(style);
    for (char16_t a = 33; a < 127; ++a) {
      for (char16_t b = 33; b < 127; ++b) {
        const UnicodeString line{a, b};
        int32_t i = 1;
        const bool pair = sc.Seps().find(line) != UnicodeString::npos;
        const bool single = sc.Seps().find(a) != UnicodeString::npos;
        EXPECT_EQ(sc.IsSeparator(line, i), pair || single) << char(a) << char(b);
        EXPECT_EQ(i, pair ? 2 : 1) << char(a) << char(b);
      }
    }
  }
}

// A pair is not tried when the second character is a space, nor at the last
// character of the line.
TEST(IsSeparator, NoPairBeforeASpaceOrAtTheEnd) {
  Probe sc;
  sc.SetSeps(u"( )");  // "( " and " )" are substrings of the text
  int32_t i = 1;
  EXPECT_TRUE(sc.IsSeparator(u"( ", i));
  EXPECT_EQ(i, 1);
  i = 2;
  EXPECT_TRUE(sc.IsSeparator(u"x(", i));
  EXPECT_EQ(i, 2);
  // Tab, line feed and carriage return are spaces too.
  for (char16_t space : {u'\t', u'\n', u'\r'}) {
    sc.SetSeps(UnicodeString{u'(', space});
    const UnicodeString line{u'(', space};
    i = 1;
    EXPECT_TRUE(sc.IsSeparator(line, i));
    EXPECT_EQ(i, 1);
  }
  // Vertical tab is not a space: the pair is taken.
  sc.SetSeps(u"(\v");
  i = 1;
  EXPECT_TRUE(sc.IsSeparator(u"(\v", i));
  EXPECT_EQ(i, 2);
}

// Deliberate: a character found only inside a two-character entry is a
// separator on its own (the tilde of "=~" in the Perl style).
TEST(IsSeparator, CharacterOfATwoCharacterEntryCountsAlone) {
  TGScanner sc;
  sc.SetSourceStyle(ssPerl);
  SetLines(sc, {u"a~b"});
  EXPECT_EQ(WalkDescribed(sc), (std::vector<std::string>{"ttIdent 0:1-2 'a'", "ttSeparator 0:2-3 '~'",
                                                          "ttIdent 0:3-4 'b'"}));
}

// Deliberate: a pair inside a longer entry counts as a separator.
TEST(IsSeparator, PairInsideALongerEntryCounts) {
  TGScanner sc;
  sc.SetSeps(u"<=>");
  SetLines(sc, {u"a=>b<=c"});
  EXPECT_EQ(WalkDescribed(sc),
            (std::vector<std::string>{"ttIdent 0:1-2 'a'", "ttSeparator 0:2-4 '=>'", "ttIdent 0:4-5 'b'",
                                      "ttSeparator 0:5-7 '<='", "ttIdent 0:7-8 'c'"}));
}

// Pairs are found across entries only where the text has them side by side:
// the Pascal text has no "()" and no "+=", so those are two separators.
TEST(IsSeparator, AdjacentEntriesAreNotAPair) {
  TGScanner sc;
  SetLines(sc, {u"()+="});
  EXPECT_EQ(WalkDescribed(sc), (std::vector<std::string>{
                                   "ttSeparator 0:1-2 '('", "ttSeparator 0:2-3 ')'",
                                   "ttSeparator 0:3-4 '+'", "ttSeparator 0:4-5 '='"}));
}

TEST(IsSeparator, NonAsciiSeparatorsAreFoundInTheText) {
  TGScanner sc;
  sc.SetSeps(u"\u00A7 \u2192\u2190");
  SetLines(sc, {u"a\u00A7b\u2192\u2190c\u2190"});
  EXPECT_EQ(WalkDescribed(sc), (std::vector<std::string>{
                                   "ttIdent 0:1-2 'a'", "ttSeparator 0:2-3 '\\u00A7'", "ttIdent 0:3-4 'b'",
                                   "ttSeparator 0:4-6 '\\u2192\\u2190'", "ttIdent 0:6-7 'c'",
                                   "ttSeparator 0:7-8 '\\u2190'"}));
}

// Separators cut words; a word runs to a blank or a separator.
TEST(IsSeparator, SeparatorsCutWords) {
  TGScanner sc;
  SetLines(sc, {u"alpha+beta gamma"});
  EXPECT_EQ(WalkDescribed(sc), (std::vector<std::string>{"ttIdent 0:1-6 'alpha'", "ttSeparator 0:6-7 '+'",
                                                          "ttIdent 0:7-11 'beta'", "ttIdent 0:12-17 'gamma'"}));
}

TEST(SetSeps, EmptyTextMakesEverythingOneWord) {
  TGScanner sc;
  sc.SetSeps(u"");
  SetLines(sc, {u"a+b;c d"});
  EXPECT_EQ(WalkDescribed(sc), (std::vector<std::string>{"ttIdent 0:1-6 'a+b;c'", "ttIdent 0:7-8 'd'"}));
}

}  // namespace
}  // namespace quill::Gscanner
