// List membership, symbol-insensitive equality, whole words and buffers.
#include "quill/strings/matching.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace quill::Gstrings {
namespace {

TEST(StrInList, LastIndexBoundsTheSearch) {
  const std::vector<UnicodeString> list = {u"X", u"ABC"};
  EXPECT_TRUE(StrInList(u"abc", list, 1));   // ASCII case ignored
  EXPECT_FALSE(StrInList(u"abc", list, 0));  // entry 1 not examined
  EXPECT_FALSE(StrInList(u"abc", list, -1)); // empty array
}

TEST(StrInList, LastIndexPastTheArrayReadsNothingBeyond) {
  const std::vector<UnicodeString> list = {u"a"};
  EXPECT_TRUE(StrInList(u"A", list, 5));
  EXPECT_FALSE(StrInList(u"b", list, 5));
}

TEST(StrInList, FoldsAsciiOnlyAndDoesNotTrim) {
  const std::vector<UnicodeString> list = {u"\u00C4", u" abc"};
  EXPECT_FALSE(StrInList(u"\u00E4", list, 1));  // no locale folding
  EXPECT_FALSE(StrInList(u"abc", list, 1));     // not trimmed
}

TEST(StrInListW, FoldsByLocale) {
  const std::vector<UnicodeString> list = {u"X", u"\u00C4RGER"};
  EXPECT_TRUE(StrInListW(u"\u00E4rger", list, 1));
  EXPECT_FALSE(StrInListW(u"\u00E4rger", list, 0));
  EXPECT_FALSE(StrInListW(u"arger", list, 1));  // accents count
  EXPECT_FALSE(StrInListW(u"x", list, -1));
}

TEST(StrInListA, FoldsCase) {
  const std::vector<AnsiString> list = {"X", "ABC"};
  EXPECT_TRUE(StrInListA("abc", list, 1));
  EXPECT_FALSE(StrInListA("abc", list, 0));
  EXPECT_FALSE(StrInListA("abc", list, -1));
  EXPECT_FALSE(StrInListA(" abc", list, 1));
}

TEST(StrPCat, AppendsWithTerminator) {
  char buf[16];
  std::memset(buf, 'Z', sizeof buf);
  std::strcpy(buf, "ab");
  EXPECT_EQ(StrPCat(buf, "cd"), buf);
  EXPECT_STREQ(buf, "abcd");
  EXPECT_EQ(buf[5], 'Z');  // nothing written past the terminator
  StrPCat(buf, "");
  EXPECT_STREQ(buf, "abcd");
}

TEST(StrPCat, StopsAtEmbeddedNul) {
  char buf[16] = "x";
  StrPCat(buf, std::string_view("y\0z", 3));
  EXPECT_STREQ(buf, "xy");
}

TEST(ClearPChar, ZeroesExactlySizeElements) {
  char buf[6] = {'a', 'b', 'c', 'd', 'e', 'f'};
  ClearPChar(buf, 3);
  EXPECT_EQ(buf[0], 0);
  EXPECT_EQ(buf[2], 0);
  EXPECT_EQ(buf[3], 'd');
  char16_t wbuf[5] = {u'a', u'b', u'c', u'd', u'e'};
  ClearPChar(wbuf, 3);
  EXPECT_EQ(wbuf[2], 0);
  EXPECT_EQ(wbuf[3], u'd');
}

TEST(ClearPChar, SizeZeroWrapsTo65536) {
  // The last index size - 1 is computed in 16 bits.
  std::vector<char> buf(65537, 'x');
  ClearPChar(buf.data(), 0);
  EXPECT_EQ(buf[0], 0);
  EXPECT_EQ(buf[65535], 0);
  EXPECT_EQ(buf[65536], 'x');
  std::vector<char16_t> wbuf(65537, u'x');
  ClearPChar(wbuf.data(), 0);
  EXPECT_EQ(wbuf[65535], 0);
  EXPECT_EQ(wbuf[65536], u'x');
}

TEST(EqualToSpaces, TrailingBlankDiffersBetweenForms) {
  // 8-bit ignores blanks at the ends too; UTF-16 fails when a blank ends a string.
  EXPECT_TRUE(EqualToSpaces(" a b ", "ab"));
  EXPECT_FALSE(EqualToSpaces(u" a b ", u"ab"));
  EXPECT_TRUE(EqualToSpaces("ab ", "ab "));
  EXPECT_FALSE(EqualToSpaces(u"ab ", u"ab "));
  EXPECT_TRUE(EqualToSpaces("ab ", "ab"));
  EXPECT_FALSE(EqualToSpaces(u"ab ", u"ab"));
}

TEST(EqualToSpaces, PlainEquality) {
  EXPECT_TRUE(EqualToSpaces("ab", "ab"));
  EXPECT_TRUE(EqualToSpaces(u"ab", u"ab"));
  EXPECT_TRUE(EqualToSpaces("a b", "ab"));
  EXPECT_TRUE(EqualToSpaces(u"a b", u"ab"));
  EXPECT_TRUE(EqualToSpaces(u" a  b", u"a b"));  // leading blanks are fine in UTF-16
  EXPECT_FALSE(EqualToSpaces("ab", "aB"));       // case-sensitive
  EXPECT_FALSE(EqualToSpaces(u"ab", u"abc"));
  EXPECT_FALSE(EqualToSpaces("ab", "abc"));
}

TEST(EqualToSpaces, EmptyStrings) {
  EXPECT_TRUE(EqualToSpaces("", ""));
  EXPECT_TRUE(EqualToSpaces(u"", u""));
  EXPECT_TRUE(EqualToSpaces("", "   "));    // 8-bit: blanks only equal empty
  EXPECT_FALSE(EqualToSpaces(u"", u"   ")); // UTF-16: empty equals only empty
  EXPECT_FALSE(EqualToSpaces(u"", u"a"));
}

TEST(EqualToSymbols, SymbolsIgnoredAnywhere) {
  EXPECT_TRUE(EqualToSymbols("1-2", "12", "-"));
  EXPECT_TRUE(EqualToSymbols(u"1-2", u"12", u"-"));
  EXPECT_TRUE(EqualToSymbols("(1)-2", "1 2", "()- "));
  EXPECT_FALSE(EqualToSymbols("1-2", "12", ""));
  EXPECT_FALSE(EqualToSymbols(u"1-2", u"12", u""));
}

TEST(EqualToSymbols, HighBytesAsSymbols) {
  EXPECT_TRUE(EqualToSymbols("a\xa0" "b", "ab", "\xa0"));
  EXPECT_TRUE(EqualToSymbols(u"a\u00A0b", u"ab", u"\u00A0"));
}

TEST(ContainsAsWholeWord, Basics) {
  EXPECT_TRUE(ContainsAsWholeWord(u"hello world", u"world"));
  EXPECT_FALSE(ContainsAsWholeWord(u"worlds", u"world"));
  EXPECT_TRUE(ContainsAsWholeWord("hello world", "world"));
  EXPECT_FALSE(ContainsAsWholeWord("worlds", "world"));
  EXPECT_TRUE(ContainsAsWholeWord(u"world", u"world"));
  EXPECT_FALSE(ContainsAsWholeWord(u"hello", u"world"));
  EXPECT_FALSE(ContainsAsWholeWord(u"abc", u""));
}

TEST(ContainsAsWholeWord, OnlyFirstOccurrenceCounts) {
  // "bc" first occurs inside "abc": not a whole word, although " bc" follows.
  EXPECT_FALSE(ContainsAsWholeWord(u"abc bc", u"bc"));
  EXPECT_FALSE(ContainsAsWholeWord("abc bc", "bc"));
}

TEST(ContainsAsWholeWord, IdentifierCharactersJoinWords) {
  EXPECT_FALSE(ContainsAsWholeWord(u"x1", u"x"));
  EXPECT_TRUE(ContainsAsWholeWord(u"x-1", u"x"));
  EXPECT_FALSE(ContainsAsWholeWord(u"_x", u"x"));
  EXPECT_FALSE(ContainsAsWholeWord(u"`x", u"x"));  // back-quote is an identifier character
  EXPECT_TRUE(ContainsAsWholeWord(u"{x}", u"x"));  // code 123 is not
  // Non-ASCII letters separate words.
  EXPECT_TRUE(ContainsAsWholeWord(u"\u00E9x\u00E9", u"x"));
  EXPECT_TRUE(ContainsAsWholeWord("\xe9x\xe9", "x"));
}

TEST(ContainsAsWholeWord, AllBytesAsNeighbours) {
  // Every byte value before and after "w": joined exactly for the identifier class.
  for (int c = 0; c < 256; ++c) {
    const bool ident = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 95 && c <= 122);
    const std::string before = std::string(1, static_cast<char>(c)) + "w";
    const std::string after = "w" + std::string(1, static_cast<char>(c));
    if (c == 'w') continue;  // would move the first occurrence
    EXPECT_EQ(ContainsAsWholeWord(before, "w"), !ident) << c;
    EXPECT_EQ(ContainsAsWholeWord(after, "w"), !ident) << c;
    const UnicodeString wb = UnicodeString(1, static_cast<char16_t>(c)) + u"w";
    EXPECT_EQ(ContainsAsWholeWord(wb, u"w"), !ident) << c;
  }
}

}  // namespace
}  // namespace quill::Gstrings
