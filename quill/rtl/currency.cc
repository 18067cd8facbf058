#include "quill/rtl/currency.h"

#include <cmath>
#include <limits>

namespace quill {

Currency Currency::FromDouble(double v) {
  // The product v * 10000 needs at most 53 + 14 bits, so in the 64-bit
  // mantissa of long double it is exact; rint then rounds the double's exact
  // value, ties (only dyadic values such as 0.03125 have them) to even.
  const long double scaled = std::rint(static_cast<long double>(v) * 10000.0L);
  // Outside the REQUIRES range: saturate rather than invoke undefined behaviour.
  constexpr long double kLimit = 9223372036854775808.0L;  // 2^63
  if (std::isnan(scaled)) return FromRaw(0);
  if (scaled >= kLimit) return FromRaw(std::numeric_limits<int64_t>::max());
  if (scaled < -kLimit) return FromRaw(std::numeric_limits<int64_t>::min());
  return FromRaw(static_cast<int64_t>(scaled));
}

}  // namespace quill
