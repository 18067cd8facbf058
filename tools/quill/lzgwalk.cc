#include "tools/quill/lzgwalk.h"

#include <algorithm>
#include <cstring>

namespace quilltool {

namespace {
constexpr char kMagic[] = "LZG00";
}

void LzgWalker::Feed(const uint8_t* p, size_t n) {
  packed += static_cast<int64_t>(n);
  size_t i = 0;
  while (header_len_ < 9 && i < n) {
    header_[header_len_] = p[i++];
    if (header_len_ < 5 && header_[header_len_] != static_cast<uint8_t>(kMagic[header_len_])) magic_bad_ = true;
    if (++header_len_ == 9) {
      version = static_cast<int32_t>(header_[5] | (header_[6] << 8) | (header_[7] << 16) |
                                     (static_cast<uint32_t>(header_[8]) << 24));
    }
  }
  if (magic_bad_) return;
  for (; i < n; ++i) {
    if (skip_ > 0) {
      const int64_t k = std::min<int64_t>(skip_, static_cast<int64_t>(n - i));
      skip_ -= k;
      i += static_cast<size_t>(k) - 1;
    } else if (copy_half_) {
      const uint32_t w = first_ | (uint32_t{p[i]} << 8);
      const int64_t len = (w >> 12) + 3;
      const int64_t distance = (w & 0x0FFF) >> 1;
      if (distance == 0 || distance > plain) ++odd_tokens;
      ++copies;
      copy_bytes += len;
      plain += len;
      copy_half_ = false;
    } else if (p[i] & 1) {
      first_ = p[i];
      copy_half_ = true;
    } else {
      skip_ = p[i] >> 1;
      if (skip_ == 0) ++odd_tokens;
      ++literal_runs;
      literal_bytes += skip_;
      plain += skip_;
    }
  }
}

LzgWalker::Verdict LzgWalker::Judge() const {
  if (header_len_ == 0 || magic_bad_) return Verdict::kNotLzg;
  if (header_len_ < 9) return Verdict::kHeaderCut;
  if (skip_ > 0 || copy_half_) return Verdict::kTokenCut;
  return Verdict::kComplete;
}

std::string LzgWalker::Describe(const std::string& name) const {
  switch (Judge()) {
    case Verdict::kNotLzg:
      return name + " is not an LZG00 stream (it does not start with \"LZG00\")";
    case Verdict::kHeaderCut:
      return name + " is truncated: it ends inside the 9-byte LZG00 header (" + std::to_string(header_len_) +
             " bytes)";
    case Verdict::kTokenCut:
      return name + " is truncated or damaged: the LZG00 data ends inside a " +
             (copy_half_ ? std::string("copy token") : "literal run (" + std::to_string(skip_) + " bytes missing)");
    case Verdict::kComplete:
      break;
  }
  return name + " is a complete LZG00 stream";
}

}  // namespace quilltool
