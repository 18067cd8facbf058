// Glocales: converting text between 8-bit code pages and UTF-16.
//
// The conversions take the Windows code page numbers (1252, 932, 65001, ...)
// and never raise: when a page gives nothing (empty text, or a page the
// library has no converter for) they fall back to the runtime's ordinary
// conversion in the default ANSI code page (GetACP()). Bytes a page does not
// define decode to what ICU's table for the page gives (mostly U+FFFD);
// characters a page cannot encode become '?' (there is no best-fit mapping).
//
//   StrToWideByCodePage("\xC3\xA9", 65001);          // u"\u00E9"
//   WideToStrByCodePage(u"\u0416", 1251);             // "\xC6"
//   ConvertWideStrByCodePage(u"Ã©", 1252, 65001);    // u"é": re-reads mis-decoded text
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// Code page numbers with a meaning of their own: 0 the default ANSI page
// (GetACP()), 1 the OEM page (GetOEMCP()), 2 the Macintosh page (10000),
// 3 the calling thread's ANSI page (GetACP()).
inline constexpr int32_t CP_ACP = 0;
inline constexpr int32_t CP_OEMCP = 1;
inline constexpr int32_t CP_MACCP = 2;
inline constexpr int32_t CP_THREAD_ACP = 3;

// True when the conversions convert with `CodePage` itself rather than
// fall back to the default ANSI page: 0..3 and every page with a converter
// except the UTF-16/UTF-32 ones (1200, 1201, 12000, 12001).
[[nodiscard]] QUILL_API bool IsCodePageSupported(int32_t CodePage);

// `S` decoded from `CodePage`. Empty `S`, or a page without a converter
// (negative numbers, 1200/1201 and the other UTF-16/32 pages, unknown
// numbers), gives the ordinary conversion of `S` in the default ANSI page.
// 65001 decodes ill-formed UTF-8 to U+FFFD.
[[nodiscard]] QUILL_API WideString StrToWideByCodePage(std::string_view S, int32_t CodePage);

// `W` encoded in `CodePage`; characters the page lacks become '?'. Empty `W`
// or a page without a converter gives the ordinary conversion of `W` to the
// default ANSI page. The bytes are in `CodePage` whatever the default page
// is (an AnsiString carries no page of its own).
[[nodiscard]] QUILL_API AnsiString WideToStrByCodePage(std::u16string_view W, int32_t CodePage);

// StrToWideByCodePage(WideToStrByCodePage(W, FromCodePage), ToCodePage):
// the characters are encoded in the "from" page and the bytes read as the
// "to" page, which repairs (or makes) text decoded with the wrong page.
[[nodiscard]] QUILL_API WideString ConvertWideStrByCodePage(std::u16string_view W, int32_t FromCodePage,
                                                            int32_t ToCodePage);

// The default ANSI code page of `Locale` (LOCALE_IDEFAULTANSICODEPAGE read
// as a decimal number): GetACP() when the locale is unknown; 0 for a locale
// that has only Unicode (so the conversions then use the default page).
// Raises EConvertError when the locale's text is not a number.
[[nodiscard]] QUILL_API int32_t GetCodePageByLocale(LCID Locale);

// The conversions above with GetCodePageByLocale(Locale) as the page.
[[nodiscard]] QUILL_API WideString StrToWideByLocale(std::string_view S, LCID Locale);
[[nodiscard]] QUILL_API AnsiString WideToStrByLocale(std::u16string_view W, LCID Locale);
// StrToWideByLocale(WideToStrByLocale(W, FromLCID), ToLCID).
[[nodiscard]] QUILL_API WideString ConvertWideStrByLocale(std::u16string_view W, LCID FromLCID, LCID ToLCID);

// UTF-8 text with every line break written as CR LF (Gstrings::AdjustLineBreaks
// between a 65001 decode and encode). Ill-formed UTF-8 comes back as U+FFFD
// (EF BF BD).
[[nodiscard]] QUILL_API AnsiString AdjustLineBreaksUtf8(std::string_view S);

// One code page a user meets, as the conversions know it.
struct TCodePageInfo {
  int32_t CodePage;     // 1252
  const char* Name;     // "Western European (Windows)"
  const char* IcuName;  // the ICU converter behind it, "windows-1252"
  bool SingleByte;      // every character is one byte
};

// The code pages the conversions support and a user meets (Windows ANSI,
// OEM, ISO 8859, KOI8, Macintosh, East Asian and Unicode pages), in
// ascending number. Every entry has a converter.
[[nodiscard]] QUILL_API std::vector<TCodePageInfo> KnownCodePages();

}  // namespace quill::Glocales
