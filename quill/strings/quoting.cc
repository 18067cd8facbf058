// Quote-doubling notation: QuotedString / UnquotedString in both forms.
//
// One template per routine serves the 8-bit and the UTF-16 form; the forms
// differ only in the largest character code a "#" code may give.
#include "quill/strings/quoting.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "quill/rtl/exception.h"
#include "quill/rtl/intconv.h"
#include "quill/strings/internal/chartraits.h"

namespace quill::Gstrings {
namespace {

using internal::Code;

// Appends the decimal text of `code` (0..31) to `out`.
template <class Ch>
void AppendSmallDecimal(std::basic_string<Ch>& out, unsigned code) {
  if (code >= 10) out.push_back(static_cast<Ch>('0' + code / 10));
  out.push_back(static_cast<Ch>('0' + code % 10));
}

template <class Ch>
std::basic_string<Ch> QuotedImpl(std::basic_string_view<Ch> s, Ch quote) {
  std::basic_string<Ch> out;
  // Room for the quotes and a little growth; quotes and control codes are rare.
  out.reserve(s.size() + 2 + s.size() / 16);
  out.push_back(quote);
  const size_t n = s.size();
  size_t i = 0;
  while (i < n) {
    // Fast path: copy the run of characters that need no attention in one go.
    size_t j = i;
    while (j < n && Code(s[j]) >= 32 && s[j] != quote) ++j;
    out.append(s.data() + i, j - i);
    i = j;
    if (i == n) break;
    if (Code(s[i]) >= 32) {  // the quote character: doubled
      out.push_back(quote);
      out.push_back(quote);
      ++i;
      continue;
    }
    // A run of control characters stands outside the quotes.
    out.push_back(quote);
    while (i < n && Code(s[i]) < 32) {
      out.push_back(static_cast<Ch>('#'));
      AppendSmallDecimal(out, Code(s[i]));
      ++i;
    }
    // Ending in control characters: no closing quote, by format.
    if (i == n) return out;
    out.push_back(quote);
  }
  out.push_back(quote);
  return out;
}

// Reads the "#" code at s[i] (which holds "#"); returns the character and sets
// `i` past the run of digits and "$" signs.
template <class Ch>
Ch ReadCharCode(std::basic_string_view<Ch> s, size_t& i) {
  const size_t hash = i;
  const size_t start = i + 1;
  size_t end = start;
  while (end < s.size() && (s[end] == '$' || (s[end] >= '0' && s[end] <= '9'))) ++end;
  const std::basic_string_view<Ch> run = s.substr(start, end - start);
  int64_t value;
  if (!run.empty() && run.front() == '$') {
    // Hexadecimal digits after the "$"; a further "$" is rejected there.
    value = internal::HexValue(run.substr(1));
  } else {
    // Strict integer conversion: an empty run or "1$2" raises its error.
    value = StrToInt(run);
  }
  constexpr int64_t kMax = std::numeric_limits<std::make_unsigned_t<Ch>>::max();
  if (value > kMax) {
    throw Exception(u"\"%s\" not a character", {internal::Widen(s.substr(hash, end - hash))});
  }
  i = end;
  return static_cast<Ch>(value);
}

template <class Ch>
std::basic_string<Ch> UnquotedImpl(std::basic_string_view<Ch> s, Ch quote) {
  if (s.empty()) return std::basic_string<Ch>(s);
  std::basic_string<Ch> out;
  out.reserve(s.size());
  const size_t n = s.size();
  size_t i = 0;
  bool inside = false;
  while (i < n) {
    if (!inside) {
      if (s[i] == '#') {
        out.push_back(ReadCharCode(s, i));
      } else if (s[i] == quote) {
        inside = true;
        ++i;
      } else {
        break;  // the rest of s is not part of the literal
      }
      continue;
    }
    // Inside a quoted run: copy up to the next quote in one go.
    const size_t q = s.find(quote, i);
    const size_t stop = q == std::basic_string_view<Ch>::npos ? n : q;
    out.append(s.data() + i, stop - i);
    i = stop;
    if (i == n) break;
    if (i + 1 < n && s[i + 1] == quote) {  // doubled quote stands for one
      out.push_back(quote);
      i += 2;
    } else {  // a lone quote ends the run
      inside = false;
      ++i;
    }
  }
  // Deliberate fallback: nothing decoded gives the input back.
  if (out.empty()) return std::basic_string<Ch>(s);
  return out;
}

}  // namespace

AnsiString QuotedString(std::string_view s, AnsiChar quote) { return QuotedImpl(s, quote); }
UnicodeString QuotedString(std::u16string_view s, WideChar quote) { return QuotedImpl(s, quote); }

AnsiString UnquotedString(std::string_view s, AnsiChar quote) { return UnquotedImpl(s, quote); }
UnicodeString UnquotedString(std::u16string_view s, WideChar quote) {
  return UnquotedImpl(s, quote);
}

}  // namespace quill::Gstrings
