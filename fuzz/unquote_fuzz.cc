// UnquotedString on arbitrary bytes, in both forms.
//
// Allowed failures are the documented ones: the base exception class with the
// "not a character" message, EConvertError for a malformed decimal code and
// EGStringsError for a malformed hexadecimal code. For every non-empty text,
// quoting then unquoting must give the text back, unless the quote character
// is one the codes are made of ("#", "$", a digit).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quill/rtl/exception.h"
#include "quill/strings/gstrings.h"

namespace {

namespace gs = quill::Gstrings;

template <class S, class Ch>
void Check(const S& s, Ch quote) {
  try {
    (void)gs::UnquotedString(s, quote);
  } catch (const quill::EConvertError&) {
  } catch (const gs::EGStringsError&) {
  } catch (const quill::Exception& e) {
    // The only other failure: a code beyond the character width.
    const std::u16string_view m = e.Message();
    const std::u16string_view tail = u"\" not a character";
    if (m.size() < tail.size() + 2 || m.front() != u'"' || m.substr(m.size() - tail.size()) != tail) {
      std::abort();
    }
  }
  // The round trip holds for quote characters the "#" codes are not made of.
  const bool code_char = quote == '#' || quote == '$' || (quote >= '0' && quote <= '9');
  if (!s.empty() && !code_char && gs::UnquotedString(gs::QuotedString(s, quote), quote) != s) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const char quote = static_cast<char>(data[0]);
  const std::string s(reinterpret_cast<const char*>(data + 1), size - 1);
  Check(s, quote);
  // UTF-16 form: pairs of bytes as units.
  quill::UnicodeString w;
  for (size_t i = 1; i + 1 < size; i += 2) w.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  Check(w, static_cast<char16_t>(static_cast<unsigned char>(quote)));
  // And the bytes widened one by one, so that "#" codes and quotes are frequent.
  quill::UnicodeString wb;
  for (size_t i = 1; i < size; ++i) wb.push_back(data[i]);
  Check(wb, static_cast<char16_t>(static_cast<unsigned char>(quote)));
  return 0;
}
