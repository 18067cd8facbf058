// CommaText / DelimitedText: splitting a line into items and joining them
// back with quoting.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quill/rtl/tstrings.h"

namespace quill {
namespace {

std::vector<UnicodeString> Items(const TStrings& sl) {
  std::vector<UnicodeString> v;
  for (int32_t i = 0; i < sl.Count(); ++i) v.push_back(sl[i]);
  return v;
}

std::vector<UnicodeString> SplitComma(const UnicodeString& text) {
  TStringList sl;
  sl.SetCommaText(text);
  return Items(sl);
}

UnicodeString ReadBack(const UnicodeString& text) {
  TStringList sl;
  sl.SetCommaText(text);
  return sl.CommaText();
}

using V = std::vector<UnicodeString>;

// --- the rows of the splitting table, each with its read-back ---

TEST(SetCommaText, PlainItemsAndBlankSeparators) {
  for (const char16_t* text : {u"a,b,c", u"a b c", u" a , b ,c "}) {
    EXPECT_EQ(SplitComma(text), (V{u"a", u"b", u"c"})) << UnicodeString(text).size();
    EXPECT_EQ(ReadBack(text), u"a,b,c");
  }
}

TEST(SetCommaText, TwoDelimitersGiveAnEmptyItemEvenWithBlanksBetween) {
  for (const char16_t* text : {u"a,,b", u"a, ,b"}) {
    EXPECT_EQ(SplitComma(text), (V{u"a", u"", u"b"}));
    EXPECT_EQ(ReadBack(text), u"a,,b");
  }
}

TEST(SetCommaText, TrailingDelimiterAddsAnEmptyItem) {
  EXPECT_EQ(SplitComma(u"a,"), (V{u"a", u""}));
  EXPECT_EQ(ReadBack(u"a,"), u"a,");
  // Blanks after the last delimiter are skipped, but no empty item is added
  // for them: the delimiter was not the last character.
  EXPECT_EQ(SplitComma(u"a, "), (V{u"a"}));
}

TEST(SetCommaText, LoneDelimiterGivesTwoEmptyItems) {
  EXPECT_EQ(SplitComma(u","), (V{u"", u""}));
  EXPECT_EQ(ReadBack(u","), u",");
  EXPECT_EQ(SplitComma(u",,"), (V{u"", u"", u""}));
}

TEST(SetCommaText, EmptyOrBlankTextGivesNoItems) {
  EXPECT_EQ(SplitComma(u""), V{});
  EXPECT_EQ(SplitComma(u"  "), V{});
  EXPECT_EQ(SplitComma(u"\t\r\n"), V{});
  EXPECT_EQ(ReadBack(u""), u"");
  EXPECT_EQ(ReadBack(u"  "), u"");
}

TEST(SetCommaText, QuotedItemKeepsBlanks) {
  EXPECT_EQ(SplitComma(u"\"a b\",c"), (V{u"a b", u"c"}));
  EXPECT_EQ(ReadBack(u"\"a b\",c"), u"\"a b\",c");
}

TEST(SetCommaText, DoubledQuoteInsideQuotes) {
  EXPECT_EQ(SplitComma(u"\"a\"\"b\",c"), (V{u"a\"b", u"c"}));
  EXPECT_EQ(ReadBack(u"\"a\"\"b\",c"), u"\"a\"\"b\",c");
}

TEST(SetCommaText, ClosingQuoteEndsTheItem) {
  // No delimiter needed after a closing quote.
  EXPECT_EQ(SplitComma(u"\"ab\"cd"), (V{u"ab", u"cd"}));
  EXPECT_EQ(ReadBack(u"\"ab\"cd"), u"ab,cd");
}

TEST(SetCommaText, QuoteInsideAnUnquotedItemIsLiteral) {
  EXPECT_EQ(SplitComma(u"ab\"cd"), (V{u"ab\"cd"}));
  EXPECT_EQ(ReadBack(u"ab\"cd"), u"\"ab\"\"cd\"");
}

TEST(SetCommaText, UnterminatedQuoteTakesTheRest) {
  EXPECT_EQ(SplitComma(u"\"abc"), (V{u"abc"}));
  EXPECT_EQ(ReadBack(u"\"abc"), u"abc");
  EXPECT_EQ(SplitComma(u"x,\"a, b"), (V{u"x", u"a, b"}));
  // A lone quote is an empty quoted item.
  EXPECT_EQ(SplitComma(u"\""), (V{u""}));
}

TEST(SetCommaText, QuotedDelimiter) {
  EXPECT_EQ(SplitComma(u"\"a,b\""), (V{u"a,b"}));
  EXPECT_EQ(ReadBack(u"\"a,b\""), u"\"a,b\"");
}

TEST(SetCommaText, ControlCharactersSeparate) {
  EXPECT_EQ(SplitComma(u"\ta\tb"), (V{u"a", u"b"}));
  EXPECT_EQ(SplitComma(u"a\x01" u"b"), (V{u"a", u"b"}));
  EXPECT_EQ(ReadBack(u"\ta\tb"), u"a,b");
  EXPECT_EQ(ReadBack(u"a\x01" u"b"), u"a,b");
  EXPECT_EQ(SplitComma(u"a\r\nb"), (V{u"a", u"b"}));
  // #127 and #160 are not blanks.
  EXPECT_EQ(SplitComma(u"a\x7F" u"b\u00A0c"), (V{u"a\x7F" u"b\u00A0c"}));
}

TEST(SetCommaText, EveryCharacterBelow256BetweenTwoLetters) {
  // Only #1..#32 separate (besides the delimiter); #0 ends the text; the
  // quote character inside an unquoted item is literal; everything else,
  // including #127 and the Latin-1 range, belongs to the item.
  for (int c = 0; c < 256; ++c) {
    const char16_t ch = static_cast<char16_t>(c);
    UnicodeString text = u"a";
    text.push_back(ch);
    text.append(u"b");
    V expected;
    if (c == 0) {
      expected = {u"a"};
    } else if ((c >= 1 && c <= 32) || c == ',') {
      expected = {u"a", u"b"};
    } else {
      expected = {text};
    }
    EXPECT_EQ(SplitComma(text), expected) << "character " << c;
  }
}

TEST(CommaText, EveryCharacterBelow256DecidesQuoting) {
  // Quoted: the quote character, the delimiter and #1..#32; never #0 or
  // anything from #33 up.
  for (int c = 0; c < 256; ++c) {
    UnicodeString item = u"x";
    item.push_back(static_cast<char16_t>(c));
    TStringList sl;
    sl.Add(item);
    const bool quoted = (c >= 1 && c <= 32) || c == ',' || c == '"';
    UnicodeString expected = item;
    if (quoted) expected = c == '"' ? UnicodeString(u"\"x\"\"\"") : u"\"" + item + u"\"";
    EXPECT_EQ(sl.CommaText(), expected) << "character " << c;
    // Strict mode quotes only the quote character and the delimiter.
    sl.SetStrictDelimiter(true);
    const bool strict_quoted = c == ',' || c == '"';
    expected = item;
    if (strict_quoted) expected = c == '"' ? UnicodeString(u"\"x\"\"\"") : u"\"" + item + u"\"";
    EXPECT_EQ(sl.CommaText(), expected) << "strict, character " << c;
  }
}

TEST(SetCommaText, QuotedEmptyItems) {
  EXPECT_EQ(SplitComma(u"\"\",a"), (V{u"", u"a"}));
  EXPECT_EQ(ReadBack(u"\"\",a"), u",a");
  EXPECT_EQ(SplitComma(u"\"\" \"\""), (V{u"", u""}));
  EXPECT_EQ(ReadBack(u"\"\" \"\""), u",");
  EXPECT_EQ(SplitComma(u"\"\""), (V{u""}));
}

TEST(SetCommaText, LeadingDelimiterGivesLeadingEmptyItem) {
  EXPECT_EQ(SplitComma(u", a"), (V{u"", u"a"}));
}

TEST(SetCommaText, EmbeddedNulEndsTheText) {
  // What follows #0 is ignored, also inside quotes.
  EXPECT_EQ(SplitComma(UnicodeString(u"a,b\0c,d", 7)), (V{u"a", u"b"}));
  EXPECT_EQ(SplitComma(UnicodeString(u"\"a\0b\",c", 7)), (V{u"a"}));
  EXPECT_EQ(SplitComma(UnicodeString(u"\0a", 2)), V{});
}

TEST(SetCommaText, ClearsTheListFirst) {
  TStringList sl;
  sl.Add(u"old");
  sl.SetCommaText(u"new");
  EXPECT_EQ(Items(sl), (V{u"new"}));
  sl.SetCommaText(u"");
  EXPECT_EQ(sl.Count(), 0);
}

TEST(SetCommaText, SortedListSortsAndDropsDuplicates) {
  TStringList sl;
  sl.SetSorted(true);
  sl.SetCommaText(u"c,a,b,A");
  EXPECT_EQ(Items(sl), (V{u"a", u"b", u"c"}));
}

TEST(SetCommaText, AlwaysCommaAndDoubleQuoteAndLeavesThePropertiesAlone) {
  TStringList sl;
  sl.SetDelimiter(u';');
  sl.SetQuoteChar(u'\'');
  sl.SetCommaText(u"a;b,'c d',\"e f\"");
  EXPECT_EQ(Items(sl), (V{u"a;b", u"'c", u"d'", u"e f"}));
  EXPECT_EQ(sl.Delimiter(), u';');
  EXPECT_EQ(sl.QuoteChar(), u'\'');
  // Reading also uses ',' and '"' and quotes the ';' only in DelimitedText.
  EXPECT_EQ(sl.CommaText(), u"a;b,'c,d',\"e f\"");
  EXPECT_EQ(sl.DelimitedText(), u"'a;b';'''c';'d''';'e f'");
}

TEST(SetCommaText, HundredThousandFields) {
  constexpr int kFields = 100000;
  UnicodeString text;
  for (int i = 0; i < kFields; ++i) {
    if (i) text.push_back(u',');
    for (char c : std::to_string(i)) text.push_back(static_cast<char16_t>(c));
  }
  TStringList sl;
  sl.SetCommaText(text);
  ASSERT_EQ(sl.Count(), kFields);
  EXPECT_EQ(sl[0], u"0");
  EXPECT_EQ(sl[kFields - 1], u"99999");
  EXPECT_EQ(sl.CommaText(), text);
}

// --- reading ---

TEST(CommaText, EmptyListGivesEmptyText) {
  TStringList sl;
  EXPECT_EQ(sl.CommaText(), u"");
  EXPECT_EQ(sl.DelimitedText(), u"");
}

TEST(CommaText, OneEmptyStringReadsAsTwoQuotes) {
  TStringList sl;
  sl.Add(u"");
  EXPECT_EQ(sl.CommaText(), u"\"\"");
  sl.SetQuoteChar(u'\'');
  EXPECT_EQ(sl.DelimitedText(), u"''");
  // Only a single empty string is quoted; in longer lists they stay bare.
  sl.Add(u"");
  EXPECT_EQ(sl.CommaText(), u",");
  TStringList three;
  three.SetText(u"\n\nx");
  EXPECT_EQ(three.CommaText(), u",,x");
}

TEST(CommaText, QuotesItemsWithQuoteDelimiterOrControlCharacters) {
  TStringList sl;
  sl.Add(u"plain");
  sl.Add(u"with space");
  sl.Add(u"tab\there");
  sl.Add(u"a,b");
  sl.Add(u"say \"hi\"");
  sl.Add(u"ctl\x1F");
  EXPECT_EQ(sl.CommaText(),
            u"plain,\"with space\",\"tab\there\",\"a,b\",\"say \"\"hi\"\"\",\"ctl\x1F\"");
}

TEST(CommaText, NonAsciiNeverCausesQuoting) {
  TStringList sl;
  sl.Add(u"\u00E9t\u00E9");
  sl.Add(u"\u00A0");  // no-break space is not a blank
  sl.Add(u"\U0001F600");
  EXPECT_EQ(sl.CommaText(), u"\u00E9t\u00E9,\u00A0,\U0001F600");
}

TEST(CommaText, QuoteCharAloneIsQuoted) {
  TStringList sl;
  sl.Add(u"\"");
  EXPECT_EQ(sl.CommaText(), u"\"\"\"\"");
  EXPECT_EQ(SplitComma(sl.CommaText()), (V{u"\""}));
}

TEST(CommaText, EmbeddedNulIsNotQuotedOnOutput) {
  TStringList sl;
  sl.Add(UnicodeString(u"a\0b", 3));
  EXPECT_EQ(sl.CommaText(), UnicodeString(u"a\0b", 3));
}

// --- DelimitedText and StrictDelimiter ---

TEST(DelimitedText, UsesTheListsDelimiterAndQuote) {
  TStringList sl;
  sl.SetDelimiter(u';');
  sl.SetQuoteChar(u'\'');
  sl.SetDelimitedText(u"a;'b;c' ; 'd''e';\"f");
  EXPECT_EQ(Items(sl), (V{u"a", u"b;c", u"d'e", u"\"f"}));
  EXPECT_EQ(sl.DelimitedText(), u"a;'b;c';'d''e';\"f");
  // Blanks still separate in non-strict mode.
  sl.SetDelimitedText(u"x y");
  EXPECT_EQ(Items(sl), (V{u"x", u"y"}));
}

TEST(DelimitedText, StrictSplitsOnlyAtTheDelimiter) {
  TStringList sl;
  sl.SetStrictDelimiter(true);
  sl.SetDelimitedText(u" a b , c,\tx ");
  EXPECT_EQ(Items(sl), (V{u" a b ", u" c", u"\tx "}));
  // Reading does not quote blanks in strict mode, but still quotes the
  // delimiter and the quote character.
  EXPECT_EQ(sl.DelimitedText(), u" a b , c,\tx ");
  sl.Clear();
  sl.Add(u"p,q");
  sl.Add(u"r\"s");
  EXPECT_EQ(sl.DelimitedText(), u"\"p,q\",\"r\"\"s\"");
}

TEST(DelimitedText, StrictKeepsEmptyAndBlankItems) {
  TStringList sl;
  sl.SetStrictDelimiter(true);
  sl.SetDelimitedText(u"a,,b,");
  EXPECT_EQ(Items(sl), (V{u"a", u"", u"b", u""}));
  sl.SetDelimitedText(u"  ");
  EXPECT_EQ(Items(sl), (V{u"  "}));
  // Quoting is still recognised at the start of an item; what follows the
  // closing quote up to the delimiter is an item of its own.
  sl.SetDelimitedText(u"\"a,b\" ,c");
  EXPECT_EQ(Items(sl), (V{u"a,b", u" ", u"c"}));
}

TEST(DelimitedText, StrictAppliesToCommaTextToo) {
  TStringList sl;
  sl.SetStrictDelimiter(true);
  sl.SetCommaText(u"a b,c");
  EXPECT_EQ(Items(sl), (V{u"a b", u"c"}));
  EXPECT_EQ(sl.CommaText(), u"a b,c");
}

TEST(DelimitedText, RoundTripOfAwkwardItems) {
  const V items{u"", u" ", u"\"", u"a\"", u"\"a", u",", u"x y", u"\t", u"\u00FC", u"''"};
  for (bool strict : {false, true}) {
    TStringList sl;
    sl.SetStrictDelimiter(strict);
    for (const auto& s : items) sl.Add(s);
    TStringList back;
    back.SetStrictDelimiter(strict);
    back.SetCommaText(sl.CommaText());
    EXPECT_EQ(Items(back), items) << "strict=" << strict;
  }
}

}  // namespace
}  // namespace quill
