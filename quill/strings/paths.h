// Gstrings: file names, extensions and paths with the backslash as path
// separator.
//
// Two routines deliberately behave differently in the two string forms:
// ConcPath and XConcPath (see below).
//
//   using namespace quill::Gstrings;
//   OnlyFileName("C:\\dir\\a.tar.gz");        // "C:\\dir\\a"
//   GExtractFileExt("C:\\my.dir\\f.txt");     // ".dir\\f.txt": the first dot anywhere
//   ConcPath("C:\\dir\\", "\\f");             // "C:\\dir\\f"
//   ConcPath(u"C:\\dir\\", u"\\f");           // u"C:\\dir\\\\f"
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// The name without every extension of its final component: everything
// before the leftmost dot after the last backslash ("a.tar.gz" gives "a").
// No dot there: the name unchanged. A final component starting with a dot at
// position 1 (".profile") gives the empty string.
[[nodiscard]] QUILL_API AnsiString OnlyFileName(std::string_view name);
[[nodiscard]] QUILL_API UnicodeString OnlyFileName(std::u16string_view name);

// OnlyFileName(name) followed by `ext` as given; no dot is added.
[[nodiscard]] QUILL_API AnsiString GChangeFileExt(std::string_view name, std::string_view ext);
[[nodiscard]] QUILL_API UnicodeString GChangeFileExt(std::u16string_view name,
                                                     std::u16string_view ext);

// The text from the first dot anywhere in the string to the end, dot
// included; not limited to the last path component on purpose. No dot: "".
[[nodiscard]] QUILL_API AnsiString GExtractFileExt(std::string_view name);
[[nodiscard]] QUILL_API UnicodeString GExtractFileExt(std::u16string_view name);

// A non-empty path not ending in a backslash gets one; others are unchanged.
[[nodiscard]] QUILL_API AnsiString FixPath(std::string_view path);
[[nodiscard]] QUILL_API UnicodeString FixPath(std::u16string_view path);

// Joins a directory and a name with a backslash.
//   8-bit:  XConcPath(dir, name, "\\"): exactly one backslash at the join.
//   UTF-16: a backslash is inserted only when both parts are non-empty and
//           neither has one at the join; otherwise plain concatenation, so
//           two backslashes at the join are kept.
[[nodiscard]] QUILL_API AnsiString ConcPath(std::string_view dir, std::string_view name);
[[nodiscard]] QUILL_API UnicodeString ConcPath(std::u16string_view dir, std::u16string_view name);

// Joins a directory and a name with `sep`.
//   8-bit:  an empty part gives the other. The directory's last and the
//           name's first character are each compared with `sep` as a
//           one-character string (a longer separator never matches):
//           neither matches: dir + sep + name; one: dir + name; both: dir +
//           name without its first character.
//   UTF-16: dir + sep + name when both are non-empty, the directory ends
//           neither in a backslash nor in `sep` and the name does not start
//           with `sep`; otherwise plain concatenation (a separator on both
//           sides is doubled).
[[nodiscard]] QUILL_API AnsiString XConcPath(std::string_view dir, std::string_view name,
                                             std::string_view sep);
[[nodiscard]] QUILL_API UnicodeString XConcPath(std::u16string_view dir, std::u16string_view name,
                                                std::u16string_view sep);

// "first.second"; an empty part gives the other.
[[nodiscard]] QUILL_API AnsiString ConcNames(std::string_view first, std::string_view second);
[[nodiscard]] QUILL_API UnicodeString ConcNames(std::u16string_view first,
                                                std::u16string_view second);

}  // namespace quill::Gstrings
