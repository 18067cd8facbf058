// Delimited text and block editing of string lists.
#include "quill/strings/delimited.h"

#include <algorithm>
#include <string>

#include "quill/rtl/compare.h"
#include "quill/rtl/trim.h"
#include "quill/strings/quoting.h"

namespace quill::Gstrings {

UnicodeString DelimitedText(const TStrings& list, WideChar delimiter, WideChar quote) {
  const int32_t count = list.Count();
  size_t total = 0;
  for (int32_t i = 0; i < count; ++i) total += list.Get(i).size() + 3;
  UnicodeString out;
  out.reserve(total);
  for (int32_t i = 0; i < count; ++i) {
    if (i > 0) out.push_back(delimiter);
    out += QuotedString(list.Get(i), quote);
  }
  return out;
}

namespace {
void AddField(std::u16string_view field, WideChar quote, TStrings& list) {
  list.Add(UnquotedString(Trim(field), quote));
}
}  // namespace

void ComposeText(std::u16string_view text, WideChar delimiter, WideChar quote, TStrings& list) {
  list.Clear();
  if (Trim(text).empty()) return;
  bool inside = false;
  size_t field_start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const WideChar c = text[i];
    if (c == quote) inside = !inside;  // a doubled quote toggles twice
    if (!inside && c == delimiter) {
      AddField(text.substr(field_start, i - field_start), quote, list);
      field_start = i + 1;
    }
  }
  AddField(text.substr(field_start), quote, list);
}

void ComposeCommaText(std::u16string_view text, TStrings& list) {
  ComposeText(text, u',', u'"', list);
}

int32_t IndexOfString(const TStrings& list, std::u16string_view s) {
  const int32_t count = list.Count();
  for (int32_t i = 0; i < count; ++i) {
    if (SameText(list.Get(i), s)) return i;
  }
  return -1;
}

void InsertToStrings(TStrings& list, int32_t index, int32_t col, std::u16string_view s) {
  UnicodeString line = list.Get(index);
  const size_t at = col < 1 ? 0 : std::min(static_cast<size_t>(col) - 1, line.size());
  line.insert(at, s);
  list.Put(index, line);
}

namespace {
// The first n characters of s (none for n < 1, all when n exceeds the length).
std::u16string_view Head(std::u16string_view s, int64_t n) {
  if (n < 1) return {};
  return s.substr(0, std::min<size_t>(static_cast<size_t>(n), s.size()));
}
// The characters of s from 1-based position p on (p < 1 counts as 1).
std::u16string_view From(std::u16string_view s, int32_t p) {
  const size_t at = p < 1 ? 0 : static_cast<size_t>(p) - 1;
  return at >= s.size() ? std::u16string_view() : s.substr(at);
}
}  // namespace

void DeleteFromStrings(TStrings& list, int32_t line1, int32_t col1, int32_t line2, int32_t col2) {
  if (line2 < line1) return;
  UnicodeString joined(Head(list.Get(line1), static_cast<int64_t>(col1) - 1));
  joined += From(list.Get(line2), col2);
  list.Put(line1, joined);
  // Ascending indexes without compensating for the shift: every deletion
  // moves the later lines up, and callers depend on exactly this.
  for (int64_t k = static_cast<int64_t>(line1) + 1; k <= line2; ++k) {
    list.Delete(static_cast<int32_t>(k));
  }
}

}  // namespace quill::Gstrings
