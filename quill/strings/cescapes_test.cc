// C notation: CStringEx family, GetCExtraSymbolEx and the literal readers.
#include "quill/strings/cescapes.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace quill::Gstrings {
namespace {

UnicodeString W(const std::string& s) {
  UnicodeString r;
  for (unsigned char c : s) r.push_back(c);
  return r;
}

TEST(QuotedCString, ApostropheQuoteAndLineFeed) {
  // It's "x" LF -> quote I t \ ' s space \ " x \ " \ n quote
  const std::string in = "It's \"x\"\n";
  const std::string expect = "\"It\\'s \\\"x\\\"\\n\"";
  EXPECT_EQ(QuotedCString(in), expect);
  EXPECT_EQ(QuotedCString(W(in)), W(expect));
}

TEST(QuotedCStringEx, KeepApostropheLeavesItBare) {
  EXPECT_EQ(QuotedCStringEx(std::string("It's \"x\""), true), "\"It's \\\"x\\\"\"");
  EXPECT_EQ(QuotedCStringEx(u"It's", true), u"\"It's\"");
  EXPECT_EQ(QuotedCStringEx(u"It's", false), u"\"It\\'s\"");
}

TEST(CStringEx, BareBodyEscapesNeitherQuote) {
  // Without quotes neither quote character is escaped, by design.
  for (bool keep : {false, true}) {
    EXPECT_EQ(CStringEx(std::string("It's \"x\"\n"), keep, false), "It's \"x\"\\n");
    EXPECT_EQ(CStringEx(u"It's \"x\"\n", keep, false), u"It's \"x\"\\n");
  }
  EXPECT_EQ(CStringEx(std::string(""), false, false), "");
  EXPECT_EQ(CStringEx(std::string(""), false, true), "\"\"");
}

// Expected escape of one byte, written from the table of the notation.
std::string ExpectedEscape(int c, bool keep_apostrophe, bool add_quotes) {
  switch (c) {
    case 7: return "\\a";
    case 8: return "\\b";
    case 9: return "\\t";
    case 10: return "\\n";
    case 11: return "\\v";
    case 12: return "\\f";
    case 13: return "\\r";
    case '"': return add_quotes ? "\\\"" : "\"";
    case '\'': return add_quotes && !keep_apostrophe ? "\\'" : "'";
    case '\\': return "\\\\";
    default: break;
  }
  if (c < 32) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "\\x%02X", c);
    return buf;
  }
  return std::string(1, static_cast<char>(c));
}

TEST(CStringEx, EveryByteInEveryMode) {
  // All 256 byte values, all four flag combinations, both forms.
  for (bool keep : {false, true}) {
    for (bool quotes : {false, true}) {
      for (int c = 0; c < 256; ++c) {
        const std::string in(1, static_cast<char>(c));
        std::string expect = ExpectedEscape(c, keep, quotes);
        if (quotes) expect = "\"" + expect + "\"";
        EXPECT_EQ(CStringEx(in, keep, quotes), expect) << c;
        EXPECT_EQ(CStringEx(W(in), keep, quotes), W(expect)) << c;
      }
    }
  }
}

TEST(CStringEx, ByteExamples) {
  EXPECT_EQ(CStringEx(std::string(1, '\x1b'), false, false), "\\x1B");  // ESC
  EXPECT_EQ(CStringEx(std::string(1, '\0'), false, false), "\\x00");    // NUL
  EXPECT_EQ(CStringEx(std::string(1, '\xc8'), false, false), "\xc8");   // byte 200 as is
  EXPECT_EQ(CStringEx(std::string("?\x7f"), false, true), "\"?\x7f\"");  // ? and DEL never escaped
}

TEST(CStringEx, EveryUtf16UnitFrom128Up) {
  // Units 128..65535 are never escaped, in any mode (surrogates included).
  for (unsigned u = 128; u <= 0xFFFF; ++u) {
    const UnicodeString in(1, static_cast<char16_t>(u));
    ASSERT_EQ(CStringEx(in, false, false), in) << u;
    ASSERT_EQ(QuotedCString(in), u"\"" + in + u"\"") << u;
  }
}

TEST(CStringEx, Utf16UnitsAbove31AreCopied) {
  const UnicodeString in = u"\u263A\xD800\u0141\u00FF";
  EXPECT_EQ(CStringEx(in, false, false), in);
}

struct SymbolCase {
  std::string s;
  int32_t pos;
  int32_t max_digits;
  int code;      // expected character code (8-bit form, unsigned)
  int32_t next;  // expected pos after the call
};

TEST(GetCExtraSymbolEx, Table8Bit) {
  const std::vector<SymbolCase> cases = {
      {"abc", 2, 0, 'b', 3},           // plain character
      {"\\n", 1, 0, 10, 3},            // \n
      {"\\r", 1, 0, 13, 3},            // \r
      {"\\t", 1, 0, 9, 3},             // \t
      {"\\v", 1, 0, 11, 3},            // \v
      {"\\a", 1, 0, 7, 3},             // \a
      {"\\b", 1, 0, 8, 3},             // \b
      {"\\f", 1, 0, 12, 3},            // \f
      {"\\\\", 1, 0, '\\', 3},         // \\ stands for itself
      {"\\\"", 1, 0, '"', 3},          // \"
      {"\\'", 1, 0, '\'', 3},          // \'
      {"\\?", 1, 0, '?', 3},           // \?
      {"\\e", 1, 0, 'e', 3},           // unknown letter: itself
      {"\\N", 1, 0, 'N', 3},           // upper case is not an escape
      {"\\x41", 1, 0, 'A', 5},         // hex
      {"\\x41z", 1, 0, 'A', 5},        // hex stops at a non-digit
      {"\\x263A", 1, 0, 0x3A, 7},      // cut to 8 bits
      {"\\x263A", 1, 2, 0x26, 5},      // MaxDigits 2
      {"\\xg", 1, 0, 0, 3},            // no digit: code 0, only \x consumed
      {"\\x", 1, 0, 0, 3},             // \x at the end
      {"\\101", 1, 0, 'A', 5},         // octal
      {"\\0", 1, 0, 0, 3},             // \0
      {"\\777", 1, 0, 255, 5},         // octal cut to 8 bits
      {"\\1234", 1, 2, 012, 4},        // MaxDigits 2 on octal
      {"\\8", 1, 0, 0, 2},             // \8: code 0, only the backslash consumed
      {"\\9x", 1, 0, 0, 2},            // \9 likewise
      {"\\18", 1, 0, 1, 3},            // octal stops at 8
      {"ab\\", 3, 0, '\\', 4},         // backslash as last character: plain
      {"\\x41", 1, -1, 0, 3},          // negative MaxDigits reads no digit
      {"abc", 0, 0, 0, 1},             // pos before the text: code 0, pos + 1
      {"abc", 4, 0, 0, 5},             // pos past the text: code 0, pos + 1
  };
  for (const auto& c : cases) {
    int32_t pos = c.pos;
    const AnsiChar got = GetCExtraSymbolEx(c.s, c.max_digits, pos);
    EXPECT_EQ(static_cast<unsigned char>(got), c.code) << c.s << " at " << c.pos;
    EXPECT_EQ(pos, c.next) << c.s << " at " << c.pos;
  }
}

TEST(GetCExtraSymbolEx, Table16BitWithoutPairs) {
  // Same table in UTF-16 except where the octal value keeps 16 bits.
  const std::vector<SymbolCase> cases = {
      {"\\n", 1, 0, 10, 3},       {"\\x41", 1, 0, 'A', 5},  {"\\x263A", 1, 0, 0x3A, 7},
      {"\\xg", 1, 0, 0, 3},       {"\\101", 1, 0, 'A', 5},  {"\\777", 1, 0, 0777, 5},
      {"\\8", 1, 0, 0, 2},        {"ab\\", 3, 0, '\\', 4},  {"\\q", 1, 0, 'q', 3},
      {"\\177777", 1, 0, 0xFFFF, 8},                        // 16 bits kept
      {"\\1000000", 1, 0, 0, 9},                            // 0x40000 cut to 16 bits
  };
  for (const auto& c : cases) {
    for (bool pairs : {false, true}) {
      int32_t pos = c.pos;
      const WideChar got = GetCExtraSymbolEx(W(c.s), c.max_digits, pos, pairs);
      EXPECT_EQ(static_cast<int>(got), c.code) << c.s;
      EXPECT_EQ(pos, c.next) << c.s;
    }
  }
}

TEST(GetCExtraSymbolEx, Utf16DigitTestsLookAtLowByte) {
  // U+0141 has the low byte 0x41 ("A"): a hex digit worth 10.
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\x\u0141", 0, pos, false), char16_t(0x0A));
  EXPECT_EQ(pos, 4);
  // U+0131 has the low byte "1": an octal digit.
  pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\1\u0131", 0, pos, false), char16_t(011));
  EXPECT_EQ(pos, 4);
}

TEST(GetCExtraSymbolEx, Utf8PairDecodesTwoBytes) {
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xC3\\xA9", 0, pos, true), u'\u00E9');
  EXPECT_EQ(pos, 9);  // all eight characters consumed
}

TEST(GetCExtraSymbolEx, Utf8PairWithFourDigitSecondEscape) {
  // A three-byte character with its last two bytes in one escape.
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xE2\\x98BA", 0, pos, true), u'\u263A');
  EXPECT_EQ(pos, 11);
}

TEST(GetCExtraSymbolEx, MalformedUtf8PairGivesD3) {
  // C3 41 is not UTF-8: the decoder gives no text, hence U+00D3.
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xC3\\x41", 0, pos, true), u'\u00D3');
  EXPECT_EQ(pos, 9);
  // A lone continuation byte first.
  pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xA9\\xA9", 0, pos, true), u'\u00D3');
}

TEST(GetCExtraSymbolEx, Utf8PairsOffReadsOneByte) {
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xC3\\xA9", 0, pos, false), u'\u00C3');
  EXPECT_EQ(pos, 5);  // four characters consumed
}

TEST(GetCExtraSymbolEx, Utf8PairNeedsThreeCharactersAfterFirstEscape) {
  // Only "\x" remains: not a pair, the first byte alone.
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xC3\\x", 0, pos, true), u'\u00C3');
  EXPECT_EQ(pos, 5);
  // A following escape of another kind is not a pair either.
  pos = 1;
  EXPECT_EQ(GetCExtraSymbolEx(u"\\xC3\\n", 0, pos, true), u'\u00C3');
  EXPECT_EQ(pos, 5);
}

TEST(GetCExtraSymbol, BackslashAsLastCharacter) {
  int32_t pos = 1;
  EXPECT_EQ(GetCExtraSymbol(std::string("\\"), pos), '\\');
  EXPECT_EQ(pos, 2);
  pos = 2;
  EXPECT_EQ(GetCExtraSymbol(u"a\\", pos), u'\\');
  EXPECT_EQ(pos, 3);
}

TEST(GetCExtraSymbol, UsesNoDigitLimitAndNoPairs) {
  int32_t pos = 1;
  EXPECT_EQ(static_cast<unsigned char>(GetCExtraSymbol(std::string("\\x4142"), pos)), 0x42);
  EXPECT_EQ(pos, 7);
  pos = 1;
  EXPECT_EQ(GetCExtraSymbol(u"\\xC3\\xA9", pos), u'\u00C3');
  EXPECT_EQ(pos, 5);
}

TEST(UnquotedCString, MixedEscapesAndTail) {
  // " a \ t b \ x 4 1 \ 1 0 1 \ q " tail
  const std::string in = "\"a\\tb\\x41\\101\\q\"tail";
  EXPECT_EQ(UnquotedCString(in), "a\tbAAq");
  EXPECT_EQ(UnquotedCString(W(in)), u"a\tbAAq");
}

TEST(UnquotedCString, NonLiteralComesBackUnchanged) {
  EXPECT_EQ(UnquotedCString(std::string("abc")), "abc");
  EXPECT_EQ(UnquotedCString(u"abc\\n"), u"abc\\n");
  EXPECT_EQ(UnquotedCString(std::string("")), "");
}

TEST(UnquotedCString, UnterminatedLiteral) {
  EXPECT_EQ(UnquotedCString(std::string("\"abc")), "abc");
  EXPECT_EQ(UnquotedCString(u"\"abc"), u"abc");
  EXPECT_EQ(UnquotedCString(u"\""), u"");
}

TEST(UnquotedCString, EscapedQuoteDoesNotEndLiteral) {
  EXPECT_EQ(UnquotedCString(std::string("\"a\\\"b\"c")), "a\"b");
}

TEST(XUnquotedCStringEx, MaxDigitsLimitsHexEscape) {
  const std::string in = "\"\\x414243\"";
  int32_t pos = 1;
  EXPECT_EQ(XUnquotedCStringEx(in, 2, pos), "A4243");  // two digits, rest plain
  EXPECT_EQ(pos, 11);
  pos = 1;
  EXPECT_EQ(XUnquotedCStringEx(in, 0, pos), "\x43");  // 0x414243 cut to 8 bits
  EXPECT_EQ(pos, 11);
  pos = 1;
  EXPECT_EQ(XUnquotedCStringEx(W(in), 2, pos), u"A4243");
  pos = 1;
  EXPECT_EQ(XUnquotedCStringEx(W(in), 0, pos), u"\x43");
}

TEST(XUnquotedCString, NotAtQuoteReturnsWholeText) {
  // pos at "x", not at a quote: the whole text, pos unchanged.
  int32_t pos = 2;
  EXPECT_EQ(XUnquotedCString(std::string("ax\"b\""), pos), "ax\"b\"");
  EXPECT_EQ(pos, 2);
  pos = 2;
  EXPECT_EQ(XUnquotedCString(u"ax\"b\"", pos), u"ax\"b\"");
  EXPECT_EQ(pos, 2);
  // pos outside the text counts as not at a quote.
  pos = 9;
  EXPECT_EQ(XUnquotedCString(u"\"b\"", pos), u"\"b\"");
  EXPECT_EQ(pos, 9);
}

TEST(XUnquotedCString, EmptyTextLeavesPos) {
  int32_t pos = 5;
  EXPECT_EQ(XUnquotedCString(std::string(""), pos), "");
  EXPECT_EQ(pos, 5);
}

TEST(XUnquotedCString, PosEndsPastClosingQuote) {
  // Two literals in a row, read one after the other.
  const UnicodeString s = u"x=\"a\\n\"+\"b\"";
  int32_t pos = 3;
  EXPECT_EQ(XUnquotedCString(s, pos), u"a\n");
  EXPECT_EQ(pos, 8);  // at "+"
  pos = 9;
  EXPECT_EQ(XUnquotedCString(s, pos), u"b");
  EXPECT_EQ(pos, 12);  // one past the end
  // Unterminated: pos one past the end.
  pos = 1;
  EXPECT_EQ(XUnquotedCString(std::string("\"ab\\"), pos), "ab\\");
  EXPECT_EQ(pos, 5);
}

TEST(XUnquotedCString, NeverUsesUtf8Pairs) {
  int32_t pos = 1;
  EXPECT_EQ(XUnquotedCString(u"\"\\xC3\\xA9\"", pos), u"\u00C3\u00A9");
}

}  // namespace
}  // namespace quill::Gstrings
