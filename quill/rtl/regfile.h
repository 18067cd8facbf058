// Registry files: the "Windows Registry Editor Version 5.00" text format in
// which settings move between machines and tools (docs/registry-file.md).
//
// The format is handled in two layers. Parsing and writing are pure: a file
// becomes an ordered list of operations (create a key, delete a key tree, set
// a value, delete a value) and a list of operations becomes text, without
// touching any store. Applying a list to the per-user store and exporting a
// key tree from it are in quill/rtl/regfile_store.h.
//
//   auto ops = quill::ParseRegFile(bytes);        // raises ERegistryFileError
//   std::string out = quill::EncodeRegFile(quill::WriteRegFile(ops));
//
// Only keys below HKEY_CURRENT_USER are accepted (the store has no other root).
// Value types: strings ("text"), dword:, hex: (binary), hex(1): (a string
// given as UTF-16LE bytes), hex(2): (an expandable string as UTF-16LE bytes)
// and hex(4): (a dword as four little-endian bytes). hex(0), hex(5), hex(6),
// hex(7) (multi-string), hex(8), hex(9), hex(a) and hex(b) (64-bit number)
// have no counterpart in the store and are rejected with their line number.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "quill/rtl/exception.h"
#include "quill/rtl/export.h"
#include "quill/rtl/registry.h"
#include "quill/rtl/types.h"

namespace quill {

// A registry file that cannot be read or written (a registry error, so that
// one handler catches every failure of an import). Line() is the 1-based line
// of the file the problem is on (0 when writing, where there is no file
// line); Message() is "Registry file line %d: %s" when reading, and the bare
// reason when writing.
class QUILL_API ERegistryFileError : public ERegistryException {
 public:
  ERegistryFileError(int32_t line, const UnicodeString& reason);
  ~ERegistryFileError() override;
  [[nodiscard]] int32_t Line() const noexcept { return line_; }
  [[nodiscard]] const UnicodeString& Reason() const noexcept { return reason_; }

 private:
  int32_t line_;
  UnicodeString reason_;
};

// The first line of every registry file this library reads and writes.
inline constexpr char16_t RegFileHeader[] = u"Windows Registry Editor Version 5.00";

enum TRegFileAction : uint8_t {
  rfaCreateKey,    // [HKEY_CURRENT_USER\Key]: the key is created if missing
  rfaDeleteKey,    // [-HKEY_CURRENT_USER\Key]: the key and its subtree go; a missing key is harmless
  rfaSetValue,     // "name"=data or @=data
  rfaDeleteValue,  // "name"=- or @=-: a missing value is harmless
};

enum TRegFileDataType : uint8_t {
  rftString,        // "text" or hex(1):
  rftExpandString,  // hex(2):
  rftDWord,         // dword:0000000a or hex(4):
  rftBinary,        // hex: (also written hex(3):)
};

struct TRegFileOperation {
  TRegFileAction Action = rfaCreateKey;
  // The key path below HKEY_CURRENT_USER, components joined by a backslash,
  // without a leading or trailing backslash; empty names the root itself.
  UnicodeString Key;
  // Value actions: the value name; empty is the key's default value (@).
  UnicodeString Name;
  // rfaSetValue: the type and the data (Text for the string types, DWord for
  // rftDWord, Bytes for rftBinary; the other members stay empty or 0).
  TRegFileDataType Type = rftString;
  UnicodeString Text;
  uint32_t DWord = 0;
  std::vector<uint8_t> Bytes;
  // The 1-based line of the section header or value in the file it was read
  // from; 0 for operations built in memory. Not compared by operator==.
  int32_t Line = 0;

  // Equal actions, keys, names and data (key and name case counts here).
  [[nodiscard]] QUILL_API bool operator==(const TRegFileOperation& other) const;
};

using TRegFileOperations = std::vector<TRegFileOperation>;

// Decodes the bytes of a registry file to text. A UTF-16LE byte-order mark
// (FF FE) means UTF-16LE, FE FF UTF-16BE, EF BB BF UTF-8 (the mark itself is
// dropped); without a mark the bytes are UTF-8 when they are well-formed UTF-8
// and otherwise 8-bit text in the default ANSI code page (GetACP()).
// Raises ERegistryFileError when UTF-16 data has an odd number of bytes.
[[nodiscard]] QUILL_API UnicodeString DecodeRegFile(std::string_view bytes);

// Parses registry-file text into operations, in file order. The first
// non-blank line must be RegFileHeader; blank lines and lines starting with
// ';' are skipped; lines may end in CR LF, LF or CR; blanks (space, tab) at
// either end of a line are ignored. A section header yields rfaCreateKey or
// rfaDeleteKey; each value line below it yields rfaSetValue or rfaDeleteValue
// for that key. Raises ERegistryFileError with the line of the first problem;
// nothing is returned then, so a caller applies all of a file or none of it.
[[nodiscard]] QUILL_API TRegFileOperations ParseRegFileText(std::u16string_view text);

// DecodeRegFile followed by ParseRegFileText.
[[nodiscard]] QUILL_API TRegFileOperations ParseRegFile(std::string_view bytes);

// Writes operations as registry-file text: the header line, a blank line,
// then a section header for each rfaCreateKey and rfaDeleteKey and for each
// value operation whose key differs from the section before it, each section
// followed by a blank line. Lines end in CR LF; hex data is wrapped with a
// trailing backslash so that no line exceeds 80 characters. A string holding
// CR, LF or NUL is written as hex(1): so that it survives the line-based form.
// Parsing the result gives back equal operations (plus an rfaCreateKey for a
// value whose key had no section of its own).
// Raises ERegistryFileError (line 0) for a key or value name holding CR or
// LF, a key path with an empty component, or an rfaDeleteKey of the root.
[[nodiscard]] QUILL_API UnicodeString WriteRegFile(const TRegFileOperations& ops);

// The text as UTF-16LE bytes preceded by the byte-order mark FF FE.
[[nodiscard]] QUILL_API std::string EncodeRegFile(std::u16string_view text);

}  // namespace quill
