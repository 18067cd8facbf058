// Test support: replaces the global operator new/delete of the program that
// includes it with counting versions, so tests can check that a routine does
// not allocate. Include it from exactly one source file of a test program.
#pragma once

#include <atomic>
#include <cstdlib>
#include <new>

namespace quill::testing_support {
inline std::atomic<long> g_allocations{0};
}  // namespace quill::testing_support

void* operator new(std::size_t n) {
  quill::testing_support::g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(n == 0 ? 1 : n)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
