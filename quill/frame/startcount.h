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

// Defines the unit's initialization(), Finalization() and StartCount() around
// one start count: `first_start` runs on the first start and `last_stop` on
// the last stop (each a callable taking no arguments).
#define QUILL_DEFINE_UNIT_LIFECYCLE(Unit, first_start, last_stop)  \
  namespace quill::Unit {                                          \
  namespace {                                                      \
  TStartCount g_start_count;                                       \
  }                                                                \
  void initialization() {                                          \
    if (g_start_count.Start()) (first_start)();                    \
  }                                                                \
  void Finalization() {                                            \
    if (g_start_count.Stop()) (last_stop)();                       \
  }                                                                \
  int32_t StartCount() { return g_start_count.Value(); }           \
  }

// For units whose start-up and shutdown only move the count.
inline void QuillUnitNothingToDo() {}
