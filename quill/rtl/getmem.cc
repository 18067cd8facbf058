#include "quill/rtl/getmem.h"

#include <cstdlib>
#include <new>

namespace quill {

void* GetMem(size_t Size) {
  if (Size == 0) return nullptr;
  void* p = std::malloc(Size);
  if (p == nullptr) throw std::bad_alloc();
  return p;
}

void FreeMem(void* P) noexcept { std::free(P); }

}  // namespace quill
