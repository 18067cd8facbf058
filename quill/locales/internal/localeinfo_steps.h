// The steps of LocaleInfo and the enumeration, open to tests. Not installed.
#pragma once

#include <functional>

#include "quill/rtl/localefacts.h"
#include "quill/rtl/types.h"

namespace quill::Glocales::internal {

// The shape of GetLocaleInfoW.
using LocaleInfoQuery = std::function<int32_t(LCID, uint32_t, char16_t*, int32_t)>;

// LocaleInfo with `query` in place of GetLocaleInfoW: the length call, then
// the text call into a buffer of that length; ELocalesError when they disagree.
[[nodiscard]] UnicodeString LocaleInfoBy(const LocaleInfoQuery& query, LCID Locale, uint32_t LCType);

// True for a fact-table row the enumeration lists: it has a country and is
// neither a sort-order variant (LCID above 0xFFFF) nor a pseudo locale.
[[nodiscard]] bool IsSpecificLocaleFact(const WinLocaleFact& f);

}  // namespace quill::Glocales::internal
