// Fuzz target: the PE version reader on arbitrary bytes.
//
// Two inputs per run: the raw bytes as an image, and the same bytes used as
// the version resource of a well-formed PE image (so that the block parser
// is reached on most runs). Besides memory safety it checks that a failed
// read leaves the record untouched and that LegalTrademarks is never written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "quill/utils/internal/pe_builder.h"
#include "quill/utils/internal/pe_reader.h"
#include "quill/utils/versioninfo.h"

namespace {

void Check(std::span<const uint8_t> image) {
  quill::Gutils::TGVersionInfoRec rec;
  rec.CompanyName = u"marker";
  rec.LegalTrademarks = u"marker";
  const bool ok = quill::Gutils::internal::ReadVersionInfo(quill::Gutils::internal::MemorySource(image), rec);
  if (rec.LegalTrademarks != u"marker") std::abort();
  if (!ok && rec.CompanyName != u"marker") std::abort();
  if (ok) {
    // Every text read came from inside the image.
    if (rec.CompanyName.size() * 2 > image.size() || rec.ProductName.size() * 2 > image.size()) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Check(std::span<const uint8_t>(data, size));
  const quill::Gutils::testing::Bytes resource(data, data + size);
  const quill::Gutils::testing::Bytes image = quill::Gutils::testing::PeImage(resource);
  Check(image);
  return 0;
}
