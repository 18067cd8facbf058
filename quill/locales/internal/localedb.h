// The locale database behind GetLocaleInfoW. Not installed.
#pragma once

#include <optional>
#include <string>

#include <unicode/locid.h>

#include "quill/rtl/types.h"

namespace quill::Glocales::internal {

// The text of `lctype` (flags already removed) for `lcid` (2048/1024/0
// already resolved), or nullopt when the database has no such fact.
[[nodiscard]] std::optional<UnicodeString> QueryLocaleInfo(LCID lcid, uint32_t lctype);

// The ICU locale for a fact-table tag: sort-order suffixes become ICU
// collation keywords ("es-ES_tradnl" is es-ES with traditional collation) or
// are dropped; a tag ICU cannot read gives the root locale.
[[nodiscard]] icu::Locale IcuLocaleForTag(std::string tag);

// True when ICU carries locale data (names) for the language of `loc`.
[[nodiscard]] bool IcuHasLanguageData(const icu::Locale& loc);

}  // namespace quill::Glocales::internal
