// Expands arbitrary bytes as an LZG00 token stream (with and without a
// header in front). Damaged data must decode without reading or writing
// outside the coder's buffers; the only error allowed is "Wrong stream
// format" for a missing header. The step-by-step window classes must agree
// with the fast expander byte for byte.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "quill/compress/gcompress.h"
#include "quill/compress/internal/lzreference.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quill;
  // As given: most inputs fail the header check.
  {
    TMemoryStream in, out;
    if (size > 0) in.WriteBuffer(data, static_cast<int64_t>(size));
    in.SetPosition(0);
    try {
      Gcompress::LZGDecompressStream(&in, &out);
    } catch (const Gcompress::EGCompressError&) {
    }
  }
  // Behind a valid header: every byte is decoded as tokens.
  TMemoryStream fast_in, fast_out, ref_in, ref_out;
  fast_in.WriteBuffer("LZG00\0\0\0\0", 9);
  if (size > 0) {
    fast_in.WriteBuffer(data, static_cast<int64_t>(size));
    ref_in.WriteBuffer(data, static_cast<int64_t>(size));
  }
  fast_in.SetPosition(0);
  ref_in.SetPosition(0);
  Gcompress::LZGDecompressStream(&fast_in, &fast_out);
  Gcompress::internal::ReferenceDecompress(ref_in, ref_out, {});
  if (fast_out.Size() != ref_out.Size() ||
      (fast_out.Size() > 0 &&
       std::memcmp(fast_out.Memory(), ref_out.Memory(), static_cast<size_t>(fast_out.Size())) != 0))
    std::abort();
  return 0;
}
