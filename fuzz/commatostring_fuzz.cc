// Fuzz target: CommaToString and StringToComma on arbitrary UTF-16 units.
// Checks, besides memory safety: CommaToString never lengthens beyond one
// CR LF per unit, and text whose lines hold no CR or LF comes back from
// StringToComma -> CommaToString line for line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "quill/utils/commatext.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  quill::UnicodeString s(size / 2, u'\0');
  for (size_t i = 0; i < s.size(); ++i) s[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));

  const quill::UnicodeString lines = quill::Gutils::CommaToString(s);
  if (lines.size() > 2 * s.size() + 2) std::abort();

  // A text of lines joined by CR LF, without units whose low byte is 0 (a
  // unit 0 would end the comma line), survives StringToComma followed by
  // CommaToString exactly: every line holding a unit CommaToString would skip
  // or stop at (low byte 1..32, a comma or a quote) is quoted on the way.
  quill::UnicodeString clean;
  for (char16_t c : s) {
    if ((c & 0xFF) == 0) continue;
    if (c == u'\r' || c == u'\n') {
      clean += u"\r\n";
    } else {
      clean.push_back(c);
    }
  }
  const quill::UnicodeString back = quill::Gutils::CommaToString(quill::Gutils::StringToComma(clean));
  if (back != clean) std::abort();
  return 0;
}
