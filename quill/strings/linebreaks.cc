// Line-break normalisation to CR LF.
#include "quill/strings/linebreaks.h"

#include <algorithm>
#include <cstring>

namespace quill::Gstrings {

UnicodeString AdjustLineBreaks(UnicodeString s) {
  const char16_t* const begin = s.data();
  const char16_t* const end = begin + s.size();
  // Counting pass: one more unit for every lone LF and every CR not followed
  // by LF. Each CR LF pair first counts its LF, then takes it back.
  size_t extra = static_cast<size_t>(std::count(begin, end, u'\n'));
  for (const char16_t* p = std::find(begin, end, u'\r'); p != end; p = std::find(p + 1, end, u'\r')) {
    if (p + 1 == end || p[1] != u'\n') {
      ++extra;
    } else {
      --extra;
    }
  }
  if (extra == 0) return s;  // already CR LF throughout: no copy

  UnicodeString out(s.size() + extra, u'\0');
  char16_t* o = out.data();
  const char16_t* p = begin;
  while (p < end) {
    const char16_t* q = p;
    while (q < end && *q != u'\n' && *q != u'\r') ++q;
    o = std::copy(p, q, o);
    if (q == end) break;
    *o++ = u'\r';
    *o++ = u'\n';
    // CR LF is one break; LF CR is two (the CR is handled on the next turn).
    q += (*q == u'\r' && q + 1 < end && q[1] == u'\n') ? 2 : 1;
    p = q;
  }
  return out;
}

}  // namespace quill::Gstrings
