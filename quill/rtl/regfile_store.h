// Registry files and the per-user store: importing a parsed file in one
// transaction and exporting a key tree as operations (quill/rtl/regfile.h has
// the format; docs/registry-file.md describes it).
//
//   quill::ImportRegFile(quill::ParseRegFile(bytes));      // all or nothing
//   auto ops = quill::ExportRegistryKey(u"Software\\MyApp");
//   write_file(quill::EncodeRegFile(quill::WriteRegFile(ops)));
#pragma once

#include "quill/rtl/export.h"
#include "quill/rtl/regfile.h"
#include "quill/rtl/registry.h"
#include "quill/rtl/types.h"

namespace quill {

// Applies `Ops` in order through `Registry` (root HKEY_CURRENT_USER; its open
// key changes). rfaCreateKey creates the key with missing parents;
// rfaDeleteKey deletes the key with its subtree (a missing key is harmless);
// rfaSetValue writes the value, creating its key, replacing a value of any type
// under that name (a dword is written as the integer of the same 32 bits);
// rfaDeleteValue deletes the value (a missing key or value is harmless).
// Starts no transaction of its own: the caller's transaction, if any, holds
// all of it. Raises ERegistryFileError naming the operation's line when the
// store refuses a key or value (for example a key name over 255 characters);
// ERegistryException from the store itself passes unchanged.
QUILL_API void ApplyRegFile(TRegistry& Registry, const TRegFileOperations& Ops);

// ApplyRegFile inside one store transaction with a registry object of its own:
// when any operation fails, nothing of `Ops` is written.
QUILL_API void ImportRegFile(const TRegFileOperations& Ops);

// Reads the value `Name` of `Registry`'s open key into `Op`: Type and its data
// member (Text, DWord or Bytes; the others are cleared), Name, Action
// rfaSetValue and Key = Registry.CurrentPath(). False, with `Op` unchanged,
// when the value does not exist. Expandable strings give rftExpandString,
// integers rftDWord with the same 32 bits.
QUILL_API bool ReadRegFileValue(TRegistry& Registry, const UnicodeString& Name, TRegFileOperation& Op);

// The key `Key` (a path below HKEY_CURRENT_USER, "" for the root; a leading
// backslash is allowed) as operations: an rfaCreateKey followed by an
// rfaSetValue for each of its values in the store's order (ReadRegFileValue)
// and, with Recursive, the same for every subkey, in pre-order with subkeys in
// the store's order. Key names are spelled as stored, whatever the case of
// `Key`. Read in one transaction, so the result is a consistent snapshot.
// Empty when the key does not exist (an existing key always gives at least
// its rfaCreateKey).
[[nodiscard]] QUILL_API TRegFileOperations ExportRegistryKey(const UnicodeString& Key, bool Recursive = true);

}  // namespace quill
