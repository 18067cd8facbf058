// The start-up ("initialization") and shutdown ("Finalization") routine of
// each unit, in start order. Each is reference-counted by the unit's own
// start count (see startcount.h): the first start does the unit's work, the
// last stop releases it, and calls in between only move the count. The
// package entry points call them in table order; they are exported so that a
// host can drive a single unit.
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"

#define QUILL_DECLARE_UNIT_LIFECYCLE(Unit)          \
  namespace quill::Unit {                          \
  QUILL_API void initialization();                 \
  QUILL_API void Finalization();                   \
  /* The unit's start count (0 = not started). */  \
  QUILL_API int32_t StartCount();                  \
  }

QUILL_DECLARE_UNIT_LIFECYCLE(Gconsts)
QUILL_DECLARE_UNIT_LIFECYCLE(Gstrings)
QUILL_DECLARE_UNIT_LIFECYCLE(Gutils)
QUILL_DECLARE_UNIT_LIFECYCLE(Gdattime)
QUILL_DECLARE_UNIT_LIFECYCLE(Gscanner)
QUILL_DECLARE_UNIT_LIFECYCLE(Glocales)
QUILL_DECLARE_UNIT_LIFECYCLE(Gcompress)
QUILL_DECLARE_UNIT_LIFECYCLE(Ghtmlhlp)

#undef QUILL_DECLARE_UNIT_LIFECYCLE
