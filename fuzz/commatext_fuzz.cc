// Splits arbitrary UTF-16 text with SetCommaText / SetDelimitedText, reads
// the list back and splits that again: the second split must give the same
// items, and reading back must be stable.
//
// Input layout: byte 0 selects the form (bit 0: delimited text with a
// chosen delimiter and quote, bit 1: StrictDelimiter); bytes 1 and 2 pick the
// delimiter and quote for the delimited form; the rest is UTF-16 code units
// (little-endian pairs).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quill/rtl/tstrings.h"

namespace {

// Delimiter and quote candidates: printable, above #32, so that they never
// coincide with the blanks that separate items in non-strict mode.
constexpr char16_t kMarks[] = u",;|:'\"#/\\\u00A7\u2016";
constexpr size_t kMarkCount = sizeof(kMarks) / sizeof(kMarks[0]) - 1;

bool SameItems(const quill::TStrings& a, const quill::TStrings& b) {
  if (a.Count() != b.Count()) return false;
  for (int32_t i = 0; i < a.Count(); ++i) {
    if (a.Get(i) != b.Get(i)) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const bool delimited = (data[0] & 1) != 0;
  const bool strict = (data[0] & 2) != 0;
  const char16_t delimiter = kMarks[data[1] % kMarkCount];
  char16_t quote = kMarks[data[2] % kMarkCount];
  if (quote == delimiter) quote = delimiter == u'"' ? u'\'' : u'"';

  std::u16string text;
  text.reserve((size - 3) / 2);
  for (size_t i = 3; i + 1 < size; i += 2) {
    text.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  }

  auto configure = [&](quill::TStringList& sl) {
    sl.SetStrictDelimiter(strict);
    sl.SetDelimiter(delimiter);
    sl.SetQuoteChar(quote);
  };
  auto split = [&](quill::TStringList& sl, const std::u16string& t) {
    if (delimited) {
      sl.SetDelimitedText(t);
    } else {
      sl.SetCommaText(t);
    }
  };
  auto join = [&](const quill::TStringList& sl) {
    return delimited ? sl.DelimitedText() : sl.CommaText();
  };

  quill::TStringList first;
  configure(first);
  split(first, text);
  const std::u16string joined = join(first);

  quill::TStringList second;
  configure(second);
  split(second, joined);
  if (!SameItems(first, second)) std::abort();
  if (join(second) != joined) std::abort();
  return 0;
}
