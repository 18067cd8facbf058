// Start-up and shutdown of the Glocales unit: the locale lists are built on first request, so
// start-up builds nothing and shutdown has nothing cached to free.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

QUILL_DEFINE_UNIT_LIFECYCLE(Glocales, QuillUnitNothingToDo, QuillUnitNothingToDo)
