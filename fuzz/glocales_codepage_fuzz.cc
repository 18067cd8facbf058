// Fuzz target: Glocales' code-page conversions on every known page, with
// arbitrary bytes and arbitrary UTF-16.
//
// The first byte picks a page of KnownCodePages(); the rest is the text, read
// once as bytes and once as UTF-16 units. Checked besides memory safety:
// single-byte pages give one unit per byte and agree with ICU's own
// converter (apart from the three controls the library maps straight on
// IBM-flavoured pages); what a page decoded from its bytes encodes back to
// the same bytes on single-byte pages without undefined bytes; 65001 never
// yields a lone surrogate.
#include <unicode/ucnv.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/text_checks.h"
#include "quill/locales/codepages.h"

namespace {

using quill::Glocales::TCodePageInfo;

const std::vector<TCodePageInfo>& Pages() {
  static const std::vector<TCodePageInfo> pages = quill::Glocales::KnownCodePages();
  return pages;
}

// ICU's own decoding of `bytes` (the caller maps the three IBM controls).
std::u16string IcuDecode(const char* name, std::string_view bytes) {
  UErrorCode err = U_ZERO_ERROR;
  UConverter* c = ucnv_open(name, &err);
  std::u16string out(bytes.size() * 2 + 4, u'\0');
  const int32_t n = ucnv_toUChars(c, out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                                  static_cast<int32_t>(bytes.size()), &err);
  ucnv_close(c);
  out.resize(U_SUCCESS(err) ? static_cast<size_t>(n) : 0);
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quill::Glocales;
  if (size == 0) return 0;
  const TCodePageInfo& page = Pages()[data[0] % Pages().size()];
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

  const std::u16string wide = StrToWideByCodePage(bytes, page.CodePage);
  const std::string back = WideToStrByCodePage(wide, page.CodePage);
  if (page.SingleByte) {
    if (wide.size() != bytes.size()) std::abort();
    std::u16string icu = IcuDecode(page.IcuName, bytes);
    for (size_t i = 0; i < icu.size() && i < bytes.size(); ++i) {
      const auto b = static_cast<unsigned char>(bytes[i]);
      if ((b == 0x1A || b == 0x1C || b == 0x7F) && icu[i] != b) icu[i] = b;  // the straight controls
    }
    if (icu != wide) std::abort();
    if (wide.find(u'\uFFFD') == std::u16string::npos && back != bytes) std::abort();
  }
  if (page.CodePage == 65001 && quillfuzz::HasLoneSurrogate(wide)) std::abort();

  // The bytes read as UTF-16 units.
  std::u16string units(bytes.size() / 2, u'\0');
  for (size_t i = 0; i < units.size(); ++i) {
    units[i] = static_cast<char16_t>(static_cast<uint8_t>(bytes[2 * i]) | (static_cast<uint8_t>(bytes[2 * i + 1]) << 8));
  }
  const std::string encoded = WideToStrByCodePage(units, page.CodePage);
  if (page.SingleByte && encoded.size() > units.size()) std::abort();
  (void)StrToWideByCodePage(encoded, page.CodePage);
  (void)ConvertWideStrByCodePage(units, page.CodePage, 65001);
  (void)AdjustLineBreaksUtf8(bytes);
  return 0;
}
