// C escapes on arbitrary bytes: XUnquotedCStringEx and GetCExtraSymbolEx in
// both forms, UTF-8 pairs on and off, every MaxDigits from -1 to 4. Nothing
// here may raise; positions must only move forward and stay within the text
// plus one. Escaping then unescaping with MaxDigits 2 must give the text back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quill/strings/gstrings.h"

namespace {

namespace gs = quill::Gstrings;

template <class S>
void WalkSymbols(const S& s, int32_t max_digits, bool pairs, bool wide) {
  int32_t pos = 1;
  const int32_t n = static_cast<int32_t>(s.size());
  while (pos <= n) {
    const int32_t before = pos;
    if constexpr (sizeof(typename S::value_type) == 2) {
      (void)gs::GetCExtraSymbolEx(s, max_digits, pos, pairs);
    } else {
      (void)gs::GetCExtraSymbolEx(s, max_digits, pos);
    }
    if (pos <= before || pos > n + 1) std::abort();
  }
  (void)wide;
}

template <class S>
void Check(const S& s) {
  for (int32_t md = -1; md <= 4; ++md) {
    for (bool pairs : {false, true}) WalkSymbols(s, md, pairs, sizeof(typename S::value_type) == 2);
    int32_t pos = 1;
    (void)gs::XUnquotedCStringEx(s, md, pos);
    if (pos < 1 || pos > static_cast<int32_t>(s.size()) + 1) std::abort();
    // From every start inside the text.
    for (size_t start = 1; start <= s.size() && start <= 16; ++start) {
      pos = static_cast<int32_t>(start);
      (void)gs::XUnquotedCStringEx(s, md, pos);
      if (pos < static_cast<int32_t>(start) || pos > static_cast<int32_t>(s.size()) + 1) std::abort();
    }
  }
  int32_t pos = 1;
  if (gs::XUnquotedCStringEx(gs::QuotedCString(s), 2, pos) != s) std::abort();
  (void)gs::UnquotedCString(s);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string s(reinterpret_cast<const char*>(data), size);
  Check(s);
  quill::UnicodeString wb;  // bytes widened: escapes are frequent
  for (size_t i = 0; i < size; ++i) wb.push_back(data[i]);
  Check(wb);
  quill::UnicodeString w;  // byte pairs as units: high bytes in play
  for (size_t i = 0; i + 1 < size; i += 2) w.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  Check(w);
  return 0;
}
