// Start-up and shutdown of the Gutils unit.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"
#include "quill/utils/osflags.h"

namespace {

// Sets the operating-system flags from the system's version record; without
// one (Linux) they are all false.
void SetFlagsFromSystem() {
  using namespace quill::Gutils;
  TOSVersionInfo v;
  SetOSFlags(GetOSVersionRecord(v) ? ComputeOSFlags(v) : TOSFlags{});
}

}  // namespace

QUILL_DEFINE_UNIT_LIFECYCLE(Gutils, SetFlagsFromSystem, QuillUnitNothingToDo)
