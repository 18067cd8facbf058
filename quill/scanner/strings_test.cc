// String constants, Pascal character codes, C character constants and the
// scanner's own escape reading, in every style.
#include <typeinfo>

#include <gtest/gtest.h>

#include "quill/scanner/gscanner.h"
#include "quill/scanner/internal/test_support.h"

namespace quill::Gscanner {
namespace {

using testing::Probe;
using testing::SetLines;
using testing::Walk;
using testing::WalkDescribed;

using Strings = std::vector<std::string>;

Strings Tokens(TSourceStyle style, std::u16string_view line) {
  TGScanner sc;
  sc.SetSourceStyle(style);
  SetLines(sc, {line});
  return WalkDescribed(sc);
}

// ---- Pascal ----

TEST(PascalString, QuotesRemovedDoubledQuoteGivesOne) {
  EXPECT_EQ(Tokens(ssPascal, u"s := 'it''s';"),
            (Strings{"ttIdent 0:1-2 's'", "ttSeparator 0:3-5 ':='", "ttString 0:6-13 'it's'",
                     "ttSeparator 0:13-14 ';'"}));
  EXPECT_EQ(Tokens(ssPascal, u"''"), (Strings{"ttString 0:1-3 ''"}));
  EXPECT_EQ(Tokens(ssPascal, u"''''"), (Strings{"ttString 0:1-5 '''"}));
}

// An unterminated string is ttUnknown with the characters collected, and
// TokEnd one past the end of the line.
TEST(PascalString, UnterminatedIsUnknownToTheLineEnd) {
  TGScanner sc;
  SetLines(sc, {u"x 'abc", u"y"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttIdent 0:1-2 'x'", "ttUnknown 0:3-7 'abc'", "ttIdent 1:1-2 'y'"}));
}

// A quoted a followed by #13#10 and a quoted b is one string.
TEST(PascalString, CodesBetweenQuotedPiecesJoinTheString) {
  EXPECT_EQ(Tokens(ssPascal, u"'a'#13#10'b'"), (Strings{"ttString 0:1-13 'a\\u000D\\u000Ab'"}));
}

// Edge case: #13 and #10 written together are one string of two characters.
TEST(PascalCharCode, TwoCodesAreOneString) {
  EXPECT_EQ(Tokens(ssPascal, u"#13#10"), (Strings{"ttString 0:1-7 '\\u000D\\u000A'"}));
}

// Edge case: #65 alone is a ttChar A (TokStr lower-cased).
TEST(PascalCharCode, OneCodeIsAChar) {
  TGScanner sc;
  SetLines(sc, {u"#65"});
  sc.FirstToken();
  EXPECT_EQ(sc.TokType(), ttChar);
  EXPECT_EQ(sc.RealStr(), u"A");
  EXPECT_EQ(sc.TokStr(), u"a");
  EXPECT_EQ(sc.GetToken(0).TokStr, u"a");
  EXPECT_EQ(sc.TokEnd(), 4);
}

// By the steps, #13'a'#10 is one string: the string reader itself goes on
// over codes after the quoted piece.
TEST(PascalCharCode, CodeQuotedPieceCodeIsOneString) {
  EXPECT_EQ(Tokens(ssPascal, u"#13'a'#10;"),
            (Strings{"ttString 0:1-10 '\\u000Da\\u000A'", "ttSeparator 0:10-11 ';'"}));
}

// Edge case: #70000 raises the general exception class with the code text.
TEST(PascalCharCode, AboveFFFFRaisesNotACharacter) {
  TGScanner sc;
  SetLines(sc, {u"x #70000 y"});
  try {
    sc.FirstToken();
    FAIL() << "no exception";
  } catch (const Exception& e) {
    EXPECT_EQ(typeid(e), typeid(Exception));  // not EScannerError
    EXPECT_EQ(e.Message(), u"\"#70000\" not a character");
  }
  // 65535 itself is a character.
  SetLines(sc, {u"#65535"});
  sc.FirstToken();
  EXPECT_EQ(sc.RealStr(), UnicodeString(1, u'\xFFFF'));
}

TEST(PascalCharCode, ErrorTextRunsFromTheSymbolToTheEndOfTheRun) {
  TGScanner sc;
  SetLines(sc, {u"#$10000x"});
  try {
    sc.FirstToken();
    FAIL() << "no exception";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"\"#$10000\" not a character");
  }
}

// Deliberate: hexadecimal letters are not part of a dollar code, so #$1F is
// the code $1 followed by the word F, and #$0D is code 0 and the word D.
TEST(PascalCharCode, DollarCodeStopsAtLetters) {
  EXPECT_EQ(Tokens(ssPascal, u"#$41"), (Strings{"ttChar 0:1-5 'A'"}));
  EXPECT_EQ(Tokens(ssPascal, u"#$1F"), (Strings{"ttChar 0:1-4 '\\u0001'", "ttIdent 0:4-5 'F'"}));
  EXPECT_EQ(Tokens(ssPascal, u"#$0D"), (Strings{"ttChar 0:1-4 '\\u0000'", "ttIdent 0:4-5 'D'"}));
  EXPECT_EQ(Tokens(ssPascal, u"#$0A0"), (Strings{"ttChar 0:1-4 '\\u0000'", "ttIdent 0:4-6 'A0'"}));
  EXPECT_EQ(Tokens(ssPascal, u"#$20#$21"), (Strings{"ttString 0:1-9 ' !'"}));
}

TEST(PascalCharCode, EmptyCodeIsCharacterZero) {
  EXPECT_EQ(Tokens(ssPascal, u"# x"), (Strings{"ttChar 0:1-2 '\\u0000'", "ttIdent 0:3-4 'x'"}));
  EXPECT_EQ(Tokens(ssPascal, u"#$"), (Strings{"ttChar 0:1-3 '\\u0000'"}));
}

// The conversions' own errors pass through: a second dollar reaches the hex
// reader, a dollar after digits the integer conversion.
TEST(PascalCharCode, MalformedRunsRaiseTheConversionErrors) {
  TGScanner sc;
  SetLines(sc, {u"#$$"});
  EXPECT_THROW(sc.FirstToken(), Gstrings::EGStringsError);
  SetLines(sc, {u"#1$2"});
  EXPECT_THROW(sc.FirstToken(), EConvertError);
  SetLines(sc, {u"#99999999999"});
  EXPECT_THROW(sc.FirstToken(), EConvertError);
}

// Deliberate: the run is judged by the low byte, so U+0131 (low byte '1')
// joins the run, which the integer conversion then rejects.
TEST(PascalCharCode, RunIsJudgedByTheLowByte) {
  TGScanner sc;
  SetLines(sc, {u"#6\u0131"});
  EXPECT_THROW(sc.FirstToken(), EConvertError);
  // U+0141 has the low byte 'A': not part of the run.
  EXPECT_EQ(Tokens(ssPascal, u"#66\u0141"), (Strings{"ttChar 0:1-4 'B'", "ttIdent 0:4-5 '\\u0141'"}));
}

// After an error the queue is as it was and the next call scans on from the
// position the failed scan started at.
TEST(PascalCharCode, ErrorLeavesTheQueueUnchanged) {
  TGScanner sc;
  SetLines(sc, {u"a b c d e f g h i j k #70000 z"});
  sc.FirstToken();
  const TGScannerBookmark before = sc.GetBookmark();
  EXPECT_THROW(sc.NextToken(), Exception);
  EXPECT_TRUE(sc.GetBookmark().TokenQueue == before.TokenQueue);
  EXPECT_EQ(sc.GetBookmark().LastTokenIndex, before.LastTokenIndex);
}

TEST(RunPascalExtraChar, ZeroAndNoMoveWithoutTheSymbol) {
  Probe sc;
  int32_t i = 1;
  EXPECT_EQ(sc.RunPascalExtraChar(u"65", i), 0);
  EXPECT_EQ(i, 1);
  i = 1;
  EXPECT_EQ(sc.RunPascalExtraChar(u"#65x", i), u'A');
  EXPECT_EQ(i, 4);
}

// The Pascal string reader opens strings with a code as well.
TEST(RunPascalString, CodesOutsideQuotesAndFalseWhenOpen) {
  Probe sc;
  UnicodeString str = u"old";
  int32_t i = 1;
  EXPECT_TRUE(sc.RunPascalString(u"#65'b'#67 x", i, str));
  EXPECT_EQ(str, u"AbC");
  EXPECT_EQ(i, 10);
  i = 1;
  EXPECT_FALSE(sc.RunPascalString(u"'ab''", i, str));
  EXPECT_EQ(str, u"ab'");
  EXPECT_EQ(i, 6);
  i = 1;
  EXPECT_TRUE(sc.RunPascalString(u"x", i, str));  // nothing to read
  EXPECT_EQ(str, u"");
  EXPECT_EQ(i, 1);
}

// ---- C ----

TEST(CString, QuotesRemovedEscapesResolved) {
  EXPECT_EQ(Tokens(ssC, u"s = \"a\\tb\\\"c\";"),
            (Strings{"ttIdent 0:1-2 's'", "ttSeparator 0:3-4 '='", "ttString 0:5-14 'a\\u0009b\"c'",
                     "ttSeparator 0:14-15 ';'"}));
}

// Outside the SQL style a doubled quote ends one string and opens the next.
TEST(CString, DoubledQuoteIsTwoStrings) {
  EXPECT_EQ(Tokens(ssC, u"\"a\"\"b\""), (Strings{"ttString 0:1-4 'a'", "ttString 0:4-7 'b'"}));
}

TEST(CString, UnterminatedIsUnknown) {
  EXPECT_EQ(Tokens(ssC, u"\"abc\\\""), (Strings{"ttUnknown 0:1-7 'abc\"'"}));
}

// The scanner's escape table, row by row.
TEST(RunCExtraChar, TableRows) {
  struct Row {
    const char16_t* text;
    char16_t result;
    int32_t after;
  };
  const Row rows[] = {
      {u"\\n", 10, 3},  {u"\\r", 13, 3},    {u"\\t", 9, 3},     {u"\\v", 11, 3},  {u"\\a", 7, 3},
      {u"\\b", 8, 3},   {u"\\f", 12, 3},    {u"\\\\", u'\\', 3}, {u"\\'", u'\'', 3}, {u"\\\"", u'"', 3},
      {u"\\q", u'q', 3}, {u"\\N", u'N', 3},
      // Deliberate: \x gives the first decimal digit of the value.
      {u"\\x41", u'6', 5},   // 0x41 = 65
      {u"\\x7", u'7', 4},    // 7
      {u"\\xff", u'2', 5},   // 255
      {u"\\x1234", u'2', 6},  // three digits at most: 0x123 = 291
      {u"\\x0", u'0', 4},
      {u"\\xg", 0, 3},        // no digit: 0, past the x
      {u"\\x", 0, 3},
      // Deliberate: a digit gives itself and only that digit is read.
      {u"\\0", u'0', 3},  {u"\\101", u'1', 3}, {u"\\7", u'7', 3},
      // A backslash at the end of the line gives 0 and steps past the end.
      {u"\\", 0, 3},
  };
  for (const Row& r : rows) {
    Probe sc;
    sc.SetSourceStyle(ssC);
    int32_t i = 1;
    EXPECT_EQ(sc.RunCExtraChar(r.text, i), r.result) << testing::Escaped(r.text);
    EXPECT_EQ(i, r.after) << testing::Escaped(r.text);
  }
}

TEST(RunCExtraChar, ZeroAndNoMoveWithoutTheSymbol) {
  Probe sc;
  sc.SetSourceStyle(ssC);
  int32_t i = 1;
  EXPECT_EQ(sc.RunCExtraChar(u"n", i), 0);
  EXPECT_EQ(i, 1);
}

// \8 and \9 go through the octal reader, which raises its own error.
TEST(RunCExtraChar, EightAndNineRaiseTheOctalError) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  SetLines(sc, {u"\"\\8\""});
  EXPECT_THROW(sc.FirstToken(), Gstrings::EGStringsError);
  SetLines(sc, {u"\"\\9\""});
  try {
    sc.FirstToken();
    FAIL() << "no exception";
  } catch (const Gstrings::EGStringsError& e) {
    EXPECT_EQ(e.Message(), u"9 is not an oct digit");
  }
}

TEST(CString, EscapesInsideStrings) {
  EXPECT_EQ(Tokens(ssC, u"\"\\x41\\101\\n\""), (Strings{"ttString 0:1-13 '6101\\u000A'"}));
}

// Edge case: 'a' is a ttChar whose TokEnd is the closing quote's position;
// the next scan starts at that closing quote.
TEST(CChar, EndsOnTheClosingQuote) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  SetLines(sc, {u"'a'"});
  sc.FirstToken();
  EXPECT_EQ(sc.TokType(), ttChar);
  EXPECT_EQ(sc.RealStr(), u"a");
  EXPECT_EQ(sc.TokStart(), 1);
  EXPECT_EQ(sc.TokEnd(), 3);
  // The closing quote opens a second constant, which finds no closing quote.
  sc.NextToken();
  EXPECT_EQ(sc.TokType(), ttChar);
  EXPECT_EQ(sc.RealStr(), UnicodeString(1, u'\0'));
  EXPECT_EQ(sc.TokStart(), 3);
  EXPECT_EQ(sc.TokEnd(), 5);
}

// The closing quote swallows the character after it.
TEST(CChar, ClosingQuoteSwallowsTheNextCharacter) {
  EXPECT_EQ(Tokens(ssC, u"c = 'x'; d"),
            (Strings{"ttIdent 0:1-2 'c'", "ttSeparator 0:3-4 '='", "ttChar 0:5-7 'x'",
                     "ttChar 0:7-9 '\\u0000'", "ttIdent 0:10-11 'd'"}));
  // '' followed by a quote: the second quote is taken, the third closes.
  EXPECT_EQ(Tokens(ssC, u"'''"), (Strings{"ttChar 0:1-3 '''", "ttChar 0:3-5 '\\u0000'"}));
}

// Deliberate: after an escape the closing quote is compared one place too
// far, so '\n' gives 0 unless another quote follows.
TEST(CChar, EscapeLooksOnePlaceTooFar) {
  EXPECT_EQ(Tokens(ssC, u"'\\n';"), (Strings{"ttChar 0:1-5 '\\u0000'", "ttSeparator 0:5-6 ';'"}));
  EXPECT_EQ(Tokens(ssC, u"'\\n''"), (Strings{"ttChar 0:1-5 '\\u000A'", "ttChar 0:5-7 '\\u0000'"}));
}

// Character constants exist only in the C style.
TEST(CChar, OtherStylesReadTheQuoteAsSeparatorOrString) {
  EXPECT_EQ(Tokens(ssPerl, u"'a'"), (Strings{"ttSeparator 0:1-2 '''", "ttIdent 0:2-3 'a'", "ttSeparator 0:3-4 '''"}));
  // In the SQL style the quote is the string quote.
  EXPECT_EQ(Tokens(ssSQL, u"'a'"), (Strings{"ttString 0:1-4 'a'"}));
}

TEST(RunCChar, ZeroWithoutTheQuote) {
  Probe sc;
  sc.SetSourceStyle(ssC);
  int32_t i = 1;
  EXPECT_EQ(sc.RunCChar(u"a'", i), 0);
  EXPECT_EQ(i, 1);
}

// Edge case: L directly before a double-quoted ab is one ttLString; a
// lower-case l is an identifier followed by a string.
TEST(LString, CapitalLPrefix) {
  EXPECT_EQ(Tokens(ssC, u"L\"ab\""), (Strings{"ttLString 0:1-6 'ab'"}));
  EXPECT_EQ(Tokens(ssC, u"l\"ab\""), (Strings{"ttIdent 0:1-2 'l'", "ttString 0:2-6 'ab'"}));
  EXPECT_EQ(Tokens(ssC, u"L \"ab\""), (Strings{"ttIdent 0:1-2 'L'", "ttString 0:3-7 'ab'"}));
  EXPECT_EQ(Tokens(ssC, u"LL\"ab\""), (Strings{"ttIdent 0:1-3 'LL'", "ttString 0:3-7 'ab'"}));
}

// An unterminated L string stays ttIdent holding what was collected.
TEST(LString, UnterminatedStaysIdent) {
  EXPECT_EQ(Tokens(ssC, u"L\"ab"), (Strings{"ttIdent 0:1-5 'ab'"}));
}

TEST(LString, EveryStyleWithItsQuote) {
  EXPECT_EQ(Tokens(ssPascal, u"L'ab'"), (Strings{"ttLString 0:1-6 'ab'"}));
  EXPECT_EQ(Tokens(ssSQL, u"L'a''b'"), (Strings{"ttLString 0:1-8 'a'b'"}));
  EXPECT_EQ(Tokens(ssPerl, u"L\"ab\""), (Strings{"ttLString 0:1-6 'ab'"}));
}

// A reserved word L is not an identifier, so no string is read after it.
TEST(LString, OnlyForAnIdentifier) {
  TGScanner sc;
  sc.SetSourceStyle(ssC);
  sc.RWords().Add(u"l");
  SetLines(sc, {u"L\"ab\""});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttReservedWord 0:1-2 'L'", "ttString 0:2-6 'ab'"}));
}

// ---- SQL ----

// Edge case: 'it''s' is one string whose text is it's.
TEST(SqlString, DoubledQuote) {
  EXPECT_EQ(Tokens(ssSQL, u"'it''s'"), (Strings{"ttString 0:1-8 'it's'"}));
}

// Deliberate: the backslash escapes work in SQL strings as well.
TEST(SqlString, BackslashEscapesToo) {
  EXPECT_EQ(Tokens(ssSQL, u"'a\\nb' \"q\""),
            (Strings{"ttString 0:1-7 'a\\u000Ab'", "ttSeparator 0:8-9 '\"'", "ttIdent 0:9-10 'q'",
                     "ttSeparator 0:10-11 '\"'"}));
}

// ---- ssNone ----

// ssNone reads strings the C way (no doubled quotes) with the settings that
// were in force.
TEST(NoneStyle, StringsAreReadTheCWay) {
  TGScanner sc;
  sc.SetSourceStyle(ssNone);  // Pascal settings stay
  SetLines(sc, {u"'it''s' #65"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttString 0:1-5 'it'", "ttString 0:5-8 's'", "ttSeparator 0:9-10 '#'",
                                        "ttNumber 0:10-12 '65'"}));
}

TEST(NoneStyle, EscapeSymbolOfThePascalSettingsInStrings) {
  // With the Pascal settings kept, '#' is the escape symbol of the C reader.
  TGScanner sc;
  sc.SetSourceStyle(ssNone);
  SetLines(sc, {u"'a#nb'"});
  EXPECT_EQ(WalkDescribed(sc), (Strings{"ttString 0:1-7 'a\\u000Ab'"}));
}

}  // namespace
}  // namespace quill::Gscanner
