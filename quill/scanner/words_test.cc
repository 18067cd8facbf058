// Words: identifiers by the low byte of their first character, reserved
// words, variables and functions, numbers and unknown words.
#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::Probe;
using testing::SetLines;
using testing::WalkDescribed;

using Strings = std::vector<std::string>;

TGTokenType TypeOfWord(std::u16string_view word) {
  TGScanner sc;
  sc.SetSeps(u"");  // the whole line is one word
  sc.SetBlockComments(u"");
  SetLines(sc, {word});
  sc.FirstToken();
  return sc.TokType();
}

// Deliberate: only the low byte of the first character is tested, so every
// first code whose low byte lies in 'A'..'z' (65..122) starts an identifier;
// checked over all 256 low bytes, with and without a high byte.
TEST(WordClass, IdentifierByTheLowByteOfAll256Codes) {
  for (int low = 0; low < 256; ++low) {
    for (int high : {0x00, 0x01, 0x4E}) {
      const char16_t c = static_cast<char16_t>(high << 8 | low);
      // Spaces are skipped and the Pascal line comment needs two slashes; the
      // remaining first characters form a one-character word followed by 'x'.
      if (c == 9 || c == 10 || c == 13 || c == 32) continue;
      const UnicodeString word{c, u'x'};
      const bool ident = low >= 65 && low <= 122;
      const TGTokenType t = TypeOfWord(word);
      if (ident)
        EXPECT_EQ(t, ttIdent) << "code " << int(c);
      else
        EXPECT_EQ(t, ttUnknown) << "code " << int(c);  // "?x" is no number
    }
  }
}

TEST(WordClass, IdentifierCharactersBeyondLetters) {
  for (const char16_t* w : {u"[a", u"\\a", u"]a", u"^a", u"_a", u"`a", u"Zed", u"abc"})
    EXPECT_EQ(TypeOfWord(w), ttIdent) << testing::Escaped(w);
  for (const char16_t* w : {u"{a", u"|a", u"~a", u"@a", u"$a", u"\u00E9t\u00E9", u"\u00C0"})
    EXPECT_EQ(TypeOfWord(w), ttUnknown) << testing::Escaped(w);
  // U+0141 has the low byte 'A', U+015F the low byte '_'.
  EXPECT_EQ(TypeOfWord(u"\u0141\u00F3d\u017A"), ttIdent);
  EXPECT_EQ(TypeOfWord(u"\u015F"), ttIdent);
}

TEST(WordClass, ReservedWordsThenVariablesThenFunctions) {
  TGScanner sc;
  sc.RWords().Add(u"begin");
  sc.Vars().Add(u"Count");
  sc.Vars().Add(u"both");
  sc.Funcs().Add(u"Length");
  sc.Funcs().Add(u"Both");
  sc.Funcs().Add(u"BEGIN");
  SetLines(sc, {u"BEGIN count LENGTH both other"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttReservedWord 0:1-6 'BEGIN'", "ttVariable 0:7-12 'count'",
                                        "ttFunction 0:13-19 'LENGTH'", "ttVariable 0:20-24 'both'",
                                        "ttIdent 0:25-30 'other'"}));
}

// Lists apply to identifiers only: a number-looking entry never matches.
TEST(WordClass, ListsDoNotApplyToNumbers) {
  TGScanner sc;
  sc.RWords().Add(u"42");
  SetLines(sc, {u"42"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttNumber 0:1-3 '42'"}));
}

TEST(WordClass, TokStrIsTheLowerCasedText) {
  TGScanner sc;
  SetLines(sc, {u"MixedCase \u00C4RGER"});
  sc.FirstToken();
  EXPECT_EQ(sc.GetToken(0).TokStr, u"mixedcase");
  EXPECT_EQ(sc.GetToken(0).RealStr, u"MixedCase");
  EXPECT_EQ(sc.GetToken(1).RealStr, u"\u00C4RGER");
  EXPECT_EQ(sc.GetToken(1).TokStr, u"\u00E4rger");
}

// Consequences kept: the point and signs are separators, 1e5 is a number,
// 12ab is unknown.
TEST(Numbers, PointAndSignAreSeparators) {
  TGScanner sc;
  SetLines(sc, {u"3.14 -2 1e5 12ab 2E3+5"});
  EXPECT_EQ(WalkDescribed(sc),
            (Strings{"ttNumber 0:1-2 '3'", "ttSeparator 0:2-3 '.'", "ttNumber 0:3-5 '14'",
                     "ttSeparator 0:6-7 '-'", "ttNumber 0:7-8 '2'", "ttNumber 0:9-12 '1e5'",
                     "ttUnknown 0:13-17 '12ab'", "ttNumber 0:18-21 '2E3'", "ttSeparator 0:21-22 '+'",
                     "ttNumber 0:22-23 '5'"}));
}

TEST(IsNumber, WholeTextMustConvert) {
  Probe sc;
  for (const char16_t* yes : {u"0", u"007", u"1e5", u"1E5", u"-1", u"+2e-3", u"1e+5"})
    EXPECT_TRUE(sc.isNumber(yes)) << testing::Escaped(yes);
  for (const char16_t* no : {u"", u"12ab", u"0x10", u"$10", u"1.2.3", u"e5", u"INF", u"NaN", u"1 2"})
    EXPECT_FALSE(sc.isNumber(no)) << testing::Escaped(no);
  // A very long run of digits takes the general conversion.
  EXPECT_TRUE(sc.isNumber(UnicodeString(200, u'9')));
}

TEST(Numbers, DigitsFollowedByLettersAreUnknown) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  SetLines(sc, {u"0x1F 10L 2.5f"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttUnknown 0:1-5 '0x1F'", "ttUnknown 0:6-9 '10L'", "ttNumber 0:10-11 '2'",
                                        "ttSeparator 0:11-12 '.'", "ttUnknown 0:12-14 '5f'"}));
}

}  // namespace
}  // namespace quill::Gscanner
