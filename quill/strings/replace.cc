// Replacing all occurrences of a pattern; erasing a character.
#include "quill/strings/replace.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "quill/strings/internal/caseless.h"
#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace {

using internal::npos;
using internal::Str;
using internal::View;

// Replace-all over occurrences reported by `find(from)` (0-based, npos when
// there are no more), each `oldLen` long. Occurrences never overlap and the
// inserted text is never searched. The result is allocated once: at its
// largest possible size when that stays within twice the text (one search
// pass, appending as it goes), otherwise at its exact size after a pass that
// records the positions.
template <class C, class Find>
Str<C> ReplaceAll(View<C> text, std::size_t oldLen, View<C> newText, Find&& find) {
  std::size_t p = find(0);
  if (p == npos) return Str<C>(text);
  Str<C> out;
  const std::size_t newLen = newText.size();
  const std::size_t most =
      newLen <= oldLen ? text.size() : text.size() + (text.size() / oldLen) * (newLen - oldLen);
  std::size_t last = 0;
  if (most <= 2 * text.size()) {
    out.reserve(most);
    for (; p != npos; p = find(last)) {
      out.append(text.data() + last, p - last);
      out.append(newText);
      last = p + oldLen;
    }
  } else {
    std::vector<std::size_t> hits;
    for (; p != npos; p = find(p + oldLen)) hits.push_back(p);
    out.reserve(text.size() + hits.size() * (newLen - oldLen));
    for (std::size_t hit : hits) {
      out.append(text.data() + last, hit - last);
      out.append(newText);
      last = hit + oldLen;
    }
  }
  out.append(text.data() + last, text.size() - last);
  return out;
}

template <class C>
Str<C> ReplaceStrT(View<C> text, View<C> oldPattern, View<C> newText) {
  if (oldPattern.empty() || text.empty()) return Str<C>(text);
  // One scan over the text finds every occurrence (a search restarted after
  // each would set up again thousands of times). The result is allocated
  // once: at its largest possible size when that stays within twice the
  // text, otherwise at its exact size after a first pass that counts.
  const internal::ExactFinder<C> finder(oldPattern);
  const std::size_t oldLen = oldPattern.size();
  const std::size_t newLen = newText.size();
  std::size_t size = text.size() + (text.size() / oldLen) * (newLen > oldLen ? newLen - oldLen : 0);
  if (size > 2 * text.size()) {
    std::size_t hits = 0;
    finder.ForEachApart(text, [&](std::size_t) { ++hits; });
    size = text.size() - hits * oldLen + hits * newLen;
  }
  Str<C> out;
  out.reserve(size);
  std::size_t last = 0;
  finder.ForEachApart(text, [&](std::size_t p) {
    out.append(text.data() + last, p - last);
    out.append(newText);
    last = p + oldLen;
  });
  out.append(text.data() + last, text.size() - last);
  return out;
}

template <class C>
Str<C> XReplaceStrT(View<C> text, View<C> oldPattern, View<C> newText, bool caseSensitive) {
  // The flag set means "never replace": only the case-insensitive setting
  // finds anything, and callers rely on that.
  if (caseSensitive || oldPattern.empty() || text.empty()) return Str<C>(text);
  internal::CaselessFinder<C> finder(oldPattern, text);
  return ReplaceAll<C>(text, finder.PatternLength(), newText,
                       [&](std::size_t from) { return finder.Find(from); });
}

template <class C>
Str<C> EraseSymbolT(View<C> s, C c) {
  Str<C> out;
  out.reserve(s.size());
  std::copy_if(s.begin(), s.end(), std::back_inserter(out), [c](C x) { return x != c; });
  return out;
}

}  // namespace

AnsiString ReplaceStr(std::string_view text, std::string_view oldPattern,
                      std::string_view newText) {
  return ReplaceStrT(text, oldPattern, newText);
}
UnicodeString ReplaceStr(std::u16string_view text, std::u16string_view oldPattern,
                         std::u16string_view newText) {
  return ReplaceStrT(text, oldPattern, newText);
}

AnsiString XReplaceStr(std::string_view text, std::string_view oldPattern,
                       std::string_view newText, bool caseSensitive) {
  return XReplaceStrT(text, oldPattern, newText, caseSensitive);
}
UnicodeString XReplaceStr(std::u16string_view text, std::u16string_view oldPattern,
                          std::u16string_view newText, bool caseSensitive) {
  return XReplaceStrT(text, oldPattern, newText, caseSensitive);
}

AnsiString EraseSymbol(std::string_view s, AnsiChar c) { return EraseSymbolT(s, c); }
UnicodeString EraseSymbol(std::u16string_view s, WideChar c) { return EraseSymbolT(s, c); }

}  // namespace quill::Gstrings
