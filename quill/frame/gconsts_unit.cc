// Start-up and shutdown of the Gconsts unit: its message texts are constant resource strings, so
// only the start count moves.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

QUILL_DEFINE_UNIT_LIFECYCLE(Gconsts, QuillUnitNothingToDo, QuillUnitNothingToDo)
