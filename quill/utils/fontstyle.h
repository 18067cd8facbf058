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

namespace quill::Gutils {

enum TFontStyle : uint8_t { fsBold, fsItalic, fsUnderline, fsStrikeOut };

// A set of font styles (bit n stands for the member of ordinal n).
class TFontStyles {
 public:
  constexpr TFontStyles() = default;
  constexpr TFontStyles(std::initializer_list<TFontStyle> styles) {
    for (TFontStyle s : styles) Include(s);
  }

  [[nodiscard]] constexpr bool Contains(TFontStyle s) const {
    return s <= fsStrikeOut && ((bits_ >> s) & 1u) != 0;
  }
  // Adds / removes one member; values beyond fsStrikeOut are ignored.
  constexpr TFontStyles& Include(TFontStyle s) {
    if (s <= fsStrikeOut) bits_ = static_cast<uint8_t>(bits_ | (1u << s));
    return *this;
  }
  constexpr TFontStyles& Exclude(TFontStyle s) {
    if (s <= fsStrikeOut) bits_ = static_cast<uint8_t>(bits_ & ~(1u << s));
    return *this;
  }
  [[nodiscard]] constexpr bool Empty() const { return bits_ == 0; }
  [[nodiscard]] constexpr uint8_t Bits() const { return bits_; }

  friend constexpr TFontStyles operator+(TFontStyles a, TFontStyles b) {
    return FromBits(static_cast<uint8_t>(a.bits_ | b.bits_));
  }
  friend constexpr TFontStyles operator-(TFontStyles a, TFontStyles b) {
    return FromBits(static_cast<uint8_t>(a.bits_ & ~b.bits_));
  }
  friend constexpr TFontStyles operator*(TFontStyles a, TFontStyles b) {
    return FromBits(static_cast<uint8_t>(a.bits_ & b.bits_));
  }
  friend constexpr bool operator==(TFontStyles a, TFontStyles b) = default;

 private:
  static constexpr TFontStyles FromBits(uint8_t bits) {
    TFontStyles s;
    s.bits_ = bits;
    return s;
  }
  uint8_t bits_ = 0;
};

// The styles whose bits (1, 2, 4, 8) are set in `Value`; every other bit,
// including the sign, is ignored: IntToFontStyle(16) is the empty set.
[[nodiscard]] QUILL_API TFontStyles IntToFontStyle(int32_t Value);

// The packed value of `Styles`, 0 to 15.
[[nodiscard]] QUILL_API int32_t FontStyleToInt(TFontStyles Styles);

}  // namespace quill::Gutils
