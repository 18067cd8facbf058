// Comma-separated lines. Both directions make one pass over the text and
// append to a result reserved once.
#include "quill/utils/commatext.h"

#include <algorithm>
#include <string_view>

namespace quill::Gutils {
namespace {

constexpr char16_t kCR = u'\r';
constexpr char16_t kLF = u'\n';
constexpr char16_t kQuote = u'"';
constexpr char16_t kComma = u',';

// Only the low byte of a unit decides whether a line needs quotes.
constexpr bool NeedsQuotes(char16_t c) {
  const unsigned low = c & 0xFFu;
  return low <= 32 || low == 34 || low == 44;
}

constexpr bool IsSkippedBlank(char16_t c) {
  const unsigned low = c & 0xFFu;
  return low >= 1 && low <= 32;
}

// Position of the next `c` at or after `from`, reusing the previous answer
// while it still lies ahead: each break character is searched for once, so
// a text of LF-only lines (which asks for a CR every line) stays linear.
class NextOf {
 public:
  NextOf(std::u16string_view s, char16_t c) : s_(s), c_(c) {}
  size_t At(size_t from) {
    if (!valid_ || (pos_ != std::u16string_view::npos && pos_ < from)) {
      pos_ = s_.find(c_, from);
      valid_ = true;
    }
    return pos_;
  }

 private:
  std::u16string_view s_;
  char16_t c_;
  size_t pos_ = std::u16string_view::npos;
  bool valid_ = false;
};

void AppendLine(UnicodeString& out, std::u16string_view line) {
  bool quote = false;
  for (char16_t c : line) {
    if (NeedsQuotes(c)) {
      quote = true;
      break;
    }
  }
  if (!quote) {
    out.append(line);
    return;
  }
  out.push_back(kQuote);
  for (char16_t c : line) {
    out.push_back(c);
    if (c == kQuote) out.push_back(kQuote);
  }
  out.push_back(kQuote);
}

}  // namespace

UnicodeString StringToComma(const UnicodeString& S) {
  const std::u16string_view text(S);
  UnicodeString result;
  result.reserve(text.size() + text.size() / 8 + 2);
  NextOf next_cr(text, kCR);
  NextOf next_lf(text, kLF);
  size_t pos = 0;  // start of the remaining text R
  do {
    size_t end = next_cr.At(pos);
    if (end == std::u16string_view::npos) end = next_lf.At(pos);
    const bool has_break = end != std::u16string_view::npos;
    if (!has_break) end = text.size();
    AppendLine(result, text.substr(pos, end - pos));
    if (!has_break) break;
    result.push_back(kComma);
    // A CR LF or LF CR pair is one break.
    if (end + 1 < text.size() && text[end] != text[end + 1] &&
        (text[end + 1] == kCR || text[end + 1] == kLF)) {
      pos = end + 2;
    } else {
      pos = end + 1;
    }
  } while (pos < text.size());
  return result;
}

UnicodeString CommaToString(const UnicodeString& S) {
  // The text ends at its first unit 0; reads past the end see 0 too.
  const std::u16string_view all(S);
  const std::u16string_view text = all.substr(0, std::min(all.find(u'\0'), all.size()));
  const size_t n = text.size();
  UnicodeString result;
  result.reserve(n + n / 4 + 2);
  size_t p = 0;
  auto skip_blanks = [&] {
    while (p < n && IsSkippedBlank(text[p])) ++p;
  };
  skip_blanks();
  while (p < n) {
    if (text[p] == kQuote) {
      ++p;
      for (;;) {
        const size_t q = text.find(kQuote, p);
        if (q == std::u16string_view::npos) {  // unclosed: the rest is the field
          result.append(text.substr(p));
          p = n;
          break;
        }
        result.append(text.substr(p, q - p));
        p = q + 1;
        if (p < n && text[p] == kQuote) {  // a doubled quote stands for one
          result.push_back(kQuote);
          ++p;
          continue;
        }
        break;
      }
    } else {
      const size_t start = p;
      while (p < n && text[p] >= 33 && text[p] != kComma) ++p;
      result.append(text.substr(start, p - start));
    }
    skip_blanks();
    if (p < n && text[p] == kComma) {
      result.push_back(kCR);
      result.push_back(kLF);
      ++p;
      skip_blanks();
    }
  }
  return result;
}

}  // namespace quill::Gutils
