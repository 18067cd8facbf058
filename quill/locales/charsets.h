// Glocales: GDI character sets and the code pages they stand for.
//
// The pairs are the system's standard character-set table (TranslateCharsetInfo):
// ANSI_CHARSET 0 <-> 1252, EASTEUROPE_CHARSET 238 <-> 1250,
// RUSSIAN_CHARSET 204 <-> 1251, GREEK_CHARSET 161 <-> 1253,
// TURKISH_CHARSET 162 <-> 1254, HEBREW_CHARSET 177 <-> 1255,
// ARABIC_CHARSET 178 <-> 1256, BALTIC_CHARSET 186 <-> 1257,
// VIETNAMESE_CHARSET 163 <-> 1258, THAI_CHARSET 222 <-> 874,
// SHIFTJIS_CHARSET 128 <-> 932, GB2312_CHARSET 134 <-> 936,
// HANGEUL_CHARSET 129 <-> 949, CHINESEBIG5_CHARSET 136 <-> 950,
// JOHAB_CHARSET 130 <-> 1361, SYMBOL_CHARSET 2 <-> 42 (CP_SYMBOL).
// DEFAULT_CHARSET (1), OEM_CHARSET (255) and MAC_CHARSET (77) name no page.
//
//   GetCharSetByCodePage(1251);   // 204
//   GetCodePageByCharSet(128);    // 932
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

inline constexpr uint32_t ANSI_CHARSET = 0;
inline constexpr uint32_t DEFAULT_CHARSET = 1;
inline constexpr uint32_t SYMBOL_CHARSET = 2;
inline constexpr uint32_t MAC_CHARSET = 77;
inline constexpr uint32_t SHIFTJIS_CHARSET = 128;
inline constexpr uint32_t HANGEUL_CHARSET = 129;
inline constexpr uint32_t JOHAB_CHARSET = 130;
inline constexpr uint32_t GB2312_CHARSET = 134;
inline constexpr uint32_t CHINESEBIG5_CHARSET = 136;
inline constexpr uint32_t GREEK_CHARSET = 161;
inline constexpr uint32_t TURKISH_CHARSET = 162;
inline constexpr uint32_t VIETNAMESE_CHARSET = 163;
inline constexpr uint32_t HEBREW_CHARSET = 177;
inline constexpr uint32_t ARABIC_CHARSET = 178;
inline constexpr uint32_t BALTIC_CHARSET = 186;
inline constexpr uint32_t RUSSIAN_CHARSET = 204;
inline constexpr uint32_t THAI_CHARSET = 222;
inline constexpr uint32_t EASTEUROPE_CHARSET = 238;
inline constexpr uint32_t OEM_CHARSET = 255;

// The character set of `CodePage`; DEFAULT_CHARSET (1) for a page the table
// does not list (also 0, 65001 and negative numbers).
[[nodiscard]] QUILL_API uint32_t GetCharSetByCodePage(int32_t CodePage);

// The code page of `CharSet`; GetACP() for a character set the table does
// not list (DEFAULT_CHARSET, OEM_CHARSET, MAC_CHARSET, unknown numbers).
[[nodiscard]] QUILL_API int32_t GetCodePageByCharSet(uint32_t CharSet);

// GetCharSetByCodePage(GetCodePageByLocale(Locale)); raises as
// GetCodePageByLocale does.
[[nodiscard]] QUILL_API uint32_t GetCharSetByLocale(LCID Locale);

}  // namespace quill::Glocales
