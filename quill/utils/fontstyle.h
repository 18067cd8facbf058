// Font styles and their packing into an integer.
//
// A font style is a set over bold, italic, underline and strike-out; packed,
// bit value 1 is bold, 2 italic, 4 underline and 8 strike-out.
//
//   TFontStyles s = IntToFontStyle(5);      // {fsBold, fsUnderline}
//   FontStyleToInt(s) == 5;
#pragma once

#include <cstdint>
#include <initializer_list>

#include "quill/rtl/export.h"
#include "quill/rtl/smallset.h"

namespace quill::Gutils {

enum TFontStyle : uint8_t { fsBold, fsItalic, fsUnderline, fsStrikeOut };

// A set of font styles (bit n stands for the member of ordinal n).
using TFontStyles = TSmallSet<TFontStyle, fsStrikeOut, uint8_t>;

// The styles whose bits (1, 2, 4, 8) are set in `Value`; every other bit,
// including the sign, is ignored: IntToFontStyle(16) is the empty set.
[[nodiscard]] QUILL_API TFontStyles IntToFontStyle(int32_t Value);

// The packed value of `Styles`, 0 to 15.
[[nodiscard]] QUILL_API int32_t FontStyleToInt(TFontStyles Styles);

}  // namespace quill::Gutils
