// Gutils containers: a fixed-depth integer stack, a fixed-size currency
// array, an object list that owns its objects and reports changes, and a
// string map built on that list.
//
// None of them locks; each object is used by one thread at a time.
//
//   TGIntStack stack(84);            // room for slots 0..20
//   stack.Push(7);  stack.Values(0) == 7;  stack.Pop() == 7;
//
//   TGStringMap map;
//   map.Add(new TGStringMapEntry(u"lang", u"en"));   // the map owns the entry
//   map.FindByKey(u"lang")->Value == u"en";
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "quill/rtl/currency.h"
#include "quill/rtl/export.h"
#include "quill/rtl/tlist.h"
#include "quill/rtl/tobject.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// A stack of at most 20 signed 32-bit values kept in a caller-sized buffer.
// Values occupy slots 1..depth of the buffer; slot 0 is never written.
class QUILL_API TGIntStack : public TObject {
 public:
  // The fixed depth limit, whatever the buffer size.
  static constexpr int16_t kMaxDepth = 20;

  // Allocates a value buffer of `ASpace` bytes. REQUIRES: ASpace >= 84 (21
  // slots of four bytes), since pushes write slots 1..20; the size is not
  // checked and never limits the depth (a larger buffer still holds only 20).
  explicit TGIntStack(int32_t ASpace);
  ~TGIntStack() override;
  TGIntStack(const TGIntStack&) = delete;
  TGIntStack& operator=(const TGIntStack&) = delete;

  // Pushes `Value`. Raises EGUtilsError "Stack is full" (resource string
  // 65520) when 20 values are stacked; the stack is then unchanged.
  void Push(int32_t Value);
  // Removes and returns the top value. Raises EGUtilsError "Stack is empty"
  // (resource string 65521) on an empty stack.
  int32_t Pop();
  // The value `Index` places below the top (0 is the top). Not range checked:
  // REQUIRES 0 <= Index < depth.
  [[nodiscard]] int32_t Values(int32_t Index) const { return GetValue(Index); }
  [[nodiscard]] int32_t GetValue(int32_t Index) const;
  // True when nothing is stacked.
  [[nodiscard]] bool Empty() const { return GetEmpty(); }
  [[nodiscard]] bool GetEmpty() const { return FTop == 0; }

 private:
  int16_t FTop = 0;
  std::unique_ptr<int32_t[]> FBuf;
};

// A fixed number of currency values, all 0 at construction.
class QUILL_API TGCurrencyArray : public TObject {
 public:
  // `ACount` items, each 0. A negative count is treated as 0.
  explicit TGCurrencyArray(int32_t ACount);
  ~TGCurrencyArray() override;
  TGCurrencyArray(const TGCurrencyArray&) = delete;
  TGCurrencyArray& operator=(const TGCurrencyArray&) = delete;

  // Sets every item to `Value`.
  void ResetBy(Currency Value);
  // Item `Index`, from 0. Not range checked: REQUIRES 0 <= Index < Count().
  [[nodiscard]] Currency Items(int32_t Index) const { return GetItem(Index); }
  [[nodiscard]] Currency GetItem(int32_t Index) const { return FItems[Index]; }
  void SetItem(int32_t Index, Currency Value) { FItems[Index] = Value; }
  [[nodiscard]] int32_t Count() const { return FCount; }

 private:
  int32_t FCount = 0;
  std::unique_ptr<Currency[]> FItems;
};

// Event taking only the sender.
using TNotifyEvent = std::function<void(TObject* Sender)>;

// A pointer list that owns its TObject entries: Clear, Erase and destruction
// free them. Every structural change (Add, Insert, Delete, Erase, Clear) is
// reported through OnChange, followed by OnEmpty when the list is then empty.
// Index errors are the pointer list's (EListError).
class QUILL_API TGObjectList : public TList {
 public:
  TGObjectList() = default;
  // Clears the list through Clear(): the owned objects are freed and, if
  // assigned, OnChange and then OnEmpty fire during destruction.
  ~TGObjectList() override;
  TGObjectList(const TGObjectList&) = delete;
  TGObjectList& operator=(const TGObjectList&) = delete;

  // Appends `AObject` (which the list now owns); returns its index. Then
  // Changed().
  int32_t Add(TObject* AObject);
  // Inserts `AObject` at `Index` (0..Count()); then Changed().
  void Insert(int32_t Index, TObject* AObject);
  // Removes the entry at `Index` WITHOUT freeing its object; then Changed().
  void Delete(int32_t Index);
  // Frees the object at `Index`, then Delete(Index): Changed() runs once.
  virtual void Erase(int32_t Index);
  // FreeAll(), then the pointer list's own clearing, then Changed() (so an
  // already empty list still reports OnChange and OnEmpty).
  void Clear() override;
  // Frees every object and leaves a null in its slot. The count is unchanged
  // and no event fires.
  virtual void FreeAll();

  // The object at `Index`. SetItems replaces it without freeing the old
  // object and without Changed().
  [[nodiscard]] TObject* Items(int32_t Index) const { return GetItem(Index); }
  [[nodiscard]] TObject* GetItem(int32_t Index) const;
  void SetItems(int32_t Index, TObject* AObject) { SetItem(Index, AObject); }
  void SetItem(int32_t Index, TObject* AObject);

  [[nodiscard]] const TNotifyEvent& OnChange() const { return FOnChange; }
  void SetOnChange(TNotifyEvent Value) { FOnChange = std::move(Value); }
  [[nodiscard]] const TNotifyEvent& OnEmpty() const { return FOnEmpty; }
  void SetOnEmpty(TNotifyEvent Value) { FOnEmpty = std::move(Value); }

  // Calls OnChange(this) if assigned; then ListEmpty() if the count is 0.
  // Derived lists call it after changes of their own.
  virtual void Changed();
  // Calls OnEmpty(this) if assigned.
  virtual void ListEmpty();

 private:
  TNotifyEvent FOnEmpty;
  TNotifyEvent FOnChange;
};

// One key/value pair of a TGStringMap.
class QUILL_API TGStringMapEntry : public TObject {
 public:
  TGStringMapEntry() = default;
  TGStringMapEntry(UnicodeString AKey, UnicodeString AValue)
      : Key(std::move(AKey)), Value(std::move(AValue)) {}
  ~TGStringMapEntry() override;

  UnicodeString Key;
  UnicodeString Value;
};

// An owning list of TGStringMapEntry objects with linear, case-sensitive
// lookups in insertion order (with duplicate keys the first entry wins).
// Entries are added with the inherited Add/Insert.
class QUILL_API TGStringMap : public TGObjectList {
 public:
  TGStringMap() = default;
  ~TGStringMap() override;

  // Index of the first entry whose Key equals `Key` exactly, or -1. Empty
  // (null) slots, as FreeAll leaves them, are passed over.
  [[nodiscard]] int32_t IndexByKey(const UnicodeString& Key) const;
  // Index of the first entry whose Value equals `Value` exactly, or -1.
  [[nodiscard]] int32_t IndexByValue(const UnicodeString& Value) const;
  // The entry IndexByKey finds, or nullptr.
  [[nodiscard]] TGStringMapEntry* FindByKey(const UnicodeString& Key) const;
  // The entry IndexByValue finds, or nullptr.
  [[nodiscard]] TGStringMapEntry* FindByValue(const UnicodeString& Value) const;

  // The entry at `Index` (EListError when out of range). REQUIRES: the slot
  // holds a TGStringMapEntry (or null).
  [[nodiscard]] TGStringMapEntry* Items(int32_t Index) const { return GetItem(Index); }
  [[nodiscard]] TGStringMapEntry* GetItem(int32_t Index) const;
};

}  // namespace quill::Gutils
