// Start-up and shutdown of the Gstrings unit.
//
// The unit's only state is the pair of separator sets (charclass.h). They are
// empty from the start, so the first start has nothing to build; the last
// stop clears both, so that a later start begins again with no separators.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"
#include "quill/strings/internal/separators.h"

namespace quill::Gstrings {
namespace {
TStartCount g_start_count;
}  // namespace

// First start: nothing to build; the separator sets start empty.
void initialization() {
  if (!g_start_count.Start()) return;
}

// Last stop: clears both separator sets.
void Finalization() {
  if (!g_start_count.Stop()) return;
  internal::SeparatorsA().clear();
  internal::SeparatorsW().clear();
}

int32_t StartCount() { return g_start_count.Value(); }

}  // namespace quill::Gstrings
