// Test and fuzz helper: builds small PE images with resources (a version
// resource, string tables, any typed resource), byte by byte, so that the
// reader can be checked against files whose every byte is known.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quill::Gutils::testing {

using Bytes = std::vector<uint8_t>;

inline void Put16(Bytes& b, size_t at, uint32_t v) {
  b[at] = static_cast<uint8_t>(v);
  b[at + 1] = static_cast<uint8_t>(v >> 8);
}
inline void Put32(Bytes& b, size_t at, uint32_t v) {
  Put16(b, at, v & 0xFFFF);
  Put16(b, at + 2, v >> 16);
}
inline void Append16(Bytes& b, uint32_t v) {
  b.push_back(static_cast<uint8_t>(v));
  b.push_back(static_cast<uint8_t>(v >> 8));
}
inline void Pad4(Bytes& b) {
  while (b.size() % 4 != 0) b.push_back(0);
}

// One version block: length, value length, type, key, padding, value,
// padding, children. `value_length` is in units for text (type 1) and bytes
// otherwise.
inline Bytes VersionNode(const std::u16string& key, const Bytes& value, uint16_t value_length,
                         uint16_t type, const std::vector<Bytes>& children) {
  Bytes b(6, 0);
  for (char16_t c : key) Append16(b, c);
  Append16(b, 0);
  Pad4(b);
  b.insert(b.end(), value.begin(), value.end());
  for (const Bytes& child : children) {
    Pad4(b);
    b.insert(b.end(), child.begin(), child.end());
  }
  Put16(b, 0, static_cast<uint32_t>(b.size()));
  Put16(b, 2, value_length);
  Put16(b, 4, type);
  return b;
}

// A String block holding `text` (null-terminated, length in units).
inline Bytes StringEntry(const std::u16string& name, const std::u16string& text) {
  Bytes v;
  for (char16_t c : text) Append16(v, c);
  Append16(v, 0);
  return VersionNode(name, v, static_cast<uint16_t>(text.size() + 1), 1, {});
}

struct StringTable {
  std::u16string key;  // "040904B0"
  std::vector<std::pair<std::u16string, std::u16string>> strings;
};

// A whole VS_VERSION_INFO resource: fixed information, the string tables in
// order, and a Translation list of (language, code page) pairs (none: no
// VarFileInfo block).
inline Bytes VersionResource(const std::vector<StringTable>& tables,
                             const std::vector<std::pair<uint16_t, uint16_t>>& translations) {
  Bytes fixed(52, 0);
  Put32(fixed, 0, 0xFEEF04BD);
  Put32(fixed, 4, 0x00010000);
  std::vector<Bytes> table_nodes;
  for (const StringTable& t : tables) {
    std::vector<Bytes> entries;
    for (const auto& [name, text] : t.strings) entries.push_back(StringEntry(name, text));
    table_nodes.push_back(VersionNode(t.key, {}, 0, 1, entries));
  }
  std::vector<Bytes> children{VersionNode(u"StringFileInfo", {}, 0, 1, table_nodes)};
  if (!translations.empty()) {
    Bytes tv;
    for (auto [lang, cp] : translations) {
      Append16(tv, lang);
      Append16(tv, cp);
    }
    children.push_back(VersionNode(
        u"VarFileInfo", {}, 0, 1,
        {VersionNode(u"Translation", tv, static_cast<uint16_t>(tv.size()), 0, {})}));
  }
  return VersionNode(u"VS_VERSION_INFO", fixed, 52, 0, children);
}

struct PeOptions {
  bool pe32_plus = false;     // 64-bit optional header
  bool with_resources = true; // a resource directory at all
  uint32_t resource_type = 16;
};

// A PE image with one section ".rsrc" at address 0x1000, file offset 0x200,
// holding a three-level resource directory whose single leaf is `resource`.
// The resource data ends the file.
inline Bytes PeImage(const Bytes& resource, PeOptions opt = {}) {
  const uint32_t opt_size = opt.pe32_plus ? 240 : 224;
  const uint32_t section_rva = 0x1000;
  const uint32_t section_off = 0x200;
  Bytes rsrc(0x58, 0);
  // Root: one id entry (the type) -> subdirectory at 0x18.
  Put16(rsrc, 14, 1);
  Put32(rsrc, 16, opt.resource_type);
  Put32(rsrc, 20, 0x80000000u | 0x18);
  // Name level: id 1 -> subdirectory at 0x30.
  Put16(rsrc, 0x18 + 14, 1);
  Put32(rsrc, 0x18 + 16, 1);
  Put32(rsrc, 0x18 + 20, 0x80000000u | 0x30);
  // Language level: 0x409 -> data entry at 0x48.
  Put16(rsrc, 0x30 + 14, 1);
  Put32(rsrc, 0x30 + 16, 0x409);
  Put32(rsrc, 0x30 + 20, 0x48);
  // Data entry: the resource right after the directory.
  Put32(rsrc, 0x48, section_rva + 0x58);
  Put32(rsrc, 0x48 + 4, static_cast<uint32_t>(resource.size()));
  rsrc.insert(rsrc.end(), resource.begin(), resource.end());

  Bytes img(section_off, 0);
  img[0] = 'M';
  img[1] = 'Z';
  Put32(img, 0x3C, 0x40);
  img[0x40] = 'P';
  img[0x41] = 'E';
  const size_t coff = 0x44;
  Put16(img, coff, opt.pe32_plus ? 0x8664 : 0x14C);
  Put16(img, coff + 2, 1);  // one section
  Put16(img, coff + 16, opt_size);
  const size_t oh = coff + 20;
  Put16(img, oh, opt.pe32_plus ? 0x20B : 0x10B);
  const size_t dirs = oh + (opt.pe32_plus ? 112 : 96);
  Put32(img, oh + (opt.pe32_plus ? 108 : 92), 16);
  if (opt.with_resources) {
    Put32(img, dirs + 16, section_rva);
    Put32(img, dirs + 20, static_cast<uint32_t>(rsrc.size()));
  }
  const size_t sec = oh + opt_size;
  const char name[8] = {'.', 'r', 's', 'r', 'c', 0, 0, 0};
  for (int i = 0; i < 8; ++i) img[sec + i] = static_cast<uint8_t>(name[i]);
  Put32(img, sec + 8, static_cast<uint32_t>(rsrc.size()));
  Put32(img, sec + 12, section_rva);
  Put32(img, sec + 16, static_cast<uint32_t>(rsrc.size()));
  Put32(img, sec + 20, section_off);
  img.insert(img.end(), rsrc.begin(), rsrc.end());
  return img;
}

// One resource of a PE image: integer type, name and language, and its bytes.
struct ResourceEntry {
  uint32_t type;
  uint32_t name;
  uint32_t language;
  Bytes data;
};

// A string-table block: 16 entries, each a 16-bit length and that many units.
inline Bytes StringTableData(const std::array<std::u16string, 16>& strings) {
  Bytes b;
  for (const std::u16string& s : strings) {
    Append16(b, static_cast<uint32_t>(s.size()));
    for (char16_t c : s) Append16(b, c);
  }
  return b;
}

// A PE image like PeImage's whose resource directory holds every resource of
// `resources` (types, names and languages in ascending order, as linkers
// write them; the data after the directory, each on a 4-byte boundary).
inline Bytes PeImageWithResources(const std::vector<ResourceEntry>& resources, bool pe32_plus = false) {
  const uint32_t section_rva = 0x1000;
  // type -> name -> language -> index into resources
  std::map<uint32_t, std::map<uint32_t, std::map<uint32_t, size_t>>> tree;
  for (size_t i = 0; i < resources.size(); ++i) {
    tree[resources[i].type][resources[i].name][resources[i].language] = i;
  }
  // Lay out: root, then each type's directory, then each name's, then the
  // data entries, then the data.
  auto dir_size = [](size_t entries) { return static_cast<uint32_t>(16 + 8 * entries); };
  uint32_t at = dir_size(tree.size());
  std::map<uint32_t, uint32_t> type_at;
  std::map<std::pair<uint32_t, uint32_t>, uint32_t> name_at;
  for (auto& [type, names] : tree) {
    type_at[type] = at;
    at += dir_size(names.size());
  }
  for (auto& [type, names] : tree) {
    for (auto& [name, langs] : names) {
      name_at[{type, name}] = at;
      at += dir_size(langs.size());
    }
  }
  std::vector<uint32_t> leaf_at(resources.size());
  for (auto& [type, names] : tree)
    for (auto& [name, langs] : names)
      for (auto& [lang, index] : langs) {
        leaf_at[index] = at;
        at += 16;
      }
  std::vector<uint32_t> data_at(resources.size());
  for (size_t i = 0; i < resources.size(); ++i) {
    at = (at + 3) & ~3u;
    data_at[i] = at;
    at += static_cast<uint32_t>(resources[i].data.size());
  }
  Bytes rsrc(at, 0);
  auto dir = [&](uint32_t off, size_t ids) { Put16(rsrc, off + 14, static_cast<uint32_t>(ids)); };
  dir(0, tree.size());
  uint32_t e = 16;
  for (auto& [type, names] : tree) {
    Put32(rsrc, e, type);
    Put32(rsrc, e + 4, 0x80000000u | type_at[type]);
    e += 8;
    dir(type_at[type], names.size());
    uint32_t ne = type_at[type] + 16;
    for (auto& [name, langs] : names) {
      const uint32_t nat = name_at[{type, name}];
      Put32(rsrc, ne, name);
      Put32(rsrc, ne + 4, 0x80000000u | nat);
      ne += 8;
      dir(nat, langs.size());
      uint32_t le = nat + 16;
      for (auto& [lang, index] : langs) {
        Put32(rsrc, le, lang);
        Put32(rsrc, le + 4, leaf_at[index]);
        le += 8;
        Put32(rsrc, leaf_at[index], section_rva + data_at[index]);
        Put32(rsrc, leaf_at[index] + 4, static_cast<uint32_t>(resources[index].data.size()));
        std::copy(resources[index].data.begin(), resources[index].data.end(), rsrc.begin() + data_at[index]);
      }
    }
  }
  // Reuse PeImage's headers: build an image around an empty resource, then
  // put this directory in its place.
  PeOptions opt;
  opt.pe32_plus = pe32_plus;
  Bytes img = PeImage({}, opt);
  img.resize(0x200);
  const size_t oh = 0x44 + 20;
  const size_t dirs = oh + (pe32_plus ? 112 : 96);
  Put32(img, dirs + 20, static_cast<uint32_t>(rsrc.size()));
  const size_t sec = oh + (pe32_plus ? 240 : 224);
  Put32(img, sec + 8, static_cast<uint32_t>(rsrc.size()));
  Put32(img, sec + 16, static_cast<uint32_t>(rsrc.size()));
  img.insert(img.end(), rsrc.begin(), rsrc.end());
  return img;
}

// The English example used throughout: one table, one translation.
inline Bytes SampleVersionResource() {
  return VersionResource(
      {{u"040904B0",
        {{u"CompanyName", u"Example Corp"},
         {u"FileDescription", u"Sample tool"},
         {u"FileVersion", u"1.2.3.4"},
         {u"InternalName", u"sample"},
         {u"LegalCopyright", u"(c) 2024 Example"},
         {u"LegalTrademarks", u"Sample(tm)"},
         {u"OriginalFilename", u"sample.exe"},
         {u"ProductName", u"Sample Suite"},
         {u"ProductVersion", u"1.2"}}}},
      {{0x0409, 0x04B0}});
}

}  // namespace quill::Gutils::testing
