// Glocales: lists of the locales the system supports.
//
// A locale list is a string list: each line is a display name in the
// system's language (LOCALE_SLANGUAGE) and carries a locale or language
// identifier as its attached object (a pointer-sized number, not a real
// object; read it with LocaleListLCID). Three lists are kept, one per option,
// each built on its first request and kept until the unit's last stop, which
// frees them; the next request builds them again. They are not refreshed in
// between. Building is guarded, so concurrent first calls are safe.
//
//   TStringList list;
//   GetLocaleList(list, lloPrimary);
//   // ... "English" carrying 0x09 (several English locales), "Hebrew (Israel)"
//   // carrying 0x040D (the only Hebrew locale), ...
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

enum TLocaleListOpt : uint8_t {
  // One line per language: a language with several locales is one line named
  // by the part of its first locale's name before "(" and carrying the bare
  // language identifier; a language with a single locale keeps that locale's
  // full name and LCID.
  lloPrimary,
  // Every supported locale, in ascending LCID order (EnumSystemLocales).
  lloSub,
  // The lloSub lines plus, directly before the first locale of each language
  // that has several, a language line as in lloPrimary.
  lloBoth,
};

// Replaces the contents of `List` by a copy of the list for `Opt` (texts and
// attached identifiers), building that list first if it does not exist. Raises
// only what LocaleInfo raises (and std::out_of_range for a value of `Opt`
// outside the three).
//   REQUIRES: `List` does not own its objects: the identifiers are numbers,
//   not objects, and must never be freed.
QUILL_API void GetLocaleList(TStrings& List, TLocaleListOpt Opt);

// The identifier attached to line `Index` of a locale list.
[[nodiscard]] inline LCID LocaleListLCID(const TStrings& List, int32_t Index) {
  return static_cast<LCID>(reinterpret_cast<uintptr_t>(List.Objects(Index)));
}

}  // namespace quill::Glocales
