// Start-up and shutdown of the Ghtmlhlp unit: the help engine is bound on first use, so start-up builds nothing;
// with the engine never loaded, shutdown changes nothing.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

QUILL_DEFINE_UNIT_LIFECYCLE(Ghtmlhlp, QuillUnitNothingToDo, QuillUnitNothingToDo)
