#include "quill/rtl/regfile_store.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quill/rtl/internal/temp_registry_for_test.h"
#include "quill/rtl/registry.h"
#include "quill/rtl/tstrings.h"

namespace quill {
namespace {

const std::u16string kHead = u"Windows Registry Editor Version 5.00\r\n\r\n";

void Import(std::u16string_view body) { ImportRegFile(ParseRegFileText(kHead + UnicodeString(body))); }

std::vector<UnicodeString> KeyNames(const UnicodeString& key) {
  TRegistry reg;
  std::vector<UnicodeString> out;
  if (!reg.OpenKeyReadOnly(key)) return out;
  TStringList list;
  reg.GetKeyNames(list);
  for (int32_t i = 0; i < list.Count(); ++i) out.push_back(list.Get(i));
  return out;
}

TEST(ImportRegFile, WritesEveryValueType) {
  testing::TempRegistry temp;
  Import(
      u"[HKEY_CURRENT_USER\\Software\\Imp]\r\n"
      u"@=\"def\"\r\n"
      u"\"s\"=\"C:\\\\x \\\"q\\\"\"\r\n"
      u"\"d\"=dword:ffffffff\r\n"
      u"\"b\"=hex:01,02,\\\r\n  03\r\n"
      u"\"e\"=hex(2):25,00,41,00,25,00,00,00\r\n"
      u"\"h\"=hex(4):07,00,00,00\r\n"
      u"[HKEY_CURRENT_USER\\Software\\Imp\\Empty]\r\n");
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKeyReadOnly(u"Software\\Imp"));
  EXPECT_EQ(reg.ReadString(u""), u"def");
  EXPECT_EQ(reg.ReadString(u"s"), u"C:\\x \"q\"");
  EXPECT_EQ(reg.GetDataType(u"d"), rdInteger);
  // All 32 bits: the store's signed integer -1.
  EXPECT_EQ(reg.ReadInteger(u"d"), -1);
  EXPECT_EQ(reg.GetDataType(u"b"), rdBinary);
  uint8_t buf[8] = {};
  ASSERT_EQ(reg.ReadBinaryData(u"b", buf, sizeof buf), 3);
  EXPECT_EQ(buf[0], 1);
  EXPECT_EQ(buf[2], 3);
  EXPECT_EQ(reg.GetDataType(u"e"), rdExpandString);
  EXPECT_EQ(reg.ReadString(u"e"), u"%A%");
  EXPECT_EQ(reg.ReadInteger(u"h"), 7);
  // A section with no values still creates its key.
  EXPECT_TRUE(reg.KeyExists(u"\\Software\\Imp\\Empty"));
}

TEST(ImportRegFile, ReplacesAValueOfAnotherType) {
  testing::TempRegistry temp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"K", true));
    reg.WriteInteger(u"v", 5);
  }
  Import(u"[HKEY_CURRENT_USER\\K]\r\n\"v\"=\"text\"\r\n");
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKeyReadOnly(u"K"));
  EXPECT_EQ(reg.GetDataType(u"v"), rdString);
  EXPECT_EQ(reg.ReadString(u"v"), u"text");
}

TEST(ImportRegFile, DeletionsAndMissingTargetsAreHarmless) {
  testing::TempRegistry temp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"A\\B\\C", true));
    reg.WriteString(u"x", u"1");
    ASSERT_TRUE(reg.OpenKey(u"\\A", false));
    reg.WriteString(u"keep", u"1");
    reg.WriteString(u"drop", u"1");
  }
  Import(
      u"[-HKEY_CURRENT_USER\\A\\B]\r\n"
      u"[-HKEY_CURRENT_USER\\Never\\There]\r\n"
      u"[HKEY_CURRENT_USER\\A]\r\n"
      u"\"drop\"=-\r\n"
      u"\"never\"=-\r\n");
  TRegistry reg;
  EXPECT_FALSE(reg.KeyExists(u"\\A\\B"));
  EXPECT_FALSE(reg.KeyExists(u"\\A\\B\\C"));
  ASSERT_TRUE(reg.OpenKeyReadOnly(u"\\A"));
  EXPECT_TRUE(reg.ValueExists(u"keep"));
  EXPECT_FALSE(reg.ValueExists(u"drop"));
}

TEST(ImportRegFile, DeletingValueOfMissingKeyCreatesNothing) {
  testing::TempRegistry temp;
  Import(u"[-HKEY_CURRENT_USER\\Gone]\r\n");
  EXPECT_FALSE(TRegistry().KeyExists(u"\\Gone"));
}

TEST(ImportRegFile, RefusedKeyRollsBackTheWholeFile) {
  // A key name over 255 characters is refused by the store, on the file's
  // line 7; what lines 3 to 6 wrote is not kept.
  testing::TempRegistry temp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"Keep", true));
    reg.WriteString(u"v", u"old");
  }
  const std::u16string body = u"[HKEY_CURRENT_USER\\First]\r\n\"a\"=\"1\"\r\n[HKEY_CURRENT_USER\\Keep]\r\n\"v\"=\"new\"\r\n"
                              u"[HKEY_CURRENT_USER\\" + std::u16string(300, u'k') + u"]\r\n";
  try {
    Import(body);
    FAIL() << "no error";
  } catch (const ERegistryFileError& e) {
    EXPECT_EQ(e.Line(), 7);
  }
  TRegistry reg;
  EXPECT_FALSE(reg.KeyExists(u"\\First"));
  ASSERT_TRUE(reg.OpenKeyReadOnly(u"\\Keep"));
  EXPECT_EQ(reg.ReadString(u"v"), u"old");
}

TEST(ApplyRegFile, RunsInsideTheCallersTransaction) {
  testing::TempRegistry temp;
  const auto ops = ParseRegFileText(kHead + u"[HKEY_CURRENT_USER\\T]\r\n\"v\"=dword:1\r\n");
  {
    TRegistry reg;
    TRegistryTransaction tx(reg);
    ApplyRegFile(reg, ops);
    EXPECT_TRUE(reg.KeyExists(u"\\T"));
    tx.Rollback();
  }
  EXPECT_FALSE(TRegistry().KeyExists(u"\\T"));
  {
    TRegistry reg;
    TRegistryTransaction tx(reg);
    ApplyRegFile(reg, ops);
    tx.Commit();
  }
  EXPECT_TRUE(TRegistry().KeyExists(u"\\T"));
}

TEST(ExportRegistryKey, TreeInPreOrderWithStoredNames) {
  testing::TempRegistry temp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"Software\\Exp", true));
    reg.WriteString(u"", u"def");
    reg.WriteInteger(u"n", -2);
    reg.WriteExpandString(u"e", u"%X%");
    const uint8_t bytes[] = {9, 8};
    reg.WriteBinaryData(u"b", bytes, 2);
    ASSERT_TRUE(reg.OpenKey(u"\\Software\\Exp\\Sub\\Deep", true));
    reg.WriteString(u"d", u"deep");
    ASSERT_TRUE(reg.OpenKey(u"\\Software\\Exp\\Another", true));
  }
  // The case of the request does not matter; the stored names are used.
  const TRegFileOperations ops = ExportRegistryKey(u"SOFTWARE\\exp");
  ASSERT_EQ(ops.size(), 9u);
  EXPECT_EQ(ops[0].Action, rfaCreateKey);
  EXPECT_EQ(ops[0].Key, u"Software\\Exp");
  EXPECT_EQ(ops[1].Name, u"");
  EXPECT_EQ(ops[1].Text, u"def");
  EXPECT_EQ(ops[2].Type, rftDWord);
  EXPECT_EQ(ops[2].DWord, 0xFFFFFFFEu);
  EXPECT_EQ(ops[3].Type, rftExpandString);
  EXPECT_EQ(ops[3].Text, u"%X%");
  EXPECT_EQ(ops[4].Type, rftBinary);
  EXPECT_EQ(ops[4].Bytes, (std::vector<uint8_t>{9, 8}));
  EXPECT_EQ(ops[4].Key, u"Software\\Exp");
  // Subkeys in the store's order (by folded name): Another, then Sub.
  EXPECT_EQ(ops[5].Key, u"Software\\Exp\\Another");
  EXPECT_EQ(ops[6].Key, u"Software\\Exp\\Sub");
  EXPECT_EQ(ops[7].Key, u"Software\\Exp\\Sub\\Deep");
  EXPECT_EQ(ops[8].Text, u"deep");

  const TRegFileOperations flat = ExportRegistryKey(u"\\Software\\Exp\\", false);
  ASSERT_EQ(flat.size(), 5u);
  EXPECT_EQ(flat[0].Key, u"Software\\Exp");
}

TEST(ExportRegistryKey, MissingKeyGivesNothing) {
  testing::TempRegistry temp;
  EXPECT_TRUE(ExportRegistryKey(u"Nowhere").empty());
  // An invalid path is missing too.
  EXPECT_TRUE(ExportRegistryKey(u"A\\\\B").empty());
}

TEST(ExportRegistryKey, RootIsTheWholeStore) {
  testing::TempRegistry temp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"A", true));
    reg.WriteString(u"v", u"1");
  }
  const TRegFileOperations ops = ExportRegistryKey(u"");
  ASSERT_EQ(ops.size(), 3u);
  EXPECT_EQ(ops[0].Key, u"");
  EXPECT_EQ(ops[1].Key, u"A");
  EXPECT_EQ(ops[2].Name, u"v");
}

TEST(RegFileStore, RoundTripThroughFileBytes) {
  testing::TempRegistry temp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"Software\\RT\\\u00dcn\u00efc\u00f6d\u00e9", true));
    reg.WriteString(u"\u043a\u043b\u044e\u0447", u"\u65e5\u672c \U0001F600");
    reg.WriteString(u"lines", std::u16string(u"a\r\nb\0c", 6));
    ASSERT_TRUE(reg.OpenKey(u"\\Software\\RT", false));
    reg.WriteString(u"", u"C:\\dir \"q\"");
    reg.WriteInteger(u"n", INT32_MIN);
    std::vector<uint8_t> big(1000);
    for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<uint8_t>(i * 7);
    reg.WriteBinaryData(u"big", big.data(), static_cast<int32_t>(big.size()));
    reg.WriteBinaryData(u"empty", nullptr, 0);
    reg.WriteExpandString(u"exp", u"%HOME%\\x");
  }
  const TRegFileOperations before = ExportRegistryKey(u"Software\\RT");
  ASSERT_EQ(before.size(), 9u);
  const std::string bytes = EncodeRegFile(WriteRegFile(before));
  ASSERT_TRUE(TRegistry().DeleteKey(u"\\Software\\RT"));
  ASSERT_TRUE(ExportRegistryKey(u"Software\\RT").empty());
  ImportRegFile(ParseRegFile(bytes));
  EXPECT_EQ(ExportRegistryKey(u"Software\\RT"), before);
}

TEST(RegFileStore, ImportedKeysKeepTheFilesCase) {
  testing::TempRegistry temp;
  Import(u"[HKEY_CURRENT_USER\\MiXed\\CaSe]\r\n[HKEY_CURRENT_USER\\mixed\\other]\r\n");
  EXPECT_EQ(KeyNames(u""), (std::vector<UnicodeString>{u"MiXed"}));
  EXPECT_EQ(KeyNames(u"MIXED"), (std::vector<UnicodeString>{u"CaSe", u"other"}));
}

}  // namespace
}  // namespace quill
