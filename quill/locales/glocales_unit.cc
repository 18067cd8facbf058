// Start-up and shutdown of the Glocales unit: the locale lists are built on
// first request, so start-up builds nothing; the last stop frees the lists
// that exist, and the next request builds them again.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"
#include "quill/locales/internal/localelist_steps.h"

QUILL_DEFINE_UNIT_LIFECYCLE(Glocales, QuillUnitNothingToDo, quill::Glocales::internal::FreeLocaleLists)
