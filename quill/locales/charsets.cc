#include "quill/locales/charsets.h"

#include "quill/locales/codepages.h"
#include "quill/rtl/syslocale.h"

namespace quill::Glocales {
namespace {

struct CharsetPage {
  uint32_t charset;
  int32_t page;
};

// The system's table, in its order; both lookups take the first match.
constexpr CharsetPage kTable[] = {
    {ANSI_CHARSET, 1252},        {EASTEUROPE_CHARSET, 1250}, {RUSSIAN_CHARSET, 1251},
    {GREEK_CHARSET, 1253},       {TURKISH_CHARSET, 1254},    {HEBREW_CHARSET, 1255},
    {ARABIC_CHARSET, 1256},      {BALTIC_CHARSET, 1257},     {VIETNAMESE_CHARSET, 1258},
    {THAI_CHARSET, 874},         {SHIFTJIS_CHARSET, 932},    {GB2312_CHARSET, 936},
    {HANGEUL_CHARSET, 949},      {CHINESEBIG5_CHARSET, 950}, {JOHAB_CHARSET, 1361},
    {SYMBOL_CHARSET, 42},
};

}  // namespace

uint32_t GetCharSetByCodePage(int32_t CodePage) {
  for (const CharsetPage& e : kTable) {
    if (e.page == CodePage) return e.charset;
  }
  return DEFAULT_CHARSET;
}

int32_t GetCodePageByCharSet(uint32_t CharSet) {
  for (const CharsetPage& e : kTable) {
    if (e.charset == CharSet) return e.page;
  }
  return static_cast<int32_t>(GetACP());
}

uint32_t GetCharSetByLocale(LCID Locale) { return GetCharSetByCodePage(GetCodePageByLocale(Locale)); }

}  // namespace quill::Glocales
