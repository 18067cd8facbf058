// Checks on UTF-16 text shared by the fuzz targets.
#pragma once

#include <cstddef>
#include <string_view>

namespace quillfuzz {

// True when `s` holds a surrogate that is not part of a well-formed pair.
inline bool HasLoneSurrogate(std::u16string_view s) {
  for (size_t i = 0; i < s.size(); ++i) {
    const char16_t c = s[i];
    if (c >= 0xD800 && c <= 0xDBFF) {
      if (i + 1 >= s.size() || s[i + 1] < 0xDC00 || s[i + 1] > 0xDFFF) return true;
      ++i;
    } else if (c >= 0xDC00 && c <= 0xDFFF) {
      return true;
    }
  }
  return false;
}

}  // namespace quillfuzz
