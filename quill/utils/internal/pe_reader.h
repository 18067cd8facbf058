// A bounds-checked reader of resources in PE files.
//
// FindResource walks the DOS and PE headers, the section table and the three
// levels of the resource directory (type, name, language) and returns the
// bytes of one resource. FindVersionResource and StringTableEntry build on it:
// VersionBlock answers path queries over the nested blocks of a version
// resource ("\\StringFileInfo\\040904B0\\CompanyName"); StringTableEntry reads
// one string of a string-table block. Every offset and length read from the
// data is checked against the bytes actually present; nothing is read
// outside them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "quill/rtl/types.h"

namespace quill::Gutils {
struct TGVersionInfoRec;
}

namespace quill::Gutils::internal {

// Random access to the bytes of an image (a file or a buffer).
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  [[nodiscard]] virtual uint64_t Size() const = 0;
  // Copies `n` bytes at `offset` into `dst`; false when they are not all there.
  [[nodiscard]] virtual bool ReadAt(uint64_t offset, void* dst, size_t n) const = 0;
};

// The bytes of a buffer the caller keeps alive.
class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::span<const uint8_t> bytes) : bytes_(bytes) {}
  [[nodiscard]] uint64_t Size() const override { return bytes_.size(); }
  [[nodiscard]] bool ReadAt(uint64_t offset, void* dst, size_t n) const override;

 private:
  std::span<const uint8_t> bytes_;
};

// Which resource FindResource looks for. Only integer names and languages
// are matched (named entries are passed over).
struct ResourceQuery {
  uint32_t type = 0;
  // The name; nullopt: the resource named 1 when there is one, else the first.
  std::optional<uint32_t> name;
  // Languages in order of preference; when none of them is there (or the
  // list is empty), the first language entry.
  std::vector<uint32_t> languages;
  // Longer resources are cut to this many bytes.
  uint32_t max_bytes = 0x10000;
};

// The bytes of the resource `query` names, or nullopt when the image is no
// PE file, has no such resource, or any structure on the way is cut short or
// points outside the image.
[[nodiscard]] std::optional<std::vector<uint8_t>> FindResource(const ByteSource& image,
                                                               const ResourceQuery& query);

// True when `image` starts with the DOS and PE headers and a known optional
// header (32- or 64-bit), whether or not it has resources.
[[nodiscard]] bool IsPeImage(const ByteSource& image);

// String tables: the resource type, and the block holding string `id`
// (16 strings per block, numbered from 1).
inline constexpr uint32_t kRtString = 6;
[[nodiscard]] constexpr uint32_t StringTableBlock(uint32_t id) { return ((id >> 4) & 0xFFFF) + 1; }

// String `index` (0..15) of a string-table block: 16 entries, each a 16-bit
// length followed by that many UTF-16 units. nullopt when the entries before
// it run past the end of the block; a string cut short by the end of the
// block gives the units that are there.
[[nodiscard]] std::optional<std::u16string> StringTableEntry(std::span<const uint8_t> block, uint32_t index);

// The bytes of the first version resource of the PE image, or nullopt when
// the image is no PE file, has none, or any structure on the way is cut
// short or points outside the image.
[[nodiscard]] std::optional<std::vector<uint8_t>> FindVersionResource(const ByteSource& image);

// A version resource: a tree of blocks, each with a key, a value and
// children, laid out on 32-bit boundaries.
class VersionBlock {
 public:
  // The value a query found.
  struct Value {
    std::span<const uint8_t> bytes;  // the value's bytes, within the block
    std::span<const uint8_t> rest;   // from the value to the block's end
    bool text = false;               // wType 1: UTF-16 text
  };

  // Wraps `data`; nullopt when its root block is malformed or is not keyed
  // "VS_VERSION_INFO".
  [[nodiscard]] static std::optional<VersionBlock> Parse(std::vector<uint8_t> data);

  // The value of the block at `path` (keys separated by backslashes, matched
  // without regard to ASCII case; "\\" is the root), or nullopt.
  [[nodiscard]] std::optional<Value> Query(std::u16string_view path) const;

  // The text value at `path`: the UTF-16 units up to the first null (or the
  // block's end); nullopt when the block is missing.
  [[nodiscard]] std::optional<UnicodeString> QueryText(std::u16string_view path) const;

 private:
  explicit VersionBlock(std::vector<uint8_t> data) : data_(std::move(data)) {}
  std::vector<uint8_t> data_;
};

// GetVersionInfo over an image: the routine's whole behaviour, minus the file.
[[nodiscard]] bool ReadVersionInfo(const ByteSource& image, TGVersionInfoRec& Rec);

// GetVersionTranslation over an image.
[[nodiscard]] bool ReadVersionTranslation(const ByteSource& image, UnicodeString& Translation);

}  // namespace quill::Gutils::internal
