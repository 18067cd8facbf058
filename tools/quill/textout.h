// Text for the tool's line-based and --json output.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "quill/rtl/types.h"
#include "quill/rtl/unicode.h"

namespace quilltool {

// `s` in UTF-8 with backslash, tab, CR and LF escaped by letter (\\, \t, \r,
// \n). For a tab-separated line (json false) other control characters and DEL
// become \xNN. As the body of a JSON string (json true) the quote is escaped
// too, and other control characters, DEL and every surrogate code unit become
// \uXXXX (a pair gives two escapes, which JSON readers join again).
inline std::string EscapedText(std::u16string_view s, bool json) {
  std::string out;
  for (char16_t c : s) {
    switch (c) {
      case u'\\': out += "\\\\"; break;
      case u'\t': out += "\\t"; break;
      case u'\r': out += "\\r"; break;
      case u'\n': out += "\\n"; break;
      default:
        if (json && c == u'"') {
          out += "\\\"";
        } else if (c < 32 || c == 127 || (json && c >= 0xD800 && c <= 0xDFFF)) {
          char buf[8];
          std::snprintf(buf, sizeof buf, json ? "\\u%04X" : "\\x%02X", static_cast<unsigned>(c));
          out += buf;
        } else {
          out += quill::UnicodeToUtf8(std::u16string_view(&c, 1));
        }
    }
  }
  return out;
}

inline std::string PlainText(std::u16string_view s) { return EscapedText(s, false); }
inline std::string JsonText(std::u16string_view s) { return EscapedText(s, true); }

}  // namespace quilltool
