// Environment variables and the library's own file name.
//
//   setenv("WHO", "world", 1);
//   ExpandEnvVars(u"hello %WHO%") == UnicodeString(u"hello world\0", 12);
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// `S` with every %NAME% replaced by the value of the environment variable
// NAME (names are case-sensitive, as the environment is here). A name that is
// not set is left as it is, percent signs included, and scanning goes on
// after its closing percent sign; a lone '%' without a closing one stays.
// Values are read as UTF-8.
// The result keeps a terminating null as its last unit: its length is one
// more than the visible text, and an empty `S` gives one null unit. Callers
// that use the result as a null-terminated text rely on this; it is kept.
[[nodiscard]] QUILL_API UnicodeString ExpandEnvVars(const UnicodeString& S);

// The full file name of the shared library that holds this code when it runs
// as a loaded library; otherwise the running program's own full path. At
// most 261 units (longer names are cut there).
[[nodiscard]] QUILL_API UnicodeString DHGetFileName();

}  // namespace quill::Gutils
