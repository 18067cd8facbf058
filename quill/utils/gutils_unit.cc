// Start-up and shutdown of the Gutils unit.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"
#include "quill/utils/osflags.h"

namespace quill::Gutils {
namespace {
TStartCount g_start_count;
}  // namespace

// First start: set the operating-system flags from the system's version
// record; without one (Linux) they are all false.
void initialization() {
  if (!g_start_count.Start()) return;
  TOSVersionInfo v;
  SetOSFlags(GetOSVersionRecord(v) ? ComputeOSFlags(v) : TOSFlags{});
}

// Last stop: nothing to release.
void Finalization() {
  if (!g_start_count.Stop()) return;
}

int32_t StartCount() { return g_start_count.Value(); }

}  // namespace quill::Gutils
