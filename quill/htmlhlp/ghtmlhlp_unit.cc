// Start-up and shutdown of the Ghtmlhlp unit: the help engine is bound on first use, so start-up
// builds nothing; the last stop unloads the engine when it was loaded (and changes nothing when
// it never was).
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"
#include "quill/htmlhlp/internal/engine.h"

namespace {
void UnloadEngine() { quill::Ghtmlhlp::internal::UnloadHtmlHelp(); }
}  // namespace

QUILL_DEFINE_UNIT_LIFECYCLE(Ghtmlhlp, QuillUnitNothingToDo, UnloadEngine)
