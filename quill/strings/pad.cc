// Runs of characters and strings; padding to a width.
#include "quill/strings/pad.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace {

using internal::Str;
using internal::View;

template <class C>
Str<C> RunOf(C c, int32_t count) {
  return count < 1 ? Str<C>() : Str<C>(static_cast<std::size_t>(count), c);
}

// Both paddings cut a longer string to its first `width` characters; they
// differ only in where the fill goes.
template <class C>
Str<C> Pad(View<C> s, int32_t width, C fill, bool left) {
  if (width <= 0) return {};
  const auto w = static_cast<std::size_t>(width);
  const View<C> kept = s.substr(0, std::min(w, s.size()));
  const std::size_t fillCount = w - kept.size();
  Str<C> out;
  out.reserve(w);
  if (left) out.append(fillCount, fill);
  out.append(kept);
  if (!left) out.append(fillCount, fill);
  return out;
}

}  // namespace

AnsiString SpaceA(int32_t count) { return RunOf(' ', count); }
UnicodeString SpaceW(int32_t count) { return RunOf(u' ', count); }

AnsiString Replicate(AnsiChar c, int32_t count) { return RunOf(c, count); }
UnicodeString Replicate(WideChar c, int32_t count) { return RunOf(c, count); }

AnsiString ReplicateStr(std::string_view s, int32_t count) {
  AnsiString out;
  if (count < 1 || s.empty()) return out;
  out.reserve(s.size() * static_cast<std::size_t>(count));
  for (int32_t i = 0; i < count; ++i) out.append(s);
  return out;
}

UnicodeString ConcatWChar(std::u16string_view s, WideChar c) {
  UnicodeString out;
  out.reserve(s.size() + 1);
  out.append(s);
  out.push_back(c);
  return out;
}

AnsiString Padr(std::string_view s, int32_t width, AnsiChar fill) {
  return Pad(s, width, fill, false);
}
UnicodeString Padr(std::u16string_view s, int32_t width, WideChar fill) {
  return Pad(s, width, fill, false);
}

AnsiString Padl(std::string_view s, int32_t width, AnsiChar fill) {
  return Pad(s, width, fill, true);
}
UnicodeString Padl(std::u16string_view s, int32_t width, WideChar fill) {
  return Pad(s, width, fill, true);
}

}  // namespace quill::Gstrings
