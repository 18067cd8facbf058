// quill reg: reading and writing the per-user registry store, and moving
// key trees in and out as registry files (docs/registry-file.md).
//
//   quill reg get KEY [NAME]                      a value's data ("" or no NAME: the default value)
//   quill reg set KEY NAME VALUE [--type T]       T: sz (default), expand_sz, dword, binary
//   quill reg delete KEY [NAME]                   a value, or without NAME the key with its subtree
//   quill reg list KEY [--recursive] [--json]     a key's values and subkeys
//   quill reg export [-f] KEY FILE                KEY's tree as a registry file ("-": stdout)
//   quill reg import FILE                         a registry file ("-": stdin), all or nothing
//
// KEY is a path below HKEY_CURRENT_USER ("Software\MyApp"); a leading
// "HKEY_CURRENT_USER\" or "HKCU\" is accepted and dropped, "" is the root.
// The store is $QUILL_REGISTRY, else $XDG_CONFIG_HOME/quill/registry.db, else
// ~/.config/quill/registry.db. Exit status: 0 done; 1 a missing key or value,
// a file that cannot be read or written, or a store error; 2 usage errors and
// a malformed registry file (reported as FILE:LINE: reason, nothing written).
#include <cctype>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "quill/rtl/exception.h"
#include "quill/rtl/regfile.h"
#include "quill/rtl/regfile_store.h"
#include "quill/rtl/registry.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"
#include "tools/quill/textout.h"

namespace quilltool {
namespace {

using quill::TRegFileOperation;
using quill::TRegistry;
using quill::UnicodeString;

bool StartsWithNoCase(const std::string& s, const std::string& prefix) {
  if (s.size() < prefix.size()) return false;
  for (size_t i = 0; i < prefix.size(); ++i) {
    if (std::toupper(static_cast<unsigned char>(s[i])) != prefix[i]) return false;
  }
  return true;
}

// The key path below the root, from the command line.
UnicodeString KeyArg(const std::string& key) {
  std::string k = key;
  for (const char* root : {"HKEY_CURRENT_USER", "HKCU"}) {
    const std::string r = root;
    if (StartsWithNoCase(k, r) && (k.size() == r.size() || k[r.size()] == '\\')) {
      k.erase(0, k.size() == r.size() ? r.size() : r.size() + 1);
      return quill::Utf8ToUnicode(k);
    }
  }
  if (StartsWithNoCase(k, "HKEY_")) {
    throw ToolError(kExitUsage, "only keys below HKEY_CURRENT_USER are available, not \"" + key + "\"");
  }
  if (!k.empty() && k.front() == '\\') k.erase(0, 1);
  return quill::Utf8ToUnicode(k);
}

std::string Utf8(const UnicodeString& s) { return quill::UnicodeToUtf8(s); }

std::string ShownKey(const UnicodeString& key) {
  return key.empty() ? std::string("HKEY_CURRENT_USER") : "HKEY_CURRENT_USER\\" + Utf8(key);
}

[[noreturn]] void NoKey(const UnicodeString& key) {
  throw ToolError(kExitDataError, "key \"" + ShownKey(key) + "\" does not exist");
}

[[noreturn]] void NoValue(const UnicodeString& key, const UnicodeString& name) {
  const std::string what = name.empty() ? std::string("the default value") : "value \"" + Utf8(name) + "\"";
  throw ToolError(kExitDataError, what + " does not exist in \"" + ShownKey(key) + "\"");
}

const char* TypeName(quill::TRegFileDataType t) {
  switch (t) {
    case quill::rftString: return "sz";
    case quill::rftExpandString: return "expand_sz";
    case quill::rftDWord: return "dword";
    case quill::rftBinary: return "binary";
  }
  return "?";
}

std::string HexBytes(const std::vector<uint8_t>& bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string out;
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i) out.push_back(',');
    out.push_back(digits[bytes[i] >> 4]);
    out.push_back(digits[bytes[i] & 15]);
  }
  return out;
}

// The data as `get` prints it: text as it is, a dword as a signed decimal
// number (the store's integer), binary data as comma-separated hex bytes.
std::string DataText(const TRegFileOperation& v) {
  switch (v.Type) {
    case quill::rftString:
    case quill::rftExpandString: return Utf8(v.Text);
    case quill::rftDWord: return std::to_string(static_cast<int32_t>(v.DWord));
    case quill::rftBinary: return HexBytes(v.Bytes);
  }
  return {};
}

std::string DataJson(const TRegFileOperation& v) {
  switch (v.Type) {
    case quill::rftString:
    case quill::rftExpandString: return "\"" + JsonText(v.Text) + "\"";
    case quill::rftDWord: return std::to_string(static_cast<int32_t>(v.DWord));
    case quill::rftBinary: return "\"" + HexBytes(v.Bytes) + "\"";
  }
  return {};
}

// The value of a hex digit, or -1.
int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A dword: decimal -2147483648..4294967295, or 0x followed by 1 to 8 hex digits.
uint32_t ParseDWord(const std::string& s) {
  const ToolError bad(kExitUsage, "\"" + s + "\" is not a dword (a decimal number or 0x and up to 8 hex digits)");
  if (s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) {
    if (s.size() > 10) throw bad;
    uint32_t v = 0;
    for (size_t i = 2; i < s.size(); ++i) {
      const int d = HexValue(s[i]);
      if (d < 0) throw bad;
      v = (v << 4) | static_cast<uint32_t>(d);
    }
    return v;
  }
  size_t i = 0;
  const bool negative = !s.empty() && s[0] == '-';
  if (negative) ++i;
  if (i >= s.size() || s.size() - i > 10) throw bad;
  int64_t v = 0;
  for (; i < s.size(); ++i) {
    if (s[i] < '0' || s[i] > '9') throw bad;
    v = v * 10 + (s[i] - '0');
  }
  if (negative) v = -v;
  if (v < INT32_MIN || v > UINT32_MAX) throw bad;
  return static_cast<uint32_t>(v);
}

// Binary data: hex byte pairs, optionally separated by commas, colons or blanks
// ("01,02,ff", "01 02 ff", "0102ff"); "" is no bytes.
std::vector<uint8_t> ParseBinary(const std::string& s) {
  const ToolError bad(kExitUsage, "binary data must be pairs of hex digits: \"" + s + "\"");
  std::vector<uint8_t> bytes;
  int high = -1;
  for (char c : s) {
    if (c == ',' || c == ' ' || c == ':') {
      if (high >= 0) throw bad;
      continue;
    }
    const int d = HexValue(c);
    if (d < 0) throw bad;
    if (high < 0) {
      high = d;
    } else {
      bytes.push_back(static_cast<uint8_t>(high * 16 + d));
      high = -1;
    }
  }
  if (high >= 0) throw bad;
  return bytes;
}

// --- the commands ---

void Get(const std::string& key_arg, const std::string& name_arg) {
  const UnicodeString key = KeyArg(key_arg);
  const UnicodeString name = quill::Utf8ToUnicode(name_arg);
  TRegistry reg(quill::KEY_READ);
  if (!reg.OpenKeyReadOnly(key)) NoKey(key);
  TRegFileOperation v;
  if (!quill::ReadRegFileValue(reg, name, v)) NoValue(key, name);
  Stdout() << DataText(v) << '\n';
}

void Set(const std::string& key_arg, const std::string& name_arg, const std::string& value, const std::string& type) {
  const UnicodeString key = KeyArg(key_arg);
  const UnicodeString name = quill::Utf8ToUnicode(name_arg);
  // Parse the data before touching the store: a bad value writes nothing.
  uint32_t dword = 0;
  std::vector<uint8_t> bytes;
  if (type == "dword") dword = ParseDWord(value);
  if (type == "binary") bytes = ParseBinary(value);
  TRegistry reg;
  if (!reg.OpenKey(key, true)) throw ToolError(kExitDataError, "key \"" + ShownKey(key) + "\" cannot be created");
  if (type == "sz") {
    reg.WriteString(name, quill::Utf8ToUnicode(value));
  } else if (type == "expand_sz") {
    reg.WriteExpandString(name, quill::Utf8ToUnicode(value));
  } else if (type == "dword") {
    reg.WriteInteger(name, static_cast<int32_t>(dword));
  } else {
    reg.WriteBinaryData(name, bytes.data(), static_cast<int32_t>(bytes.size()));
  }
}

void Delete(const std::string& key_arg, const std::string* name_arg) {
  const UnicodeString key = KeyArg(key_arg);
  TRegistry reg;
  if (!name_arg) {
    if (key.empty()) throw ToolError(kExitUsage, "the root key cannot be deleted");
    if (!reg.KeyExists(key)) NoKey(key);
    if (!reg.DeleteKey(key)) NoKey(key);  // deleted by someone else meanwhile
    return;
  }
  const UnicodeString name = quill::Utf8ToUnicode(*name_arg);
  if (!reg.OpenKey(key, false)) NoKey(key);
  if (!reg.DeleteValue(name)) NoValue(key, name);
}

std::vector<UnicodeString> SubkeyNames(const UnicodeString& key) {
  TRegistry reg(quill::KEY_READ);
  std::vector<UnicodeString> names;
  if (!reg.OpenKeyReadOnly(key)) return names;
  quill::TStringList list;
  reg.GetKeyNames(list);
  for (int32_t i = 0; i < list.Count(); ++i) names.push_back(list.Get(i));
  return names;
}

// Text: per key a "[HKEY_CURRENT_USER\path]" line, then one line per value
// (name, type and data separated by tabs, escaped as PlainText does, so a
// path reads C:\\dir; the default value's name is @), then one line per
// subkey (its name and a backslash); keys are separated by a blank line.
// JSON: an array with one object per key, {"key":..., "values":[{"name":...,
// "type":..., "data":...}], "subkeys":[...]}, data exact (dwords as numbers).
void List(const std::string& key_arg, bool recursive, bool json) {
  const UnicodeString key = KeyArg(key_arg);
  const quill::TRegFileOperations ops = quill::ExportRegistryKey(key, recursive);
  if (ops.empty()) NoKey(key);
  std::ostream& out = Stdout();
  if (json) out << '[';
  bool first_key = true;
  for (size_t i = 0; i < ops.size();) {
    const UnicodeString& path = ops[i].Key;
    size_t end = i + 1;
    while (end < ops.size() && ops[end].Action == quill::rfaSetValue) ++end;
    const auto subkeys = SubkeyNames(path);
    if (json) {
      out << (first_key ? "" : ",") << "\n{\"key\":\"" << JsonText(path) << "\",\"values\":[";
      for (size_t v = i + 1; v < end; ++v) {
        out << (v == i + 1 ? "" : ",") << "{\"name\":\"" << JsonText(ops[v].Name) << "\",\"type\":\""
            << TypeName(ops[v].Type) << "\",\"data\":" << DataJson(ops[v]) << '}';
      }
      out << "],\"subkeys\":[";
      for (size_t s = 0; s < subkeys.size(); ++s) out << (s ? "," : "") << '"' << JsonText(subkeys[s]) << '"';
      out << "]}";
    } else {
      if (!first_key) out << '\n';
      out << '[' << ShownKey(path) << "]\n";
      for (size_t v = i + 1; v < end; ++v) {
        const bool text = ops[v].Type == quill::rftString || ops[v].Type == quill::rftExpandString;
        out << (ops[v].Name.empty() ? std::string("@") : PlainText(ops[v].Name)) << '\t' << TypeName(ops[v].Type)
            << '\t' << (text ? PlainText(ops[v].Text) : DataText(ops[v])) << '\n';
      }
      for (const auto& s : subkeys) out << PlainText(s) << "\\\n";
    }
    first_key = false;
    CheckStdout();
    i = end;
  }
  if (json) out << "\n]\n";
}

void Export(const std::string& key_arg, const std::string& file, bool force) {
  const UnicodeString key = KeyArg(key_arg);
  const quill::TRegFileOperations ops = quill::ExportRegistryKey(key);
  if (ops.empty()) NoKey(key);
  const std::string bytes = quill::EncodeRegFile(quill::WriteRegFile(ops));
  OutputFile out(file, force);
  out.Write(bytes.data(), bytes.size());
  out.Commit();
}

void Import(const std::string& file) {
  InputFile in(file);
  const std::string bytes = in.ReadAll();
  const std::string& shown = in.Name();
  quill::TRegFileOperations ops;
  try {
    ops = quill::ParseRegFile(bytes);
  } catch (const quill::ERegistryFileError& e) {
    throw ToolError(kExitUsage, shown + ":" + std::to_string(e.Line()) + ": " + Utf8(e.Reason()));
  }
  try {
    quill::ImportRegFile(ops);
  } catch (const quill::ERegistryFileError& e) {
    throw ToolError(kExitDataError, shown + ":" + std::to_string(e.Line()) + ": " + Utf8(e.Reason()) +
                                        " (nothing was imported)");
  }
}

}  // namespace

void RegisterRegistryCommands(CLI::App& app) {
  auto* reg = app.add_subcommand("reg", "Read and write the per-user registry store; import and export registry files");
  reg->require_subcommand(1);
  reg->footer(
      "KEY is a path below HKEY_CURRENT_USER (Software\\MyApp); \"\" is the root. The store is $QUILL_REGISTRY, "
      "else $XDG_CONFIG_HOME/quill/registry.db, else ~/.config/quill/registry.db.\n"
      "Exit status: 0 done; 1 a missing key or value, a file or store error; 2 usage error, or a malformed\n"
      "registry file (FILE:LINE: reason). A failed import writes nothing.");

  auto key = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  auto value = std::make_shared<std::string>();
  auto file = std::make_shared<std::string>();
  auto type = std::make_shared<std::string>("sz");
  auto recursive = std::make_shared<bool>(false);
  auto json = std::make_shared<bool>(false);

  auto* get = reg->add_subcommand("get", "Print a value's data (no NAME: the key's default value)");
  get->add_option("KEY", *key, "Key path")->required();
  get->add_option("NAME", *name, "Value name (\"\": the default value)");
  get->callback([=] { Get(*key, *name); });

  auto* set = reg->add_subcommand("set", "Write a value, creating the key if needed");
  set->add_option("KEY", *key, "Key path")->required();
  set->add_option("NAME", *name, "Value name (\"\": the default value)")->required();
  set->add_option("VALUE", *value, "Data: text, a number (decimal or 0x hex) or hex bytes (01,02,ff)")->required();
  set->add_option("--type", *type, "Value type")->check(CLI::IsMember({"sz", "expand_sz", "dword", "binary"}));
  set->callback([=] { Set(*key, *name, *value, *type); });

  auto* del = reg->add_subcommand("delete", "Delete a value, or without NAME the key with all its subkeys");
  del->add_option("KEY", *key, "Key path")->required();
  auto* del_name = del->add_option("NAME", *name, "Value name (\"\": the default value)");
  del->callback([=] { Delete(*key, del_name->count() > 0 ? name.get() : nullptr); });

  auto* list = reg->add_subcommand("list", "List a key's values and subkeys");
  list->add_option("KEY", *key, "Key path")->required();
  list->add_flag("--recursive,-r", *recursive, "Also every key below");
  list->add_flag("--json", *json, "One JSON array of key objects");
  list->callback([=] { List(*key, *recursive, *json); });

  auto force = std::make_shared<bool>(false);
  auto* exp = reg->add_subcommand("export", "Write a key and everything below it as a registry file (UTF-16LE)");
  exp->add_option("KEY", *key, "Key path")->required();
  exp->add_option("FILE", *file, "Output file, - for standard output")->required();
  exp->add_flag("--force,-f", *force, "Replace FILE even when it is write-protected");
  exp->callback([=] { Export(*key, *file, *force); });

  auto* imp = reg->add_subcommand("import", "Apply a registry file in one transaction (all or nothing)");
  imp->add_option("FILE", *file, "Registry file, - for standard input")->required();
  imp->callback([=] { Import(*file); });
}

}  // namespace quilltool
