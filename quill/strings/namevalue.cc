// Name/value splitting in both forms.
#include "quill/strings/namevalue.h"

namespace quill::Gstrings {

void GetNameAndValueSep(std::string_view sep, std::string_view s, AnsiString& name,
                        AnsiString& value) {
  const size_t p = sep.empty() ? std::string_view::npos : s.find(sep);
  if (p == std::string_view::npos) {
    AnsiString n(s);  // built first: `s` may view `name` or `value`
    value.clear();
    name = std::move(n);
    return;
  }
  AnsiString n(s.substr(0, p));
  AnsiString v(s.substr(p + sep.size()));
  name = std::move(n);
  value = std::move(v);
}

void GetNameAndValueSep(std::u16string_view sep, std::u16string_view s, UnicodeString& name,
                        UnicodeString& value) {
  // An empty separator is found at the first position of a non-empty text.
  const size_t p = s.find(sep);
  if (p == std::u16string_view::npos || s.empty()) {
    UnicodeString n(s);
    value.clear();
    name = std::move(n);
    return;
  }
  // Deliberately one character skipped, not the separator's length.
  UnicodeString n(s.substr(0, p));
  UnicodeString v(s.substr(p + 1));
  name = std::move(n);
  value = std::move(v);
}

void GetNameAndValue(std::string_view s, AnsiString& name, AnsiString& value) {
  GetNameAndValueSep("=", s, name, value);
}

void GetNameAndValue(std::u16string_view s, UnicodeString& name, UnicodeString& value) {
  GetNameAndValueSep(u"=", s, name, value);
}

}  // namespace quill::Gstrings
