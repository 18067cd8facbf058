// Start-up and shutdown of the Gcompress unit: nothing is built or released;
// only the start count moves.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

QUILL_DEFINE_UNIT_LIFECYCLE(Gcompress, QuillUnitNothingToDo, QuillUnitNothingToDo)
