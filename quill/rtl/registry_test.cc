// TRegistry, TRegistryTransaction and TRegistryIniFile against a real
// database in a temporary folder.
#include "quill/rtl/registry.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>
#include <vector>

#include "quill/rtl/internal/temp_registry_for_test.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"

namespace quill {
namespace {

using testing::TempRegistry;

std::string Utf8(const UnicodeString& s) { return UnicodeToUtf8(s); }

template <typename F>
std::string MessageOf(F&& f) {
  try {
    f();
  } catch (const ERegistryException& e) {
    return Utf8(e.Message());
  }
  return "(no ERegistryException)";
}

std::vector<std::string> Names(TStrings& list) {
  std::vector<std::string> out;
  for (int32_t i = 0; i < list.Count(); ++i) out.push_back(Utf8(list.Strings(i)));
  return out;
}

TEST(TRegistry, StartsAtCurrentUserWithNoKeyOpen) {
  TempRegistry tmp;
  TRegistry reg;
  EXPECT_EQ(reg.RootKey(), HKEY_CURRENT_USER);
  EXPECT_EQ(reg.CurrentPath(), u"");
  EXPECT_EQ(reg.Access(), KEY_ALL_ACCESS);
}

TEST(TRegistry, OtherRootsAreAClearError) {
  TempRegistry tmp;
  TRegistry reg;
  EXPECT_EQ(MessageOf([&] { reg.SetRootKey(HKEY_LOCAL_MACHINE); }),
            "Registry root HKEY_LOCAL_MACHINE is not available: only HKEY_CURRENT_USER is supported");
  EXPECT_EQ(reg.RootKey(), HKEY_CURRENT_USER);
  reg.SetRootKey(HKEY_CURRENT_USER);  // allowed
}

TEST(TRegistry, OpenKeyCreatesAndFindsKeys) {
  TempRegistry tmp;
  TRegistry reg;
  // Missing without CanCreate: false.
  EXPECT_FALSE(reg.OpenKey(u"Software\\Quill", false));
  EXPECT_TRUE(reg.OpenKey(u"Software\\Quill", true));
  EXPECT_EQ(reg.CurrentPath(), u"Software\\Quill");
  TRegistry other;
  EXPECT_TRUE(other.KeyExists(u"Software"));
  EXPECT_TRUE(other.KeyExists(u"Software\\Quill"));
  EXPECT_TRUE(other.OpenKey(u"Software\\Quill", false));
}

TEST(TRegistry, RelativeAndAbsolutePaths) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"A", true));
  // Relative to the open key.
  ASSERT_TRUE(reg.OpenKey(u"B", true));
  EXPECT_EQ(reg.CurrentPath(), u"A\\B");
  EXPECT_TRUE(reg.KeyExists(u"\\A\\B"));
  // A leading backslash starts at the root.
  ASSERT_TRUE(reg.OpenKey(u"\\C", true));
  EXPECT_EQ(reg.CurrentPath(), u"C");
  EXPECT_FALSE(reg.KeyExists(u"\\C\\A"));
  // With no key open, relative paths start at the root too.
  reg.CloseKey();
  EXPECT_EQ(reg.CurrentPath(), u"");
  EXPECT_TRUE(reg.KeyExists(u"A\\B"));
  // The empty path opens the base key itself.
  ASSERT_TRUE(reg.OpenKey(u"A", false));
  ASSERT_TRUE(reg.OpenKey(u"", false));
  EXPECT_EQ(reg.CurrentPath(), u"A");
}

TEST(TRegistry, TrailingBackslashIgnoredEmptyNamesInvalid) {
  TempRegistry tmp;
  TRegistry reg;
  // One trailing backslash is ignored.
  ASSERT_TRUE(reg.OpenKey(u"Software\\X\\", true));
  EXPECT_EQ(reg.CurrentPath(), u"Software\\X");
  EXPECT_TRUE(reg.KeyExists(u"\\Software\\X\\"));
  // An empty name inside the path makes it invalid, also for creation.
  EXPECT_FALSE(reg.OpenKey(u"\\Software\\\\X", true));
  EXPECT_EQ(reg.CurrentPath(), u"Software\\X");  // the open key stays open
  EXPECT_EQ(MessageOf([&] { reg.CreateKey(u"A\\\\B"); }), "Failed to create key A\\\\B");
  // Names longer than 255 characters are refused; 255 is fine.
  EXPECT_TRUE(reg.OpenKey(u"\\" + UnicodeString(255, u'k'), true));
  EXPECT_FALSE(reg.OpenKey(u"\\" + UnicodeString(256, u'k'), true));
  // A lone surrogate in a key name is refused.
  EXPECT_FALSE(reg.OpenKey(u"\\bad\xD800", true));
}

TEST(TRegistry, KeyNamesIgnoreCaseAndKeepFirstCase) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"\\Software\\MyApp", true));
  // Another spelling finds the same key and does not rename it.
  ASSERT_TRUE(reg.OpenKey(u"\\SOFTWARE\\myapp", true));
  ASSERT_TRUE(reg.OpenKey(u"\\software", false));
  TStringList names;
  reg.GetKeyNames(names);
  EXPECT_EQ(Names(names), std::vector<std::string>{"MyApp"});
  reg.CloseKey();
  reg.OpenKey(u"", false);
  reg.GetKeyNames(names);
  EXPECT_EQ(Names(names), std::vector<std::string>{"Software"});
  // Beyond ASCII: simple case folding, no locale.
  ASSERT_TRUE(reg.OpenKey(u"\\\u00C4rger", true));
  EXPECT_TRUE(reg.KeyExists(u"\\\u00E4RGER"));
  EXPECT_FALSE(reg.KeyExists(u"\\\u03A3\u03B9"));
  // Sharp s folds to itself by simple folding, so it differs from "SS".
  ASSERT_TRUE(reg.OpenKey(u"\\stra\u00DFe", true));
  EXPECT_FALSE(reg.KeyExists(u"\\STRASSE"));
  EXPECT_TRUE(reg.KeyExists(u"\\STRA\u00DFE"));
}

TEST(TRegistry, ValueNamesIgnoreCaseAndKeepFirstCase) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"Prefs", true));
  reg.WriteString(u"Color", u"red");
  reg.WriteString(u"COLOR", u"blue");  // same value, name kept
  EXPECT_EQ(reg.ReadString(u"color"), u"blue");
  EXPECT_TRUE(reg.ValueExists(u"cOlOr"));
  TStringList names;
  reg.GetValueNames(names);
  EXPECT_EQ(Names(names), std::vector<std::string>{"Color"});
  // A value name may hold backslashes and any characters.
  reg.WriteInteger(u"a\\b \u00C9", 1);
  EXPECT_EQ(reg.ReadInteger(u"A\\B \u00E9"), 1);
}

TEST(TRegistry, DefaultValueHasTheEmptyName) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"K", true));
  EXPECT_FALSE(reg.ValueExists(u""));
  reg.WriteString(u"", u"the default");
  reg.WriteString(u"named", u"x");
  EXPECT_TRUE(reg.ValueExists(u""));
  EXPECT_EQ(reg.ReadString(u""), u"the default");
  TStringList names;
  reg.GetValueNames(names);
  EXPECT_EQ(Names(names), (std::vector<std::string>{"", "named"}));
  EXPECT_TRUE(reg.DeleteValue(u""));
  EXPECT_FALSE(reg.ValueExists(u""));
}

TEST(TRegistry, StringsIntegersAndBooleans) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"T", true));
  // Strings keep every UTF-16 unit, NUL and lone surrogates included.
  const UnicodeString odd = UnicodeString(u"a\0b", 3) + u"\xD800z\U0001F600";
  reg.WriteString(u"s", odd);
  EXPECT_EQ(reg.ReadString(u"s"), odd);
  EXPECT_EQ(reg.GetDataType(u"s"), rdString);
  reg.WriteString(u"empty", u"");
  EXPECT_TRUE(reg.ValueExists(u"empty"));
  EXPECT_EQ(reg.ReadString(u"empty"), u"");
  reg.WriteExpandString(u"x", u"%HOME%\\x");
  EXPECT_EQ(reg.GetDataType(u"x"), rdExpandString);
  EXPECT_EQ(reg.ReadString(u"x"), u"%HOME%\\x");

  reg.WriteInteger(u"i", -2147483647 - 1);
  EXPECT_EQ(reg.ReadInteger(u"i"), -2147483647 - 1);
  EXPECT_EQ(reg.GetDataType(u"i"), rdInteger);

  // Booleans are stored as the integers 1 and 0.
  reg.WriteBool(u"b", true);
  EXPECT_EQ(reg.GetDataType(u"b"), rdInteger);
  EXPECT_EQ(reg.ReadInteger(u"b"), 1);
  reg.WriteBool(u"b", false);
  EXPECT_EQ(reg.ReadInteger(u"b"), 0);
  EXPECT_FALSE(reg.ReadBool(u"b"));
  reg.WriteInteger(u"b", 5);  // any non-zero integer reads as true
  EXPECT_TRUE(reg.ReadBool(u"b"));

  // Writing another type under the same name replaces the value.
  reg.WriteString(u"i", u"now text");
  EXPECT_EQ(reg.GetDataType(u"i"), rdString);
}

TEST(TRegistry, MissingValues) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"T", true));
  // ReadString of a missing value gives "", as the runtime's does.
  EXPECT_EQ(reg.ReadString(u"nope"), u"");
  EXPECT_EQ(MessageOf([&] { (void)reg.ReadInteger(u"nope"); }), "Failed to get data for 'nope'");
  EXPECT_EQ(MessageOf([&] { (void)reg.ReadBool(u"nope"); }), "Failed to get data for 'nope'");
  char buf[4];
  EXPECT_EQ(reg.ReadBinaryData(u"nope", buf, 4), 0);
  EXPECT_EQ(reg.GetDataType(u"nope"), rdUnknown);
  EXPECT_EQ(reg.GetDataSize(u"nope"), -1);
  EXPECT_FALSE(reg.DeleteValue(u"nope"));
}

TEST(TRegistry, WrongTypeReadsRaise) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"T", true));
  reg.WriteInteger(u"Num", 7);
  reg.WriteString(u"Str", u"7");
  const uint8_t bytes[] = {1, 2};
  reg.WriteBinaryData(u"Bin", bytes, 2);
  EXPECT_EQ(MessageOf([&] { (void)reg.ReadString(u"Num"); }), "Invalid data type for 'Num'");
  EXPECT_EQ(MessageOf([&] { (void)reg.ReadInteger(u"Str"); }), "Invalid data type for 'Str'");
  EXPECT_EQ(MessageOf([&] { (void)reg.ReadBool(u"Str"); }), "Invalid data type for 'Str'");
  EXPECT_EQ(MessageOf([&] { (void)reg.ReadString(u"Bin"); }), "Invalid data type for 'Bin'");
  char buf[8];
  EXPECT_EQ(MessageOf([&] { reg.ReadBinaryData(u"Num", buf, 8); }), "Invalid data type for 'Num'");
  // The exception is a runtime Exception.
  EXPECT_THROW((void)reg.ReadInteger(u"Str"), Exception);
}

TEST(TRegistry, BinaryDataAndSizes) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"T", true));
  const uint8_t data[] = {0, 255, 7, 0, 9};
  reg.WriteBinaryData(u"bin", data, 5);
  EXPECT_EQ(reg.GetDataType(u"bin"), rdBinary);
  EXPECT_EQ(reg.GetDataSize(u"bin"), 5);
  uint8_t out[8] = {};
  EXPECT_EQ(reg.ReadBinaryData(u"bin", out, 8), 5);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 5), std::vector<uint8_t>(data, data + 5));
  // A buffer too small raises and is not written.
  uint8_t small[4] = {42, 42, 42, 42};
  EXPECT_EQ(MessageOf([&] { reg.ReadBinaryData(u"bin", small, 4); }), "Invalid data type for 'bin'");
  EXPECT_EQ(small[0], 42);
  // Empty binary data.
  reg.WriteBinaryData(u"none", nullptr, 0);
  EXPECT_EQ(reg.GetDataSize(u"none"), 0);
  EXPECT_EQ(reg.ReadBinaryData(u"none", out, 0), 0);
  EXPECT_EQ(MessageOf([&] { reg.WriteBinaryData(u"neg", data, -1); }), "Failed to set data for 'neg'");
  // Sizes as the runtime counts them.
  reg.WriteString(u"s", u"abc");
  EXPECT_EQ(reg.GetDataSize(u"s"), 8);  // (3 + terminator) * 2
  reg.WriteInteger(u"i", 1);
  EXPECT_EQ(reg.GetDataSize(u"i"), 4);
}

TEST(TRegistry, NoOpenKey) {
  TempRegistry tmp;
  TRegistry reg;
  EXPECT_FALSE(reg.ValueExists(u"a"));
  EXPECT_EQ(reg.ReadString(u"a"), u"");
  EXPECT_EQ(MessageOf([&] { reg.WriteString(u"a", u"x"); }), "Failed to set data for 'a'");
  EXPECT_EQ(MessageOf([&] { reg.WriteInteger(u"a", 1); }), "Failed to set data for 'a'");
  EXPECT_FALSE(reg.HasSubKeys());
  TStringList names;
  names.Add(u"stale");
  reg.GetKeyNames(names);
  EXPECT_EQ(names.Count(), 0);  // cleared
}

TEST(TRegistry, ReadOnlyKeysAndAccessMasks) {
  TempRegistry tmp;
  {
    TRegistry writer;
    ASSERT_TRUE(writer.OpenKey(u"RO", true));
    writer.WriteString(u"v", u"1");
  }
  TRegistry reg;
  EXPECT_FALSE(reg.OpenKeyReadOnly(u"Missing"));
  ASSERT_TRUE(reg.OpenKeyReadOnly(u"RO"));
  EXPECT_EQ(reg.ReadString(u"v"), u"1");
  EXPECT_EQ(MessageOf([&] { reg.WriteString(u"v", u"2"); }), "Failed to set data for 'v'");
  EXPECT_FALSE(reg.DeleteValue(u"v"));
  EXPECT_EQ(reg.ReadString(u"v"), u"1");

  TRegistry readOnly(KEY_READ);
  EXPECT_FALSE(readOnly.OpenKey(u"NewKey", true));  // may not create
  EXPECT_FALSE(readOnly.KeyExists(u"NewKey"));
  EXPECT_EQ(MessageOf([&] { readOnly.CreateKey(u"NewKey"); }), "Failed to create key NewKey");
  ASSERT_TRUE(readOnly.OpenKey(u"RO", true));
  EXPECT_EQ(MessageOf([&] { readOnly.WriteInteger(u"v", 2); }), "Failed to set data for 'v'");
  EXPECT_FALSE(readOnly.DeleteKey(u"\\RO"));
}

TEST(TRegistry, CreateKeyDoesNotOpen) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"Base", true));
  EXPECT_TRUE(reg.CreateKey(u"Child\\Grandchild"));  // relative to the open key
  EXPECT_EQ(reg.CurrentPath(), u"Base");
  EXPECT_TRUE(reg.KeyExists(u"\\Base\\Child\\Grandchild"));
  EXPECT_TRUE(reg.CreateKey(u"Child"));  // already there: still true
}

TEST(TRegistry, EnumerationOrderAndHasSubKeys) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"E", true));
  EXPECT_FALSE(reg.HasSubKeys());
  reg.CreateKey(u"beta");
  reg.CreateKey(u"Alpha");
  reg.CreateKey(u"gamma");
  EXPECT_TRUE(reg.HasSubKeys());
  TStringList names;
  reg.GetKeyNames(names);  // by folded name
  EXPECT_EQ(Names(names), (std::vector<std::string>{"Alpha", "beta", "gamma"}));
  reg.WriteInteger(u"z", 1);
  reg.WriteInteger(u"a", 2);
  reg.WriteInteger(u"m", 3);
  reg.WriteInteger(u"z", 4);  // rewriting keeps the place
  reg.GetValueNames(names);  // in the order first written
  EXPECT_EQ(Names(names), (std::vector<std::string>{"z", "a", "m"}));
}

TEST(TRegistry, DeleteKeyRemovesTheWholeTree) {
  TempRegistry tmp;
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"\\D\\X\\Y", true));
  reg.WriteString(u"deep", u"1");
  ASSERT_TRUE(reg.OpenKey(u"\\D", true));
  reg.WriteString(u"top", u"1");
  reg.CloseKey();
  EXPECT_TRUE(reg.DeleteKey(u"D"));
  EXPECT_FALSE(reg.KeyExists(u"D"));
  EXPECT_FALSE(reg.KeyExists(u"D\\X\\Y"));
  // Recreated, the key is empty: nothing of the old tree comes back.
  ASSERT_TRUE(reg.OpenKey(u"\\D\\X\\Y", true));
  EXPECT_FALSE(reg.ValueExists(u"deep"));
  EXPECT_FALSE(reg.DeleteKey(u"\\Missing"));
  // The root cannot be deleted.
  reg.CloseKey();
  EXPECT_FALSE(reg.DeleteKey(u"\\"));
  EXPECT_FALSE(reg.DeleteKey(u""));
  EXPECT_TRUE(reg.KeyExists(u"D\\X"));
  // The empty path with a key open names that key.
  ASSERT_TRUE(reg.OpenKey(u"D", false));
  EXPECT_TRUE(reg.DeleteKey(u""));
  EXPECT_FALSE(reg.KeyExists(u"\\D"));
}

TEST(TRegistry, KeyDeletedWhileOpen) {
  TempRegistry tmp;
  TRegistry a;
  ASSERT_TRUE(a.OpenKey(u"Gone", true));
  a.WriteString(u"v", u"1");
  TRegistry b;
  ASSERT_TRUE(b.DeleteKey(u"Gone"));
  // The open key is empty now: reads find nothing, writes raise, and no key
  // can be created below it.
  EXPECT_FALSE(a.ValueExists(u"v"));
  EXPECT_EQ(MessageOf([&] { a.WriteString(u"v", u"2"); }), "Failed to set data for 'v'");
  EXPECT_FALSE(a.OpenKey(u"Child", true));
  // Recreating the key by path gives a new, empty key.
  ASSERT_TRUE(a.OpenKey(u"\\Gone", true));
  EXPECT_FALSE(a.ValueExists(u"v"));
}

TEST(TRegistryTransaction, CommitMakesAllVisible) {
  TempRegistry tmp;
  TRegistry reg;
  TRegistry reader;
  {
    TRegistryTransaction tx(reg);
    EXPECT_TRUE(tx.Active());
    ASSERT_TRUE(reg.OpenKey(u"Tx", true));
    reg.WriteInteger(u"a", 1);
    reg.WriteInteger(u"b", 2);
    EXPECT_EQ(reg.ReadInteger(u"a"), 1);  // sees its own changes
    EXPECT_FALSE(reader.KeyExists(u"Tx"));  // others do not, yet
    tx.Commit();
    EXPECT_FALSE(tx.Active());
  }
  ASSERT_TRUE(reader.OpenKey(u"Tx", false));
  EXPECT_EQ(reader.ReadInteger(u"b"), 2);
}

TEST(TRegistryTransaction, DestructorRollsBack) {
  TempRegistry tmp;
  TRegistry reg;
  {
    TRegistryTransaction tx(reg);
    ASSERT_TRUE(reg.OpenKey(u"Tx", true));
    reg.WriteInteger(u"a", 1);
  }
  TRegistry reader;
  EXPECT_FALSE(reader.KeyExists(u"Tx"));
  // The registry object is usable afterwards.
  ASSERT_TRUE(reg.OpenKey(u"\\After", true));
  reg.WriteInteger(u"x", 1);
  EXPECT_TRUE(reader.KeyExists(u"After"));
}

TEST(TRegistryTransaction, FailedStepUndoesOnlyItself) {
  TempRegistry tmp;
  TRegistry reg;
  TRegistryTransaction tx(reg);
  ASSERT_TRUE(reg.OpenKey(u"Tx", true));
  reg.WriteInteger(u"kept", 1);
  reg.CloseKey();
  EXPECT_THROW(reg.WriteInteger(u"fails", 2), ERegistryException);
  ASSERT_TRUE(reg.OpenKey(u"Tx", false));
  reg.WriteInteger(u"also", 3);
  tx.Commit();
  TRegistry reader;
  ASSERT_TRUE(reader.OpenKey(u"Tx", false));
  EXPECT_EQ(reader.ReadInteger(u"kept"), 1);
  EXPECT_EQ(reader.ReadInteger(u"also"), 3);
}

TEST(TRegistryTransaction, OnePerObjectAndRollback) {
  TempRegistry tmp;
  TRegistry reg;
  TRegistryTransaction tx(reg);
  EXPECT_EQ(MessageOf([&] { TRegistryTransaction second(reg); }),
            "A registry transaction is already active on this registry object");
  ASSERT_TRUE(reg.OpenKey(u"R", true));
  tx.Rollback();
  EXPECT_FALSE(tx.Active());
  EXPECT_FALSE(reg.KeyExists(u"\\R"));
  EXPECT_EQ(MessageOf([&] { tx.Commit(); }), "No registry transaction is active");
}

TEST(RegistryBatch, CommitsOrWritesNothing) {
  TempRegistry tmp;
  RegistryBatch([](TRegistry& reg) {
    ASSERT_TRUE(reg.OpenKey(u"Batch", true));
    for (int i = 0; i < 100; ++i) reg.WriteInteger(u"v" + IntToStr(i), i);
  });
  EXPECT_THROW(RegistryBatch([](TRegistry& reg) {
                 ASSERT_TRUE(reg.OpenKey(u"Batch2", true));
                 reg.WriteInteger(u"v", 1);
                 throw Exception(u"stop");
               }),
               Exception);
  TRegistry reader;
  ASSERT_TRUE(reader.OpenKey(u"Batch", false));
  EXPECT_EQ(reader.ReadInteger(u"v99"), 99);
  EXPECT_FALSE(reader.KeyExists(u"\\Batch2"));
}

TEST(RegistryStore, FileLocationAndModes) {
  TempRegistry tmp;
  const std::string home = tmp.Dir() + "/home";
  const std::string xdg = tmp.Dir() + "/xdg";
  const char* oldHome = std::getenv("HOME");
  const std::string savedHome = oldHome ? oldHome : "";
  const char* oldXdg = std::getenv("XDG_CONFIG_HOME");
  const std::string savedXdg = oldXdg ? oldXdg : "";

  EXPECT_EQ(Utf8(RegistryFileName()), tmp.Path());  // QUILL_REGISTRY wins
  unsetenv("QUILL_REGISTRY");
  setenv("XDG_CONFIG_HOME", xdg.c_str(), 1);
  EXPECT_EQ(Utf8(RegistryFileName()), xdg + "/quill/registry.db");
  setenv("XDG_CONFIG_HOME", "relative/ignored", 1);
  setenv("HOME", home.c_str(), 1);
  EXPECT_EQ(Utf8(RegistryFileName()), home + "/.config/quill/registry.db");
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(Utf8(RegistryFileName()), home + "/.config/quill/registry.db");
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"X", true));
    reg.WriteInteger(u"v", 1);
    struct stat st {};
    ASSERT_EQ(stat((home + "/.config/quill").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0700u);
    ASSERT_EQ(stat((home + "/.config").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0700u);
    ASSERT_EQ(stat((home + "/.config/quill/registry.db").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
    ASSERT_EQ(stat((home + "/.config/quill/registry.db-wal").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
  }
  regstore::CloseIdle();
  setenv("HOME", savedHome.c_str(), 1);
  if (oldXdg != nullptr) setenv("XDG_CONFIG_HOME", savedXdg.c_str(), 1);
  setenv("QUILL_REGISTRY", tmp.Path().c_str(), 1);
}

TEST(RegistryStore, DataPersistsAcrossConnections) {
  TempRegistry tmp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"P", true));
    reg.WriteString(u"s", u"kept");
  }
  regstore::CloseIdle();  // every connection closed: only the file remains
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"P", false));
  EXPECT_EQ(reg.ReadString(u"s"), u"kept");
}

TEST(RegistryStore, DamagedFileIsAClearError) {
  TempRegistry tmp;
  {
    std::ofstream f(tmp.Path(), std::ios::binary);
    f << std::string(8192, 'x');
  }
  const std::string msg = MessageOf([] { TRegistry reg; (void)reg.KeyExists(u"A"); });
  EXPECT_EQ(msg, "Registry database \"" + tmp.Path() + "\" cannot be used: file is not a database");
}

TEST(RegistryStore, CorruptedPagesAreAClearError) {
  TempRegistry tmp;
  {
    TRegistry reg;
    ASSERT_TRUE(reg.OpenKey(u"C", true));
    for (int i = 0; i < 2000; ++i) reg.WriteString(u"v" + IntToStr(i), UnicodeString(50, u'x'));
  }
  regstore::CloseIdle();
  {
    // Overwrite everything after the first page (the header stays valid).
    std::fstream f(tmp.Path(), std::ios::in | std::ios::out | std::ios::binary);
    f.seekp(4096);
    const std::string junk(64 * 1024, '\xA5');
    f.write(junk.data(), static_cast<std::streamsize>(junk.size()));
  }
  const std::string msg = MessageOf([] {
    TRegistry reg;
    if (reg.OpenKey(u"C", false)) (void)reg.ReadString(u"v1999");
  });
  EXPECT_EQ(msg.rfind("Registry database \"" + tmp.Path() + "\" cannot be used: ", 0), 0u) << msg;
}

TEST(RegistryStore, ForeignDatabaseIsRefused) {
  TempRegistry tmp;
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(tmp.Path().c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db, "CREATE TABLE t(x)", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(db);
  EXPECT_EQ(MessageOf([] { TRegistry reg; (void)reg.KeyExists(u"A"); }),
            "Registry database \"" + tmp.Path() + "\" cannot be used: not a Quill registry database");
}

TEST(RegistryStore, UnopenablePathIsAClearError) {
  TempRegistry tmp;
  // A folder where the file should be.
  ASSERT_EQ(mkdir(tmp.Path().c_str(), 0700), 0);
  const std::string msg = MessageOf([] { TRegistry reg; (void)reg.KeyExists(u"A"); });
  EXPECT_EQ(msg.rfind("Registry database \"" + tmp.Path() + "\" cannot be used: ", 0), 0u) << msg;
  // A folder that cannot be created (a file is in the way).
  const std::string blocked = tmp.Dir() + "/file";
  { std::ofstream f(blocked); }
  setenv("QUILL_REGISTRY", (blocked + "/sub/registry.db").c_str(), 1);
  const std::string msg2 = MessageOf([] { TRegistry reg; (void)reg.KeyExists(u"A"); });
  EXPECT_EQ(msg2.rfind("Registry database \"" + blocked + "/sub/registry.db\" cannot be used: ", 0), 0u) << msg2;
  setenv("QUILL_REGISTRY", tmp.Path().c_str(), 1);
}

TEST(RegistryStore, ThreadsWriteAndReadAtOnce) {
  TempRegistry tmp;
  constexpr int kThreads = 4;
  constexpr int kValues = 150;
  std::vector<std::thread> threads;
  std::atomic<int> failures{0};
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &failures] {
      try {
        TRegistry reg;
        if (!reg.OpenKey(u"\\Threads\\Shared", true)) ++failures;
        for (int i = 0; i < kValues; ++i) {
          reg.WriteInteger(u"t" + IntToStr(t) + u"_" + IntToStr(i), i);
          if (reg.ReadInteger(u"t" + IntToStr(t) + u"_" + IntToStr(i)) != i) ++failures;
        }
      } catch (const Exception&) {
        ++failures;
      }
    });
  }
  for (auto& th : threads) th.join();
  EXPECT_EQ(failures.load(), 0);
  TRegistry reg;
  ASSERT_TRUE(reg.OpenKey(u"\\Threads\\Shared", false));
  TStringList names;
  reg.GetValueNames(names);
  EXPECT_EQ(names.Count(), kThreads * kValues);
}

TEST(RegistryStore, WriterWaitsForAnotherTransaction) {
  TempRegistry tmp;
  TRegistry holder;
  std::atomic<bool> started{false};
  std::atomic<bool> wrote{false};
  std::thread other;
  {
    TRegistryTransaction tx(holder);
    ASSERT_TRUE(holder.OpenKey(u"Busy", true));
    holder.WriteInteger(u"v", 1);
    // Another writer must wait for this transaction, then succeed.
    other = std::thread([&] {
      TRegistry reg;
      started = true;
      reg.OpenKey(u"Busy", true);
      reg.WriteInteger(u"v", 2);
      wrote = true;
    });
    while (!started) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_FALSE(wrote.load());
    tx.Commit();
  }
  other.join();
  EXPECT_TRUE(wrote.load());
  EXPECT_EQ(holder.ReadInteger(u"v"), 2);  // the waiting write came last
}

TEST(TRegistryIniFile, OpensAndCreatesItsKey) {
  TempRegistry tmp;
  TRegistryIniFile ini(u"Software\\IniApp");
  EXPECT_EQ(ini.FileName(), u"Software\\IniApp");
  EXPECT_EQ(ini.RegIniFile().CurrentPath(), u"Software\\IniApp");
  TRegistry reader;
  EXPECT_TRUE(reader.KeyExists(u"Software\\IniApp"));  // created on construction
}

TEST(TRegistryIniFile, SectionsAreSubkeysAndEmptySectionIsTheKey) {
  TempRegistry tmp;
  TRegistryIniFile ini(u"Software\\IniApp");
  ini.WriteString(u"", u"Top", u"t");
  ini.WriteString(u"Window", u"Title", u"w");
  EXPECT_EQ(ini.ReadString(u"", u"Top", u"d"), u"t");
  EXPECT_EQ(ini.ReadString(u"window", u"TITLE", u"d"), u"w");
  // Defaults for missing sections and values; no section gets created by reads.
  EXPECT_EQ(ini.ReadString(u"Nope", u"x", u"dflt"), u"dflt");
  EXPECT_EQ(ini.ReadString(u"", u"x", u"dflt"), u"dflt");
  TRegistry reader;
  EXPECT_FALSE(reader.KeyExists(u"Software\\IniApp\\Nope"));
  ASSERT_TRUE(reader.OpenKey(u"Software\\IniApp\\Window", false));
  EXPECT_EQ(reader.ReadString(u"Title"), u"w");
  // The ini's own key stays open after section calls.
  EXPECT_EQ(ini.RegIniFile().CurrentPath(), u"Software\\IniApp");
}

TEST(TRegistryIniFile, IntegersAndBooleans) {
  TempRegistry tmp;
  TRegistryIniFile ini(u"IniNums");
  EXPECT_EQ(ini.ReadInteger(u"S", u"n", 42), 42);
  ini.WriteInteger(u"S", u"n", 7);
  EXPECT_EQ(ini.ReadInteger(u"S", u"n", 42), 7);
  EXPECT_EQ(ini.RegIniFile().GetDataType(u"n"), rdUnknown);  // not in the file's key
  TRegistry reader;
  ASSERT_TRUE(reader.OpenKey(u"IniNums\\S", false));
  EXPECT_EQ(reader.GetDataType(u"n"), rdInteger);
  // A string value is read as a number, and stays a string when written.
  ini.WriteString(u"S", u"text", u"12");
  EXPECT_EQ(ini.ReadInteger(u"S", u"text", 0), 12);
  ini.WriteInteger(u"S", u"text", 13);
  EXPECT_EQ(reader.GetDataType(u"text"), rdString);
  EXPECT_EQ(reader.ReadString(u"text"), u"13");
  ini.WriteString(u"S", u"junk", u"abc");
  EXPECT_EQ(ini.ReadInteger(u"S", u"junk", -1), -1);
  // Booleans as integers 1 and 0.
  EXPECT_TRUE(ini.ReadBool(u"S", u"flag", true));
  ini.WriteBool(u"S", u"flag", false);
  EXPECT_FALSE(ini.ReadBool(u"S", u"flag", true));
  EXPECT_EQ(reader.ReadInteger(u"flag"), 0);
  ini.WriteBool(u"S", u"flag", true);
  EXPECT_EQ(reader.ReadInteger(u"flag"), 1);
}

TEST(TRegistryIniFile, WrongTypeRaises) {
  TempRegistry tmp;
  TRegistryIniFile ini(u"IniTypes");
  ini.WriteInteger(u"", u"n", 1);
  EXPECT_EQ(MessageOf([&] { (void)ini.ReadString(u"", u"n", u"d"); }), "Invalid data type for 'n'");
  const uint8_t b[] = {1};
  ini.RegIniFile().WriteBinaryData(u"bin", b, 1);
  EXPECT_EQ(MessageOf([&] { (void)ini.ReadInteger(u"", u"bin", 0); }), "Invalid data type for 'bin'");
  // After a raise inside a section, the file's key is open again.
  ini.WriteInteger(u"Sec", u"n", 1);
  EXPECT_THROW((void)ini.ReadString(u"Sec", u"n", u""), ERegistryException);
  EXPECT_EQ(ini.RegIniFile().CurrentPath(), u"IniTypes");
}

}  // namespace
}  // namespace quill
