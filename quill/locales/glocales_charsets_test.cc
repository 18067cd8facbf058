// Character sets and code pages: the standard table both ways.
#include "quill/locales/charsets.h"

#include <gtest/gtest.h>

#include <utility>

#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill::Glocales {
namespace {

using quill::testing::ScopedEnv;

constexpr std::pair<uint32_t, int32_t> kPairs[] = {
    {0, 1252},   {238, 1250}, {204, 1251}, {161, 1253}, {162, 1254}, {177, 1255},
    {178, 1256}, {186, 1257}, {163, 1258}, {222, 874},  {128, 932},  {134, 936},
    {129, 949},  {136, 950},  {130, 1361}, {2, 42},
};

TEST(GetCharSetByCodePage, EveryPageOfTheTable) {
  for (const auto& [charset, page] : kPairs) {
    EXPECT_EQ(GetCharSetByCodePage(page), charset) << page;
  }
}

TEST(GetCharSetByCodePage, UnknownPageGivesDefaultCharset) {
  // Edge case: a page the system does not know gives 1 (DEFAULT_CHARSET).
  for (int32_t page : {0, 1, 437, 850, 65001, 28591, 12345, -1}) {
    EXPECT_EQ(GetCharSetByCodePage(page), DEFAULT_CHARSET) << page;
  }
}

TEST(GetCodePageByCharSet, EveryCharsetOfTheTable) {
  for (const auto& [charset, page] : kPairs) {
    EXPECT_EQ(GetCodePageByCharSet(charset), page) << charset;
  }
}

TEST(GetCodePageByCharSet, UnknownCharsetGivesTheDefaultAnsiPage) {
  // Edge case: DEFAULT_CHARSET, OEM_CHARSET, MAC_CHARSET and unknown numbers
  // give GetACP(), here pinned to a page no charset above would give.
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "28592"}};
  for (uint32_t charset : {DEFAULT_CHARSET, OEM_CHARSET, MAC_CHARSET, 3u, 1000u}) {
    EXPECT_EQ(GetCodePageByCharSet(charset), 28592) << charset;
  }
}

TEST(GetCharSetByLocale, ThroughTheLocalesPage) {
  EXPECT_EQ(GetCharSetByLocale(0x0409), ANSI_CHARSET);
  EXPECT_EQ(GetCharSetByLocale(0x0419), RUSSIAN_CHARSET);
  EXPECT_EQ(GetCharSetByLocale(0x0411), SHIFTJIS_CHARSET);
  EXPECT_EQ(GetCharSetByLocale(0x0405), EASTEUROPE_CHARSET);
  EXPECT_EQ(GetCharSetByLocale(0x041E), THAI_CHARSET);
  // A Unicode-only locale has page 0, which no charset stands for.
  EXPECT_EQ(GetCharSetByLocale(0x042B), DEFAULT_CHARSET);
  // An unknown locale: GetACP()'s charset.
  ScopedEnv env{{"QUILL_ANSI_CODEPAGE", "1253"}};
  EXPECT_EQ(GetCharSetByLocale(0xABCD), GREEK_CHARSET);
}

}  // namespace
}  // namespace quill::Glocales
