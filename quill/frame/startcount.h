// TStartCount: the signed start count that makes a unit's start-up and
// shutdown reference-counted.
//
// Start() decrements and answers true only when the count has just become -1
// (the first start: do the unit's work). Stop() increments and answers true
// only when the count has just become 0 again (the last stop: undo it).
// Unbalanced calls simply move the count; nothing is checked.
#pragma once

#include <cstdint>

namespace quill {

class TStartCount {
 public:
  bool Start() { return --count_ == -1; }
  bool Stop() { return ++count_ == 0; }
  [[nodiscard]] int32_t Value() const { return count_; }

 private:
  int32_t count_ = 0;
};

}  // namespace quill
