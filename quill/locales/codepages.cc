#include "quill/locales/codepages.h"

#include <string>

#include "quill/locales/internal/localesource.h"
#include "quill/locales/localeinfo.h"
#include "quill/rtl/internal/converter.h"
#include "quill/rtl/intconv.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"
#include "quill/strings/linebreaks.h"

namespace quill::Glocales {

namespace internal {

UnicodeString AnsiCodePageText(LCID Locale) { return LocaleInfo(Locale, LOCALE_IDEFAULTANSICODEPAGE); }

int32_t CodePageFromText(const UnicodeString& Text) {
  if (Text.empty()) return static_cast<int32_t>(GetACP());
  return StrToInt(Text);
}

}  // namespace internal

namespace {

// The page a number stands for, or -1 when the conversions have no converter
// for it (the caller then falls back to the ordinary conversion).
int64_t ConvertiblePage(int32_t CodePage) {
  switch (CodePage) {
    case CP_ACP:
    case CP_THREAD_ACP: return GetACP();
    case CP_OEMCP: return GetOEMCP();
    case CP_MACCP: return 10000;
    // UTF-16 and UTF-32 are no 8-bit encodings: the system's converter
    // refuses them, and so does this one.
    case 1200:
    case 1201:
    case 12000:
    case 12001: return -1;
    default: break;
  }
  if (CodePage < 0) return -1;
  return IsValidCodePage(static_cast<TCodePage>(CodePage)) ? CodePage : -1;
}

}  // namespace

bool IsCodePageSupported(int32_t CodePage) { return ConvertiblePage(CodePage) >= 0; }

WideString StrToWideByCodePage(std::string_view S, int32_t CodePage) {
  const int64_t page = ConvertiblePage(CodePage);
  // Nothing to convert, or no converter: the ordinary conversion.
  if (S.empty() || page < 0) return AnsiToUnicode(S, CP_ACP);
  return AnsiToUnicode(S, static_cast<TCodePage>(page));
}

AnsiString WideToStrByCodePage(std::u16string_view W, int32_t CodePage) {
  const int64_t page = ConvertiblePage(CodePage);
  if (W.empty() || page < 0) return UnicodeToAnsi(W, quill::CP_ACP);
  return UnicodeToAnsi(W, static_cast<TCodePage>(page));
}

WideString ConvertWideStrByCodePage(std::u16string_view W, int32_t FromCodePage, int32_t ToCodePage) {
  return StrToWideByCodePage(WideToStrByCodePage(W, FromCodePage), ToCodePage);
}

int32_t GetCodePageByLocale(LCID Locale) {
  return internal::CodePageFromText(internal::AnsiCodePageText(Locale));
}

WideString StrToWideByLocale(std::string_view S, LCID Locale) {
  return StrToWideByCodePage(S, GetCodePageByLocale(Locale));
}

AnsiString WideToStrByLocale(std::u16string_view W, LCID Locale) {
  return WideToStrByCodePage(W, GetCodePageByLocale(Locale));
}

WideString ConvertWideStrByLocale(std::u16string_view W, LCID FromLCID, LCID ToLCID) {
  return StrToWideByLocale(WideToStrByLocale(W, FromLCID), ToLCID);
}

AnsiString AdjustLineBreaksUtf8(std::string_view S) {
  return WideToStrByCodePage(Gstrings::AdjustLineBreaks(StrToWideByCodePage(S, CP_UTF8)), CP_UTF8);
}

namespace {

struct PageName {
  int32_t page;
  const char* name;
};

constexpr PageName kKnownPages[] = {
    {437, "OEM United States"},
    {737, "OEM Greek"},
    {775, "OEM Baltic"},
    {850, "OEM Multilingual Latin 1"},
    {852, "OEM Latin 2"},
    {855, "OEM Cyrillic"},
    {857, "OEM Turkish"},
    {858, "OEM Multilingual Latin 1 + Euro"},
    {860, "OEM Portuguese"},
    {861, "OEM Icelandic"},
    {862, "OEM Hebrew"},
    {863, "OEM French Canadian"},
    {864, "OEM Arabic"},
    {865, "OEM Nordic"},
    {866, "OEM Russian"},
    {869, "OEM Modern Greek"},
    {874, "Thai (Windows)"},
    {932, "Japanese (Shift-JIS)"},
    {936, "Chinese Simplified (GBK)"},
    {949, "Korean (Unified Hangul Code)"},
    {950, "Chinese Traditional (Big5)"},
    {1250, "Central European (Windows)"},
    {1251, "Cyrillic (Windows)"},
    {1252, "Western European (Windows)"},
    {1253, "Greek (Windows)"},
    {1254, "Turkish (Windows)"},
    {1255, "Hebrew (Windows)"},
    {1256, "Arabic (Windows)"},
    {1257, "Baltic (Windows)"},
    {1258, "Vietnamese (Windows)"},
    {10000, "Western European (Mac)"},
    {10006, "Greek (Mac)"},
    {10007, "Cyrillic (Mac)"},
    {10029, "Central European (Mac)"},
    {10081, "Turkish (Mac)"},
    {20127, "US-ASCII"},
    {20866, "Cyrillic (KOI8-R)"},
    {20932, "Japanese (EUC, JIS X 0208 and 0212)"},
    {21866, "Cyrillic (KOI8-U)"},
    {28591, "Western European (ISO 8859-1)"},
    {28592, "Central European (ISO 8859-2)"},
    {28593, "Latin 3 (ISO 8859-3)"},
    {28594, "Baltic (ISO 8859-4)"},
    {28595, "Cyrillic (ISO 8859-5)"},
    {28596, "Arabic (ISO 8859-6)"},
    {28597, "Greek (ISO 8859-7)"},
    {28598, "Hebrew, visual (ISO 8859-8)"},
    {28599, "Turkish (ISO 8859-9)"},
    {28603, "Estonian (ISO 8859-13)"},
    {28605, "Latin 9 (ISO 8859-15)"},
    {38598, "Hebrew, logical (ISO 8859-8-I)"},
    {50220, "Japanese (JIS, ISO-2022-JP)"},
    {50225, "Korean (ISO-2022-KR)"},
    {51932, "Japanese (EUC-JP)"},
    {51949, "Korean (EUC-KR)"},
    {52936, "Chinese Simplified (HZ)"},
    {54936, "Chinese Simplified (GB18030)"},
    {65000, "Unicode (UTF-7)"},
    {65001, "Unicode (UTF-8)"},
};

}  // namespace

std::vector<TCodePageInfo> KnownCodePages() {
  std::vector<TCodePageInfo> out;
  out.reserve(std::size(kKnownPages));
  for (const PageName& p : kKnownPages) {
    const auto page = static_cast<TCodePage>(p.page);
    const quill::internal::CodePageConverter& cp = quill::internal::ConverterFor(page);
    if (cp.conv == nullptr) continue;  // an ICU built without the page
    out.push_back({p.page, p.name, quill::internal::IcuConverterName(page), cp.single_byte});
  }
  return out;
}

}  // namespace quill::Glocales
