// Currency: a 64-bit signed fixed-point number with four decimal places,
// held as its raw count of ten-thousandths (1.5 is the raw count 15000).
#pragma once

#include <compare>
#include <cstdint>

#include "quill/rtl/export.h"

namespace quill {

class Currency {
 public:
  constexpr Currency() = default;
  // The value whose raw count is `raw` (ten-thousandths).
  static constexpr Currency FromRaw(int64_t raw) {
    Currency c;
    c.raw_ = raw;
    return c;
  }
  // A whole number of units.
  static constexpr Currency FromInt(int64_t units) { return FromRaw(units * 10000); }
  // `v` rounded to the nearest ten-thousandth, halves to even (as the
  // runtime's floating-point to currency conversion does). The double's exact
  // binary value is rounded, so 0.00025 (stored a little above the half)
  // gives 3 ten-thousandths while 0.03125 (an exact half: 312.5) gives 312.
  // REQUIRES: the result fits the raw range (outside it, and for NaN, the
  // result saturates / is zero rather than undefined).
  QUILL_API static Currency FromDouble(double v);

  [[nodiscard]] constexpr int64_t Raw() const { return raw_; }
  [[nodiscard]] constexpr double ToDouble() const { return static_cast<double>(raw_) / 10000.0; }

  friend constexpr bool operator==(Currency a, Currency b) = default;
  friend constexpr auto operator<=>(Currency a, Currency b) = default;
  friend constexpr Currency operator+(Currency a, Currency b) { return FromRaw(a.raw_ + b.raw_); }
  friend constexpr Currency operator-(Currency a, Currency b) { return FromRaw(a.raw_ - b.raw_); }
  friend constexpr Currency operator-(Currency a) { return FromRaw(-a.raw_); }

 private:
  int64_t raw_ = 0;
};

}  // namespace quill
