// The integer text grammar, shared by the 32-bit and 64-bit routines in both
// string forms. Header-only so the parser inlines into each entry point.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace quill::internal {

template <class CharT>
constexpr uint32_t Code(CharT c) {
  return static_cast<uint32_t>(static_cast<std::make_unsigned_t<CharT>>(c));
}

// Value of a hexadecimal digit, or 16 for anything else.
constexpr uint32_t HexValue(uint32_t c) {
  if (c - '0' <= 9) return c - '0';
  const uint32_t lower = c | 0x20;
  if (lower - 'a' <= 5) return lower - 'a' + 10;
  return 16;
}

// Parses [blanks][sign][hex prefix]digits over [p, end). Blanks are code 32
// only. Decimal text must fit Int's range; hexadecimal text is an Int-sized
// bit pattern (more significant bits fail), negated afterwards for '-'.
// Leaves `value` alone on failure.
template <class Int, class CharT>
bool ParseInt(const CharT* p, const CharT* end, Int& value) noexcept {
  using U = std::make_unsigned_t<Int>;
  constexpr int kBits = std::numeric_limits<U>::digits;
  while (p < end && *p == CharT(' ')) ++p;
  if (p == end) return false;
  bool negative = false;
  if (*p == CharT('+') || *p == CharT('-')) {
    negative = *p == CharT('-');
    ++p;
  }
  if (p == end) return false;
  bool hex = false;
  if (*p == CharT('$') || *p == CharT('x') || *p == CharT('X')) {
    hex = true;
    ++p;
  } else if (*p == CharT('0') && end - p >= 2 && (p[1] == CharT('x') || p[1] == CharT('X'))) {
    hex = true;
    p += 2;
  }
  if (p == end) return false;
  U mag = 0;
  if (hex) {
    for (; p < end; ++p) {
      const uint32_t d = HexValue(Code(*p));
      if (d > 15 || (mag >> (kBits - 4)) != 0) return false;
      mag = static_cast<U>((mag << 4) | d);
    }
    value = static_cast<Int>(negative ? static_cast<U>(U(0) - mag) : mag);
    return true;
  }
  // Decimal: accumulate in 64 bits with overflow checks, then range-check
  // against the magnitude the sign allows.
  uint64_t acc = 0;
  for (; p < end; ++p) {
    const uint32_t d = Code(*p) - '0';
    if (d > 9) return false;
    if (__builtin_mul_overflow(acc, uint64_t{10}, &acc) || __builtin_add_overflow(acc, uint64_t{d}, &acc)) {
      return false;
    }
  }
  const uint64_t limit = static_cast<uint64_t>(std::numeric_limits<Int>::max()) + (negative ? 1 : 0);
  if (acc > limit) return false;
  value = negative ? static_cast<Int>(U(0) - static_cast<U>(acc)) : static_cast<Int>(acc);
  return true;
}

}  // namespace quill::internal
