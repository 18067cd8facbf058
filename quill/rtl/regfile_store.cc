// Registry files and the store: import in one transaction, export of a tree.
#include "quill/rtl/regfile_store.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <limits>
#include <vector>

#include "quill/rtl/format.h"
#include "quill/rtl/tstrings.h"

namespace quill {
namespace {

[[noreturn]] void Refused(const TRegFileOperation& op, std::u16string_view what) {
  throw ERegistryFileError(op.Line, Format(u"the registry store refused %s \"%s\"", {UnicodeString(what), op.Key}));
}

void ApplyOne(TRegistry& reg, const TRegFileOperation& op) {
  reg.CloseKey();  // paths below are relative to the root
  switch (op.Action) {
    case rfaCreateKey:
      if (!reg.OpenKey(op.Key, true)) Refused(op, u"the key");
      break;
    case rfaDeleteKey:
      (void)reg.DeleteKey(op.Key);  // false for a missing key: harmless
      break;
    case rfaDeleteValue:
      if (reg.OpenKey(op.Key, false)) (void)reg.DeleteValue(op.Name);
      break;
    case rfaSetValue:
      if (!reg.OpenKey(op.Key, true)) Refused(op, u"the key");
      switch (op.Type) {
        case rftString:
          reg.WriteString(op.Name, op.Text);
          break;
        case rftExpandString:
          reg.WriteExpandString(op.Name, op.Text);
          break;
        case rftDWord:
          reg.WriteInteger(op.Name, static_cast<int32_t>(op.DWord));
          break;
        case rftBinary:
          if (op.Bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) {
            throw ERegistryFileError(op.Line, u"binary data larger than 2 GiB cannot be stored");
          }
          reg.WriteBinaryData(op.Name, op.Bytes.data(), static_cast<int32_t>(op.Bytes.size()));
          break;
      }
      break;
  }
}

std::vector<UnicodeString> Names(TRegistry& reg, bool keys) {
  TStringList list;
  if (keys) {
    reg.GetKeyNames(list);
  } else {
    reg.GetValueNames(list);
  }
  std::vector<UnicodeString> names;
  names.reserve(static_cast<size_t>(list.Count()));
  for (int32_t i = 0; i < list.Count(); ++i) names.push_back(list.Get(i));
  return names;
}

bool SameFolded(const UnicodeString& a, const UnicodeString& b) {
  UErrorCode status = U_ZERO_ERROR;
  return u_strCaseCompare(a.data(), static_cast<int32_t>(a.size()), b.data(), static_cast<int32_t>(b.size()),
                          U_FOLD_CASE_DEFAULT, &status) == 0 &&
         U_SUCCESS(status);
}

// `path` (an existing key) spelled with the names as stored.
UnicodeString StoredPath(TRegistry& reg, const UnicodeString& path) {
  UnicodeString parent;
  UnicodeString out;
  size_t start = 0;
  while (start < path.size()) {
    size_t end = path.find(u'\\', start);
    if (end == UnicodeString::npos) end = path.size();
    const UnicodeString given = path.substr(start, end - start);
    UnicodeString stored = given;
    reg.CloseKey();
    if (reg.OpenKeyReadOnly(parent)) {
      const auto names = Names(reg, true);
      bool exact = false;
      for (const auto& n : names) exact = exact || n == given;
      if (!exact) {
        for (const auto& n : names) {
          if (SameFolded(n, given)) {
            stored = n;
            break;
          }
        }
      }
    }
    out += out.empty() ? stored : u"\\" + stored;
    parent = out;
    start = end + 1;
  }
  return out;
}

void ExportTree(TRegistry& reg, const UnicodeString& path, bool recursive, TRegFileOperations& ops) {
  reg.CloseKey();
  if (!reg.OpenKeyReadOnly(path)) return;  // vanished: nothing to add
  TRegFileOperation key;
  key.Action = rfaCreateKey;
  key.Key = path;
  ops.push_back(key);
  for (const UnicodeString& name : Names(reg, false)) {
    TRegFileOperation op;
    if (ReadRegFileValue(reg, name, op)) {
      op.Key = path;
      ops.push_back(std::move(op));
    }
  }
  if (!recursive) return;
  for (const UnicodeString& sub : Names(reg, true)) {
    ExportTree(reg, path.empty() ? sub : path + u"\\" + sub, true, ops);
  }
}

}  // namespace

void ApplyRegFile(TRegistry& Registry, const TRegFileOperations& Ops) {
  for (const TRegFileOperation& op : Ops) {
    try {
      ApplyOne(Registry, op);
    } catch (const ERegistryFileError&) {
      throw;
    } catch (const ERegistryException& e) {
      // A value or key the store refuses: name the line it came from.
      throw ERegistryFileError(op.Line, e.Message());
    }
  }
}

void ImportRegFile(const TRegFileOperations& Ops) {
  RegistryBatch([&](TRegistry& reg) { ApplyRegFile(reg, Ops); });
}

bool ReadRegFileValue(TRegistry& Registry, const UnicodeString& Name, TRegFileOperation& Op) {
  TRegFileOperation op;
  op.Action = rfaSetValue;
  op.Key = Registry.CurrentPath();
  op.Name = Name;
  switch (Registry.GetDataType(Name)) {
    case rdString:
      op.Type = rftString;
      op.Text = Registry.ReadString(Name);
      break;
    case rdExpandString:
      op.Type = rftExpandString;
      op.Text = Registry.ReadString(Name);
      break;
    case rdInteger:
      op.Type = rftDWord;
      op.DWord = static_cast<uint32_t>(Registry.ReadInteger(Name));
      break;
    case rdBinary: {
      op.Type = rftBinary;
      const int32_t size = Registry.GetDataSize(Name);
      op.Bytes.resize(static_cast<size_t>(size > 0 ? size : 0));
      const int32_t got = Registry.ReadBinaryData(Name, op.Bytes.data(), static_cast<int32_t>(op.Bytes.size()));
      op.Bytes.resize(static_cast<size_t>(got));
      break;
    }
    case rdUnknown:
      return false;
  }
  Op = std::move(op);
  return true;
}

TRegFileOperations ExportRegistryKey(const UnicodeString& Key, bool Recursive) {
  UnicodeString path = Key;
  if (!path.empty() && path.front() == u'\\') path.erase(0, 1);
  if (!path.empty() && path.back() == u'\\') path.pop_back();
  TRegFileOperations ops;
  RegistryBatch([&](TRegistry& reg) {
    if (!reg.OpenKeyReadOnly(path)) return;
    ExportTree(reg, StoredPath(reg, path), Recursive, ops);
  });
  return ops;
}

}  // namespace quill
