// Fuzz target: Win9x_LoadStringW on arbitrary PE bytes and identifiers.
//
// Input: 4 bytes of string ID, 1 byte of buffer size (0..255), then the image.
// Each run loads the raw bytes as a module and, so that the string-table
// parser is reached on most runs, the same bytes as string-table block
// (ID >> 4) + 1 of a well-formed image. The buffer is exactly BufferMax units
// (so AddressSanitizer sees any write past it). Checked: the count with a
// buffer never exceeds BufferMax - 1 nor the length without one, and the
// terminator sits right after the copied units.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "quill/locales/loadstring.h"
#include "quill/utils/internal/pe_builder.h"

namespace {

void Check(std::span<const uint8_t> image, uint32_t id, int32_t buffer_max) {
  using namespace quill::Glocales;
  const HMODULE m = LoadResourceModuleFromMemory(image);
  if (m == 0) return;
  const int32_t length = Win9x_LoadStringW(m, id, nullptr, 0);
  if (length < 0) std::abort();
  auto buffer = std::make_unique<char16_t[]>(static_cast<size_t>(buffer_max));
  const int32_t n = Win9x_LoadStringW(m, id, buffer_max > 0 ? buffer.get() : nullptr, buffer_max);
  if (buffer_max > 0) {
    if (n > buffer_max - 1 || n > length) std::abort();
    if (n >= 1 && buffer[static_cast<size_t>(n)] != 0) std::abort();
  }
  if (!FreeResourceModule(m)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  const uint32_t id = data[0] | (data[1] << 8) | (data[2] << 16) | (static_cast<uint32_t>(data[3]) << 24);
  const int32_t buffer_max = data[4];
  const std::span<const uint8_t> rest(data + 5, size - 5);
  Check(rest, id, buffer_max);
  namespace peb = quill::Gutils::testing;
  const uint32_t real = (id >> 16) == 0xFFFF ? 0u - id : id;
  const peb::Bytes image = peb::PeImageWithResources(
      {{6, ((real >> 4) & 0xFFFF) + 1, 0x0409, peb::Bytes(rest.begin(), rest.end())}});
  Check(image, id, buffer_max);
  return 0;
}
