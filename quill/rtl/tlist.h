// TList: a growable list of untyped pointers (the runtime's pointer list).
//
// Indexes are 0-based. Every indexed access checks its index and raises
// EListError "List index out of bounds (%d)" with the bad index; Insert also
// accepts Count(). The list never owns what it points to.
//
// Owning lists derive from TList and override Clear to free their entries
// first. C++ does not dispatch virtual calls from a base destructor, so a
// derived list that must free its entries on destruction calls its own Clear
// from its own destructor; ~TList only releases the storage.
//
//   TList list;  list.Add(p);  list.Insert(0, q);  list.Get(1) == p;
#pragma once

#include <cstdint>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/tobject.h"

namespace quill {

class QUILL_API TList : public TObject {
 public:
  TList() = default;
  ~TList() override;

  // Appends `item`; returns its index. A full list grows its Capacity by 4
  // (capacity up to 8), by 16 (up to 64) or by a quarter beyond that.
  int32_t Add(void* item);
  // Inserts `item` at `index` (0..Count()).
  void Insert(int32_t index, void* item);
  // Removes the entry at `index` (the pointer is not freed).
  void Delete(int32_t index);
  // Removes every entry and releases the storage (Capacity() becomes 0).
  // Virtual so that owning lists can free their objects first.
  virtual void Clear();

  // Index of the first entry equal to `item`, or -1.
  [[nodiscard]] int32_t IndexOf(const void* item) const;
  // Removes the first entry equal to `item`; returns its former index or -1.
  int32_t Remove(const void* item);
  // Swaps two entries; both indexes are checked.
  void Exchange(int32_t index1, int32_t index2);
  // Takes the entry at `cur_index` out and reinserts it so that it ends up at
  // `new_index` (both must be valid indexes); the entries between shift by one.
  void Move(int32_t cur_index, int32_t new_index);

  // Property Items (Get/Put). First()/Last() on an empty list raise the index
  // error for index 0 / -1.
  [[nodiscard]] void* Get(int32_t index) const;
  void Put(int32_t index, void* item);
  [[nodiscard]] void* Items(int32_t index) const { return Get(index); }
  void SetItems(int32_t index, void* item) { Put(index, item); }
  [[nodiscard]] void* First() const { return Get(0); }
  [[nodiscard]] void* Last() const { return Get(Count() - 1); }

  // Property Count: setting it truncates or pads with null entries; a negative
  // count raises EListError "List count out of bounds (%d)".
  [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(items_.size()); }
  void SetCount(int32_t count);
  // Property Capacity: never below Count(); a smaller or negative value raises
  // EListError "List capacity out of bounds (%d)".
  [[nodiscard]] int32_t Capacity() const { return capacity_; }
  void SetCapacity(int32_t capacity);

  // Raises EListError with the index message for `index`.
  [[noreturn]] static void IndexError(int32_t index);

 private:
  void CheckIndex(int32_t index) const;
  std::vector<void*> items_;
  int32_t capacity_ = 0;
};

}  // namespace quill
