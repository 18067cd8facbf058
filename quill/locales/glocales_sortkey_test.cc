// Sort keys: their byte order is the collator's order, case ignored.
#include "quill/locales/sortkey.h"

#include <gtest/gtest.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "quill/locales/codepages.h"
#include "quill/rtl/getmem.h"
#include "quill/rtl/internal/scoped_env_for_test.h"

namespace quill::Glocales {
namespace {

using quill::testing::ScopedEnv;

// A key as a byte string (compares as memcmp, shorter first on a common prefix).
std::string KeyOf(std::string_view s, LCID locale) {
  uint8_t* key = nullptr;
  const int32_t n = GetSortKey(s, locale, key);
  EXPECT_GT(n, 0) << s;
  std::string out(reinterpret_cast<const char*>(key), static_cast<size_t>(n > 0 ? n : 0));
  FreeMem(key);
  return out;
}

// The test's own collator: ICU's for the locale, case ignored.
struct Collator {
  explicit Collator(const char* locale) {
    UErrorCode err = U_ZERO_ERROR;
    c = ucol_open(locale, &err);
    ucol_setStrength(c, UCOL_SECONDARY);
  }
  ~Collator() { ucol_close(c); }
  int Compare(const std::u16string& a, const std::u16string& b) const {
    const UCollationResult r = ucol_strcoll(c, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                            static_cast<int32_t>(b.size()));
    return r == UCOL_LESS ? -1 : r == UCOL_GREATER ? 1 : 0;
  }
  UCollator* c;
};

int Sign(int v) { return v < 0 ? -1 : v > 0 ? 1 : 0; }

void ExpectKeysOrderAsCollator(const std::vector<std::string>& words, LCID locale, int32_t page,
                               const char* icu_locale) {
  Collator coll(icu_locale);
  std::vector<std::string> keys;
  std::vector<std::u16string> texts;
  for (const std::string& w : words) {
    keys.push_back(KeyOf(w, locale));
    texts.push_back(StrToWideByCodePage(w, page));
  }
  // Every pair: the keys compare exactly as the collator compares the texts.
  for (size_t i = 0; i < words.size(); ++i) {
    for (size_t j = 0; j < words.size(); ++j) {
      EXPECT_EQ(Sign(keys[i].compare(keys[j])), coll.Compare(texts[i], texts[j]))
          << words[i] << " / " << words[j];
    }
  }
  // And the whole list sorted by keys is the list sorted by the collator.
  std::vector<size_t> by_key(words.size()), by_coll(words.size());
  for (size_t i = 0; i < words.size(); ++i) by_key[i] = by_coll[i] = i;
  std::stable_sort(by_key.begin(), by_key.end(), [&](size_t a, size_t b) { return keys[a] < keys[b]; });
  std::stable_sort(by_coll.begin(), by_coll.end(),
                   [&](size_t a, size_t b) { return coll.Compare(texts[a], texts[b]) < 0; });
  EXPECT_EQ(by_key, by_coll);
}

TEST(GetSortKey, OrdersAWordListAsTheCollatorDoes) {
  const std::vector<std::string> words = {
      "apple", "Apple", "APPLE", "banana", "\xE4pfel", "\xC4pfel", "zebra", "Zebra", "co-op", "coop",
      "c\xF4te", "cote", "cot\xE9", "c\xF4t\xE9", "resume", "r\xE9sum\xE9", "Resume", "10", "9", "a b",
      "ab", "", " ", "\xDF", "ss", "\xE6", "ae", "\xF8", "o", "\xE5", "z", "Z", "\xF1", "n", "-", "_"};
  ExpectKeysOrderAsCollator(words, 0x0409, 1252, "en_US");
  ExpectKeysOrderAsCollator(words, 0x0407, 1252, "de_DE");
  ExpectKeysOrderAsCollator(words, 0x041D, 1252, "sv_SE");
  ExpectKeysOrderAsCollator(words, 0x040C, 1252, "fr_FR");
}

TEST(GetSortKey, CyrillicWordsInTheLocalesPage) {
  // 0x0419 reads the bytes as code page 1251.
  const std::vector<std::string> words = {"\xE0\xE1\xE2", "\xC0\xC1\xC2", "\xB8\xEB\xEA\xE0", "\xE5\xEB\xEA\xE0",
                                          "\xFF", "\xDF", "abc", "\xE6"};
  ExpectKeysOrderAsCollator(words, 0x0419, 1251, "ru_RU");
}

TEST(GetSortKey, CaseIgnoredAccentsNot) {
  EXPECT_EQ(KeyOf("Hello World", 0x0409), KeyOf("hELLO wORLD", 0x0409));
  EXPECT_NE(KeyOf("resume", 0x0409), KeyOf("r\xE9sum\xE9", 0x0409));
  EXPECT_LT(KeyOf("resume", 0x0409), KeyOf("r\xE9sum\xE9", 0x0409));
}

TEST(GetSortKey, LocaleDecidesTheOrder) {
  // German sorts ä with a; Swedish after z.
  EXPECT_LT(KeyOf("\xE4", 0x0407), KeyOf("z", 0x0407));
  EXPECT_GT(KeyOf("\xE4", 0x041D), KeyOf("z", 0x041D));
}

TEST(GetSortKey, KeyEndsWithZeroByteCountedInTheLength) {
  uint8_t* key = nullptr;
  const int32_t n = GetSortKey("abc", 0x0409, key);
  ASSERT_GT(n, 1);
  EXPECT_EQ(key[n - 1], 0);
  EXPECT_EQ(std::memchr(key, 0, static_cast<size_t>(n - 1)), nullptr);
  FreeMem(key);
}

TEST(GetSortKey, EmptyTextHasAKey) {
  // Edge case: the empty text still has a (short) key, sorting first.
  const std::string empty = KeyOf("", 0x0409);
  EXPECT_FALSE(empty.empty());
  EXPECT_LT(empty, KeyOf("a", 0x0409));
}

TEST(GetSortKey, UnknownLocaleReturnsZeroAndLeavesKeyAlone) {
  // Edge case: failure is 0 and Key keeps the caller's value.
  uint8_t marker = 0;
  uint8_t* key = &marker;
  EXPECT_EQ(GetSortKey("abc", 0xABCD, key), 0);
  EXPECT_EQ(key, &marker);
  EXPECT_EQ(GetSortKey("abc", 0x7F, key), 0);
  EXPECT_EQ(key, &marker);
}

TEST(GetSortKey, KeyStopsAtTheFirstZeroByte) {
  // Deliberate: the block is sized for the whole text but the key covers the
  // text up to its first 0 byte.
  const std::string with_nul("ab\0zz", 5);
  uint8_t* key = nullptr;
  const int32_t n = GetSortKey(with_nul, 0x0409, key);
  ASSERT_GT(n, 0);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(key), static_cast<size_t>(n)), KeyOf("ab", 0x0409));
  FreeMem(key);
  // A 0 byte is ignorable, so "ab" followed by 0 keys as "ab".
  EXPECT_EQ(KeyOf(std::string("ab\0", 3), 0x0409), KeyOf("ab", 0x0409));
}

TEST(GetSortKey, DefaultLocalesResolve) {
  ScopedEnv env{{"QUILL_SYSTEM_LOCALE", "sv-SE"}, {"LANG", "C"}, {"LC_ALL", nullptr}};
  EXPECT_EQ(KeyOf("\xE4pple", LOCALE_SYSTEM_DEFAULT), KeyOf("\xE4pple", 0x041D));
  EXPECT_EQ(KeyOf("\xE4pple", LOCALE_USER_DEFAULT), KeyOf("\xE4pple", 0x041D));
}

}  // namespace
}  // namespace quill::Glocales
