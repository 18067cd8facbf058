// Template matching with "*" wildcards.
#include "quill/strings/templates.h"

#include <cstdint>
#include <string>
#include <unordered_set>

#include "quill/rtl/casing.h"

namespace quill::Gstrings {
namespace {

// The part of v from index p, at most n long; empty when p is past the end.
template <class Ch>
std::basic_string_view<Ch> Run(std::basic_string_view<Ch> v, size_t p, size_t n) {
  return p >= v.size() ? std::basic_string_view<Ch>() : v.substr(p, n);
}

template <class Ch>
class Matcher {
 public:
  using View = std::basic_string_view<Ch>;
  Matcher(View s, View t) : s_(s), t_(t) {}

  // Whether s_ from index si matches t_ from index ti.
  bool Match(size_t si, size_t ti) {
    const uint64_t key = (static_cast<uint64_t>(si) << 32) | ti;
    if (failed_.count(key) != 0) return false;  // this sub-match already failed
    const bool ok = MatchFrom(si, ti);
    if (!ok) failed_.insert(key);
    return ok;
  }

 private:
  static bool IsWild(Ch c) { return c == '*' || c == '?'; }

  size_t NextWild(View t, size_t from) const {
    size_t w = from;
    while (w < t.size() && !IsWild(t[w])) ++w;
    return w;
  }

  bool MatchFrom(size_t si, size_t ti) {
    const View s = s_.substr(si);
    const View t = t_.substr(ti);
    if (s.empty() && t.empty()) return true;
    if (t.size() == 1 && t[0] == '*') return true;
    size_t p = 0;  // position in s and t alike
    size_t k = 0;  // scan start in t
    for (;;) {
      const size_t w = NextWild(t, k);
      // The literal run before the wildcard must match s at p.
      if (Run(t, p, w - k) != Run(s, p, w - k)) return false;
      p += w - k;
      if (w >= t.size()) return w >= s.size();
      if (t[w] == '*') {
        if (w + 1 == t.size()) return true;  // trailing "*"
        const size_t w2 = NextWild(t, w + 1);
        const View literal = t.substr(w + 1, w2 - w - 1);
        // "**" and "*?" in the middle: an empty literal is never found.
        if (literal.empty()) return false;
        // Try every occurrence of the literal from p on, overlapping ones too.
        for (size_t at = s.find(literal, p); at != View::npos; at = s.find(literal, at + 1)) {
          if (Match(si + at + literal.size(), ti + w2)) return true;
        }
        return false;
      }
      // "?": the next turn finds this same "?" again and makes no progress,
      // so the matcher never returns. The volatile read keeps the loop a
      // well-defined endless loop rather than one the compiler may remove.
      p = w + 1;
      k = w;
      spin_ = spin_ + 1;
    }
  }

  View s_;
  View t_;
  std::unordered_set<uint64_t> failed_;
  volatile uint32_t spin_ = 0;
};

template <class Ch>
bool Fit(std::basic_string_view<Ch> s, std::basic_string_view<Ch> t) {
  Matcher<Ch> m(s, t);
  return m.Match(0, 0);
}

}  // namespace

bool FitToTemplate(std::string_view s, std::string_view templ, bool CaseSensitive) {
  if (CaseSensitive) return Fit(s, templ);
  const AnsiString ls = AnsiLowerCase(s);
  const AnsiString lt = AnsiLowerCase(templ);
  return Fit(std::string_view(ls), std::string_view(lt));
}

bool FitToTemplate(std::u16string_view s, std::u16string_view templ, bool CaseSensitive) {
  if (CaseSensitive) return Fit(s, templ);
  const UnicodeString ls = AnsiLowerCase(s);
  const UnicodeString lt = AnsiLowerCase(templ);
  return Fit(std::u16string_view(ls), std::u16string_view(lt));
}

}  // namespace quill::Gstrings
