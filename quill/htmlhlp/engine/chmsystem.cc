// Reading the default topic out of "#SYSTEM".
#include "quill/htmlhlp/engine/chmsystem.h"

#include <algorithm>
#include <cstring>

namespace quill::Ghtmlhlp::engine {

std::optional<std::string> DefaultTopicFromSystem(std::span<const uint8_t> data) {
  constexpr uint16_t kDefaultTopic = 2;
  constexpr size_t kVersionSize = 4;
  constexpr size_t kRecordHead = 4;
  if (data.size() < kVersionSize) return std::nullopt;
  size_t pos = kVersionSize;
  while (data.size() - pos >= kRecordHead) {
    const uint16_t code = static_cast<uint16_t>(data[pos] | (data[pos + 1] << 8));
    const uint16_t length = static_cast<uint16_t>(data[pos + 2] | (data[pos + 3] << 8));
    pos += kRecordHead;
    if (length > data.size() - pos) return std::nullopt;  // a record cut short: nothing after it is trusted
    if (code == kDefaultTopic) {
      const auto* text = reinterpret_cast<const char*>(data.data() + pos);
      const size_t n = strnlen(text, length);
      if (n == 0) return std::nullopt;
      std::string topic;
      if (text[0] != '/') topic.push_back('/');
      topic.append(text, n);
      return topic;
    }
    pos += length;
  }
  return std::nullopt;
}

std::optional<std::string> ContextFileName(std::span<const uint8_t> ivb, std::span<const uint8_t> strings,
                                           uint32_t context) {
  auto dword = [&ivb](size_t at) {
    return static_cast<uint32_t>(ivb[at]) | (static_cast<uint32_t>(ivb[at + 1]) << 8) |
           (static_cast<uint32_t>(ivb[at + 2]) << 16) | (static_cast<uint32_t>(ivb[at + 3]) << 24);
  };
  if (ivb.size() < 4) return std::nullopt;
  const size_t count_bytes = std::min<size_t>(dword(0), ivb.size() - 4);
  for (size_t at = 4; at + 8 <= 4 + count_bytes; at += 8) {
    if (dword(at) != context) continue;
    const uint32_t offset = dword(at + 4);
    if (offset >= strings.size()) return std::nullopt;
    const auto* text = reinterpret_cast<const char*>(strings.data() + offset);
    const size_t n = strnlen(text, strings.size() - offset);
    if (n == 0) return std::nullopt;
    return std::string(text, n);
  }
  return std::nullopt;
}

}  // namespace quill::Ghtmlhlp::engine
