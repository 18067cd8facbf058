// TSmallSet: a set over the members of a small enumeration, held as one
// unsigned integer (bit n stands for the member of ordinal n).
//
//   using TFontStyles = TSmallSet<TFontStyle, fsStrikeOut, uint8_t>;
//   TFontStyles s{fsBold, fsItalic};
//   s.Contains(fsBold);   // true
//
// Members beyond `Last` are ignored by Include/Exclude and never contained.
#pragma once

#include <initializer_list>
#include <type_traits>

namespace quill {

template <typename Enum, Enum Last, typename BitsT>
class TSmallSet {
  static_assert(std::is_unsigned_v<BitsT>);
  static_assert(static_cast<unsigned>(Last) < sizeof(BitsT) * 8, "too many members for the bits");

 public:
  constexpr TSmallSet() = default;
  constexpr TSmallSet(std::initializer_list<Enum> members) {
    for (Enum m : members) Include(m);
  }

  [[nodiscard]] constexpr bool Contains(Enum m) const {
    return m <= Last && ((bits_ >> m) & 1u) != 0;
  }
  // Adds / removes one member.
  constexpr TSmallSet& Include(Enum m) {
    if (m <= Last) bits_ = static_cast<BitsT>(bits_ | (1u << m));
    return *this;
  }
  constexpr TSmallSet& Exclude(Enum m) {
    if (m <= Last) bits_ = static_cast<BitsT>(bits_ & ~(1u << m));
    return *this;
  }
  [[nodiscard]] constexpr bool Empty() const { return bits_ == 0; }
  [[nodiscard]] constexpr BitsT Bits() const { return bits_; }

  // Union, difference and intersection.
  friend constexpr TSmallSet operator+(TSmallSet a, TSmallSet b) {
    return FromBits(static_cast<BitsT>(a.bits_ | b.bits_));
  }
  friend constexpr TSmallSet operator-(TSmallSet a, TSmallSet b) {
    return FromBits(static_cast<BitsT>(a.bits_ & ~b.bits_));
  }
  friend constexpr TSmallSet operator*(TSmallSet a, TSmallSet b) {
    return FromBits(static_cast<BitsT>(a.bits_ & b.bits_));
  }
  friend constexpr bool operator==(TSmallSet a, TSmallSet b) = default;

 private:
  static constexpr TSmallSet FromBits(BitsT bits) {
    TSmallSet s;
    s.bits_ = bits;
    return s;
  }
  BitsT bits_ = 0;
};

}  // namespace quill
