// Walking the tokens of an LZG00 stream without expanding it: token counts,
// the expanded size, and whether the stream ends cleanly. `lzg decompress`,
// `lzg info` and `lzg test` all judge a stream with it, so they agree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quilltool {

class LzgWalker {
 public:
  // Feeds the next bytes of the stream, header included.
  void Feed(const uint8_t* p, size_t n);

  // What the bytes fed so far amount to.
  enum class Verdict {
    kNotLzg,          // the first bytes are not "LZG00" (or there are none)
    kHeaderCut,       // ends inside the 9-byte header
    kTokenCut,        // ends inside a token (a literal run or a copy)
    kComplete,        // header and whole tokens
  };
  [[nodiscard]] Verdict Judge() const;
  // A sentence for a verdict other than kComplete, about the stream `name`.
  [[nodiscard]] std::string Describe(const std::string& name) const;

  int32_t version = 0;
  int64_t packed = 0;         // bytes fed
  int64_t plain = 0;          // expanded size of the whole tokens
  int64_t literal_runs = 0, literal_bytes = 0, copies = 0, copy_bytes = 0;
  // Tokens a writer never produces, though a reader accepts them: empty
  // literal runs, copies from distance 0 or from before the first byte.
  int64_t odd_tokens = 0;

 private:
  uint8_t header_[9] = {};
  int header_len_ = 0;
  bool magic_bad_ = false;
  int64_t skip_ = 0;      // literal bytes still to come
  bool copy_half_ = false;
  uint8_t first_ = 0;
};

}  // namespace quilltool
