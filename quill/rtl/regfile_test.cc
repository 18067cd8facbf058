#include "quill/rtl/regfile.h"

#include <gtest/gtest.h>

#include <string>

#include "quill/rtl/unicode.h"

namespace quill {
namespace {

const std::u16string kHead = u"Windows Registry Editor Version 5.00\r\n\r\n";

// The operations of a file given as header + body.
TRegFileOperations Parse(std::u16string_view body) { return ParseRegFileText(kHead + UnicodeString(body)); }

// The line of the error that parsing `text` raises, or -1 when it parses.
int32_t ErrorLine(std::u16string_view text, UnicodeString* reason = nullptr) {
  try {
    (void)ParseRegFileText(text);
  } catch (const ERegistryFileError& e) {
    if (reason) *reason = e.Reason();
    return e.Line();
  }
  return -1;
}

// Same for header + body: body line n is file line n + 2.
int32_t BodyErrorLine(std::u16string_view body, UnicodeString* reason = nullptr) {
  return ErrorLine(kHead + UnicodeString(body), reason);
}

bool Contains(const UnicodeString& s, std::u16string_view part) { return s.find(part) != UnicodeString::npos; }

TRegFileOperation Op(TRegFileAction action, std::u16string key, std::u16string name = {}) {
  TRegFileOperation op;
  op.Action = action;
  op.Key = std::move(key);
  op.Name = std::move(name);
  return op;
}

TRegFileOperation SetString(std::u16string key, std::u16string name, std::u16string text) {
  TRegFileOperation op = Op(rfaSetValue, std::move(key), std::move(name));
  op.Text = std::move(text);
  return op;
}

TRegFileOperation SetDWord(std::u16string key, std::u16string name, uint32_t v) {
  TRegFileOperation op = Op(rfaSetValue, std::move(key), std::move(name));
  op.Type = rftDWord;
  op.DWord = v;
  return op;
}

TRegFileOperation SetBinary(std::u16string key, std::u16string name, std::vector<uint8_t> bytes) {
  TRegFileOperation op = Op(rfaSetValue, std::move(key), std::move(name));
  op.Type = rftBinary;
  op.Bytes = std::move(bytes);
  return op;
}

// --- header, comments, line ends ---

TEST(ParseRegFile, HeaderAloneGivesNoOperations) {
  EXPECT_TRUE(ParseRegFileText(u"Windows Registry Editor Version 5.00").empty());
  // Blank lines before the header are skipped.
  EXPECT_TRUE(ParseRegFileText(u"\r\n  \r\nWindows Registry Editor Version 5.00\r\n").empty());
}

TEST(ParseRegFile, MissingOrOtherHeaderIsRejected) {
  UnicodeString reason;
  EXPECT_EQ(ErrorLine(u"", &reason), 1);
  EXPECT_TRUE(Contains(reason, u"Windows Registry Editor Version 5.00"));
  // The older 8-bit format is not read: its hex(2) data would be in a code page.
  EXPECT_EQ(ErrorLine(u"REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n"), 1);
  EXPECT_EQ(ErrorLine(u"\n\n[HKEY_CURRENT_USER\\A]\n"), 3);
  // The header is compared exactly (only surrounding blanks are ignored).
  EXPECT_EQ(ErrorLine(u"windows registry editor version 5.00\n"), 1);
  EXPECT_EQ(ErrorLine(u"  Windows Registry Editor Version 5.00\t\n"), -1);
}

TEST(ParseRegFile, CommentsAndBlankLinesAreSkipped) {
  const auto ops = Parse(u"; a comment\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n  ; indented comment\r\n\"x\"=\"1\"\r\n");
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[0].Action, rfaCreateKey);
  EXPECT_EQ(ops[0].Line, 5);
  EXPECT_EQ(ops[1].Line, 7);
}

TEST(ParseRegFile, AllThreeLineEndsWork) {
  for (std::u16string eol : {u"\r\n", u"\n", u"\r"}) {
    const std::u16string text = u"Windows Registry Editor Version 5.00" + eol + eol + u"[HKEY_CURRENT_USER\\A]" + eol +
                                u"\"b\"=hex:01,\\" + eol + u"  02" + eol + u"\"c\"=dword:1" + eol;
    const auto ops = ParseRegFileText(text);
    ASSERT_EQ(ops.size(), 3u);
    EXPECT_EQ(ops[1].Bytes, (std::vector<uint8_t>{1, 2}));
    EXPECT_EQ(ops[2].Line, 6);
  }
}

TEST(ParseRegFile, OtherLinesAreRejected) {
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\nname=\"x\"\r\n", &reason), 4);
  EXPECT_TRUE(Contains(reason, u"name=\"x\""));
}

// --- section headers ---

TEST(ParseRegFile, SectionCreatesKeyBelowCurrentUser) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\Software\\Quill Test]\r\n");
  ASSERT_EQ(ops.size(), 1u);
  EXPECT_EQ(ops[0].Action, rfaCreateKey);
  EXPECT_EQ(ops[0].Key, u"Software\\Quill Test");
  EXPECT_EQ(ops[0].Line, 3);
}

TEST(ParseRegFile, RootNameIgnoresAsciiCase) {
  const auto ops = Parse(u"[hkey_current_user\\A]\r\n[HKEY_CURRENT_USER]\r\n");
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[0].Key, u"A");
  // The root itself is a key too (values may live there).
  EXPECT_EQ(ops[1].Key, u"");
}

TEST(ParseRegFile, KeyNameMayHoldBracketsAndBlanks) {
  // The header runs from the first "[" to the last "]" of the line.
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\a[1] \\ b ]\r\n");
  ASSERT_EQ(ops.size(), 1u);
  EXPECT_EQ(ops[0].Key, u"a[1] \\ b ");
}

TEST(ParseRegFile, OtherRootsAreRejected) {
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[HKEY_LOCAL_MACHINE\\Software]\r\n", &reason), 3);
  EXPECT_TRUE(Contains(reason, u"HKEY_LOCAL_MACHINE"));
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USERS\\A]\r\n", &reason), 3);
  EXPECT_TRUE(Contains(reason, u"unknown root key"));
  EXPECT_EQ(BodyErrorLine(u"[Software\\A]\r\n"), 3);
}

TEST(ParseRegFile, EmptyKeyNamesAreRejected) {
  // A trailing backslash, a doubled one and a bare backslash after the root.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A\\]\r\n"), 3);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A\\\\B]\r\n"), 3);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\]\r\n"), 3);
}

TEST(ParseRegFile, UnclosedSectionIsRejected) {
  EXPECT_EQ(BodyErrorLine(u"\r\n[HKEY_CURRENT_USER\\A\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[\r\n"), 3);
  // Text after the closing bracket.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A] x\r\n"), 3);
}

TEST(ParseRegFile, MinusSectionDeletesKey) {
  const auto ops = Parse(u"[-HKEY_CURRENT_USER\\Software\\Old]\r\n");
  ASSERT_EQ(ops.size(), 1u);
  EXPECT_EQ(ops[0].Action, rfaDeleteKey);
  EXPECT_EQ(ops[0].Key, u"Software\\Old");
}

TEST(ParseRegFile, RootCannotBeDeleted) {
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[-HKEY_CURRENT_USER]\r\n", &reason), 3);
  EXPECT_TRUE(Contains(reason, u"root"));
}

TEST(ParseRegFile, ValuesNeedALiveSection) {
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"\"a\"=\"b\"\r\n", &reason), 3);
  EXPECT_TRUE(Contains(reason, u"section"));
  EXPECT_EQ(BodyErrorLine(u"[-HKEY_CURRENT_USER\\A]\r\n\"a\"=\"b\"\r\n", &reason), 4);
  EXPECT_TRUE(Contains(reason, u"deletion"));
}

// --- strings and names ---

TEST(ParseRegFile, StringValueWithEscapes) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"Path \\\"x\\\"\"=\"C:\\\\dir\\\\ \\\"q\\\" =\"\r\n");
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[1].Action, rfaSetValue);
  EXPECT_EQ(ops[1].Key, u"A");
  EXPECT_EQ(ops[1].Name, u"Path \"x\"");
  EXPECT_EQ(ops[1].Type, rftString);
  EXPECT_EQ(ops[1].Text, u"C:\\dir\\ \"q\" =");
}

TEST(ParseRegFile, EmptyStringAndNonAsciiText) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"e\"=\"\"\r\n\"\u00e9\"=\"\u65e5\u672c \U0001F600\"\r\n");
  ASSERT_EQ(ops.size(), 3u);
  EXPECT_EQ(ops[1].Text, u"");
  EXPECT_EQ(ops[2].Name, u"\u00e9");
  EXPECT_EQ(ops[2].Text, u"\u65e5\u672c \U0001F600");
}

TEST(ParseRegFile, UnknownEscapeIsRejected) {
  // A single backslash before anything but \ or " is an error, not kept:
  // "C:\dir" is the common mistake and must be written "C:\\dir".
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"p\"=\"C:\\dir\"\r\n", &reason), 4);
  EXPECT_TRUE(Contains(reason, u"\\d"));
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"p\\n\"=\"x\"\r\n"), 4);
}

TEST(ParseRegFile, UnterminatedStringIsRejected) {
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"p\"=\"abc\r\n\"\r\n"), 4);
  // An escaped quote at the end does not close the string.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"p\"=\"abc\\\"\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"p=\"x\"\r\n"), 4);
}

TEST(ParseRegFile, TextAfterClosingQuoteIsRejected) {
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"p\"=\"a\" ; note\r\n", &reason), 4);
  EXPECT_TRUE(Contains(reason, u"after the closing quote"));
}

TEST(ParseRegFile, AtSignIsTheDefaultValue) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n@=\"d\"\r\n\"\"=\"e\"\r\n\"@\"=\"f\"\r\n");
  ASSERT_EQ(ops.size(), 4u);
  EXPECT_EQ(ops[1].Name, u"");
  EXPECT_EQ(ops[1].Text, u"d");
  // An empty quoted name is the default value too.
  EXPECT_EQ(ops[2].Name, u"");
  // A quoted "@" is an ordinary value named @.
  EXPECT_EQ(ops[3].Name, u"@");
}

TEST(ParseRegFile, BlanksAroundEqualsAreAllowed) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\t\"x\" = \"1\" \r\n@ =dword:2\r\n");
  ASSERT_EQ(ops.size(), 3u);
  EXPECT_EQ(ops[1].Text, u"1");
  EXPECT_EQ(ops[2].DWord, 2u);
}

TEST(ParseRegFile, MissingEqualsOrDataIsRejected) {
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\" \"1\"\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n@\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=42\r\n"), 4);
}

TEST(ParseRegFile, MinusDeletesValue) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=-\r\n@=-\r\n");
  ASSERT_EQ(ops.size(), 3u);
  EXPECT_EQ(ops[1].Action, rfaDeleteValue);
  EXPECT_EQ(ops[1].Name, u"x");
  EXPECT_EQ(ops[2].Action, rfaDeleteValue);
  EXPECT_EQ(ops[2].Name, u"");
  // "-x" is not a deletion.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=-x\r\n"), 4);
}

// --- dword ---

TEST(ParseRegFile, DwordIsEightHexDigitsOrFewer) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"a\"=dword:0000000a\r\n\"b\"=DWORD:FFFFFFFF\r\n\"c\"=dword:7f\r\n");
  ASSERT_EQ(ops.size(), 4u);
  EXPECT_EQ(ops[1].Type, rftDWord);
  EXPECT_EQ(ops[1].DWord, 10u);
  EXPECT_EQ(ops[2].DWord, 0xFFFFFFFFu);
  EXPECT_EQ(ops[3].DWord, 0x7Fu);
}

TEST(ParseRegFile, BadDwordIsRejected) {
  for (std::u16string data : {u"dword:", u"dword:100000000", u"dword:12g", u"dword: 1", u"dword:-1", u"dword:0x1"}) {
    EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"a\"=" + data + u"\r\n"), 4) << UnicodeToUtf8(data);
  }
}

// --- hex ---

TEST(ParseRegFile, HexIsBinary) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:00,01,fe,FF,a\r\n\"e\"=hex:\r\n\"t\"=hex(3):7f\r\n");
  ASSERT_EQ(ops.size(), 4u);
  EXPECT_EQ(ops[1].Type, rftBinary);
  EXPECT_EQ(ops[1].Bytes, (std::vector<uint8_t>{0, 1, 0xFE, 0xFF, 0x0A}));
  EXPECT_TRUE(ops[2].Bytes.empty());
  EXPECT_EQ(ops[2].Type, rftBinary);
  EXPECT_EQ(ops[3].Bytes, (std::vector<uint8_t>{0x7F}));
}

TEST(ParseRegFile, HexContinuesOverBackslashLines) {
  const auto ops = Parse(
      u"[HKEY_CURRENT_USER\\A]\r\n"
      u"\"b\"=hex:01,02,\\\r\n"
      u"  03,04,\\\r\n"
      u"\t05\r\n"
      u"\"n\"=dword:1\r\n");
  ASSERT_EQ(ops.size(), 3u);
  EXPECT_EQ(ops[1].Bytes, (std::vector<uint8_t>{1, 2, 3, 4, 5}));
  EXPECT_EQ(ops[1].Line, 4);
  // The line after the continued value is read normally.
  EXPECT_EQ(ops[2].Line, 7);
}

TEST(ParseRegFile, HexContinuationRightAfterColon) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:\\\r\n  01,02\r\n");
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[1].Bytes, (std::vector<uint8_t>{1, 2}));
}

TEST(ParseRegFile, BadHexByteReportsItsOwnLine) {
  UnicodeString reason;
  // The bad byte is on the second continuation line: file line 6.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:01,\\\r\n  02,\\\r\n  0x3\r\n", &reason), 6);
  EXPECT_TRUE(Contains(reason, u"0x3"));
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:123\r\n"), 4);
  // A trailing comma leaves an empty byte.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:01,\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:01,,02\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex 01\r\n"), 4);
}

TEST(ParseRegFile, ContinuationPastEndIsRejected) {
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"b\"=hex:01,\\\r\n", &reason), 4);
  EXPECT_TRUE(Contains(reason, u"end of the file"));
}

TEST(ParseRegFile, OnlyHexContinues) {
  // A backslash at the end of a dword line is not a continuation.
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"a\"=dword:1\\\r\n2\r\n"), 4);
}

TEST(ParseRegFile, Hex2IsAnExpandStringInUtf16) {
  // "%P%" with its terminating NUL, as a 5.00 file holds it.
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(2):25,00,50,00,25,00,00,00\r\n");
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[1].Type, rftExpandString);
  EXPECT_EQ(ops[1].Text, u"%P%");
  EXPECT_TRUE(ops[1].Bytes.empty());
}

TEST(ParseRegFile, Hex1IsAStringInUtf16) {
  // Only one terminating NUL is dropped; one without terminator is taken whole.
  const auto ops = Parse(
      u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(1):61,00,0a,00,00,00,00,00\r\n\"y\"=hex(1):e9,00\r\n\"z\"=hex(1):\r\n");
  ASSERT_EQ(ops.size(), 4u);
  EXPECT_EQ(ops[1].Type, rftString);
  EXPECT_EQ(ops[1].Text, std::u16string(u"a\n\0", 3));
  EXPECT_EQ(ops[2].Text, u"\u00e9");
  EXPECT_EQ(ops[3].Text, u"");
}

TEST(ParseRegFile, OddUtf16HexDataIsRejected) {
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(2):25,00,50\r\n"), 4);
}

TEST(ParseRegFile, Hex4IsADwordOfFourBytes) {
  const auto ops = Parse(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(4):0a,00,00,80\r\n");
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[1].Type, rftDWord);
  EXPECT_EQ(ops[1].DWord, 0x8000000Au);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(4):0a,00,00\r\n"), 4);
}

TEST(ParseRegFile, TypesWithoutAStoreTypeAreRejected) {
  // Multi-strings, 64-bit numbers and the rest have no type in the store: the
  // whole file is refused rather than importing it in part.
  struct Case { std::u16string form; std::u16string_view says; };
  for (const Case& c : {Case{u"hex(7):61,00,00,00,00,00", u"multi-string"}, Case{u"hex(b):01,00,00,00,00,00,00,00", u"64-bit"},
                        Case{u"hex(0):", u"no type"}, Case{u"hex(5):00,00,00,01", u"big-endian"}}) {
    UnicodeString reason;
    EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"a\"=\"ok\"\r\n\"x\"=" + c.form + u"\r\n", &reason), 5)
        << UnicodeToUtf8(c.form);
    EXPECT_TRUE(Contains(reason, c.says)) << UnicodeToUtf8(reason);
    EXPECT_TRUE(Contains(reason, u"not supported"));
  }
  UnicodeString reason;
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(c):00\r\n", &reason), 4);
  EXPECT_TRUE(Contains(reason, u"unknown value type"));
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex():00\r\n"), 4);
  EXPECT_EQ(BodyErrorLine(u"[HKEY_CURRENT_USER\\A]\r\n\"x\"=hex(2)00\r\n"), 4);
}

TEST(ParseRegFile, ErrorMessageNamesTheLine) {
  try {
    (void)Parse(u"[HKEY_CURRENT_USER\\A]\r\n\r\n\"x\"=dword:zz\r\n");
    FAIL() << "no error";
  } catch (const ERegistryFileError& e) {
    EXPECT_EQ(e.Line(), 5);
    EXPECT_EQ(e.Message().rfind(u"Registry file line 5: dword data", 0), 0u) << e.what();
  }
}

TEST(ParseRegFile, ExampleOfTheFormatPage) {
  // The example in docs/registry-file.md, line for line.
  const auto ops = ParseRegFileText(
      u"Windows Registry Editor Version 5.00\n"
      u"\n"
      u"; window layout of the demo\n"
      u"[HKEY_CURRENT_USER\\Software\\Quill Demo]\n"
      u"@=\"main window\"\n"
      u"\"Caption\"=\"Quill \\\"demo\\\" in C:\\\\Quill\"\n"
      u"\"Left\"=dword:00000064\n"
      u"\"Flags\"=hex:01,00,ff\n"
      u"\"Help\"=hex(2):25,00,48,00,4f,00,4d,00,45,00,25,00,00,00\n"
      u"\"Obsolete\"=-\n"
      u"\n"
      u"[HKEY_CURRENT_USER\\Software\\Quill Demo\\Recent]\n"
      u"\"File1\"=\"notes.txt\"\n"
      u"\n"
      u"[-HKEY_CURRENT_USER\\Software\\Quill Demo\\Cache]\n");
  ASSERT_EQ(ops.size(), 10u);
  EXPECT_EQ(ops[1], SetString(u"Software\\Quill Demo", u"", u"main window"));
  EXPECT_EQ(ops[2], SetString(u"Software\\Quill Demo", u"Caption", u"Quill \"demo\" in C:\\Quill"));
  EXPECT_EQ(ops[3], SetDWord(u"Software\\Quill Demo", u"Left", 100));
  EXPECT_EQ(ops[4], SetBinary(u"Software\\Quill Demo", u"Flags", {1, 0, 0xFF}));
  EXPECT_EQ(ops[5].Type, rftExpandString);
  EXPECT_EQ(ops[5].Text, u"%HOME%");
  EXPECT_EQ(ops[6], Op(rfaDeleteValue, u"Software\\Quill Demo", u"Obsolete"));
  EXPECT_EQ(ops[7], Op(rfaCreateKey, u"Software\\Quill Demo\\Recent"));
  EXPECT_EQ(ops[9], Op(rfaDeleteKey, u"Software\\Quill Demo\\Cache"));
  EXPECT_EQ(ops[9].Line, 15);
}

// --- decoding ---

TEST(DecodeRegFile, Utf16LittleEndianWithMark) {
  EXPECT_EQ(DecodeRegFile(std::string("\xFF\xFE" "A\0\xE9\0=\xD8\x00\xDE", 10)), u"A\u00e9\U0001F600");
}

TEST(DecodeRegFile, Utf16BigEndianWithMark) {
  EXPECT_EQ(DecodeRegFile(std::string("\xFE\xFF\0A\0\xE9", 6)), u"A\u00e9");
}

TEST(DecodeRegFile, OddUtf16ByteCountIsRejectedWithLastLine) {
  try {
    (void)DecodeRegFile(std::string("\xFF\xFE" "a\0\n\0b\0\r\0\n\0c", 13));
    FAIL() << "no error";
  } catch (const ERegistryFileError& e) {
    EXPECT_EQ(e.Line(), 3);
  }
}

TEST(DecodeRegFile, Utf8WithAndWithoutMark) {
  EXPECT_EQ(DecodeRegFile("\xEF\xBB\xBF" "a\xC3\xA9"), u"a\u00e9");
  EXPECT_EQ(DecodeRegFile("a\xC3\xA9"), u"a\u00e9");
  EXPECT_EQ(DecodeRegFile(""), u"");
}

TEST(DecodeRegFile, NotUtf8MeansTheAnsiCodePage) {
  // The tests run with the en-US system locale: code page 1252.
  EXPECT_EQ(DecodeRegFile("caf\xE9 \x80"), u"caf\u00e9 \u20ac");
}

TEST(ParseRegFile, BytesInEveryEncodingGiveTheSameOperations) {
  const std::u16string text = kHead + u"[HKEY_CURRENT_USER\\Caf\u00e9]\r\n\"n\u00e9\"=\"\u00e9t\u00e9\"\r\n";
  const auto expected = ParseRegFileText(text);
  ASSERT_EQ(expected.size(), 2u);
  EXPECT_EQ(ParseRegFile(EncodeRegFile(text)), expected);
  EXPECT_EQ(ParseRegFile(UnicodeToUtf8(text)), expected);
  EXPECT_EQ(ParseRegFile("\xEF\xBB\xBF" + UnicodeToUtf8(text)), expected);
  EXPECT_EQ(ParseRegFile(UnicodeToAnsi(text, 1252)), expected);
}

// --- writing ---

TEST(WriteRegFile, ExactText) {
  TRegFileOperations ops;
  ops.push_back(Op(rfaCreateKey, u"Software\\Q"));
  ops.push_back(SetString(u"Software\\Q", u"", u"def"));
  ops.push_back(SetString(u"Software\\Q", u"say \"hi\"", u"C:\\x"));
  ops.push_back(SetDWord(u"Software\\Q", u"n", 10));
  ops.push_back(SetBinary(u"Software\\Q", u"b", {0, 0xAB}));
  ops.push_back(Op(rfaDeleteValue, u"Software\\Q", u"old"));
  ops.push_back(Op(rfaDeleteKey, u"Software\\Gone"));
  ops.push_back(SetString(u"", u"e", u"%A%"));
  ops.back().Type = rftExpandString;
  EXPECT_EQ(WriteRegFile(ops),
            u"Windows Registry Editor Version 5.00\r\n"
            u"\r\n"
            u"[HKEY_CURRENT_USER\\Software\\Q]\r\n"
            u"@=\"def\"\r\n"
            u"\"say \\\"hi\\\"\"=\"C:\\\\x\"\r\n"
            u"\"n\"=dword:0000000a\r\n"
            u"\"b\"=hex:00,ab\r\n"
            u"\"old\"=-\r\n"
            u"\r\n"
            u"[-HKEY_CURRENT_USER\\Software\\Gone]\r\n"
            u"\r\n"
            u"[HKEY_CURRENT_USER]\r\n"
            u"\"e\"=hex(2):25,00,41,00,25,00,00,00\r\n"
            u"\r\n");
}

TEST(WriteRegFile, NoOperationsIsJustTheHeader) {
  EXPECT_EQ(WriteRegFile({}), u"Windows Registry Editor Version 5.00\r\n\r\n");
}

TEST(WriteRegFile, LongHexIsWrappedAtEightyColumns) {
  TRegFileOperation op = SetBinary(u"K", u"blob", {});
  for (int i = 0; i < 300; ++i) op.Bytes.push_back(static_cast<uint8_t>(i));
  const UnicodeString text = WriteRegFile({op});
  size_t start = 0;
  int continued = 0;
  while (start < text.size()) {
    const size_t end = text.find(u"\r\n", start);
    ASSERT_NE(end, UnicodeString::npos);
    const std::u16string_view line = std::u16string_view(text).substr(start, end - start);
    EXPECT_LE(line.size(), 80u) << UnicodeToUtf8(line);
    if (!line.empty() && line.back() == u'\\') ++continued;
    start = end + 2;
  }
  // 300 bytes at up to 26 per line need a dozen lines.
  EXPECT_GE(continued, 11);
  const auto back = ParseRegFileText(text);
  ASSERT_EQ(back.size(), 2u);
  EXPECT_EQ(back[1], op);
}

TEST(WriteRegFile, StringWithLineBreakOrNulBecomesHex1) {
  const std::u16string tricky(u"a\r\nb\0c", 6);
  const UnicodeString text = WriteRegFile({SetString(u"K", u"m", tricky)});
  EXPECT_TRUE(Contains(text, u"\"m\"=hex(1):61,00,0d,00,0a,00,62,00,00,00,63,00,00,00\r\n"));
  const auto back = ParseRegFileText(text);
  ASSERT_EQ(back.size(), 2u);
  EXPECT_EQ(back[1].Type, rftString);
  EXPECT_EQ(back[1].Text, tricky);
}

TEST(WriteRegFile, UnwritableNamesAreRefused) {
  EXPECT_THROW((void)WriteRegFile({SetString(u"K", u"a\nb", u"x")}), ERegistryFileError);
  EXPECT_THROW((void)WriteRegFile({SetString(u"K\rL", u"a", u"x")}), ERegistryFileError);
  EXPECT_THROW((void)WriteRegFile({SetString(u"K\\\\L", u"a", u"x")}), ERegistryFileError);
  EXPECT_THROW((void)WriteRegFile({SetString(u"K\\", u"a", u"x")}), ERegistryFileError);
  EXPECT_THROW((void)WriteRegFile({Op(rfaDeleteKey, u"")}), ERegistryFileError);
  try {
    (void)WriteRegFile({SetString(u"K", u"a\nb", u"x")});
  } catch (const ERegistryFileError& e) {
    EXPECT_EQ(e.Line(), 0);
    // No "line 0" prefix when writing.
    EXPECT_EQ(e.Message(), e.Reason());
  }
}

TEST(WriteRegFile, ValueOfAnotherKeyOpensItsSection) {
  const UnicodeString text = WriteRegFile({SetString(u"A", u"x", u"1"), SetString(u"B", u"y", u"2")});
  const auto back = ParseRegFileText(text);
  ASSERT_EQ(back.size(), 4u);
  EXPECT_EQ(back[0].Action, rfaCreateKey);
  EXPECT_EQ(back[0].Key, u"A");
  EXPECT_EQ(back[2].Action, rfaCreateKey);
  EXPECT_EQ(back[2].Key, u"B");
  EXPECT_EQ(back[3], SetString(u"B", u"y", u"2"));
}

TEST(WriteRegFile, ParsedFileRoundTrips) {
  const std::u16string text = kHead +
                              u"; comment\r\n"
                              u"[HKEY_CURRENT_USER\\Software\\Round Trip]\r\n"
                              u"@=\"default \\\\ \\\"quoted\\\"\"\r\n"
                              u"\"\u00fcml\u00e4ut\"=\"\U0001F600\"\r\n"
                              u"\"dw\"=dword:FFFFFFFF\r\n"
                              u"\"bin\"=hex:de,ad,\\\r\n  be,ef\r\n"
                              u"\"exp\"=hex(2):25,00,00,00\r\n"
                              u"\"gone\"=-\r\n"
                              u"[HKEY_CURRENT_USER\\Software\\Round Trip\\Sub]\r\n"
                              u"[-HKEY_CURRENT_USER\\Software\\Old]\r\n";
  const auto ops = ParseRegFileText(text);
  ASSERT_EQ(ops.size(), 9u);
  EXPECT_EQ(ParseRegFileText(WriteRegFile(ops)), ops);
  EXPECT_EQ(ParseRegFile(EncodeRegFile(WriteRegFile(ops))), ops);
}

TEST(EncodeRegFile, Utf16LittleEndianWithMark) {
  EXPECT_EQ(EncodeRegFile(u"A\u00e9\u20ac"), std::string("\xFF\xFE" "A\0\xE9\0\xAC\x20", 8));
  EXPECT_EQ(EncodeRegFile(u""), "\xFF\xFE");
}

}  // namespace
}  // namespace quill
