// TRegistry, TRegistryTransaction and TRegistryIniFile over the SQLite store.
#include "quill/rtl/registry.h"

#include <cstring>
#include <optional>
#include <vector>

#include "quill/rtl/intconv.h"
#include "quill/rtl/internal/regstore.h"
#include "quill/rtl/unicode.h"

namespace quill {

ERegistryException::~ERegistryException() = default;

namespace {

constexpr size_t kMaxKeyNameLength = 255;

std::string EncodeUtf16Le(std::u16string_view s) {
  std::string out(s.size() * 2, '\0');
  for (size_t i = 0; i < s.size(); ++i) {
    out[2 * i] = static_cast<char>(s[i] & 0xFF);
    out[2 * i + 1] = static_cast<char>(s[i] >> 8);
  }
  return out;
}

UnicodeString DecodeUtf16Le(const std::string& bytes) {
  UnicodeString out(bytes.size() / 2, u'\0');
  for (size_t i = 0; i < out.size(); ++i) {
    out[i] = static_cast<char16_t>(static_cast<uint8_t>(bytes[2 * i]) |
                                   (static_cast<uint16_t>(static_cast<uint8_t>(bytes[2 * i + 1])) << 8));
  }
  return out;
}

[[noreturn]] void RaiseFor(const char16_t* msg, const UnicodeString& name) { throw ERegistryException(msg, {name}); }

UnicodeString RootName(HKEY key) {
  switch (key) {
    case HKEY_CLASSES_ROOT: return u"HKEY_CLASSES_ROOT";
    case HKEY_CURRENT_USER: return u"HKEY_CURRENT_USER";
    case HKEY_LOCAL_MACHINE: return u"HKEY_LOCAL_MACHINE";
    case HKEY_USERS: return u"HKEY_USERS";
    default: return u"$" + Format(u"%x", {static_cast<uint64_t>(key)});
  }
}

}  // namespace

UnicodeString RegistryFileName() { return Utf8ToUnicode(regstore::ConfiguredPath()); }

// ---------------------------------------------------------------------------
// TRegistry

TRegistry::TRegistry() : TRegistry(KEY_ALL_ACCESS) {}
TRegistry::TRegistry(uint32_t AAccess) : access_(AAccess) {}
TRegistry::~TRegistry() = default;

regstore::Connection& TRegistry::Store() {
  if (!store_) store_ = regstore::Acquire();
  return *store_;
}

void TRegistry::SetRootKey(HKEY Value) {
  if (Value != HKEY_CURRENT_USER) throw ERegistryException(rtlmsg::SRegRootUnsupported, {RootName(Value)});
  CloseKey();
  root_ = Value;
}

int64_t TRegistry::Resolve(const UnicodeString& Key, bool Create, UnicodeString* PathOut) {
  std::u16string_view rest = Key;
  bool relative = true;
  if (!rest.empty() && rest.front() == u'\\') {
    relative = false;
    rest.remove_prefix(1);
  }
  if (!rest.empty() && rest.back() == u'\\') rest.remove_suffix(1);

  std::vector<std::u16string_view> parts;
  std::vector<std::string> folds;
  if (!rest.empty()) {
    size_t start = 0;
    for (;;) {
      const size_t sep = rest.find(u'\\', start);
      const std::u16string_view part = rest.substr(start, sep == std::u16string_view::npos ? rest.npos : sep - start);
      if (part.empty() || part.size() > kMaxKeyNameLength) return 0;
      auto fold = regstore::FoldName(part);
      if (!fold) return 0;
      parts.push_back(part);
      folds.push_back(std::move(*fold));
      if (sep == std::u16string_view::npos) break;
      start = sep + 1;
    }
  }

  const int64_t base = relative && current_ != 0 ? current_ : regstore::kRootId;
  regstore::Connection& store = Store();

  // Look first without the write lock: most opens find their key.
  int64_t id = base;
  size_t found = 0;
  if (parts.empty() && !store.KeyAlive(base)) return 0;
  for (; found < parts.size(); ++found) {
    const int64_t child = store.FindChild(id, folds[found]);
    if (child == 0) break;
    id = child;
  }
  if (found < parts.size()) {
    if (!Create) return 0;
    store.Write([&] {
      id = base;
      if (!store.KeyAlive(base)) {
        id = 0;
        return;
      }
      for (size_t i = 0; i < parts.size(); ++i) {
        int64_t child = store.FindChild(id, folds[i]);
        if (child == 0) child = store.InsertChild(id, *regstore::StrictUtf8(parts[i]), folds[i]);
        id = child;
      }
    });
    if (id == 0) return 0;
  }

  if (PathOut != nullptr) {
    if (!relative || currentPath_.empty()) {
      *PathOut = UnicodeString(rest);
    } else if (rest.empty()) {
      *PathOut = currentPath_;
    } else {
      *PathOut = currentPath_ + u"\\" + UnicodeString(rest);
    }
  }
  return id;
}

bool TRegistry::OpenKey(const UnicodeString& Key, bool CanCreate) {
  UnicodeString path;
  const int64_t id = Resolve(Key, CanCreate && (access_ & KEY_CREATE_SUB_KEY) != 0, &path);
  if (id == 0) return false;
  current_ = id;
  currentPath_ = std::move(path);
  currentWritable_ = (access_ & KEY_SET_VALUE) != 0;
  return true;
}

bool TRegistry::OpenKeyReadOnly(const UnicodeString& Key) {
  UnicodeString path;
  const int64_t id = Resolve(Key, false, &path);
  if (id == 0) return false;
  current_ = id;
  currentPath_ = std::move(path);
  currentWritable_ = false;
  return true;
}

void TRegistry::CloseKey() {
  current_ = 0;
  currentPath_.clear();
  currentWritable_ = false;
}

bool TRegistry::CreateKey(const UnicodeString& Key) {
  if ((access_ & KEY_CREATE_SUB_KEY) == 0 || Resolve(Key, true, nullptr) == 0) {
    RaiseFor(rtlmsg::SRegCreateFailed, Key);
  }
  return true;
}

bool TRegistry::DeleteKey(const UnicodeString& Key) {
  if ((access_ & KEY_SET_VALUE) == 0) return false;
  const int64_t id = Resolve(Key, false, nullptr);
  if (id == 0 || id == regstore::kRootId) return false;
  regstore::Connection& store = Store();
  bool deleted = false;
  store.Write([&] {
    if (store.KeyAlive(id)) {
      store.DeleteTree(id);
      deleted = true;
    }
  });
  return deleted;
}

bool TRegistry::KeyExists(const UnicodeString& Key) { return Resolve(Key, false, nullptr) != 0; }

namespace {
std::optional<regstore::ValueData> GetValue(regstore::Connection& store, int64_t key, const UnicodeString& name) {
  if (key == 0) return std::nullopt;
  const auto fold = regstore::FoldName(name);
  if (!fold) return std::nullopt;
  return store.GetValue(key, *fold);
}
}  // namespace

bool TRegistry::ValueExists(const UnicodeString& Name) {
  return current_ != 0 && GetValue(Store(), current_, Name).has_value();
}

bool TRegistry::DeleteValue(const UnicodeString& Name) {
  if (current_ == 0 || !currentWritable_) return false;
  const auto fold = regstore::FoldName(Name);
  if (!fold) return false;
  regstore::Connection& store = Store();
  bool deleted = false;
  store.Write([&] { deleted = store.DeleteValue(current_, *fold); });
  return deleted;
}

void TRegistry::GetKeyNames(TStrings& Strings) {
  Strings.Clear();
  if (current_ == 0) return;
  for (const auto& name : Store().ChildNames(current_)) Strings.Add(Utf8ToUnicode(name));
}

void TRegistry::GetValueNames(TStrings& Strings) {
  Strings.Clear();
  if (current_ == 0) return;
  for (const auto& name : Store().ValueNames(current_)) Strings.Add(Utf8ToUnicode(name));
}

bool TRegistry::HasSubKeys() { return current_ != 0 && Store().HasChildren(current_); }

TRegDataType TRegistry::GetDataType(const UnicodeString& Name) {
  if (current_ == 0) return rdUnknown;
  const auto v = GetValue(Store(), current_, Name);
  return v ? v->type : rdUnknown;
}

int32_t TRegistry::GetDataSize(const UnicodeString& Name) {
  if (current_ == 0) return -1;
  const auto v = GetValue(Store(), current_, Name);
  if (!v) return -1;
  switch (v->type) {
    case rdString:
    case rdExpandString: return static_cast<int32_t>(v->bytes.size() + 2);
    case rdInteger: return 4;
    default: return static_cast<int32_t>(v->bytes.size());
  }
}

UnicodeString TRegistry::ReadString(const UnicodeString& Name) {
  if (current_ == 0) return UnicodeString();
  const auto v = GetValue(Store(), current_, Name);
  if (!v) return UnicodeString();
  if (v->type != rdString && v->type != rdExpandString) RaiseFor(rtlmsg::SInvalidRegType, Name);
  return DecodeUtf16Le(v->bytes);
}

int32_t TRegistry::ReadInteger(const UnicodeString& Name) {
  const auto v = current_ == 0 ? std::nullopt : GetValue(Store(), current_, Name);
  if (!v) RaiseFor(rtlmsg::SRegGetDataFailed, Name);
  if (v->type != rdInteger) RaiseFor(rtlmsg::SInvalidRegType, Name);
  return static_cast<int32_t>(v->integer);
}

bool TRegistry::ReadBool(const UnicodeString& Name) { return ReadInteger(Name) != 0; }

int32_t TRegistry::ReadBinaryData(const UnicodeString& Name, void* Buffer, int32_t BufSize) {
  const auto v = current_ == 0 ? std::nullopt : GetValue(Store(), current_, Name);
  if (!v) return 0;
  if ((v->type != rdBinary && v->type != rdUnknown) || BufSize < 0 ||
      v->bytes.size() > static_cast<size_t>(BufSize)) {
    RaiseFor(rtlmsg::SInvalidRegType, Name);
  }
  if (!v->bytes.empty()) std::memcpy(Buffer, v->bytes.data(), v->bytes.size());
  return static_cast<int32_t>(v->bytes.size());
}

void TRegistry::PutValue(const UnicodeString& Name, TRegDataType Type, std::string Bytes, int64_t Integer) {
  if (current_ == 0 || !currentWritable_ || (access_ & KEY_SET_VALUE) == 0) RaiseFor(rtlmsg::SRegSetDataFailed, Name);
  const auto name = regstore::StrictUtf8(Name);
  const auto fold = regstore::FoldName(Name);
  if (!name || !fold) RaiseFor(rtlmsg::SRegSetDataFailed, Name);
  regstore::ValueData v;
  v.type = Type;
  v.bytes = std::move(Bytes);
  v.integer = Integer;
  regstore::Connection& store = Store();
  store.Write([&] {
    if (!store.PutValue(current_, *name, *fold, v)) RaiseFor(rtlmsg::SRegSetDataFailed, Name);
  });
}

void TRegistry::WriteString(const UnicodeString& Name, const UnicodeString& Value) {
  PutValue(Name, rdString, EncodeUtf16Le(Value), 0);
}

void TRegistry::WriteExpandString(const UnicodeString& Name, const UnicodeString& Value) {
  PutValue(Name, rdExpandString, EncodeUtf16Le(Value), 0);
}

void TRegistry::WriteInteger(const UnicodeString& Name, int32_t Value) { PutValue(Name, rdInteger, {}, Value); }

void TRegistry::WriteBool(const UnicodeString& Name, bool Value) { WriteInteger(Name, Value ? 1 : 0); }

void TRegistry::WriteBinaryData(const UnicodeString& Name, const void* Buffer, int32_t BufSize) {
  if (BufSize < 0 || (Buffer == nullptr && BufSize > 0)) RaiseFor(rtlmsg::SRegSetDataFailed, Name);
  std::string bytes(static_cast<size_t>(BufSize), '\0');
  if (BufSize > 0) std::memcpy(bytes.data(), Buffer, bytes.size());
  PutValue(Name, rdBinary, std::move(bytes), 0);
}

// ---------------------------------------------------------------------------
// TRegistryTransaction

TRegistryTransaction::TRegistryTransaction(TRegistry& Registry) : reg_(Registry) {
  regstore::Connection& store = reg_.Store();
  if (store.InUserTransaction()) {
    throw ERegistryException(u"A registry transaction is already active on this registry object");
  }
  store.BeginUser();
  active_ = true;
}

TRegistryTransaction::~TRegistryTransaction() {
  if (active_) Rollback();
}

void TRegistryTransaction::Commit() {
  if (!active_) throw ERegistryException(u"No registry transaction is active");
  active_ = false;
  reg_.Store().CommitUser();
}

void TRegistryTransaction::Rollback() {
  if (!active_) return;
  active_ = false;
  reg_.Store().RollbackUser();
}

void RegistryBatch(const std::function<void(TRegistry&)>& Body) {
  TRegistry reg;
  TRegistryTransaction tx(reg);
  Body(reg);
  tx.Commit();
}

// ---------------------------------------------------------------------------
// TRegistryIniFile

TRegistryIniFile::TRegistryIniFile(const UnicodeString& FileName, uint32_t AAccess)
    : reg_(AAccess), fileName_(FileName) {
  reg_.OpenKey(FileName, true);
}

TRegistryIniFile::~TRegistryIniFile() = default;

bool TRegistryIniFile::InSection(const UnicodeString& Section, bool Create, const std::function<void()>& Fn) {
  if (Section.empty()) {
    Fn();
    return true;
  }
  const int64_t savedKey = reg_.current_;
  const bool savedWritable = reg_.currentWritable_;
  UnicodeString savedPath = reg_.currentPath_;
  if (!reg_.OpenKey(Section, Create)) return false;
  auto restore = [&] {
    reg_.current_ = savedKey;
    reg_.currentWritable_ = savedWritable;
    reg_.currentPath_ = savedPath;
  };
  try {
    Fn();
  } catch (...) {
    restore();
    throw;
  }
  restore();
  return true;
}

UnicodeString TRegistryIniFile::ReadString(const UnicodeString& Section, const UnicodeString& Ident,
                                           const UnicodeString& Default) {
  UnicodeString result = Default;
  InSection(Section, false, [&] {
    if (reg_.ValueExists(Ident)) result = reg_.ReadString(Ident);
  });
  return result;
}

void TRegistryIniFile::WriteString(const UnicodeString& Section, const UnicodeString& Ident,
                                   const UnicodeString& Value) {
  if (!InSection(Section, true, [&] { reg_.WriteString(Ident, Value); })) {
    RaiseFor(rtlmsg::SRegSetDataFailed, Ident);
  }
}

int32_t TRegistryIniFile::ReadInteger(const UnicodeString& Section, const UnicodeString& Ident, int32_t Default) {
  int32_t result = Default;
  InSection(Section, false, [&] {
    if (!reg_.ValueExists(Ident)) return;
    const TRegDataType type = reg_.GetDataType(Ident);
    if (type == rdString || type == rdExpandString) {
      result = StrToIntDef(reg_.ReadString(Ident), Default);
    } else {
      result = reg_.ReadInteger(Ident);
    }
  });
  return result;
}

void TRegistryIniFile::WriteInteger(const UnicodeString& Section, const UnicodeString& Ident, int32_t Value) {
  if (!InSection(Section, true, [&] {
        if (reg_.GetDataType(Ident) == rdString) {
          reg_.WriteString(Ident, IntToStr(Value));
        } else {
          reg_.WriteInteger(Ident, Value);
        }
      })) {
    RaiseFor(rtlmsg::SRegSetDataFailed, Ident);
  }
}

bool TRegistryIniFile::ReadBool(const UnicodeString& Section, const UnicodeString& Ident, bool Default) {
  return ReadInteger(Section, Ident, Default ? 1 : 0) != 0;
}

void TRegistryIniFile::WriteBool(const UnicodeString& Section, const UnicodeString& Ident, bool Value) {
  WriteInteger(Section, Ident, Value ? 1 : 0);
}

}  // namespace quill
