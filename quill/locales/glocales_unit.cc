// Start-up and shutdown of the Glocales unit.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

namespace quill::Glocales {
namespace {
TStartCount g_start_count;
}  // namespace

// First start: nothing to build.
void initialization() {
  if (!g_start_count.Start()) return;
}

// Last stop: nothing to release.
void Finalization() {
  if (!g_start_count.Stop()) return;
}

int32_t StartCount() { return g_start_count.Value(); }

}  // namespace quill::Glocales
