#include "quill/rtl/trim.h"

#include <type_traits>

namespace quill {
namespace {

// Codes 0..32 are blanks to the trim family; nothing above 32 is (not even
// code 160 or the Unicode spaces).
template <class CharT>
constexpr bool IsTrimmed(CharT c) {
  return static_cast<std::make_unsigned_t<CharT>>(c) <= 32;
}

template <class CharT>
std::basic_string_view<CharT> TrimView(std::basic_string_view<CharT> s, bool left, bool right) {
  size_t b = 0;
  size_t e = s.size();
  if (left) {
    while (b < e && IsTrimmed(s[b])) ++b;
  }
  if (right) {
    while (e > b && IsTrimmed(s[e - 1])) --e;
  }
  return s.substr(b, e - b);
}

}  // namespace

AnsiString Trim(std::string_view s) { return AnsiString(TrimView(s, true, true)); }
UnicodeString Trim(std::u16string_view s) { return UnicodeString(TrimView(s, true, true)); }
AnsiString TrimLeft(std::string_view s) { return AnsiString(TrimView(s, true, false)); }
UnicodeString TrimLeft(std::u16string_view s) { return UnicodeString(TrimView(s, true, false)); }
AnsiString TrimRight(std::string_view s) { return AnsiString(TrimView(s, false, true)); }
UnicodeString TrimRight(std::u16string_view s) { return UnicodeString(TrimView(s, false, true)); }

}  // namespace quill
