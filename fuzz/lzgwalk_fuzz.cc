// The quill tool's LZG00 token walker (tools/quill/lzgwalk.cc) over arbitrary
// bytes, with and without a header in front. Fed whole or in pieces (cut where
// the first input byte says), it must reach the same verdict and counts; for
// a complete stream its expanded size must be what the library's decoder
// writes, since `quill lzg test`, `info` and `decompress` rely on both.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "quill/compress/gcompress.h"
#include "tools/quill/lzgwalk.h"

namespace {

void Check(const std::vector<uint8_t>& bytes, size_t step) {
  using quilltool::LzgWalker;
  LzgWalker whole, pieces;
  whole.Feed(bytes.data(), bytes.size());
  for (size_t at = 0; at < bytes.size(); at += step) {
    const size_t n = std::min(step, bytes.size() - at);
    pieces.Feed(bytes.data() + at, n);
  }
  if (whole.Judge() != pieces.Judge() || whole.plain != pieces.plain || whole.packed != pieces.packed ||
      whole.copies != pieces.copies || whole.literal_runs != pieces.literal_runs ||
      whole.odd_tokens != pieces.odd_tokens || whole.version != pieces.version)
    std::abort();
  if (whole.Judge() != LzgWalker::Verdict::kComplete) return;
  quill::TMemoryStream in, out;
  in.WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
  in.SetPosition(0);
  quill::Gcompress::LZGDecompressStream(&in, &out);
  if (out.Size() != whole.plain) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const size_t step = size > 0 ? (data[0] % 13) + 1 : 1;
  Check(std::vector<uint8_t>(data, data + size), step);
  std::vector<uint8_t> framed = {'L', 'Z', 'G', '0', '0', 0, 0, 0, 0};
  framed.insert(framed.end(), data, data + size);
  Check(framed, step);
  return 0;
}
