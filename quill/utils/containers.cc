// Gutils containers.
#include "quill/utils/containers.h"

#include <algorithm>

#include "quill/frame/errors.h"
#include "quill/frame/gconsts.h"

namespace quill::Gutils {

// ---- TGIntStack -----------------------------------------------------------

// Callers must give at least 84 bytes and the stack trusts them; the buffer
// still never gets fewer than the 21 slots a full stack touches, so a short
// request cannot turn into a write past the allocation.
TGIntStack::TGIntStack(int32_t ASpace)
    : FBuf(new int32_t[std::max<size_t>(static_cast<size_t>(std::max(ASpace, 0)) / sizeof(int32_t),
                                        kMaxDepth + 1)]()) {}

TGIntStack::~TGIntStack() = default;

void TGIntStack::Push(int32_t Value) {
  if (FTop == kMaxDepth) throw EGUtilsError(Gconsts::_ERRStackFull);
  ++FTop;
  FBuf[FTop] = Value;
}

int32_t TGIntStack::Pop() {
  if (FTop == 0) throw EGUtilsError(Gconsts::_ERRStackEmpty);
  return FBuf[FTop--];
}

int32_t TGIntStack::GetValue(int32_t Index) const { return FBuf[FTop - Index]; }

// ---- TGCurrencyArray -------------------------------------------------------

TGCurrencyArray::TGCurrencyArray(int32_t ACount)
    : FCount(std::max(ACount, 0)), FItems(new Currency[static_cast<size_t>(FCount)]()) {}

TGCurrencyArray::~TGCurrencyArray() = default;

void TGCurrencyArray::ResetBy(Currency Value) {
  std::fill_n(FItems.get(), FCount, Value);
}

// ---- TGObjectList ----------------------------------------------------------

TGObjectList::~TGObjectList() {
  // ~TList cannot reach the override, so the owned objects are freed (and the
  // events fire) here, as the list's own destruction.
  TGObjectList::Clear();
}

int32_t TGObjectList::Add(TObject* AObject) {
  const int32_t index = TList::Add(AObject);
  Changed();
  return index;
}

void TGObjectList::Insert(int32_t Index, TObject* AObject) {
  TList::Insert(Index, AObject);
  Changed();
}

void TGObjectList::Delete(int32_t Index) {
  TList::Delete(Index);
  Changed();
}

void TGObjectList::Erase(int32_t Index) {
  delete GetItem(Index);
  Delete(Index);
}

void TGObjectList::Clear() {
  FreeAll();
  TList::Clear();
  Changed();
}

void TGObjectList::FreeAll() {
  for (int32_t i = 0; i < Count(); ++i) {
    delete GetItem(i);
    TList::Put(i, nullptr);
  }
}

TObject* TGObjectList::GetItem(int32_t Index) const {
  return static_cast<TObject*>(TList::Get(Index));
}

void TGObjectList::SetItem(int32_t Index, TObject* AObject) { TList::Put(Index, AObject); }

void TGObjectList::Changed() {
  if (FOnChange) FOnChange(this);
  if (Count() == 0) ListEmpty();
}

void TGObjectList::ListEmpty() {
  if (FOnEmpty) FOnEmpty(this);
}

// ---- TGStringMapEntry / TGStringMap ----------------------------------------

TGStringMapEntry::~TGStringMapEntry() = default;

TGStringMap::~TGStringMap() = default;

TGStringMapEntry* TGStringMap::GetItem(int32_t Index) const {
  return static_cast<TGStringMapEntry*>(TGObjectList::GetItem(Index));
}

int32_t TGStringMap::IndexByKey(const UnicodeString& Key) const {
  for (int32_t i = 0; i < Count(); ++i)
    if (const TGStringMapEntry* e = GetItem(i); e != nullptr && e->Key == Key) return i;
  return -1;
}

int32_t TGStringMap::IndexByValue(const UnicodeString& Value) const {
  for (int32_t i = 0; i < Count(); ++i)
    if (const TGStringMapEntry* e = GetItem(i); e != nullptr && e->Value == Value) return i;
  return -1;
}

TGStringMapEntry* TGStringMap::FindByKey(const UnicodeString& Key) const {
  const int32_t i = IndexByKey(Key);
  return i == -1 ? nullptr : GetItem(i);
}

TGStringMapEntry* TGStringMap::FindByValue(const UnicodeString& Value) const {
  const int32_t i = IndexByValue(Value);
  return i == -1 ? nullptr : GetItem(i);
}

}  // namespace quill::Gutils
