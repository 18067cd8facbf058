// Start-up and shutdown of the Gdattime unit.
#include "quill/dattime/internal/startup.h"
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

namespace quill::Gdattime {
namespace {
TStartCount g_start_count;
}  // namespace

// First start: the month phrases of the system default locale.
void initialization() {
  if (!g_start_count.Start()) return;
  internal::FillMonthPhrases();
}

// Last stop: empties the month phrases and the year name.
void Finalization() {
  if (!g_start_count.Stop()) return;
  internal::ClearNames();
}

int32_t StartCount() { return g_start_count.Value(); }

}  // namespace quill::Gdattime
