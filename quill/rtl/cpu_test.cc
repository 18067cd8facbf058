// The processor answers: what the compiler's own test says, and no AVX-512
// when QUILL_NO_AVX512 asks for none (the test runs once with it, once
// without).
#include "quill/rtl/internal/cpu.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace quill::internal {
namespace {

bool NoAvx512Asked() {
  const char* const off = std::getenv("QUILL_NO_AVX512");
  return off != nullptr && off[0] != '\0' && std::strcmp(off, "0") != 0;
}

TEST(Cpu, AnswersAsTheProcessorAndTheEnvironmentSay) {
#if defined(__x86_64__)
  EXPECT_EQ(CpuHasAvx2(), __builtin_cpu_supports("avx2") != 0);
  const bool bw = __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0;
  EXPECT_EQ(CpuHasAvx512Bw(), CpuHasAvx2() && bw && !NoAvx512Asked());
  EXPECT_EQ(CpuHasAvx512Vbmi(), CpuHasAvx512Bw() && __builtin_cpu_supports("avx512vbmi") != 0);
#else
  EXPECT_FALSE(CpuHasAvx2());
  EXPECT_FALSE(CpuHasAvx512Bw());
#endif
  // Asked again: the same answers.
  EXPECT_EQ(CpuHasAvx512Bw(), CpuHasAvx512Bw());
}

}  // namespace
}  // namespace quill::internal
