// Tokens, parts, cutting at a separator, trimming and capitalising.
#include "quill/strings/slicing.h"

#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/strings/charclass.h"
#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace {

using internal::npos;
using internal::Str;
using internal::View;

template <class C>
Str<C> GetTokenT(Str<C>& s) {
  if (s.empty()) return {};
  const std::size_t n = s.size();
  std::size_t p = 0;
  while (p < n && IsSpace(s[p])) ++p;
  std::size_t e = p;
  if (p < n && IsSeparator(s[p])) {
    while (e < n && IsSeparator(s[e])) ++e;
  } else {
    while (e < n && !IsSpace(s[e]) && !IsSeparator(s[e])) ++e;
  }
  Str<C> token = s.substr(p, e - p);
  s.erase(0, e);
  return token;
}

template <class C>
Str<C> CutAtSep(View<C> sep, View<C> s, bool before) {
  const std::size_t p = sep.empty() ? npos : s.find(sep);
  // Not found: the whole string, deliberately untrimmed.
  if (p == npos) return Str<C>(s);
  const View<C> part = before ? s.substr(0, p) : s.substr(p + sep.size());
  return Str<C>(internal::TrimControls(part));
}

template <class C>
Str<C> CapitalizeFirstT(View<C> s) {
  if (s.empty()) return {};
  Str<C> out = AnsiLowerCase(s);
  if constexpr (sizeof(C) == 1) {
    out[0] = AnsiUpperChar(out[0]);
  } else {
    // A surrogate pair is raised as the one character it is.
    const std::size_t k =
        (out.size() > 1 && out[0] >= 0xD800 && out[0] <= 0xDBFF && out[1] >= 0xDC00 &&
         out[1] <= 0xDFFF)
            ? 2
            : 1;
    const UnicodeString head = AnsiUpperCase(View<C>(out).substr(0, k));
    if (head.size() == k) out.replace(0, k, head);
  }
  return out;
}

}  // namespace

AnsiString GetToken(AnsiString& s) { return GetTokenT(s); }
UnicodeString GetToken(UnicodeString& s) { return GetTokenT(s); }

AnsiString GetNextPart(AnsiString& s, std::string_view sep) {
  const std::size_t p = sep.empty() ? npos : s.find(sep);
  if (p == npos) {
    AnsiString all = std::move(s);
    s.clear();
    return all;
  }
  AnsiString part = s.substr(0, p);
  s.erase(0, p + sep.size());
  return part;
}

AnsiString GetBeforeSep(std::string_view sep, std::string_view s) {
  return CutAtSep(sep, s, true);
}
UnicodeString GetBeforeSep(std::u16string_view sep, std::u16string_view s) {
  return CutAtSep(sep, s, true);
}

AnsiString GetAfterSep(std::string_view sep, std::string_view s) {
  return CutAtSep(sep, s, false);
}
UnicodeString GetAfterSep(std::u16string_view sep, std::u16string_view s) {
  return CutAtSep(sep, s, false);
}

AnsiString AnsiTrim(std::string_view s) {
  std::size_t b = 0;
  std::size_t e = s.size();
  while (b < e && IsSpace(s[b])) ++b;
  while (e > b && IsSpace(s[e - 1])) --e;
  return AnsiString(s.substr(b, e - b));
}

AnsiString CapitalizeFirst(std::string_view s) { return CapitalizeFirstT(s); }
UnicodeString CapitalizeFirst(std::u16string_view s) { return CapitalizeFirstT(s); }

}  // namespace quill::Gstrings
