// Bounds-checked reading of PE version resources.
//
// Layout walked here (all numbers little-endian):
//   DOS header "MZ", offset of the PE header at 0x3C
//   "PE\0\0", file header (20 bytes: section count at +2, optional header
//   size at +16), optional header (magic 0x10B or 0x20B; the resource
//   directory is data directory 2), section table (40-byte entries:
//   virtual address +12, raw size +16, raw offset +20)
//   resource directory: 16-byte header (named count +12, id count +14), then
//   8-byte entries (name or id; offset, high bit = subdirectory), offsets
//   relative to the start of the resource directory; a leaf is a 16-byte
//   data entry (data address, size, code page, reserved)
//   version resource: blocks of (length, value length, type, key text,
//   padding, value, padding, children), 32-bit aligned
#include "quill/utils/internal/pe_reader.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "quill/utils/versioninfo.h"

namespace quill::Gutils::internal {
namespace {

constexpr uint32_t kRtVersion = 16;
constexpr uint32_t kSubdirectoryBit = 0x80000000u;
// A version block's length field is 16 bits wide: nothing beyond 64 KiB of
// the resource can belong to it.
constexpr uint32_t kMaxVersionBytes = 0x10000;

uint16_t Le16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }
uint32_t Le32(const uint8_t* p) {
  return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
         (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

struct Section {
  uint32_t virtual_address;
  uint32_t raw_size;
  uint32_t raw_offset;
};

class Image {
 public:
  explicit Image(const ByteSource& src) : src_(src) {}

  template <size_t N>
  bool Read(uint64_t offset, std::array<uint8_t, N>& out) const {
    return src_.ReadAt(offset, out.data(), N);
  }
  bool Read(uint64_t offset, std::vector<uint8_t>& out) const {
    return src_.ReadAt(offset, out.data(), out.size());
  }

  // The file offset of `len` bytes at address `rva`, when one section holds
  // them all in the file.
  std::optional<uint64_t> RvaToOffset(uint64_t rva, uint64_t len) const {
    for (const Section& s : sections_) {
      if (rva < s.virtual_address) continue;
      const uint64_t delta = rva - s.virtual_address;
      if (delta + len > s.raw_size) continue;
      const uint64_t off = static_cast<uint64_t>(s.raw_offset) + delta;
      if (off + len > src_.Size()) return std::nullopt;
      return off;
    }
    return std::nullopt;
  }

  bool ReadRva(uint64_t rva, void* dst, size_t n) const {
    const std::optional<uint64_t> off = RvaToOffset(rva, n);
    return off && src_.ReadAt(*off, dst, n);
  }

  std::vector<Section> sections_;

 private:
  const ByteSource& src_;
};

struct DirEntry {
  uint32_t name;
  uint32_t offset;
};

// The entries of the resource directory at `rva`, or nullopt.
std::optional<std::vector<DirEntry>> ReadDirectory(const Image& img, uint64_t rva) {
  std::array<uint8_t, 16> head{};
  if (!img.ReadRva(rva, head.data(), head.size())) return std::nullopt;
  const size_t count = static_cast<size_t>(Le16(&head[12])) + Le16(&head[14]);
  std::vector<uint8_t> raw(count * 8);
  if (count > 0 && !img.ReadRva(rva + 16, raw.data(), raw.size())) return std::nullopt;
  std::vector<DirEntry> entries(count);
  for (size_t i = 0; i < count; ++i) entries[i] = {Le32(&raw[i * 8]), Le32(&raw[i * 8 + 4])};
  return entries;
}

// ---- version blocks ---------------------------------------------------------

constexpr size_t Align4(size_t v) { return (v + 3) & ~static_cast<size_t>(3); }

struct Block {
  size_t begin = 0;
  size_t end = 0;         // clamped to the parent
  size_t raw_length = 0;  // the length field as written
  size_t key_begin = 0;
  size_t key_units = 0;
  size_t value_begin = 0;
  size_t value_end = 0;
  size_t children_begin = 0;
  bool text = false;
};

// The block at `off`, which must end by `limit`.
std::optional<Block> ParseBlock(std::span<const uint8_t> d, size_t off, size_t limit) {
  if (off > limit || limit - off < 6) return std::nullopt;
  Block b;
  b.begin = off;
  b.raw_length = Le16(&d[off]);
  if (b.raw_length < 6) return std::nullopt;
  b.end = std::min(off + b.raw_length, limit);
  const size_t value_length = Le16(&d[off + 2]);
  b.text = Le16(&d[off + 4]) == 1;
  b.key_begin = off + 6;
  size_t p = b.key_begin;
  while (p + 2 <= b.end && Le16(&d[p]) != 0) p += 2;
  if (p + 2 > b.end) return std::nullopt;  // the key is not terminated inside the block
  b.key_units = (p - b.key_begin) / 2;
  const size_t value_bytes = b.text ? value_length * 2 : value_length;
  const size_t value_begin = Align4(p + 2);
  b.value_begin = std::min(value_begin, b.end);
  b.value_end = std::min(value_begin + value_bytes, b.end);
  b.children_begin = std::min(Align4(value_begin + value_bytes), b.end);
  return b;
}

bool KeyEquals(std::span<const uint8_t> d, const Block& b, std::u16string_view key) {
  if (b.key_units != key.size()) return false;
  auto fold = [](char16_t c) -> char16_t { return c >= u'a' && c <= u'z' ? c - 32 : c; };
  for (size_t i = 0; i < key.size(); ++i)
    if (fold(Le16(&d[b.key_begin + 2 * i])) != fold(key[i])) return false;
  return true;
}

std::optional<Block> FindChild(std::span<const uint8_t> d, const Block& parent, std::u16string_view key) {
  size_t c = parent.children_begin;
  while (c < parent.end && parent.end - c >= 6) {
    const std::optional<Block> child = ParseBlock(d, c, parent.end);
    if (!child) return std::nullopt;
    if (KeyEquals(d, *child, key)) return child;
    const size_t next = Align4(c + child->raw_length);
    if (next <= c) return std::nullopt;
    c = next;
  }
  return std::nullopt;
}

}  // namespace

bool MemorySource::ReadAt(uint64_t offset, void* dst, size_t n) const {
  if (offset > bytes_.size() || bytes_.size() - offset < n) return false;
  if (n > 0) std::memcpy(dst, bytes_.data() + offset, n);
  return true;
}

namespace {

// Reads the headers and the section table into `img`; the address of the
// resource directory (0 when the image has none), or nullopt when `img` is
// no PE image.
std::optional<uint32_t> ReadHeaders(Image& img) {
  std::array<uint8_t, 64> dos{};
  if (!img.Read(0, dos) || dos[0] != 'M' || dos[1] != 'Z') return std::nullopt;
  const uint64_t pe = Le32(&dos[0x3C]);
  std::array<uint8_t, 24> pe_head{};
  if (!img.Read(pe, pe_head) || std::memcmp(pe_head.data(), "PE\0\0", 4) != 0) return std::nullopt;
  const uint16_t section_count = Le16(&pe_head[6]);
  const uint16_t optional_size = Le16(&pe_head[20]);

  // Optional header: where the data directories start, by format.
  std::vector<uint8_t> opt(optional_size);
  if (optional_size < 2 || !img.Read(pe + 24, opt)) return std::nullopt;
  size_t dirs = 0;
  size_t dir_count_at = 0;
  switch (Le16(opt.data())) {
    case 0x10B: dirs = 96; dir_count_at = 92; break;   // 32-bit image
    case 0x20B: dirs = 112; dir_count_at = 108; break;  // 64-bit image
    default: return std::nullopt;
  }
  constexpr size_t kResourceDir = 2;
  if (optional_size < dirs + (kResourceDir + 1) * 8) return 0u;
  if (Le32(&opt[dir_count_at]) <= kResourceDir) return 0u;
  const uint32_t res_rva = Le32(&opt[dirs + kResourceDir * 8]);
  if (res_rva == 0) return 0u;

  std::vector<uint8_t> table(static_cast<size_t>(section_count) * 40);
  if (!img.Read(pe + 24 + optional_size, table)) return 0u;
  img.sections_.reserve(section_count);
  for (size_t i = 0; i < section_count; ++i) {
    const uint8_t* s = &table[i * 40];
    img.sections_.push_back({Le32(s + 12), Le32(s + 16), Le32(s + 20)});
  }
  return res_rva;
}

bool IsDir(const DirEntry& e) { return (e.offset & kSubdirectoryBit) != 0; }
// Integer entries only: a name with the high bit set is a string.
bool IsId(const DirEntry& e, uint32_t id) { return (e.name & kSubdirectoryBit) == 0 && e.name == id; }

}  // namespace

bool IsPeImage(const ByteSource& image) {
  Image img(image);
  return ReadHeaders(img).has_value();
}

std::optional<std::vector<uint8_t>> FindResource(const ByteSource& src, const ResourceQuery& query) {
  Image img(src);
  const std::optional<uint32_t> res_rva = ReadHeaders(img);
  if (!res_rva || *res_rva == 0) return std::nullopt;

  // Type level: the type, which must be a subdirectory.
  const auto types = ReadDirectory(img, *res_rva);
  if (!types) return std::nullopt;
  const auto type = std::find_if(types->begin(), types->end(),
                                 [&](const DirEntry& e) { return IsId(e, query.type) && IsDir(e); });
  if (type == types->end()) return std::nullopt;

  // Name level: the name asked for, else the resource numbered 1 when
  // present, else the first.
  const auto names = ReadDirectory(img, *res_rva + (type->offset & ~kSubdirectoryBit));
  if (!names) return std::nullopt;
  const uint32_t wanted = query.name.value_or(1);
  auto name = std::find_if(names->begin(), names->end(), [&](const DirEntry& e) { return IsId(e, wanted) && IsDir(e); });
  if (name == names->end() && !query.name) name = std::find_if(names->begin(), names->end(), IsDir);
  if (name == names->end()) return std::nullopt;

  // Language level: the first preferred language present, else the first
  // data entry.
  const auto langs = ReadDirectory(img, *res_rva + (name->offset & ~kSubdirectoryBit));
  if (!langs) return std::nullopt;
  auto lang = langs->end();
  for (uint32_t l : query.languages) {
    lang = std::find_if(langs->begin(), langs->end(), [&](const DirEntry& e) { return IsId(e, l) && !IsDir(e); });
    if (lang != langs->end()) break;
  }
  if (lang == langs->end()) lang = std::find_if(langs->begin(), langs->end(), [](const DirEntry& e) { return !IsDir(e); });
  if (lang == langs->end()) return std::nullopt;

  std::array<uint8_t, 16> leaf{};
  if (!img.ReadRva(static_cast<uint64_t>(*res_rva) + lang->offset, leaf.data(), leaf.size()))
    return std::nullopt;
  const uint32_t data_rva = Le32(&leaf[0]);
  const uint32_t size = std::min(Le32(&leaf[4]), query.max_bytes);
  std::vector<uint8_t> data(size);
  if (!img.ReadRva(data_rva, data.data(), data.size())) return std::nullopt;
  return data;
}

std::optional<std::vector<uint8_t>> FindVersionResource(const ByteSource& src) {
  ResourceQuery query;
  query.type = kRtVersion;
  query.max_bytes = kMaxVersionBytes;
  std::optional<std::vector<uint8_t>> data = FindResource(src, query);
  if (!data || data->size() < 6) return std::nullopt;
  return data;
}

std::optional<std::u16string> StringTableEntry(std::span<const uint8_t> block, uint32_t index) {
  size_t at = 0;
  for (uint32_t i = 0; i < index; ++i) {
    if (block.size() - at < 2) return std::nullopt;
    at += 2 + 2 * static_cast<size_t>(Le16(&block[at]));
    if (at > block.size()) return std::nullopt;
  }
  if (block.size() - at < 2) return std::nullopt;
  const size_t length = Le16(&block[at]);
  at += 2;
  const size_t units = std::min(length, (block.size() - at) / 2);
  std::u16string text(units, u'\0');
  for (size_t i = 0; i < units; ++i) text[i] = static_cast<char16_t>(Le16(&block[at + 2 * i]));
  return text;
}

std::optional<VersionBlock> VersionBlock::Parse(std::vector<uint8_t> data) {
  const std::optional<Block> root = ParseBlock(data, 0, data.size());
  if (!root || !KeyEquals(data, *root, u"VS_VERSION_INFO")) return std::nullopt;
  return VersionBlock(std::move(data));
}

std::optional<VersionBlock::Value> VersionBlock::Query(std::u16string_view path) const {
  const std::span<const uint8_t> d(data_);
  std::optional<Block> block = ParseBlock(d, 0, d.size());
  while (block && !path.empty()) {
    const size_t sep = path.find(u'\\');
    const std::u16string_view key = path.substr(0, sep);
    path = sep == std::u16string_view::npos ? std::u16string_view() : path.substr(sep + 1);
    if (key.empty()) continue;  // "\\" and doubled separators name no level
    block = FindChild(d, *block, key);
  }
  if (!block) return std::nullopt;
  return Value{d.subspan(block->value_begin, block->value_end - block->value_begin),
               d.subspan(block->value_begin, block->end - block->value_begin), block->text};
}

std::optional<UnicodeString> VersionBlock::QueryText(std::u16string_view path) const {
  const std::optional<Value> v = Query(path);
  if (!v) return std::nullopt;
  // Text runs to its null. The value length is not trusted to be in units
  // (some files write bytes): only the end of the value's own block bounds
  // the read.
  UnicodeString text;
  if (v->bytes.empty()) return text;
  for (size_t i = 0; i + 2 <= v->rest.size(); i += 2) {
    const char16_t c = Le16(&v->rest[i]);
    if (c == 0) break;
    text.push_back(c);
  }
  return text;
}

namespace {

// The version block of the image, or nullopt.
std::optional<VersionBlock> ImageVersionBlock(const ByteSource& image) {
  std::optional<std::vector<uint8_t>> data = FindVersionResource(image);
  if (!data) return std::nullopt;
  return VersionBlock::Parse(std::move(*data));
}

// The key of the first translation: language and code page as eight
// upper-case hexadecimal digits ("040904B0"); nullopt when there is none.
std::optional<UnicodeString> FirstTranslation(const VersionBlock& block) {
  const auto tr = block.Query(u"\\VarFileInfo\\Translation");
  if (!tr || tr->bytes.size() < 4) return std::nullopt;
  const uint32_t lang = Le16(&tr->bytes[0]);
  const uint32_t cp = Le16(&tr->bytes[2]);
  const uint32_t key = lang * 65536u + cp;
  UnicodeString hex(8, u'0');
  for (int i = 7, shift = 0; i >= 0; --i, shift += 4) hex[i] = u"0123456789ABCDEF"[(key >> shift) & 0xFu];
  return hex;
}

}  // namespace

bool ReadVersionTranslation(const ByteSource& image, UnicodeString& Translation) {
  const std::optional<VersionBlock> block = ImageVersionBlock(image);
  if (!block) return false;
  Translation = FirstTranslation(*block).value_or(UnicodeString());
  return true;
}

bool ReadVersionInfo(const ByteSource& image, TGVersionInfoRec& Rec) {
  const std::optional<VersionBlock> block = ImageVersionBlock(image);
  if (!block) return false;
  (void)block->Query(u"\\");  // the fixed file information is not used

  std::optional<UnicodeString> table;
  if (const auto key = FirstTranslation(*block)) table = u"\\StringFileInfo\\" + *key + u"\\";
  auto field = [&](std::u16string_view name) -> UnicodeString {
    if (!table) return UnicodeString();
    return block->QueryText(*table + UnicodeString(name)).value_or(UnicodeString());
  };
  // LegalTrademarks is deliberately left as the caller had it.
  Rec.CompanyName = field(u"CompanyName");
  Rec.FileDescription = field(u"FileDescription");
  Rec.FileVersion = field(u"FileVersion");
  Rec.InternalName = field(u"InternalName");
  Rec.LegalCopyright = field(u"LegalCopyright");
  Rec.OriginalFilename = field(u"OriginalFilename");
  Rec.ProductName = field(u"ProductName");
  Rec.ProductVersion = field(u"ProductVersion");
  return true;
}

}  // namespace quill::Gutils::internal
