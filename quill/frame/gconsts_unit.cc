// Start-up and shutdown of the Gconsts unit: its message texts are constant
// resource strings, so only the start count moves.
#include "quill/frame/startcount.h"
#include "quill/frame/units.h"

namespace quill::Gconsts {
namespace {
TStartCount g_start_count;
}  // namespace

void initialization() { (void)g_start_count.Start(); }

void Finalization() { (void)g_start_count.Stop(); }

int32_t StartCount() { return g_start_count.Value(); }

}  // namespace quill::Gconsts
