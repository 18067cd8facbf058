#include "quill/locales/loadstring.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <vector>

#include "quill/frame/gconsts.h"
#include "quill/rtl/resstrings.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"
#include "quill/utils/internal/pe_reader.h"

namespace quill::Glocales {
namespace {

namespace pe = Gutils::internal;

using Image = std::shared_ptr<const std::vector<uint8_t>>;

// The library's own module: no image, a string table made from its resource
// strings. A value no opened module gets (those count up from 0x10000 in
// steps of 0x10000 and would need 2^31 openings to reach it).
constexpr HMODULE kQuillModule = 0x7FFF0000u;
constexpr uint64_t kMaxImageBytes = uint64_t{1} << 30;

struct Registry {
  std::mutex mutex;
  std::unordered_map<HMODULE, Image> images;
  HMODULE next = 0x10000;
};

Registry& Modules() {
  static auto* r = new Registry();  // never destroyed: handles may be used during exit
  return *r;
}

HMODULE Register(std::vector<uint8_t> bytes) {
  pe::MemorySource src(bytes);
  if (!pe::IsPeImage(src)) return 0;
  auto image = std::make_shared<const std::vector<uint8_t>>(std::move(bytes));
  Registry& r = Modules();
  std::lock_guard<std::mutex> lock(r.mutex);
  const HMODULE h = r.next;
  r.next += 0x10000;
  if (r.next >= kQuillModule) r.next = 0x10000;
  r.images[h] = std::move(image);
  return h;
}

Image Find(HMODULE Module) {
  Registry& r = Modules();
  std::lock_guard<std::mutex> lock(r.mutex);
  const auto it = r.images.find(Module);
  return it == r.images.end() ? nullptr : it->second;
}

void Append16(std::vector<uint8_t>& b, uint32_t v) {
  b.push_back(static_cast<uint8_t>(v));
  b.push_back(static_cast<uint8_t>(v >> 8));
}

// Block `block` of the library's own string table, as a linker would write it.
std::optional<std::vector<uint8_t>> OwnStringBlock(uint32_t block) {
  constexpr uint32_t kFirst = 65520;
  if (block != pe::StringTableBlock(kFirst)) return std::nullopt;
  std::array<UnicodeString, 16> strings;
  for (const TResStringRec* rec : Gconsts::kResourceStrings) {
    strings[rec->Identifier & 15] = LoadResString(*rec);
  }
  std::vector<uint8_t> data;
  for (const UnicodeString& s : strings) {
    Append16(data, static_cast<uint32_t>(std::min<size_t>(s.size(), 0xFFFF)));
    for (size_t i = 0; i < s.size() && i < 0xFFFF; ++i) Append16(data, s[i]);
  }
  return data;
}

// The bytes of string-table block `block` of `Module`.
std::optional<std::vector<uint8_t>> StringBlock(HMODULE Module, uint32_t block) {
  if (Module == kQuillModule) return OwnStringBlock(block);
  const Image image = Find(Module);
  if (!image) return std::nullopt;
  pe::ResourceQuery query;
  query.type = pe::kRtString;
  query.name = block;
  const auto langid = [](LCID l) { return static_cast<uint32_t>(l & 0xFFFF); };
  query.languages = {0, langid(GetUserDefaultLCID()), langid(GetSystemDefaultLCID()), 0x0400, 0x0409};
  // 16 strings of at most 65535 units each, with their lengths.
  query.max_bytes = 16 * (2 + 2 * 0xFFFF);
  return pe::FindResource(pe::MemorySource(*image), query);
}

}  // namespace

HMODULE LoadResourceModule(const UnicodeString& FileName) {
  if (FileName.empty()) return 0;
  std::ifstream in(UnicodeToUtf8(FileName), std::ios::binary);
  if (!in) return 0;
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  if (size <= 0 || static_cast<uint64_t>(size) > kMaxImageBytes) return 0;
  in.seekg(0, std::ios::beg);
  std::vector<uint8_t> bytes(static_cast<size_t>(size));
  if (!in.read(reinterpret_cast<char*>(bytes.data()), size)) return 0;
  return Register(std::move(bytes));
}

HMODULE LoadResourceModuleFromMemory(std::span<const uint8_t> Image) {
  if (Image.size() > kMaxImageBytes) return 0;
  return Register(std::vector<uint8_t>(Image.begin(), Image.end()));
}

bool FreeResourceModule(HMODULE Module) {
  Registry& r = Modules();
  std::lock_guard<std::mutex> lock(r.mutex);
  return r.images.erase(Module) > 0;
}

HMODULE QuillModuleHandle() { return kQuillModule; }

int32_t Win9x_LoadStringW(HMODULE Module, uint32_t ID, WideChar* Buffer, int32_t BufferMax) {
  // A negative identifier counts from the top.
  if ((ID >> 16) == 0xFFFF) ID = 0u - ID;
  const std::optional<std::vector<uint8_t>> block = StringBlock(Module, pe::StringTableBlock(ID));
  if (!block) return 0;
  const std::optional<std::u16string> text = pe::StringTableEntry(*block, ID & 15);
  if (!text) return 0;
  const auto length = static_cast<int32_t>(text->size());
  if (Buffer == nullptr) return length;
  // BufferMax is a signed 32-bit count: subtract in 64 bits so that the
  // smallest value does not wrap round to a huge one.
  const int64_t n = std::min<int64_t>(int64_t{BufferMax} - 1, length);
  if (n >= 1) {
    std::copy_n(text->data(), n, Buffer);
    Buffer[n] = 0;
    return static_cast<int32_t>(n);
  }
  if (BufferMax > 1) {
    Buffer[0] = 0;
    return 0;
  }
  return static_cast<int32_t>(std::max<int64_t>(n, INT32_MIN));
}

}  // namespace quill::Glocales
