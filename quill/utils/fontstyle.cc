// Font style packing.
#include "quill/utils/fontstyle.h"

namespace quill::Gutils {
namespace {
// Bit value of each member, in member order.
constexpr int32_t kStyleBits[] = {1, 2, 4, 8};
constexpr TFontStyle kStyles[] = {fsBold, fsItalic, fsUnderline, fsStrikeOut};
}  // namespace

TFontStyles IntToFontStyle(int32_t Value) {
  TFontStyles result;
  for (int i = 0; i < 4; ++i)
    if ((Value & kStyleBits[i]) != 0) result.Include(kStyles[i]);
  return result;
}

int32_t FontStyleToInt(TFontStyles Styles) {
  int32_t result = 0;
  for (int i = 0; i < 4; ++i)
    if (Styles.Contains(kStyles[i])) result |= kStyleBits[i];
  return result;
}

}  // namespace quill::Gutils
