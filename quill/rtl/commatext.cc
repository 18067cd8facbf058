// CommaText / DelimitedText: reading a list as one delimited line and
// splitting such a line back into items.
#include <algorithm>
#include <string_view>

#include "quill/rtl/tstrings.h"

namespace quill {

namespace {

// Characters #1..#32 separate items in non-strict mode; #0 never gets here
// because the text ends at it.
constexpr bool IsBlank(char16_t c) { return c >= 1 && c <= 32; }

bool NeedsQuoting(std::u16string_view item, char16_t delimiter, char16_t quote, bool strict) {
  for (const char16_t c : item) {
    if (c == quote || c == delimiter || (!strict && IsBlank(c))) return true;
  }
  return false;
}

UnicodeString JoinDelimited(const TStrings& list, char16_t delimiter, char16_t quote, bool strict) {
  const int32_t n = list.Count();
  // One empty string must not read back as an empty list, so it is quoted.
  if (n == 1 && list.Get(0).empty()) return UnicodeString(2, quote);
  UnicodeString result;
  size_t total = 0;
  for (int32_t i = 0; i < n; ++i) total += list.Get(i).size() + 1;
  result.reserve(total);
  for (int32_t i = 0; i < n; ++i) {
    if (i > 0) result.push_back(delimiter);
    const UnicodeString& item = list.Get(i);
    if (!NeedsQuoting(item, delimiter, quote, strict)) {
      result.append(item);
      continue;
    }
    result.push_back(quote);
    for (const char16_t c : item) {
      if (c == quote) result.push_back(quote);
      result.push_back(c);
    }
    result.push_back(quote);
  }
  return result;
}

// Counts the delimiters as an upper-bound-ish estimate of the item count, so
// that the list reserves once for large inputs.
int32_t EstimateItems(std::u16string_view t, char16_t delimiter) {
  size_t n = 1;
  for (const char16_t c : t) n += (c == delimiter);
  return static_cast<int32_t>(std::min<size_t>(n, 1u << 30));
}

void SplitDelimited(TStrings& list, std::u16string_view text, char16_t delimiter, char16_t quote,
                    bool strict) {
  // The text ends at an embedded #0: what follows it is ignored.
  if (const size_t z = text.find(u'\0'); z != std::u16string_view::npos) text = text.substr(0, z);

  list.BeginUpdate();
  try {
    list.Clear();
    list.ReserveFor(EstimateItems(text, delimiter));
    const size_t end = text.size();
    size_t p = 0;
    auto skip_blanks = [&] {
      if (!strict) {
        while (p < end && IsBlank(text[p])) ++p;
      }
    };
    skip_blanks();
    UnicodeString item;
    while (p < end) {
      item.clear();
      if (text[p] == quote) {
        // Quoted item: a doubled quote stands for one; a missing closing quote
        // makes the item run to the end of the text.
        ++p;
        while (p < end) {
          if (text[p] == quote) {
            ++p;
            if (p >= end || text[p] != quote) break;
          }
          item.push_back(text[p]);
          ++p;
        }
      } else {
        const size_t start = p;
        while (p < end && text[p] != delimiter && (strict || !IsBlank(text[p]))) ++p;
        item.assign(text.substr(start, p - start));
      }
      list.Add(item);
      skip_blanks();
      if (p < end && text[p] == delimiter) {
        // A delimiter at the very end stands for one more, empty, item.
        if (p + 1 == end) list.Add(UnicodeString());
        ++p;
        skip_blanks();
      }
    }
  } catch (...) {
    list.EndUpdate();
    throw;
  }
  list.EndUpdate();
}

}  // namespace

UnicodeString TStrings::DelimitedText() const {
  return JoinDelimited(*this, delimiter_, quote_char_, strict_delimiter_);
}

void TStrings::SetDelimitedText(const UnicodeString& text) {
  SplitDelimited(*this, text, delimiter_, quote_char_, strict_delimiter_);
}

// CommaText always uses ',' and '"', whatever the list's Delimiter and
// QuoteChar are; those two properties are left as they were. StrictDelimiter
// is the list's own.
UnicodeString TStrings::CommaText() const { return JoinDelimited(*this, u',', u'"', strict_delimiter_); }

void TStrings::SetCommaText(const UnicodeString& text) {
  SplitDelimited(*this, text, u',', u'"', strict_delimiter_);
}

}  // namespace quill
