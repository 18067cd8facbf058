// Start-up and shutdown of the Gdattime unit: the first start fills the month
// phrases from the system default locale; the last stop clears them and the
// short year name.
#include "quill/dattime/internal/startup.h"
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

QUILL_DEFINE_UNIT_LIFECYCLE(Gdattime, internal::FillMonthPhrases, internal::ClearNames)
