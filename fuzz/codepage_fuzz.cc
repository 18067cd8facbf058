// Code-page conversion and case mapping on arbitrary bytes.
//
// The first byte picks an ANSI code page (single-byte, double-byte, UTF-8,
// stateful); the rest is the text. Checked: nothing crashes or reads out of
// bounds, case mapping keeps the length in both forms, and UTF-16 text without
// lone surrogates survives a UTF-8 round trip.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz/text_checks.h"
#include "quill/rtl/casing.h"
#include "quill/rtl/compare.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace {

constexpr const char* kPages[] = {"1252", "1251", "1254", "932", "936", "949", "950", "65001", "437", "65000"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  static int current = -1;
  const int page = data[0] % (sizeof kPages / sizeof kPages[0]);
  if (page != current) {
    setenv("QUILL_ANSI_CODEPAGE", kPages[page], 1);
    setenv("LC_ALL", (data[0] & 0x80) ? "tr_TR.UTF-8" : "en_US.UTF-8", 1);
    quill::ResetLocaleCache();
    current = page;
  }
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

  const std::u16string wide = quill::AnsiToUnicode(bytes);
  const std::string back = quill::UnicodeToAnsi(wide);
  (void)back;

  if (quill::AnsiUpperCase(bytes).size() != bytes.size()) std::abort();
  if (quill::AnsiLowerCase(bytes).size() != bytes.size()) std::abort();

  // The bytes read as UTF-16 units, too.
  std::u16string units(bytes.size() / 2, u'\0');
  for (size_t i = 0; i < units.size(); ++i) {
    units[i] = static_cast<char16_t>(static_cast<uint8_t>(bytes[2 * i]) | (static_cast<uint8_t>(bytes[2 * i + 1]) << 8));
  }
  if (quill::AnsiUpperCase(units).size() != units.size()) std::abort();
  if (quill::AnsiLowerCase(units).size() != units.size()) std::abort();
  if (!quillfuzz::HasLoneSurrogate(units) && quill::Utf8ToUnicode(quill::UnicodeToUtf8(units)) != units) std::abort();

  const std::u16string from_utf8 = quill::Utf8ToUnicode(bytes);
  if (quillfuzz::HasLoneSurrogate(from_utf8)) std::abort();

  const size_t half = units.size() / 2;
  const std::u16string_view a(units.data(), half);
  const std::u16string_view b(units.data() + half, units.size() - half);
  if ((quill::AnsiCompareText(a, b) == 0) != quill::AnsiSameText(a, b)) std::abort();
  (void)quill::AnsiCompareStr(bytes.substr(0, bytes.size() / 2), bytes.substr(bytes.size() / 2));
  return 0;
}
