// What the processor offers to the vectorised paths of the library (the
// searches, the LZG decoder). Each answer is worked out once per process.
//
// Setting QUILL_NO_AVX512 in the environment (to anything but "" or "0")
// before the first call makes the AVX-512 answers false: the library then
// runs its AVX2 paths, as on a processor without AVX-512. The tests use it
// to run both paths on one machine. Not installed.
#pragma once

namespace quill::internal {

// AVX2 (false on processors other than x86-64).
[[nodiscard]] bool CpuHasAvx2() noexcept;

// AVX-512 F and BW (byte and word operations on 64-byte vectors), with AVX2.
[[nodiscard]] bool CpuHasAvx512Bw() noexcept;

// AVX-512 VBMI (byte permutations across a vector) on top of CpuHasAvx512Bw.
[[nodiscard]] bool CpuHasAvx512Vbmi() noexcept;

}  // namespace quill::internal
