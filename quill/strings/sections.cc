// Readers of the section text format.
#include "quill/strings/sections.h"

#include <string>

#include "quill/rtl/compare.h"
#include "quill/rtl/trim.h"

namespace quill::Gstrings {
namespace {

// True when list[index], trimmed, is the header "[" name "]" (ASCII case folded).
bool IsHeaderFor(const TStrings& list, int32_t index, const UnicodeString& header) {
  return SameText(Trim(list.Get(index)), header);
}

UnicodeString HeaderText(std::u16string_view name) {
  UnicodeString h;
  h.reserve(name.size() + 2);
  h.push_back(u'[');
  h += name;
  h.push_back(u']');
  return h;
}

// First header for `header` at or after `from`; Count (or `from` when beyond
// it) when there is none.
int32_t FindHeader(const TStrings& list, int32_t from, const UnicodeString& header) {
  int32_t i = from;
  while (i < list.Count() && !IsHeaderFor(list, i, header)) ++i;
  return i;
}

// Adds the value lines after the header at `header_index` to `values`; returns
// the index of the last line walked (the header itself when the body is empty).
int32_t ReadBody(const TStrings& list, int32_t header_index, TStrings& values) {
  int32_t last = header_index;
  for (int32_t j = header_index + 1; j < list.Count(); ++j) {
    const UnicodeString& line = list.Get(j);
    const UnicodeString trimmed = Trim(line);
    if (!trimmed.empty() && trimmed.front() == u'[') break;  // any "[" line ends the body
    last = j;
    if (!trimmed.empty()) values.Add(line);
  }
  // A trailing blank entry would be dropped; the loop above never adds one.
  if (values.Count() > 0 && Trim(values.Get(values.Count() - 1)).empty()) {
    values.Delete(values.Count() - 1);
  }
  return last;
}

}  // namespace

void ReadSLSections(const TStrings& list, TStrings& sections) {
  const int32_t count = list.Count();
  for (int32_t i = 0; i < count; ++i) {
    const UnicodeString& line = list.Get(i);
    const UnicodeString trimmed = Trim(line);
    if (trimmed.empty() || trimmed.front() != u'[' || trimmed.back() != u']') continue;
    // Cut from the stored line, not the trimmed text: indented headers give a
    // shifted name, and that is what callers see.
    const size_t length = trimmed.size() - 2;
    sections.Add(line.size() > 1 ? line.substr(1, length) : UnicodeString());
  }
}

int32_t ReadSLSectionValues(const TStrings& list, std::u16string_view name, TStrings& values) {
  values.Clear();
  const UnicodeString header = HeaderText(name);
  const int32_t h = FindHeader(list, 0, header);
  if (h >= list.Count()) return list.Count() - 1;
  return ReadBody(list, h, values);
}

int32_t XGetSLSectionIndex(int32_t start, const TStrings& list, std::u16string_view name) {
  const UnicodeString header = HeaderText(name);
  int32_t i = FindHeader(list, start, header);
  if (i != list.Count()) return i;  // found, or a start beyond Count returned as is
  if (start == 0) return -1;
  // Wrap-around: search again from the top (re-reading the part already seen).
  i = FindHeader(list, 0, header);
  return i == list.Count() ? -1 : i;
}

int32_t XReadSLSectionValues(int32_t start, const TStrings& list, std::u16string_view name,
                             TStrings& values) {
  values.Clear();
  const int32_t h = XGetSLSectionIndex(start, list, name);
  if (h < 0) return start;
  if (h >= list.Count()) return h;  // a start beyond Count: no section, no values
  return ReadBody(list, h, values);
}

}  // namespace quill::Gstrings
