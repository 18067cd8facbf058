// Currency rounding. The quotients are taken in double precision, in the
// order raw / Step / 10000, so that ties fall exactly where callers have
// always seen them.
#include "quill/utils/rounding.h"

#include <cmath>

namespace quill::Gutils {
namespace {

constexpr double kRawPerUnit = 10000.0;

// The raw count of `multiples` whole steps.
Currency StepsToCurrency(double multiples, int32_t Step) {
  return Currency::FromRaw(static_cast<int64_t>(multiples) * Step * 10000);
}

double StepQuotient(Currency C, int32_t Step) {
  return static_cast<double>(C.Raw()) / Step / kRawPerUnit;
}

}  // namespace

Currency CRound(Currency C) {
  // std::nearbyint follows the current rounding mode, which is to-nearest-even
  // unless the caller changed it (as the platform's own rounding does).
  const double cents = std::nearbyint(static_cast<double>(C.Raw()) * 100.0 / kRawPerUnit);
  return Currency::FromRaw(static_cast<int64_t>(cents) * 100);
}

Currency RoundTo(Currency C, int32_t Step) {
  return StepsToCurrency(std::nearbyint(StepQuotient(C, Step)), Step);
}

Currency RoundToL(Currency C, int32_t Step) {
  return StepsToCurrency(std::trunc(StepQuotient(C, Step)), Step);
}

Currency RoundToM(Currency C, int32_t Step) {
  return StepsToCurrency(std::trunc(StepQuotient(C, Step)) + 1.0, Step);
}

}  // namespace quill::Gutils
