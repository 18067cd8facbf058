// Currency rounding to cents or to a multiple of a whole-unit step.
//
// Every routine computes in double precision from the value's raw count of
// ten-thousandths; "nearest" rounds halves to the even neighbour.
//
//   CRound(Currency::FromRaw(10150)) == 1.02   // 1.015: the half goes to even 102
//   RoundToM(Currency::FromInt(20), 10) == 30  // always one step up
#pragma once

#include <cstdint>

#include "quill/rtl/currency.h"
#include "quill/rtl/export.h"

namespace quill::Gutils {

// `C` rounded to two decimal places, halves to even: 1.005 gives 1.00,
// 1.015 gives 1.02, 2.345 gives 2.34, 2.355 gives 2.36.
[[nodiscard]] QUILL_API Currency CRound(Currency C);

// The multiple of `Step` (whole units) nearest to `C`, halves to even:
// RoundTo(25, 10) is 20, RoundTo(35, 10) is 40.
// REQUIRES: Step != 0; the result fits the currency range.
[[nodiscard]] QUILL_API Currency RoundTo(Currency C, int32_t Step);

// The multiple of `Step` towards zero: RoundToL(29, 10) is 20,
// RoundToL(-29, 10) is -20. REQUIRES: Step != 0.
[[nodiscard]] QUILL_API Currency RoundToL(Currency C, int32_t Step);

// One step above the multiple towards zero: (trunc(C / Step) + 1) * Step.
// This moves up even from an exact multiple (RoundToM(20, 10) is 30) and
// towards zero for negatives (RoundToM(-15, 10) is 0); callers rely on it.
// REQUIRES: Step != 0.
[[nodiscard]] QUILL_API Currency RoundToM(Currency C, int32_t Step);

}  // namespace quill::Gutils
