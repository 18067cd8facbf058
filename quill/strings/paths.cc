// File names, extensions and paths (backslash-separated).
#include "quill/strings/paths.h"

#include <string>
#include <string_view>

#include "quill/strings/internal/textops.h"

namespace quill::Gstrings {

namespace {

using internal::npos;
using internal::Str;
using internal::View;

template <class C>
Str<C> OnlyFileNameT(View<C> name) {
  // The leftmost dot after the last backslash: every extension goes.
  std::size_t dot = npos;
  for (std::size_t i = name.size(); i-- > 0;) {
    if (name[i] == C('\\')) break;
    if (name[i] == C('.')) dot = i;
  }
  return dot == npos ? Str<C>(name) : Str<C>(name.substr(0, dot));
}

template <class C>
Str<C> GChangeFileExtT(View<C> name, View<C> ext) {
  Str<C> out = OnlyFileNameT(name);
  out.append(ext);
  return out;
}

template <class C>
Str<C> GExtractFileExtT(View<C> name) {
  // The first dot anywhere, not only in the last component.
  const std::size_t dot = name.find(C('.'));
  return dot == npos ? Str<C>() : Str<C>(name.substr(dot));
}

template <class C>
Str<C> FixPathT(View<C> path) {
  Str<C> out(path);
  if (!out.empty() && out.back() != C('\\')) out.push_back(C('\\'));
  return out;
}

template <class C>
Str<C> Join(View<C> a, View<C> b, View<C> c = {}) {
  Str<C> out;
  out.reserve(a.size() + b.size() + c.size());
  out.append(a);
  out.append(b);
  out.append(c);
  return out;
}

template <class C>
Str<C> ConcNamesT(View<C> first, View<C> second) {
  if (first.empty()) return Str<C>(second);
  if (second.empty()) return Str<C>(first);
  const C dot[] = {C('.')};
  return Join<C>(first, View<C>(dot, 1), second);
}

}  // namespace

AnsiString OnlyFileName(std::string_view name) { return OnlyFileNameT(name); }
UnicodeString OnlyFileName(std::u16string_view name) { return OnlyFileNameT(name); }

AnsiString GChangeFileExt(std::string_view name, std::string_view ext) {
  return GChangeFileExtT(name, ext);
}
UnicodeString GChangeFileExt(std::u16string_view name, std::u16string_view ext) {
  return GChangeFileExtT(name, ext);
}

AnsiString GExtractFileExt(std::string_view name) { return GExtractFileExtT(name); }
UnicodeString GExtractFileExt(std::u16string_view name) { return GExtractFileExtT(name); }

AnsiString FixPath(std::string_view path) { return FixPathT(path); }
UnicodeString FixPath(std::u16string_view path) { return FixPathT(path); }

AnsiString ConcPath(std::string_view dir, std::string_view name) {
  return XConcPath(dir, name, "\\");
}

UnicodeString ConcPath(std::u16string_view dir, std::u16string_view name) {
  // The UTF-16 form inserts a backslash only when neither side has one; it
  // never removes one, so a backslash on both sides stays doubled.
  if (!dir.empty() && !name.empty() && dir.back() != u'\\' && name.front() != u'\\') {
    return Join<char16_t>(dir, u"\\", name);
  }
  return Join<char16_t>(dir, name);
}

AnsiString XConcPath(std::string_view dir, std::string_view name, std::string_view sep) {
  if (dir.empty()) return AnsiString(name);
  if (name.empty()) return AnsiString(dir);
  // Each end is compared with the separator as a one-character string, so a
  // longer separator never matches.
  const bool dirEnds = sep.size() == 1 && dir.back() == sep[0];
  const bool nameStarts = sep.size() == 1 && name.front() == sep[0];
  if (dirEnds && nameStarts) return Join<char>(dir, name.substr(1));
  if (dirEnds || nameStarts) return Join<char>(dir, name);
  return Join<char>(dir, sep, name);
}

UnicodeString XConcPath(std::u16string_view dir, std::u16string_view name,
                        std::u16string_view sep) {
  // The UTF-16 form never removes a separator: one on both sides is doubled.
  if (!dir.empty() && !name.empty() && dir.back() != u'\\' && !dir.ends_with(sep) &&
      !name.starts_with(sep)) {
    return Join<char16_t>(dir, sep, name);
  }
  return Join<char16_t>(dir, name);
}

AnsiString ConcNames(std::string_view first, std::string_view second) {
  return ConcNamesT(first, second);
}
UnicodeString ConcNames(std::u16string_view first, std::u16string_view second) {
  return ConcNamesT(first, second);
}

}  // namespace quill::Gstrings
