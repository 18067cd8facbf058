#include "quill/rtl/tstrings.h"

#include <algorithm>
#include <string_view>

#include "quill/rtl/compare.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/streams.h"
#include "quill/rtl/unicode.h"

namespace quill {

// ---------------------------------------------------------------------------
// TStrings: everything here goes through the storage operations, so any list
// that implements them gets the whole interface.
// ---------------------------------------------------------------------------

TStrings::~TStrings() = default;

void TStrings::Error(const char16_t* msg, int32_t data) { throw EStringListError(msg, {data}); }

int32_t TStrings::Add(const UnicodeString& s) {
  const int32_t index = Count();
  InsertObject(index, s, nullptr);
  return index;
}

int32_t TStrings::AddObject(const UnicodeString& s, TObject* obj) {
  const int32_t index = Add(s);
  PutObject(index, obj);
  return index;
}

void TStrings::AddStrings(const TStrings& other) {
  // Count taken once: adding a list to itself doubles it instead of looping.
  const int32_t n = other.Count();
  ReserveFor(Count() + n);
  for (int32_t i = 0; i < n; ++i) AddObject(other.Get(i), other.GetObject(i));
}

void TStrings::Assign(const TStrings& source) {
  if (&source == this) return;
  BeginUpdate();
  try {
    Clear();
    delimiter_ = source.delimiter_;
    quote_char_ = source.quote_char_;
    name_value_separator_ = source.name_value_separator_;
    strict_delimiter_ = source.strict_delimiter_;
    line_break_ = source.line_break_;
    AddStrings(source);
  } catch (...) {
    EndUpdate();
    throw;
  }
  EndUpdate();
}

void TStrings::Exchange(int32_t index1, int32_t index2) {
  // Get() checks both indexes before anything changes.
  UnicodeString s1 = Get(index1);
  UnicodeString s2 = Get(index2);
  TObject* o1 = GetObject(index1);
  TObject* o2 = GetObject(index2);
  Put(index1, s2);
  PutObject(index1, o2);
  Put(index2, s1);
  PutObject(index2, o1);
}

void TStrings::Move(int32_t cur_index, int32_t new_index) {
  if (cur_index == new_index) return;
  UnicodeString s = Get(cur_index);
  if (new_index < 0 || new_index >= Count()) Error(rtlmsg::SListIndexError, new_index);
  TObject* obj = GetObject(cur_index);
  // Detach the object first so that an owning list does not free it on Delete.
  PutObject(cur_index, nullptr);
  Delete(cur_index);
  InsertObject(new_index, s, obj);
}

int32_t TStrings::IndexOf(const UnicodeString& s) const {
  const int32_t n = Count();
  for (int32_t i = 0; i < n; ++i) {
    if (CompareStrings(Get(i), s) == 0) return i;
  }
  return -1;
}

int32_t TStrings::IndexOfObject(const TObject* obj) const {
  const int32_t n = Count();
  for (int32_t i = 0; i < n; ++i) {
    if (GetObject(i) == obj) return i;
  }
  return -1;
}

int32_t TStrings::IndexOfName(const UnicodeString& name) const {
  const int32_t n = Count();
  for (int32_t i = 0; i < n; ++i) {
    const UnicodeString& s = Get(i);
    const size_t p = s.find(name_value_separator_);
    if (p != UnicodeString::npos && CompareStrings(s.substr(0, p), name) == 0) return i;
  }
  return -1;
}

UnicodeString TStrings::Names(int32_t index) const {
  const UnicodeString& s = Get(index);
  const size_t p = s.find(name_value_separator_);
  return p == UnicodeString::npos ? UnicodeString() : s.substr(0, p);
}

UnicodeString TStrings::ValueFromIndex(int32_t index) const {
  // A negative index (IndexOfName's "not found") gives an empty value rather
  // than an error, so Values() can be written in terms of it.
  if (index < 0) return UnicodeString();
  const UnicodeString& s = Get(index);
  const size_t p = s.find(name_value_separator_);
  return p == UnicodeString::npos ? UnicodeString() : s.substr(p + 1);
}

UnicodeString TStrings::Values(const UnicodeString& name) const {
  return ValueFromIndex(IndexOfName(name));
}

void TStrings::SetValues(const UnicodeString& name, const UnicodeString& value) {
  const int32_t i = IndexOfName(name);
  if (value.empty()) {
    if (i >= 0) Delete(i);
    return;
  }
  UnicodeString line;
  line.reserve(name.size() + 1 + value.size());
  line.append(name).push_back(name_value_separator_);
  line.append(value);
  if (i < 0) {
    Add(line);
  } else {
    Put(i, line);
  }
}

UnicodeString TStrings::Text() const {
  const int32_t n = Count();
  size_t total = 0;
  for (int32_t i = 0; i < n; ++i) total += Get(i).size() + line_break_.size();
  UnicodeString result;
  result.reserve(total);
  for (int32_t i = 0; i < n; ++i) result.append(Get(i)).append(line_break_);
  return result;
}

void TStrings::SetText(const UnicodeString& text) {
  BeginUpdate();
  try {
    Clear();
    const std::u16string_view t(text);
    const bool custom_break = !line_break_.empty() && line_break_ != u"\n" &&
                              line_break_ != u"\r\n" && line_break_ != u"\r";
    size_t pos = 0;
    if (custom_break) {
      // A line break other than CR / LF / CR LF: split exactly at it.
      while (pos < t.size()) {
        const size_t e = t.find(line_break_, pos);
        if (e == std::u16string_view::npos) {
          Add(UnicodeString(t.substr(pos)));
          break;
        }
        Add(UnicodeString(t.substr(pos, e - pos)));
        pos = e + line_break_.size();
      }
    } else {
      // CR, LF and CR LF each end a line; a final line break adds no empty line.
      while (pos < t.size()) {
        size_t e = t.find_first_of(u"\r\n", pos);
        if (e == std::u16string_view::npos) e = t.size();
        Add(UnicodeString(t.substr(pos, e - pos)));
        pos = e;
        if (pos < t.size() && t[pos] == u'\r') ++pos;
        if (pos < t.size() && t[pos] == u'\n') ++pos;
      }
    }
  } catch (...) {
    EndUpdate();
    throw;
  }
  EndUpdate();
}

void TStrings::LoadFromFile(const std::string& file_name) {
  TMemoryStream stream;
  stream.LoadFromFile(file_name);
  std::string_view bytes(reinterpret_cast<const char*>(stream.Memory()),
                         static_cast<size_t>(stream.Size()));
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  SetText(Utf8ToUnicode(bytes));
}

void TStrings::SaveToFile(const std::string& file_name) const {
  const std::string bytes = UnicodeToUtf8(Text());
  TFileStream stream(file_name, fmCreate);
  stream.WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
}

int TStrings::CompareStrings(const UnicodeString& a, const UnicodeString& b) const {
  return AnsiCompareText(a, b);
}

void TStrings::ReserveFor(int32_t /*count*/) {}

// ---------------------------------------------------------------------------
// TStringList
// ---------------------------------------------------------------------------

TStringList::~TStringList() {
  if (owns_objects_) {
    for (Item& item : items_) delete item.obj;
  }
}

void TStringList::CheckIndex(int32_t index) const {
  if (index < 0 || index >= Count()) Error(rtlmsg::SListIndexError, index);
}

const UnicodeString& TStringList::Get(int32_t index) const {
  CheckIndex(index);
  return items_[static_cast<size_t>(index)].str;
}

void TStringList::Put(int32_t index, const UnicodeString& s) {
  // Replacing a string could break the order; a sorted list refuses.
  if (sorted_) throw EStringListError(rtlmsg::SSortedListError);
  CheckIndex(index);
  items_[static_cast<size_t>(index)].str = s;
}

TObject* TStringList::GetObject(int32_t index) const {
  CheckIndex(index);
  return items_[static_cast<size_t>(index)].obj;
}

void TStringList::PutObject(int32_t index, TObject* obj) {
  // The previous object is not freed even when the list owns its objects:
  // replacing the pointer hands it back to the caller.
  CheckIndex(index);
  items_[static_cast<size_t>(index)].obj = obj;
}

void TStringList::InsertObject(int32_t index, const UnicodeString& s, TObject* obj) {
  if (sorted_) throw EStringListError(rtlmsg::SSortedListError);
  if (index < 0 || index > Count()) Error(rtlmsg::SListIndexError, index);
  items_.insert(items_.begin() + index, Item{s, obj});
}

void TStringList::Delete(int32_t index) {
  CheckIndex(index);
  TObject* obj = items_[static_cast<size_t>(index)].obj;
  items_.erase(items_.begin() + index);
  // Freed after removal so that the object's destructor sees a consistent list.
  if (owns_objects_) delete obj;
}

void TStringList::Clear() {
  std::vector<Item> old;
  old.swap(items_);
  if (owns_objects_) {
    for (Item& item : old) delete item.obj;
  }
}

int32_t TStringList::Add(const UnicodeString& s) { return AddObject(s, nullptr); }

int32_t TStringList::AddObject(const UnicodeString& s, TObject* obj) {
  int32_t index = Count();
  if (sorted_ && Find(s, index)) {
    switch (duplicates_) {
      case dupIgnore:
        // The existing entry stays; `obj` is not stored and stays the caller's.
        return index;
      case dupError:
        throw EStringListError(rtlmsg::SDuplicateString);
      case dupAccept:
        break;
    }
  }
  items_.insert(items_.begin() + index, Item{s, obj});
  return index;
}

void TStringList::Exchange(int32_t index1, int32_t index2) {
  CheckIndex(index1);
  CheckIndex(index2);
  std::swap(items_[static_cast<size_t>(index1)], items_[static_cast<size_t>(index2)]);
}

void TStringList::Move(int32_t cur_index, int32_t new_index) {
  if (cur_index == new_index) return;
  if (sorted_) throw EStringListError(rtlmsg::SSortedListError);
  CheckIndex(cur_index);
  CheckIndex(new_index);
  // The object travels with its line and is never freed on the way.
  const auto cur = items_.begin() + cur_index;
  const auto dst = items_.begin() + new_index;
  if (cur_index < new_index) {
    std::rotate(cur, cur + 1, dst + 1);
  } else {
    std::rotate(dst, cur, cur + 1);
  }
}

int32_t TStringList::IndexOf(const UnicodeString& s) const {
  if (!sorted_) return TStrings::IndexOf(s);
  int32_t index = 0;
  return Find(s, index) ? index : -1;
}

int TStringList::CompareStrings(const UnicodeString& a, const UnicodeString& b) const {
  if (use_locale_) return case_sensitive_ ? AnsiCompareStr(a, b) : AnsiCompareText(a, b);
  return case_sensitive_ ? CompareStr(a, b) : CompareText(a, b);
}

bool TStringList::Find(const UnicodeString& s, int32_t& index) const {
  bool found = false;
  int32_t lo = 0;
  int32_t hi = Count() - 1;
  while (lo <= hi) {
    const int32_t mid = lo + (hi - lo) / 2;
    const int c = CompareStrings(items_[static_cast<size_t>(mid)].str, s);
    if (c < 0) {
      lo = mid + 1;
    } else {
      hi = mid - 1;
      if (c == 0) {
        found = true;
        // With duplicates allowed keep going left to report the first equal
        // entry; otherwise the first hit is the only one.
        if (duplicates_ != dupAccept) lo = mid;
      }
    }
  }
  index = lo;
  return found;
}

void TStringList::Sort() {
  // A sorted list is kept in order on every insertion; nothing to do.
  if (sorted_ || items_.size() < 2) return;
  SortItems();
}

void TStringList::SortItems() {
  // Stable, so equal strings keep their relative order.
  std::stable_sort(items_.begin(), items_.end(), [this](const Item& a, const Item& b) {
    return CompareStrings(a.str, b.str) < 0;
  });
}

void TStringList::SetSorted(bool v) {
  if (v == sorted_) return;
  if (v) SortItems();
  sorted_ = v;
}

void TStringList::SetCaseSensitive(bool v) {
  if (v == case_sensitive_) return;
  case_sensitive_ = v;
  // The order depends on the comparison; re-establish it.
  if (sorted_) SortItems();
}

void TStringList::SetUseLocale(bool v) {
  if (v == use_locale_) return;
  use_locale_ = v;
  if (sorted_) SortItems();
}

void TStringList::SetCapacity(int32_t n) {
  if (n < Count()) Error(rtlmsg::SListCapacityError, n);
  items_.reserve(static_cast<size_t>(n));
}

void TStringList::ReserveFor(int32_t count) {
  if (count > Count()) items_.reserve(static_cast<size_t>(count));
}

}  // namespace quill
