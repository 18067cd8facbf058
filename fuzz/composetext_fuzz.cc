// ComposeText on arbitrary text with arbitrary delimiter and quote. Allowed
// failures are those of UnquotedString for a bad "#" code. The list must hold
// one more field than there are delimiters outside quotes (or none for blank
// text). DelimitedText then ComposeText must give the items back when the
// delimiter and quote are distinct and the items need no trimming.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quill/rtl/exception.h"
#include "quill/rtl/tstrings.h"
#include "quill/strings/gstrings.h"

namespace gs = quill::Gstrings;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const char16_t delim = data[0];
  const char16_t quote = data[1];
  quill::UnicodeString text;
  for (size_t i = 2; i < size; ++i) text.push_back(data[i]);
  quill::TStringList list;
  try {
    gs::ComposeText(text, delim, quote, list);
  } catch (const quill::Exception&) {
    return 0;  // a "#" code the field decoder rejects
  }
  bool blank = true;
  for (char16_t c : text) blank = blank && c <= 32;
  if (blank) {
    if (list.Count() != 0) std::abort();
    return 0;
  }
  int32_t delimiters = 0;
  bool inside = false;
  for (char16_t c : text) {
    if (c == quote) inside = !inside;
    if (!inside && c == delim) ++delimiters;
  }
  if (list.Count() != delimiters + 1) std::abort();

  // Round trip of the fields through DelimitedText.
  // Excluded: characters that the "#" codes outside the quotes are made of.
  auto code_char = [](char16_t c) { return c <= 32 || c == u'#' || c == u'$' || (c >= u'0' && c <= u'9'); };
  if (delim == quote || code_char(delim) || code_char(quote)) return 0;
  quill::TStringList again;
  gs::ComposeText(gs::DelimitedText(list, delim, quote), delim, quote, again);
  if (again.Count() != list.Count()) std::abort();
  for (int32_t i = 0; i < list.Count(); ++i) {
    // An empty item comes back as the empty literal (the decoder's fallback).
    const quill::UnicodeString expect = list[i].empty() ? quill::UnicodeString(2, quote) : list[i];
    if (again[i] != expect) std::abort();
  }
  return 0;
}
