#include "quill/rtl/tlist.h"

#include <algorithm>

#include "quill/rtl/exception.h"

namespace quill {

namespace {

// Growth step of the runtime's pointer list: small lists grow by 4, medium
// ones by 16, larger ones by a quarter of their capacity. Capacity() reports
// the result so that callers that watch it see the same steps.
int32_t GrowthDelta(int32_t capacity) {
  if (capacity > 64) return capacity / 4;
  if (capacity > 8) return 16;
  return 4;
}

}  // namespace

TList::~TList() = default;

void TList::IndexError(int32_t index) { throw EListError(rtlmsg::SListIndexError, {index}); }

void TList::CheckIndex(int32_t index) const {
  if (index < 0 || index >= Count()) IndexError(index);
}

int32_t TList::Add(void* item) {
  const int32_t index = Count();
  if (index == capacity_) SetCapacity(capacity_ + GrowthDelta(capacity_));
  items_.push_back(item);
  return index;
}

void TList::Insert(int32_t index, void* item) {
  if (index < 0 || index > Count()) IndexError(index);
  if (Count() == capacity_) SetCapacity(capacity_ + GrowthDelta(capacity_));
  items_.insert(items_.begin() + index, item);
}

void TList::Delete(int32_t index) {
  CheckIndex(index);
  items_.erase(items_.begin() + index);
}

void TList::Clear() {
  // Releases the storage too, as the runtime's Clear does (Capacity() is 0).
  std::vector<void*>().swap(items_);
  capacity_ = 0;
}

int32_t TList::IndexOf(const void* item) const {
  const auto it = std::find(items_.begin(), items_.end(), item);
  return it == items_.end() ? -1 : static_cast<int32_t>(it - items_.begin());
}

int32_t TList::Remove(const void* item) {
  const int32_t index = IndexOf(item);
  if (index >= 0) Delete(index);
  return index;
}

void TList::Exchange(int32_t index1, int32_t index2) {
  CheckIndex(index1);
  CheckIndex(index2);
  std::swap(items_[static_cast<size_t>(index1)], items_[static_cast<size_t>(index2)]);
}

void TList::Move(int32_t cur_index, int32_t new_index) {
  if (cur_index == new_index) return;
  CheckIndex(cur_index);
  CheckIndex(new_index);
  // A rotation keeps the entries between the two positions in order without
  // the erase + insert pair (one pass, no reallocation).
  const auto cur = items_.begin() + cur_index;
  const auto dst = items_.begin() + new_index;
  if (cur_index < new_index) {
    std::rotate(cur, cur + 1, dst + 1);
  } else {
    std::rotate(dst, cur, cur + 1);
  }
}

void* TList::Get(int32_t index) const {
  CheckIndex(index);
  return items_[static_cast<size_t>(index)];
}

void TList::Put(int32_t index, void* item) {
  CheckIndex(index);
  items_[static_cast<size_t>(index)] = item;
}

void TList::SetCount(int32_t count) {
  if (count < 0) throw EListError(rtlmsg::SListCountError, {count});
  if (count > capacity_) SetCapacity(count);
  items_.resize(static_cast<size_t>(count), nullptr);
}

void TList::SetCapacity(int32_t capacity) {
  if (capacity < Count()) throw EListError(rtlmsg::SListCapacityError, {capacity});
  if (capacity == capacity_) return;
  if (capacity < capacity_) {
    // Shrinking: drop the spare storage.
    std::vector<void*> shrunk;
    shrunk.reserve(static_cast<size_t>(capacity));
    shrunk.assign(items_.begin(), items_.end());
    items_.swap(shrunk);
  } else {
    items_.reserve(static_cast<size_t>(capacity));
  }
  capacity_ = capacity;
}

}  // namespace quill
