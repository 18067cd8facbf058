// The runtime's memory manager: blocks that one side allocates and the other
// frees (a sort key from Glocales::GetSortKey, for instance).
//
//   uint8_t* key = nullptr;
//   int32_t n = Glocales::GetSortKey("abc", 0x0409, key);
//   ...
//   FreeMem(key);
#pragma once

#include <cstddef>

#include "quill/rtl/export.h"

namespace quill {

// A new block of `Size` bytes (contents undefined); Size 0 gives nullptr.
// Raises std::bad_alloc when memory runs out.
[[nodiscard]] QUILL_API void* GetMem(size_t Size);

// Frees a block from GetMem (or a routine documented to allocate with it);
// nullptr is ignored.
QUILL_API void FreeMem(void* P) noexcept;

}  // namespace quill
