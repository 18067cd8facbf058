// Text for the tool's line-based and --json output.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "quill/rtl/types.h"
#include "quill/rtl/unicode.h"

namespace quilltool {

// At most this many output bytes per UTF-16 unit of the input (a \uXXXX
// escape); PutEscapedText needs that much room.
inline constexpr size_t kEscapedBytesPerUnit = 6;

// Writes `s` at `p` in UTF-8 with backslash, tab, CR and LF escaped by letter
// (\\, \t, \r, \n) and returns the end. For a tab-separated line (json false)
// other control characters and DEL become \xNN. As the body of a JSON string
// (json true) the quote is escaped too, and other control characters, DEL and
// every surrogate code unit become \uXXXX (a pair gives two escapes, which
// JSON readers join again).
// REQUIRES: room for kEscapedBytesPerUnit * s.size() bytes at `p`.
inline char* PutEscapedText(char* p, std::u16string_view s, bool json) {
  auto put = [&p](std::string_view lit) {
    std::memcpy(p, lit.data(), lit.size());
    p += lit.size();
  };
  for (size_t i = 0; i < s.size(); ++i) {
    const char16_t c = s[i];
    // Printable ASCII, the common case, byte by byte.
    if (c >= 32 && c < 127 && c != u'\\' && (c != u'"' || !json)) {
      *p++ = static_cast<char>(c);
      continue;
    }
    switch (c) {
      case u'\\': put("\\\\"); continue;
      case u'"': put("\\\""); continue;  // reached only for JSON
      case u'\t': put("\\t"); continue;
      case u'\r': put("\\r"); continue;
      case u'\n': put("\\n"); continue;
      default: break;
    }
    if (c < 32 || c == 127 || (json && c >= 0xD800 && c <= 0xDFFF)) {
      char e[8];
      const int n = std::snprintf(e, sizeof e, json ? "\\u%04X" : "\\x%02X", static_cast<unsigned>(c));
      put(std::string_view(e, static_cast<size_t>(n)));
      continue;
    }
    // A run of other characters in UTF-8 (at most three bytes per unit).
    size_t j = i + 1;
    while (j < s.size() && s[j] >= 128 && !(json && s[j] >= 0xD800 && s[j] <= 0xDFFF)) ++j;
    put(quill::UnicodeToUtf8(s.substr(i, j - i)));
    i = j - 1;
  }
  return p;
}

// PutEscapedText into a new string.
inline std::string EscapedText(std::u16string_view s, bool json) {
  std::string out(s.size() * kEscapedBytesPerUnit, '\0');
  out.resize(static_cast<size_t>(PutEscapedText(out.data(), s, json) - out.data()));
  return out;
}

inline std::string PlainText(std::u16string_view s) { return EscapedText(s, false); }
inline std::string JsonText(std::u16string_view s) { return EscapedText(s, true); }

}  // namespace quilltool
