// Compresses arbitrary bytes and expands the result: the output must be the
// input, and the fast coder's tokens must equal the window classes' tokens.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "quill/compress/gcompress.h"
#include "quill/compress/internal/lzreference.h"

namespace {

bool Same(quill::TMemoryStream& a, quill::TMemoryStream& b, int64_t skip_a = 0) {
  return a.Size() - skip_a == b.Size() &&
         (b.Size() == 0 || std::memcmp(a.Memory() + skip_a, b.Memory(), static_cast<size_t>(b.Size())) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quill;
  TMemoryStream plain, packed, back, ref_packed;
  if (size > 0) plain.WriteBuffer(data, static_cast<int64_t>(size));
  Gcompress::LZGCompressFullStream(&plain, &packed);
  if (!Gcompress::IsLZGCompressedStream(packed) && packed.Size() >= 5) {
    packed.SetPosition(0);
    if (!Gcompress::IsLZGCompressedStream(packed)) std::abort();
  }
  Gcompress::LZGDecompressFullStream(&packed, &back);
  if (!Same(back, plain)) std::abort();
  plain.SetPosition(0);
  Gcompress::internal::ReferenceCompress(plain, ref_packed, {});
  if (!Same(packed, ref_packed, 9)) std::abort();
  return 0;
}
