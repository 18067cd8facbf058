// Tests of the three locale lists: the building steps on small injected
// locale sets, the real lists, the cache and its lifetime.
#include "quill/locales/localelist.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "quill/frame/units.h"
#include "quill/locales/internal/localelist_steps.h"
#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/rtl/internal/scoped_env_for_test.h"
#include "quill/rtl/tstrings.h"

namespace quill::Glocales {
namespace {

using internal::BuildLocaleList;
using internal::ScopedLocaleSource;
using internal::TLocaleEntries;

// Three English locales and Hebrew, the only locale of its language.
const std::vector<UnicodeString> kSmallSet = {u"00000409", u"00000809", u"00000C09", u"0000040D"};

TLocaleEntries ListOf(const TStrings& list) {
  TLocaleEntries out;
  for (int32_t i = 0; i < list.Count(); ++i) out.push_back({list.Strings(i), LocaleListLCID(list, i)});
  return out;
}

// Step 1: enumeration order kept, empty strings and nameless locales left out.
TEST(ScratchLocaleList, KeepsOrderSkipsEmptyAndNameless) {
  const std::vector<UnicodeString> strings = {u"00000C09", u"", u"0000ABCD", u"00000409", u"0000040d"};
  const TLocaleEntries expected = {{u"English (Australia)", 0x0C09},
                                   {u"English (United States)", 0x0409},
                                   {u"Hebrew (Israel)", 0x040D}};
  EXPECT_EQ(internal::ScratchLocaleList(strings), expected);
}

// The lloSub list is the scratch list as it stands.
TEST(BuildLocaleList, SubIsScratch) {
  const TLocaleEntries expected = {{u"English (United States)", 0x0409},
                                   {u"English (United Kingdom)", 0x0809},
                                   {u"English (Australia)", 0x0C09},
                                   {u"Hebrew (Israel)", 0x040D}};
  EXPECT_EQ(BuildLocaleList(kSmallSet, lloSub), expected);
}

// Edge case: with 0409, 0809 and 0C09, lloPrimary has one English entry
// carrying 9 and named by the text before "(", while Hebrew keeps its full
// entry and LCID.
TEST(BuildLocaleList, PrimaryMergesLanguages) {
  const TLocaleEntries expected = {{u"English", 0x09}, {u"Hebrew (Israel)", 0x040D}};
  EXPECT_EQ(BuildLocaleList(kSmallSet, lloPrimary), expected);
}

// lloPrimary deletes later entries of a language wherever they are; the
// language entry stays where its first locale was.
TEST(BuildLocaleList, PrimaryDeletesLaterEntriesAnywhere) {
  const std::vector<UnicodeString> strings = {u"0000040D", u"00000809", u"00000407", u"00000409", u"00000807"};
  const TLocaleEntries expected = {{u"Hebrew (Israel)", 0x040D}, {u"English", 0x09}, {u"German", 0x07}};
  EXPECT_EQ(BuildLocaleList(strings, lloPrimary), expected);
}

// Edge case: lloBoth places the language entry directly before the first of
// its locales; Hebrew, with one locale, gets none.
TEST(BuildLocaleList, BothInsertsLanguageBeforeFirstLocale) {
  const TLocaleEntries expected = {{u"English", 0x09},
                                   {u"English (United States)", 0x0409},
                                   {u"English (United Kingdom)", 0x0809},
                                   {u"English (Australia)", 0x0C09},
                                   {u"Hebrew (Israel)", 0x040D}};
  EXPECT_EQ(BuildLocaleList(kSmallSet, lloBoth), expected);
}

// The language entry goes before the first locale, not before a group: the
// list is not regrouped.
TEST(BuildLocaleList, BothDoesNotRegroup) {
  const std::vector<UnicodeString> strings = {u"00000409", u"0000040D", u"00000809"};
  const TLocaleEntries expected = {{u"English", 0x09},
                                   {u"English (United States)", 0x0409},
                                   {u"Hebrew (Israel)", 0x040D},
                                   {u"English (United Kingdom)", 0x0809}};
  EXPECT_EQ(BuildLocaleList(strings, lloBoth), expected);
}

// Edge case: the last entry of the scratch list is never given a language
// entry: a lone last locale stays bare...
TEST(BuildLocaleList, BothLastEntryGetsNoLanguageEntry) {
  const std::vector<UnicodeString> strings = {u"00000409", u"00000809", u"0000040D"};
  const TLocaleEntries both = BuildLocaleList(strings, lloBoth);
  ASSERT_EQ(both.size(), 4u);
  EXPECT_EQ(both.back(), (internal::TLocaleEntry{u"Hebrew (Israel)", 0x040D}));
  EXPECT_EQ(both[2].Value, 0x0809u);
  // ...and a one-entry list is left as it is.
  const std::vector<UnicodeString> one = {u"00000409"};
  EXPECT_EQ(BuildLocaleList(one, lloBoth), BuildLocaleList(one, lloSub));
}

// The walk's end moves with the insertions: a two-locale language at the very
// end still gets its entry.
TEST(BuildLocaleList, BothBoundCountsInsertedEntries) {
  const std::vector<UnicodeString> strings = {u"00000407", u"00000807", u"00000409", u"00000809"};
  const TLocaleEntries both = BuildLocaleList(strings, lloBoth);
  ASSERT_EQ(both.size(), 6u);
  EXPECT_EQ(both[0], (internal::TLocaleEntry{u"German", 0x07}));
  EXPECT_EQ(both[3], (internal::TLocaleEntry{u"English", 0x09}));
  EXPECT_EQ(both[4].Value, 0x0409u);
}

// A language whose identifier some entry already carries gets no second
// language entry (here a neutral locale in the set carries it).
TEST(BuildLocaleList, BothSkipsLanguageAlreadyCarried) {
  const std::vector<UnicodeString> strings = {u"00000409", u"00000009", u"00000809"};
  EXPECT_EQ(BuildLocaleList(strings, lloBoth), BuildLocaleList(strings, lloSub));
}

// GetLocaleList copies the cached list for the option, replacing the
// caller's contents.
TEST(GetLocaleList, CopiesCachedListOverContents) {
  ScopedLocaleSource source(kSmallSet);
  TStringList list;
  list.Add(u"old line");
  GetLocaleList(list, lloPrimary);
  EXPECT_EQ(ListOf(list), BuildLocaleList(kSmallSet, lloPrimary));
  GetLocaleList(list, lloBoth);
  EXPECT_EQ(ListOf(list), BuildLocaleList(kSmallSet, lloBoth));
  GetLocaleList(list, lloSub);
  EXPECT_EQ(ListOf(list), BuildLocaleList(kSmallSet, lloSub));
}

// Each list is built once per option and not refreshed: a later change of the
// system language does not reach it until the lists are freed.
TEST(GetLocaleList, BuiltOnceAndKept) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_FALSE(internal::LocaleListCached(lloSub));
  TStringList list;
  GetLocaleList(list, lloSub);
  EXPECT_TRUE(internal::LocaleListCached(lloSub));
  EXPECT_FALSE(internal::LocaleListCached(lloPrimary));
  testing::ScopedEnv env({{"QUILL_SYSTEM_LOCALE", "de-DE"}});
  GetLocaleList(list, lloSub);
  EXPECT_EQ(list.Strings(0), u"English (United States)");
  internal::FreeLocaleLists();
  GetLocaleList(list, lloSub);
  EXPECT_EQ(list.Strings(0), u"Englisch (Vereinigte Staaten)");
}

// The unit's last stop frees the lists; the next request builds them again.
TEST(GetLocaleList, FreedAtUnitShutdownAndRebuilt) {
  ScopedLocaleSource source(kSmallSet);
  TStringList list;
  for (TLocaleListOpt opt : {lloPrimary, lloSub, lloBoth}) GetLocaleList(list, opt);
  const int32_t before = StartCount();
  initialization();
  EXPECT_TRUE(internal::LocaleListCached(lloBoth));
  Finalization();
  ASSERT_EQ(StartCount(), before);
  if (before == 0) {
    EXPECT_FALSE(internal::LocaleListCached(lloPrimary));
    EXPECT_FALSE(internal::LocaleListCached(lloSub));
    EXPECT_FALSE(internal::LocaleListCached(lloBoth));
  }
  GetLocaleList(list, lloBoth);
  EXPECT_TRUE(internal::LocaleListCached(lloBoth));
  EXPECT_EQ(ListOf(list), BuildLocaleList(kSmallSet, lloBoth));
}

// The real lists: lloSub is every supported locale in ascending order.
TEST(GetLocaleList, RealSubListIsEnumeration) {
  TStringList list;
  GetLocaleList(list, lloSub);
  const std::vector<LCID> all = EnumSystemLocales();
  ASSERT_EQ(list.Count(), static_cast<int32_t>(all.size()));
  for (int32_t i = 0; i < list.Count(); ++i) {
    EXPECT_EQ(LocaleListLCID(list, i), all[i]);
    EXPECT_EQ(list.Strings(i), LocaleInfo(all[i], LOCALE_SLANGUAGE));
  }
}

// The real lloPrimary list: one entry per primary language; the bare
// identifier exactly for languages with several locales.
TEST(GetLocaleList, RealPrimaryListOneEntryPerLanguage) {
  std::map<LCID, int> locales_per_language;
  for (LCID l : EnumSystemLocales()) ++locales_per_language[GetPrimaryLangID(l)];
  TStringList list;
  GetLocaleList(list, lloPrimary);
  ASSERT_EQ(list.Count(), static_cast<int32_t>(locales_per_language.size()));
  std::set<LCID> seen;
  for (int32_t i = 0; i < list.Count(); ++i) {
    const LCID v = LocaleListLCID(list, i);
    const LCID p = GetPrimaryLangID(v);
    EXPECT_TRUE(seen.insert(p).second) << std::hex << v;
    if (locales_per_language[p] > 1) {
      EXPECT_EQ(v, p);
      EXPECT_EQ(list.Strings(i).find(u'('), UnicodeString::npos);
    } else {
      EXPECT_NE(v, p);
      EXPECT_EQ(list.Strings(i), LocaleInfo(v, LOCALE_SLANGUAGE));
    }
  }
  // English has several locales, Hebrew one.
  EXPECT_GE(list.IndexOfObject(reinterpret_cast<TObject*>(uintptr_t{0x09})), 0);
  EXPECT_GE(list.IndexOfObject(reinterpret_cast<TObject*>(uintptr_t{0x040D})), 0);
}

// The real lloBoth list: lloSub plus one language entry directly before the
// first locale of each language with several locales.
TEST(GetLocaleList, RealBothListAddsLanguageEntries) {
  TStringList sub;
  TStringList both;
  GetLocaleList(sub, lloSub);
  GetLocaleList(both, lloBoth);
  std::map<LCID, int> locales_per_language;
  for (int32_t i = 0; i < sub.Count(); ++i) ++locales_per_language[GetPrimaryLangID(LocaleListLCID(sub, i))];
  int32_t languages = 0;
  std::set<LCID> done;
  int32_t k = 0;
  for (int32_t i = 0; i < sub.Count(); ++i) {
    const LCID l = LocaleListLCID(sub, i);
    const LCID p = GetPrimaryLangID(l);
    if (locales_per_language[p] > 1 && done.insert(p).second) {
      ++languages;
      ASSERT_LT(k, both.Count());
      EXPECT_EQ(LocaleListLCID(both, k), p);
      ++k;
    }
    ASSERT_LT(k, both.Count());
    EXPECT_EQ(LocaleListLCID(both, k), l);
    EXPECT_EQ(both.Strings(k), sub.Strings(i));
    ++k;
  }
  EXPECT_EQ(both.Count(), sub.Count() + languages);
  EXPECT_GT(languages, 20);
}

}  // namespace
}  // namespace quill::Glocales
