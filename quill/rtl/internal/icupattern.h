// Translation of ICU date/time patterns into the runtime's format letters.
// Not installed; exposed for the format-settings code and its tests.
#pragma once

#include <string>
#include <string_view>

namespace quill::internal {

// Translates an ICU (CLDR) date or time pattern into the runtime's letters:
// y -> yyyy, yy -> yy, M/L -> m, mm, mmm, mmmm, d -> d, dd, E -> ddd/dddd,
// H/h/k/K -> h/hh, m -> n/nn, s -> s/ss, S -> z/zzz, a/b/B -> AMPM.
// Literal text that contains ASCII letters is written in double quotes;
// other literals are copied. Fields the runtime has no letter for (era, time
// zone, quarter, ...) are dropped with the literal that joined them to the
// pattern (the one before them, or after them when they come first).
[[nodiscard]] std::u16string TranslateIcuPattern(std::u16string_view icu);

// The first separator character between the first two fields of `pattern`
// (an ICU pattern) whose letters are in `fields`, or `fallback`. Spaces are
// skipped when another literal character follows.
[[nodiscard]] char16_t PatternSeparator(std::u16string_view icu, std::u16string_view fields, char16_t fallback);

}  // namespace quill::internal
