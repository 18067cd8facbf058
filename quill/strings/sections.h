// Gstrings: reading the section text format from a string list.
//
// A list in this format groups its lines under header lines "[name]", like an
// initialisation file held in memory:
//
//   [Colors]
//   fore=black
//     back=white
//   [Sizes]
//   ...
//
// A header line for name N is a line whose trimmed text equals "[" N "]",
// ignoring ASCII case (N is not trimmed: blanks inside the brackets count).
// A section's body runs to the next line whose trimmed text begins with "[",
// even a malformed one such as "[abc". Value lines are the body lines whose
// trimmed text is not empty; they are delivered untrimmed. There is no comment
// syntax and no escaping. Two sections may share a name.
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// Appends to `sections` (not cleared first) the name of every line whose
// trimmed text begins with "[" and ends with "]". The name is taken from the
// line AS STORED, from position 2 on, as long as the trimmed text minus 2:
// exact for "[abc]", but shifted for an indented header ("  [abc]" gives
// " [a"). Kept exactly: callers see these names.
QUILL_API void ReadSLSections(const TStrings& list, TStrings& sections);

// Clears `values` and fills it with the value lines of the first section
// `name`. Returns the index of the last line examined: the line before the
// next header, or Count - 1; when there is no such section, Count - 1 (so -1
// for an empty list) with `values` empty.
QUILL_API int32_t ReadSLSectionValues(const TStrings& list, std::u16string_view name,
                                      TStrings& values);

// Index of the first header line for `name` at or after `start`, searching to
// the end; when none is found and `start` is not 0, searching again from 0
// (wrap-around). -1 when there is none.
// A `start` greater than Count is returned as it is, without any search or
// wrap-around (only a first pass that ends exactly at Count gives -1 or
// wraps). A negative `start` raises the list's index error.
[[nodiscard]] QUILL_API int32_t XGetSLSectionIndex(int32_t start, const TStrings& list,
                                                   std::u16string_view name);

// Clears `values` and reads the section found by XGetSLSectionIndex(start,
// list, name). Returns the index of the last line of that section; when no
// header was found, `start` itself (unlike ReadSLSectionValues, deliberately).
// Passing the previous result + 1 as `start` reads the next section of the
// same name; after the last one it wraps back to the first.
QUILL_API int32_t XReadSLSectionValues(int32_t start, const TStrings& list,
                                       std::u16string_view name, TStrings& values);

}  // namespace quill::Gstrings
