// String comparison in both forms.
//
// CompareStr/CompareText are ordinal; CompareText folds only 'a'..'z' to
// 'A'..'Z'. The Ansi* forms are locale-aware linguistic comparisons (ICU
// collator of the user locale; the case-insensitive ones at secondary
// strength, so accents count and case does not). Results are <0, 0 or >0;
// use only the sign. The linguistic forms see composed and decomposed accents
// as the same text; under a Turkish or Azeri user locale "I" and "i" are
// different letters. The 8-bit Ansi* forms decode through the ANSI code page.
// Collators are cached per thread until ResetLocaleCache().
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

[[nodiscard]] QUILL_API int CompareStr(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API int CompareStr(std::u16string_view a, std::u16string_view b);
[[nodiscard]] QUILL_API int CompareText(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API int CompareText(std::u16string_view a, std::u16string_view b);
[[nodiscard]] QUILL_API bool SameText(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API bool SameText(std::u16string_view a, std::u16string_view b);

[[nodiscard]] QUILL_API int AnsiCompareStr(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API int AnsiCompareStr(std::u16string_view a, std::u16string_view b);
[[nodiscard]] QUILL_API int AnsiCompareText(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API int AnsiCompareText(std::u16string_view a, std::u16string_view b);
[[nodiscard]] QUILL_API bool AnsiSameText(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API bool AnsiSameText(std::u16string_view a, std::u16string_view b);
[[nodiscard]] QUILL_API bool AnsiSameStr(std::string_view a, std::string_view b);
[[nodiscard]] QUILL_API bool AnsiSameStr(std::u16string_view a, std::u16string_view b);

}  // namespace quill
