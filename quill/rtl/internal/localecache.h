// Invalidation of the runtime's locale-dependent caches. Not installed.
//
// ResetLocaleCache() bumps a generation counter; each cache (collators, case
// mapping tables, the user locale tag) remembers the generation it was built
// in and rebuilds itself when the counter has moved on.
#pragma once

#include <cstdint>

namespace quill::internal {

[[nodiscard]] uint64_t LocaleCacheGeneration();

}  // namespace quill::internal
