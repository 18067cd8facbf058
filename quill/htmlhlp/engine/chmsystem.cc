// Reading the default topic out of "#SYSTEM".
#include "quill/htmlhlp/engine/chmsystem.h"

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

}  // namespace quill::Ghtmlhlp::engine
