// TRegistry: the per-user settings store ("the registry") with the runtime's
// registry API, backed by one SQLite database per user.
//
//   TRegistry reg;
//   if (reg.OpenKey(u"Software\\MyApp", true)) {
//     reg.WriteInteger(u"Runs", reg.ValueExists(u"Runs") ? reg.ReadInteger(u"Runs") + 1 : 1);
//     reg.WriteString(u"", u"default value");       // the key's unnamed value
//   }
//
// Model: nested keys below one root, HKEY_CURRENT_USER; each key holds named
// values of type string, expandable string, 32-bit integer or binary, plus the
// unnamed default value (value name ""). Key and value names compare without
// regard to case (Unicode simple case folding, no locale) and keep the case in
// which they were first written. A key name is 1 to 255 characters without a
// backslash; names must be well-formed UTF-16 (a lone surrogate is refused).
//
// Key paths use "\" between names. A path with a leading "\" is absolute (from
// the root); any other path is relative to the open key, or to the root when
// no key is open. One trailing "\" is ignored; an empty name inside a path
// ("A\\\\B") makes the path invalid. The empty path names the base key itself.
//
// Store: the database file is $QUILL_REGISTRY when set and not empty, else
// $XDG_CONFIG_HOME/quill/registry.db (an absolute XDG_CONFIG_HOME only), else
// ~/.config/quill/registry.db. Missing folders are created with mode 0700 and
// a new file with mode 0600. The path is read when a registry object first
// touches the store. Every write is one transaction (WAL journal; writers wait
// for each other up to a busy timeout and retry); a process killed at any
// moment loses no committed value. See docs/registry.md.
//
// Threads and processes: any number may read and write at once. One registry
// object is used by one thread at a time; each object holds its own database
// connection (taken from a per-process pool). Objects must not be carried
// across fork(): create new ones in the child.
//
// Errors: a value read with the wrong type, a failed write, and any failure of
// the store itself (a file that cannot be opened or is damaged, named in the
// message) raise ERegistryException. A missing key or value is not an error
// except where a routine says so.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/export.h"
#include "quill/rtl/tobject.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/types.h"

namespace quill {

namespace regstore {
class Connection;
}

using HKEY = uintptr_t;
inline constexpr HKEY HKEY_CLASSES_ROOT = 0x80000000;
inline constexpr HKEY HKEY_CURRENT_USER = 0x80000001;
inline constexpr HKEY HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr HKEY HKEY_USERS = 0x80000003;

// Access rights, as a mask passed to TRegistry(AAccess). Writes need
// KEY_SET_VALUE; creating keys needs KEY_CREATE_SUB_KEY.
inline constexpr uint32_t KEY_QUERY_VALUE = 0x0001;
inline constexpr uint32_t KEY_SET_VALUE = 0x0002;
inline constexpr uint32_t KEY_CREATE_SUB_KEY = 0x0004;
inline constexpr uint32_t KEY_ENUMERATE_SUB_KEYS = 0x0008;
inline constexpr uint32_t KEY_NOTIFY = 0x0010;
inline constexpr uint32_t KEY_READ = 0x20019;
inline constexpr uint32_t KEY_WRITE = 0x20006;
inline constexpr uint32_t KEY_ALL_ACCESS = 0xF003F;

enum TRegDataType : uint8_t { rdUnknown, rdString, rdExpandString, rdInteger, rdBinary };

// Registry failures. Messages of the runtime:
//   "Failed to get data for '%s'"   reading a value that is not there (integer reads)
//   "Invalid data type for '%s'"    reading a value of another type (or a too small buffer)
//   "Failed to set data for '%s'"   writing without an open, writable key
//   "Failed to create key %s"       CreateKey that cannot create
// and for the store itself: "Registry database "<file>" cannot be used: <reason>".
QUILL_DECLARE_EXCEPTION(ERegistryException, Exception);

namespace rtlmsg {
inline constexpr char16_t SRegGetDataFailed[] = u"Failed to get data for '%s'";
inline constexpr char16_t SInvalidRegType[] = u"Invalid data type for '%s'";
inline constexpr char16_t SRegSetDataFailed[] = u"Failed to set data for '%s'";
inline constexpr char16_t SRegCreateFailed[] = u"Failed to create key %s";
inline constexpr char16_t SRegRootUnsupported[] =
    u"Registry root %s is not available: only HKEY_CURRENT_USER is supported";
}  // namespace rtlmsg

// The database file the next registry object will use (see above), as an
// absolute or relative path exactly as configured. Never raises; does not
// create anything.
[[nodiscard]] QUILL_API UnicodeString RegistryFileName();

class QUILL_API TRegistry : public TObject {
 public:
  // Full access (KEY_ALL_ACCESS), root HKEY_CURRENT_USER, no key open. Does
  // not touch the store.
  TRegistry();
  // Access mask for the keys this object opens (KEY_READ, KEY_WRITE, ...).
  explicit TRegistry(uint32_t AAccess);
  ~TRegistry() override;
  TRegistry(const TRegistry&) = delete;
  TRegistry& operator=(const TRegistry&) = delete;

  [[nodiscard]] HKEY RootKey() const { return root_; }
  // Closes the open key and sets the root. Raises ERegistryException for any
  // root but HKEY_CURRENT_USER.
  void SetRootKey(HKEY Value);
  [[nodiscard]] uint32_t Access() const { return access_; }
  void SetAccess(uint32_t Value) { access_ = Value; }

  // Makes `Key` the open key; with CanCreate, missing keys on the way are
  // created (names in the case given). False when the path is invalid, the
  // key is missing and CanCreate is false, or creation is not allowed by the
  // access mask; the previously open key then stays open.
  bool OpenKey(const UnicodeString& Key, bool CanCreate);
  // Opens an existing key for reading only: writes through it raise.
  bool OpenKeyReadOnly(const UnicodeString& Key);
  // Closes the open key: CurrentPath() becomes "", value routines see no key.
  void CloseKey();
  // Creates `Key` (and missing parents) without opening it. True when it
  // exists afterwards; raises "Failed to create key %s" otherwise.
  bool CreateKey(const UnicodeString& Key);
  // Deletes `Key` with all its subkeys and values. False when it does not
  // exist or is the root. An open key inside the deleted tree stays "open"
  // but empty: its reads find nothing and its writes raise.
  bool DeleteKey(const UnicodeString& Key);
  [[nodiscard]] bool KeyExists(const UnicodeString& Key);
  // Value routines act on the open key; with no key open nothing exists.
  [[nodiscard]] bool ValueExists(const UnicodeString& Name);
  // False when the value did not exist.
  bool DeleteValue(const UnicodeString& Name);
  // Clears `Strings`, then adds the names of the open key's subkeys, in the
  // case first written, ordered by their case-folded form.
  void GetKeyNames(TStrings& Strings);
  // Clears `Strings`, then adds the open key's value names in the order the
  // values were first written (the default value as "").
  void GetValueNames(TStrings& Strings);
  [[nodiscard]] bool HasSubKeys();
  // rdUnknown for a missing value.
  [[nodiscard]] TRegDataType GetDataType(const UnicodeString& Name);
  // Bytes as the runtime counts them: strings (len + 1) * 2 with their
  // terminator, integers 4, binary data its length; -1 for a missing value.
  [[nodiscard]] int32_t GetDataSize(const UnicodeString& Name);

  // A string or expandable string value; "" when the value is missing.
  // Raises "Invalid data type for '%s'" for other types.
  [[nodiscard]] UnicodeString ReadString(const UnicodeString& Name);
  // Writes a string value (replacing a value of any type under that name).
  void WriteString(const UnicodeString& Name, const UnicodeString& Value);
  void WriteExpandString(const UnicodeString& Name, const UnicodeString& Value);
  // Raises "Failed to get data for '%s'" when missing, "Invalid data type for
  // '%s'" when not an integer.
  [[nodiscard]] int32_t ReadInteger(const UnicodeString& Name);
  void WriteInteger(const UnicodeString& Name, int32_t Value);
  // ReadInteger(Name) != 0; the same errors.
  [[nodiscard]] bool ReadBool(const UnicodeString& Name);
  // Stored as the integer 1 or 0.
  void WriteBool(const UnicodeString& Name, bool Value);
  // Copies a binary value into Buffer and returns its size; 0 when missing.
  // Raises "Invalid data type for '%s'" for another type or when the value is
  // larger than BufSize. Never writes past Buffer + BufSize.
  int32_t ReadBinaryData(const UnicodeString& Name, void* Buffer, int32_t BufSize);
  // Raises "Failed to set data for '%s'" for a negative BufSize.
  void WriteBinaryData(const UnicodeString& Name, const void* Buffer, int32_t BufSize);

  // The open key's path, without a leading "\", built from the paths given
  // to OpenKey (relative paths appended after "\"); "" when none is open.
  [[nodiscard]] UnicodeString CurrentPath() const { return currentPath_; }

 private:
  friend class TRegistryIniFile;
  friend class TRegistryTransaction;

  regstore::Connection& Store();
  // Id of the key named by `Key` (see the path rules); 0 when it is missing
  // or invalid. With Create, missing keys are created in one transaction.
  int64_t Resolve(const UnicodeString& Key, bool Create, UnicodeString* PathOut);
  void PutValue(const UnicodeString& Name, TRegDataType Type, std::string Bytes, int64_t Integer);

  std::shared_ptr<regstore::Connection> store_;
  uint32_t access_;
  HKEY root_ = HKEY_CURRENT_USER;
  int64_t current_ = 0;  // id of the open key, 0 for none
  bool currentWritable_ = false;
  UnicodeString currentPath_;
};

// Groups writes into one transaction (all or nothing), for imports and
// read-modify-write updates:
//
//   TRegistry reg;
//   TRegistryTransaction tx(reg);       // waits for other writers
//   reg.OpenKey(u"Counters", true);
//   reg.WriteInteger(u"N", reg.ReadInteger(u"N") + 1);   // no update is lost
//   tx.Commit();                        // without it, the destructor rolls back
//
// The constructor takes the store's write lock (waiting for other writers and
// retrying on a busy store) and raises ERegistryException when it cannot.
// While it is active, every read and write of `Registry` belongs to it and
// sees its own changes; other connections see them only after Commit. A
// routine that raises inside the transaction undoes only its own changes.
// REQUIRES: Registry outlives the transaction; one transaction per registry
// object at a time (a second raises); no other registry object in the same
// thread writes while it is active (it would wait for this one).
class QUILL_API TRegistryTransaction {
 public:
  explicit TRegistryTransaction(TRegistry& Registry);
  ~TRegistryTransaction();
  TRegistryTransaction(const TRegistryTransaction&) = delete;
  TRegistryTransaction& operator=(const TRegistryTransaction&) = delete;

  // Makes every change durable and visible; raises ERegistryException when
  // the store refuses (the changes are then rolled back).
  void Commit();
  // Undoes every change made since the constructor.
  void Rollback();
  [[nodiscard]] bool Active() const { return active_; }

 private:
  TRegistry& reg_;
  bool active_ = false;
};

// Runs Body with a fresh registry object (full access, no key open) inside
// one transaction and commits it; when Body raises, nothing is written and the
// exception passes on.
QUILL_API void RegistryBatch(const std::function<void(TRegistry&)>& Body);

// The runtime's ini-style view of a registry key: sections are subkeys of the
// key FileName (the empty section is the key itself), identifiers are value
// names. The constructor opens FileName below HKEY_CURRENT_USER, creating it
// if needed (and ignores a failure: reads then give their defaults).
class QUILL_API TRegistryIniFile : public TObject {
 public:
  explicit TRegistryIniFile(const UnicodeString& FileName, uint32_t AAccess = KEY_ALL_ACCESS);
  ~TRegistryIniFile() override;

  [[nodiscard]] const UnicodeString& FileName() const { return fileName_; }
  // The registry object behind the file, with FileName's key open.
  [[nodiscard]] TRegistry& RegIniFile() { return reg_; }

  // Default when the section or value is missing; raises "Invalid data type
  // for '%s'" for a value that is not a string.
  [[nodiscard]] UnicodeString ReadString(const UnicodeString& Section, const UnicodeString& Ident,
                                         const UnicodeString& Default);
  // Creates the section when needed.
  void WriteString(const UnicodeString& Section, const UnicodeString& Ident, const UnicodeString& Value);
  // Default when missing; a string value is converted (Default when it is not
  // a valid integer); binary values raise "Invalid data type for '%s'".
  [[nodiscard]] int32_t ReadInteger(const UnicodeString& Section, const UnicodeString& Ident, int32_t Default);
  // Keeps the stored type: an existing string value gets the decimal text,
  // otherwise an integer value is written.
  void WriteInteger(const UnicodeString& Section, const UnicodeString& Ident, int32_t Value);
  // ReadInteger(Section, Ident, Default ? 1 : 0) != 0.
  [[nodiscard]] bool ReadBool(const UnicodeString& Section, const UnicodeString& Ident, bool Default);
  // WriteInteger with 1 or 0.
  void WriteBool(const UnicodeString& Section, const UnicodeString& Ident, bool Value);

 private:
  // Runs Fn with the section open (the key itself for ""); false (Fn not
  // run) when the section is missing and Create is false, or cannot be made.
  bool InSection(const UnicodeString& Section, bool Create, const std::function<void()>& Fn);

  TRegistry reg_;
  UnicodeString fileName_;
};

}  // namespace quill
