// Quote-doubling notation: QuotedString and UnquotedString in both forms.
#include "quill/strings/quoting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quill/rtl/exception.h"

namespace quill::Gstrings {
namespace {

struct QuoteCase {
  std::string in;
  char quote;
  std::string out;
};

// Widens ASCII/Latin-1 test text to UTF-16, byte for code.
UnicodeString W(const std::string& s) {
  UnicodeString r;
  for (unsigned char c : s) r.push_back(c);
  return r;
}

TEST(QuotedString, Table) {
  const std::vector<QuoteCase> cases = {
      {"", '\'', "''"},                     // empty text: just the two quotes
      {"abc", '\'', "'abc'"},               // plain text
      {"a'b", '\'', "'a''b'"},              // quote doubled
      {"it's", '\'', "'it''s'"},            // quote doubled
      {"''", '\'', "''''''"},               // only quotes
      {"\tx", '\'', "''#9'x'"},             // leading control: opens with an empty run
      {"ab\r\n", '\'', "'ab'#13#10"},       // trailing control: no closing quote
      {"a\x1f" "b", '"', "\"a\"#31\"b\""},  // other quote character
      {std::string(1, '\0'), '\'', "''#0"},  // NUL alone
      {"x y", '\'', "'x y'"},               // blank (32) stays inside
      {"\x7f\xc8", '\'', "'\x7f\xc8'"},     // DEL and high bytes copied
      {"a\"b", '\'', "'a\"b'"},             // the other quote is not doubled
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QuotedString(c.in, c.quote), c.out) << "8-bit: " << c.in;
    EXPECT_EQ(QuotedString(W(c.in), static_cast<char16_t>(c.quote)), W(c.out)) << "UTF-16: " << c.in;
  }
}

TEST(QuotedString, EveryControlCodeBecomesDecimalCode) {
  // Each code 0..31 alone: opens with an empty run, no closing quote.
  for (int code = 0; code < 32; ++code) {
    const std::string in(1, static_cast<char>(code));
    EXPECT_EQ(QuotedString(in, '\''), "''#" + std::to_string(code)) << code;
  }
  // Every byte of 32 and above is copied (the quote doubled).
  for (int code = 32; code < 256; ++code) {
    const std::string in(1, static_cast<char>(code));
    const std::string expect = code == '\'' ? "''''" : "'" + in + "'";
    EXPECT_EQ(QuotedString(in, '\''), expect) << code;
  }
}

TEST(QuotedString, Utf16UnitsAbove255AreCopied) {
  // Surrogates and other units are not escaped.
  const UnicodeString in = u"\u263A\xD83D\xDE00\u0141";
  EXPECT_EQ(QuotedString(in, u'\''), u"'" + in + u"'");
}

TEST(QuotedString, EveryUtf16UnitFrom32Up) {
  // Every unit of 32 and above is copied; only the quote is doubled.
  for (unsigned u = 32; u <= 0xFFFF; ++u) {
    const UnicodeString in(1, static_cast<char16_t>(u));
    const UnicodeString expect = u == u'\'' ? UnicodeString(u"''''") : u"'" + in + u"'";
    ASSERT_EQ(QuotedString(in, u'\''), expect) << u;
  }
}

TEST(QuotedString, QuoteCharacterBelow32IsWrittenAsCode) {
  // A control character used as quote is still written as a code.
  EXPECT_EQ(QuotedString(std::string("a\tb"), '\t'), "\ta\t#9\tb\t");
}

TEST(UnquotedString, Table) {
  const std::vector<QuoteCase> cases = {
      {"'a''b'#13#10'c'", '\'', "a'b\r\nc"},  // runs, doubled quote, codes
      {"#$41#66", '\'', "AB"},                // hex and decimal codes
      {"''", '\'', "''"},                     // empty literal: input back (fallback)
      {"plain", '\'', "plain"},               // not in the notation: input back
      {"", '\'', ""},                         // empty input
      {"'abc' + 'd'", '\'', "abc"},           // stops at the first foreign character
      {"'abc", '\'', "abc"},                  // missing closing quote
      {"'ab'''", '\'', "ab'"},                // doubled quote at the end of the run
      {"'ab''", '\'', "ab'"},                 // doubled quote as the last two characters
      {"'a'", '"', "'a'"},                    // other quote: not a literal, input back
      {"\"x\"\"y\"", '"', "x\"y"},            // double quote as quote
      {"''#9'x'", '\'', "\tx"},               // what QuotedString makes of TAB x
      {"#$1F", '\'', "\x01"},                 // hex letters end the run: code 1, "F" stops
      {"#65#66'c'#67", '\'', "ABcC"},         // codes on both sides of a run
      {"#0", '\'', std::string(1, '\0')},     // NUL code
      {"#255", '\'', "\xff"},                 // largest 8-bit code
      {"#$", '\'', std::string(1, '\0')},     // "$" with no digits: HexToInt("") is 0
      {"'a' 'b'", '\'', "a"},                 // blank outside the quotes stops
  };
  for (const auto& c : cases) {
    EXPECT_EQ(UnquotedString(c.in, c.quote), c.out) << "8-bit: " << c.in;
    EXPECT_EQ(UnquotedString(W(c.in), static_cast<char16_t>(c.quote)), W(c.out))
        << "UTF-16: " << c.in;
  }
}

TEST(UnquotedString, CodeAbove255Fails8BitWithBaseClass) {
  // #256: the general exception class with the code text in double quotes.
  try {
    (void)UnquotedString(std::string("#256"), '\'');
    FAIL() << "no exception";
  } catch (const EGStringsError&) {
    FAIL() << "must not be the unit's own error class";
  } catch (const EConvertError&) {
    FAIL() << "must not be a conversion error";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"\"#256\" not a character");
    EXPECT_STREQ(e.what(), "\"#256\" not a character");
  }
}

TEST(UnquotedString, Code256IsACharacterInUtf16) {
  EXPECT_EQ(UnquotedString(u"#256", u'\''), UnicodeString(1, char16_t(256)));
  EXPECT_EQ(UnquotedString(u"#65535", u'\''), UnicodeString(1, char16_t(0xFFFF)));
  EXPECT_EQ(UnquotedString(u"#9786'!'", u'\''), u"\u263A!");
  // Hex letters are not part of the run: "A" ends the reading.
  EXPECT_EQ(UnquotedString(u"#$263A'!'", u'\''), u"\u0263");
}

TEST(UnquotedString, CodeAbove65535FailsInUtf16) {
  try {
    (void)UnquotedString(u"'a'#65536'b'", u'\'');
    FAIL() << "no exception";
  } catch (const EConvertError&) {
    FAIL() << "wrong class";
  } catch (const Exception& e) {
    // The message text runs from "#" to the end of the digit run.
    EXPECT_EQ(e.Message(), u"\"#65536\" not a character");
  }
}

TEST(UnquotedString, HexCodeMessageKeepsTheDollar) {
  try {
    (void)UnquotedString(std::string("#$100"), '\'');
    FAIL() << "no exception";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"\"#$100\" not a character");
  }
}

TEST(UnquotedString, MalformedDecimalCodeRaisesConversionError) {
  // "#" followed by no digit, and a "$" inside a decimal run.
  EXPECT_THROW((void)UnquotedString(std::string("#x"), '\''), EConvertError);
  EXPECT_THROW((void)UnquotedString(u"#", u'\''), EConvertError);
  EXPECT_THROW((void)UnquotedString(std::string("#1$2"), '\''), EConvertError);
  EXPECT_THROW((void)UnquotedString(u"#1$2", u'\''), EConvertError);
  // Beyond the 32-bit range of the integer conversion.
  EXPECT_THROW((void)UnquotedString(u"#99999999999", u'\''), EConvertError);
}

TEST(UnquotedString, SecondDollarInHexCodeRaisesDigitError) {
  // HexToInt sees "4$1" and rejects the "$".
  EXPECT_THROW((void)UnquotedString(std::string("#$4$1"), '\''), EGStringsError);
  EXPECT_THROW((void)UnquotedString(u"#$4$1", u'\''), EGStringsError);
}

TEST(UnquotedString, HashInsideRunIsLiteral) {
  EXPECT_EQ(UnquotedString(std::string("'#65'"), '\''), "#65");
}

TEST(UnquotedString, HashAsQuoteReadsCodes) {
  // "#" outside a run is always a code, even when it is the quote character.
  EXPECT_EQ(UnquotedString(std::string("#65"), '#'), "A");
}

}  // namespace
}  // namespace quill::Gstrings
