// Gstrings conversions and searches on arbitrary input. Nothing may crash or
// read out of bounds; conversions give a value or their documented exception
// only; searches must agree with a plain reference search, the
// case-insensitive ones with a search of the lowered copies, and replacing
// must agree with a find-and-append reference.
//
// Input layout: byte 0 splits the rest into a pattern (the first byte0 % 16
// bytes) and a text; the UTF-16 form reads the same bytes in pairs and also
// as units 0..255.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/rtl/exception.h"
#include "quill/strings/gstrings.h"

namespace {

using namespace quill;
using namespace quill::Gstrings;

void Check(bool ok) {
  if (!ok) std::abort();
}

std::u16string Units(std::string_view s) {
  std::u16string w;
  for (char c : s) w.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
  return w;
}

std::u16string Pairs(std::string_view s) {
  std::u16string w;
  for (std::size_t i = 0; i + 1 < s.size(); i += 2) {
    w.push_back(static_cast<char16_t>(static_cast<unsigned char>(s[i]) |
                                      (static_cast<unsigned char>(s[i + 1]) << 8)));
  }
  return w;
}

// Reference XPos: the n-th overlapping occurrence at or after start.
template <class C>
int32_t RefXPos(std::basic_string_view<C> p, std::basic_string_view<C> t, int32_t start, int32_t n) {
  if (p.empty() || t.empty() || n <= 0 || start > static_cast<int32_t>(t.size())) return 0;
  if (start < 1) start = 1;
  for (std::size_t i = start - 1; i + p.size() <= t.size(); ++i) {
    if (t.substr(i, p.size()) == p && --n == 0) return static_cast<int32_t>(i + 1);
  }
  return 0;
}

template <class C>
void Conversions(std::basic_string_view<C> s) {
  if constexpr (sizeof(C) == 2) {
    try { (void)HexToInt(s); } catch (const EGStringsError&) {}
    try { (void)OctToInt(s); } catch (const EGStringsError&) {}
    try { (void)XStrToInt(s); } catch (const EConvertError&) {}
    try { (void)SafeStrToInt(s); } catch (const EConvertError&) {}
    try { (void)XStrToFloat(s, 0.0); } catch (const EConvertError&) {}
    (void)ZStrToInt(s);
    (void)ZStrToFloat(s);
    Check(XStrToBool(s) == NStrToBool(s) || s.empty());
  }
  (void)IsIntNum(s);
  (void)IsRealNum(s);
  (void)IsNumber(s);
  (void)IsIdentifier(s);
  (void)IsPositive(s);
  (void)AlphaExists(s);
  int32_t pos = 1;
  SkipSpaces(s, pos);
  Check(pos >= 1 && pos <= static_cast<int32_t>(s.size()) + 1);
  (void)OnlyFileName(s);
  (void)GExtractFileExt(s);
  (void)CapitalizeFirst(s);
}

template <class C>
void Searches(std::basic_string_view<C> p, std::basic_string_view<C> t, int32_t start, int32_t n) {
  Check(XPos(p, t, start, n) == RefXPos(p, t, start, n));
  Check(PosNum(p, t, n) == RefXPos(p, t, 1, n));
  const int32_t b = BXPos(p, t, start, n);
  Check(b == 0 || (b >= 1 && t.substr(b - 1, p.size()) == p));
  const auto lp = AnsiLowerCase(p);
  const auto lt = AnsiLowerCase(t);
  Check(lt.size() == t.size() && lp.size() == p.size());
  Check(CXPos(p, t, start, n) == RefXPos<C>(lp, lt, start, n));
  Check(CPos(p, t) == RefXPos<C>(lp, lt, 1, 1));
  (void)XStartsWith(p, t, false);
  (void)EndsBy(p, t);
  (void)GetBeforeSep(p, t);
  (void)GetAfterSep(p, t);

  // ReplaceStr against find-and-append.
  std::basic_string<C> expected;
  if (p.empty()) {
    expected.assign(t);
  } else {
    std::size_t last = 0;
    for (std::size_t q = t.find(p); q != t.npos; q = t.find(p, last)) {
      expected.append(t.substr(last, q - last));
      expected.push_back(C('#'));
      last = q + p.size();
    }
    expected.append(t.substr(last));
  }
  const C hash[] = {C('#')};
  Check(ReplaceStr(t, p, std::basic_string_view<C>(hash, 1)) == expected);
  Check(XReplaceStr(t, p, std::basic_string_view<C>(hash, 1), true) == t);
  (void)XReplaceStr(t, p, std::basic_string_view<C>(hash, 1), false);
  (void)XConcPath(p, t, std::basic_string_view<C>(hash, 1));
  (void)ConcPath(p, t);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view all(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::size_t plen = std::min<std::size_t>(data[0] % 16, all.size());
  const std::string_view pat = all.substr(0, plen);
  const std::string_view text = all.substr(plen);
  const int32_t start = static_cast<int32_t>(data[0] >> 4) - 2;
  const int32_t n = static_cast<int32_t>(data[0] & 3);

  Conversions(all);
  const std::u16string wall = Units(all);
  Conversions<char16_t>(wall);
  Conversions<char16_t>(Pairs(all));

  Searches(pat, text, start, n);
  const std::u16string wp = Units(pat), wt = Units(text);
  Searches<char16_t>(wp, wt, start, n);
  const std::u16string pp = Pairs(pat), pt = Pairs(text);
  Searches<char16_t>(pp, pt, start, n);
  return 0;
}
