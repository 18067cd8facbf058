// Right-to-left detection by platform family.
#include "quill/locales/middleeast.h"

#include <unicode/uchar.h>

#include <string>

#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/rtl/unicode.h"
#include "quill/strings/convert.h"

namespace quill::Glocales {
namespace {

constexpr uint64_t kRightToLeftLanguages = 0x20140002002ull;

bool ByLanguage(LCID Locale) {
  const LCID primary = GetPrimaryLangID(Locale);
  return primary < 64 && ((kRightToLeftLanguages >> primary) & 1) != 0;
}

bool StronglyRightToLeft(UChar32 c) {
  const UCharDirection d = u_charDirection(c);
  return d == U_RIGHT_TO_LEFT || d == U_RIGHT_TO_LEFT_ARABIC;
}

}  // namespace

bool IsMiddleEast(LCID Locale) {
  const UnicodeString page = LocaleInfo(Locale, LOCALE_IDEFAULTANSICODEPAGE);
  if (page.empty()) return false;  // the system cannot classify for an unknown locale
  // The table of 16-bit values 0x80..0xFF is handed over as 128 bytes, which
  // on the little-endian machines it was written for are each value's low
  // byte and a 0; they are laid out here explicitly.
  std::string bytes;
  for (int v = 0x80; v < 0xC0; ++v) {
    bytes.push_back(static_cast<char>(v));
    bytes.push_back('\0');
  }
  const auto codepage = static_cast<TCodePage>(Gstrings::SafeStrToInt(page));
  const UnicodeString chars = AnsiToUnicode(bytes, codepage);
  for (size_t i = 0; i < chars.size(); ++i) {
    UChar32 c = chars[i];
    if (U16_IS_LEAD(c) && i + 1 < chars.size() && U16_IS_TRAIL(chars[i + 1])) {
      c = U16_GET_SUPPLEMENTARY(c, chars[i + 1]);
      ++i;
    }
    if (StronglyRightToLeft(c)) return true;
  }
  return false;
}

bool IsMiddleEastFor(LCID Locale, uint32_t PlatformId) {
  return PlatformId == VER_PLATFORM_WIN32_NT ? IsMiddleEast(Locale) : ByLanguage(Locale);
}

}  // namespace quill::Glocales
