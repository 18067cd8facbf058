// Start-up and shutdown of the Gstrings unit.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"
#include "quill/strings/internal/separators.h"

namespace {

// The separator sets start empty, so the first start has nothing to do; the
// last stop clears both sets.
void ClearSeparatorSets() {
  quill::Gstrings::internal::SeparatorsA().clear();
  quill::Gstrings::internal::SeparatorsW().clear();
}

}  // namespace

QUILL_DEFINE_UNIT_LIFECYCLE(Gstrings, QuillUnitNothingToDo, ClearSeparatorSets)
