// Processor features for the vectorised paths, asked once.
#include "quill/rtl/internal/cpu.h"

#include <cstdlib>
#include <cstring>

namespace quill::internal {

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))

namespace {

bool Avx512Allowed() noexcept {
  const char* const off = std::getenv("QUILL_NO_AVX512");
  return off == nullptr || off[0] == '\0' || std::strcmp(off, "0") == 0;
}

}  // namespace

bool CpuHasAvx2() noexcept {
  static const bool has = __builtin_cpu_supports("avx2") != 0;
  return has;
}

bool CpuHasAvx512Bw() noexcept {
  static const bool has = CpuHasAvx2() && Avx512Allowed() && __builtin_cpu_supports("avx512f") != 0 &&
                          __builtin_cpu_supports("avx512bw") != 0;
  return has;
}

bool CpuHasAvx512Vbmi() noexcept {
  static const bool has = CpuHasAvx512Bw() && __builtin_cpu_supports("avx512vbmi") != 0;
  return has;
}

#else

bool CpuHasAvx2() noexcept { return false; }
bool CpuHasAvx512Bw() noexcept { return false; }
bool CpuHasAvx512Vbmi() noexcept { return false; }

#endif

}  // namespace quill::internal
