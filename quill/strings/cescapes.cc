// C notation: CStringEx and the readers of escapes and literals, both forms.
//
// Each routine is one template over the character type. The forms differ in
// how many bits an octal escape keeps (8 or 16) and in the UTF-8 pair reading,
// which only the UTF-16 form offers.
#include "quill/strings/cescapes.h"

#include <unicode/utf8.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "quill/strings/charclass.h"
#include "quill/strings/internal/chartraits.h"

namespace quill::Gstrings {
namespace {

using internal::Code;
using internal::LowByte;

template <class Ch>
void AppendEscape(std::basic_string<Ch>& out, char letter) {
  out.push_back(static_cast<Ch>('\\'));
  out.push_back(static_cast<Ch>(letter));
}

template <class Ch>
std::basic_string<Ch> CStringImpl(std::basic_string_view<Ch> s, bool keep_apostrophe,
                                   bool add_quotes) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::basic_string<Ch> out;
  out.reserve(s.size() + 2 + s.size() / 16);
  if (add_quotes) out.push_back(static_cast<Ch>('"'));
  const bool escape_dquote = add_quotes;
  const bool escape_apos = add_quotes && !keep_apostrophe;
  const size_t n = s.size();
  size_t i = 0;
  while (i < n) {
    // Fast path: the run of characters that are copied as they are.
    size_t j = i;
    while (j < n) {
      const unsigned c = Code(s[j]);
      if (c < 32 || c == '\\' || (c == '"' && escape_dquote) || (c == '\'' && escape_apos)) break;
      ++j;
    }
    out.append(s.data() + i, j - i);
    i = j;
    if (i == n) break;
    const unsigned c = Code(s[i]);
    switch (c) {
      case 7: AppendEscape(out, 'a'); break;
      case 8: AppendEscape(out, 'b'); break;
      case 9: AppendEscape(out, 't'); break;
      case 10: AppendEscape(out, 'n'); break;
      case 11: AppendEscape(out, 'v'); break;
      case 12: AppendEscape(out, 'f'); break;
      case 13: AppendEscape(out, 'r'); break;
      case '"': AppendEscape(out, '"'); break;
      case '\'': AppendEscape(out, '\''); break;
      case '\\': AppendEscape(out, '\\'); break;
      default:  // the other control codes: exactly two upper-case hex digits
        AppendEscape(out, 'x');
        out.push_back(static_cast<Ch>(kHex[c >> 4]));
        out.push_back(static_cast<Ch>(kHex[c & 15]));
        break;
    }
    ++i;
  }
  if (add_quotes) out.push_back(static_cast<Ch>('"'));
  return out;
}

// Reads a run of digits from the 0-based index `i` while `is_digit` holds for
// the low byte and the MaxDigits limit allows; returns the run and moves `i`.
template <class Ch, class Pred>
std::basic_string_view<Ch> ReadDigits(std::basic_string_view<Ch> s, int32_t max_digits, size_t& i,
                                      Pred is_digit) {
  const size_t start = i;
  int32_t count = 0;
  while (i < s.size() && (max_digits == 0 || count < max_digits) && is_digit(LowByte(s[i]))) {
    ++i;
    ++count;
  }
  return s.substr(start, i - start);
}

template <class Ch>
int32_t HexRunValue(std::basic_string_view<Ch> digits) {
  return digits.empty() ? 0 : internal::HexValue(digits);
}

// The first UTF-16 unit of the UTF-8 text `bytes`, or U+00D3 when the bytes
// are not well-formed UTF-8 (the decoder then gives no text).
char16_t FirstUnitOfUtf8(const uint8_t* bytes, int32_t length) {
  int32_t i = 0;
  UChar32 first = 0;
  bool first_seen = false;
  while (i < length) {
    UChar32 cp;
    U8_NEXT(bytes, i, length, cp);
    if (cp < 0) return u'\u00D3';
    if (!first_seen) {
      first = cp;
      first_seen = true;
    }
  }
  if (!first_seen) return u'\u00D3';
  return U_IS_BMP(first) ? static_cast<char16_t>(first) : U16_LEAD(first);
}

// The escape or plain character at the 0-based index `i` (which is within s).
template <class Ch>
Ch ExtraSymbol(std::basic_string_view<Ch> s, int32_t max_digits, size_t& i, bool utf8_pairs) {
  const size_t n = s.size();
  if (i + 1 >= n || s[i] != '\\') return s[i++];
  const Ch next = s[i + 1];
  switch (next) {
    case 'n': i += 2; return static_cast<Ch>(10);
    case 'r': i += 2; return static_cast<Ch>(13);
    case 't': i += 2; return static_cast<Ch>(9);
    case 'v': i += 2; return static_cast<Ch>(11);
    case 'a': i += 2; return static_cast<Ch>(7);
    case 'b': i += 2; return static_cast<Ch>(8);
    case 'f': i += 2; return static_cast<Ch>(12);
    case 'x': {
      i += 2;
      const uint8_t first = static_cast<uint8_t>(
          HexRunValue(ReadDigits(s, max_digits, i, [](AnsiChar c) { return IsHexDigit(c); })));
      // A second "\x" right after the first makes a UTF-8 pair (UTF-16 only).
      if (utf8_pairs && n - i >= 3 && s[i] == '\\' && s[i + 1] == 'x') {
        i += 2;
        const uint16_t second = static_cast<uint16_t>(
            HexRunValue(ReadDigits(s, max_digits, i, [](AnsiChar c) { return IsHexDigit(c); })));
        uint8_t bytes[3] = {first, 0, 0};
        int32_t count;
        if (second <= 0xFF) {
          bytes[1] = static_cast<uint8_t>(second);
          count = 2;
        } else {
          bytes[1] = static_cast<uint8_t>(second >> 8);
          bytes[2] = static_cast<uint8_t>(second & 0xFF);
          count = 3;
        }
        return static_cast<Ch>(FirstUnitOfUtf8(bytes, count));
      }
      return static_cast<Ch>(first);
    }
    default:
      break;
  }
  if (next >= '0' && next <= '9') {
    // The digit itself is the first octal digit; "\8" and "\9" read none.
    ++i;
    const int32_t value = [&] {
      const auto digits = ReadDigits(s, max_digits, i, [](AnsiChar c) { return IsOctDigit(c); });
      return digits.empty() ? 0 : internal::OctValue(digits);
    }();
    return static_cast<Ch>(value);  // 8 bits in the 8-bit form, 16 in UTF-16
  }
  i += 2;
  return next;  // \\ \" \' \? and unknown letters stand for themselves
}

template <class Ch>
Ch GetExtraSymbolAt(std::basic_string_view<Ch> s, int32_t max_digits, int32_t& pos,
                    bool utf8_pairs) {
  if (pos < 1 || static_cast<size_t>(pos) > s.size()) {
    ++pos;  // outside the text: nothing to read
    return Ch(0);
  }
  size_t i = static_cast<size_t>(pos) - 1;
  const Ch c = ExtraSymbol(s, max_digits, i, utf8_pairs);
  pos = static_cast<int32_t>(i + 1);
  return c;
}

template <class Ch>
std::basic_string<Ch> XUnquotedImpl(std::basic_string_view<Ch> s, int32_t max_digits, int32_t& pos) {
  if (s.empty()) return std::basic_string<Ch>();
  // Not at a literal: the whole text, not just the part from pos on.
  if (pos < 1 || static_cast<size_t>(pos) > s.size() || s[pos - 1] != '"') {
    return std::basic_string<Ch>(s);
  }
  std::basic_string<Ch> out;
  const size_t n = s.size();
  size_t i = static_cast<size_t>(pos);  // past the opening quote
  while (i < n && s[i] != '"') {
    // Copy the plain run up to the next backslash or quote in one go.
    size_t j = i;
    while (j < n && s[j] != '"' && s[j] != '\\') ++j;
    out.append(s.data() + i, j - i);
    i = j;
    if (i < n && s[i] == '\\') out.push_back(ExtraSymbol(s, max_digits, i, false));
  }
  if (i < n) ++i;  // past the closing quote; a missing one is no error
  pos = static_cast<int32_t>(i + 1);
  return out;
}

}  // namespace

AnsiString CStringEx(std::string_view s, bool KeepApostrophe, bool AddQuotes) {
  return CStringImpl(s, KeepApostrophe, AddQuotes);
}
UnicodeString CStringEx(std::u16string_view s, bool KeepApostrophe, bool AddQuotes) {
  return CStringImpl(s, KeepApostrophe, AddQuotes);
}
AnsiString QuotedCStringEx(std::string_view s, bool KeepApostrophe) {
  return CStringImpl(s, KeepApostrophe, true);
}
UnicodeString QuotedCStringEx(std::u16string_view s, bool KeepApostrophe) {
  return CStringImpl(s, KeepApostrophe, true);
}
AnsiString QuotedCString(std::string_view s) { return CStringImpl(s, false, true); }
UnicodeString QuotedCString(std::u16string_view s) { return CStringImpl(s, false, true); }

AnsiChar GetCExtraSymbolEx(std::string_view s, int32_t MaxDigits, int32_t& pos) {
  return GetExtraSymbolAt(s, MaxDigits, pos, false);
}
WideChar GetCExtraSymbolEx(std::u16string_view s, int32_t MaxDigits, int32_t& pos,
                           bool Utf8Pairs) {
  return GetExtraSymbolAt(s, MaxDigits, pos, Utf8Pairs);
}
AnsiChar GetCExtraSymbol(std::string_view s, int32_t& pos) {
  return GetExtraSymbolAt(s, 0, pos, false);
}
WideChar GetCExtraSymbol(std::u16string_view s, int32_t& pos) {
  return GetExtraSymbolAt(s, 0, pos, false);
}

AnsiString XUnquotedCStringEx(std::string_view s, int32_t MaxDigits, int32_t& pos) {
  return XUnquotedImpl(s, MaxDigits, pos);
}
UnicodeString XUnquotedCStringEx(std::u16string_view s, int32_t MaxDigits, int32_t& pos) {
  return XUnquotedImpl(s, MaxDigits, pos);
}
AnsiString XUnquotedCString(std::string_view s, int32_t& pos) { return XUnquotedImpl(s, 0, pos); }
UnicodeString XUnquotedCString(std::u16string_view s, int32_t& pos) {
  return XUnquotedImpl(s, 0, pos);
}
AnsiString UnquotedCString(std::string_view s) {
  int32_t pos = 1;
  return XUnquotedImpl(s, 0, pos);
}
UnicodeString UnquotedCString(std::u16string_view s) {
  int32_t pos = 1;
  return XUnquotedImpl(s, 0, pos);
}

}  // namespace quill::Gstrings
