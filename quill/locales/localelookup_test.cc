// Tests of the reverse lookups: on a small injected locale set, on the real
// lists, and round trips LCID -> ISO codes -> TMX codes -> LCID for every
// locale of the list.
#include "quill/locales/localelookup.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "quill/locales/internal/localelist_steps.h"
#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/rtl/casing.h"
#include "quill/rtl/compare.h"
#include "quill/rtl/tstrings.h"
#include "quill/strings/search.h"

namespace quill::Glocales {
namespace {

using internal::ScopedLocaleSource;

const std::vector<UnicodeString> kSmallSet = {u"00000409", u"00000809", u"00000C09", u"0000040D"};

// The first identifier of the list for `opt` whose code (by `code_of`) is
// equal to `code` under CompareText, by a plain walk over the list.
LCID WalkList(TLocaleListOpt opt, const std::function<UnicodeString(LCID)>& code_of, std::u16string_view code) {
  TStringList list;
  GetLocaleList(list, opt);
  for (int32_t i = 0; i < list.Count(); ++i) {
    if (CompareText(code_of(LocaleListLCID(list, i)), code) == 0) return LocaleListLCID(list, i);
  }
  return 0;
}

// The abbreviation lookup: lloPrimary cuts every abbreviation to 2 characters.
TEST(LocaleByAbbrEx, SmallSet) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_EQ(LocaleByAbbrEx(u"EN", lloPrimary), 0x09u);
  EXPECT_EQ(LocaleByAbbrEx(u"ENU", lloPrimary), 0u);
  // Hebrew keeps its full LCID in lloPrimary, but its abbreviation is cut too.
  EXPECT_EQ(LocaleByAbbrEx(u"HE", lloPrimary), 0x040Du);
  EXPECT_EQ(LocaleByAbbrEx(u"HEB", lloPrimary), 0u);
  EXPECT_EQ(LocaleByAbbrEx(u"ENG", lloSub), 0x0809u);
  EXPECT_EQ(LocaleByAbbrEx(u"EN", lloSub), 0u);
  EXPECT_EQ(LocaleByAbbrEx(u"heb", lloSub), 0x040Du);
  EXPECT_EQ(LocaleByAbbrEx(u"XYZ", lloBoth), 0u);
}

// LocaleByAbbr walks lloBoth: the language entry answers to the 2-letter form.
TEST(LocaleByAbbr, BothList) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_EQ(LocaleByAbbr(u"en"), 0x09u);
  EXPECT_EQ(LocaleByAbbr(u"ena"), 0x0C09u);
  EXPECT_EQ(LocaleByAbbr(u"ENU"), 0x0409u);
  EXPECT_EQ(LocaleByAbbr(u""), 0u);
}

// Codes match under CompareText: ASCII letters only are folded.
TEST(LocaleByISOCodes, SmallSetAnyCase) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_EQ(LocaleByISOCodes(u"US en"), 0x0409u);
  EXPECT_EQ(LocaleByISOCodes(u"gb EN"), 0x0809u);
  EXPECT_EQ(LocaleByISOCodes(u" en"), 0x09u);  // the language entry has no country
  EXPECT_EQ(LocaleByISOCodes(u"en-US"), 0u);
  EXPECT_EQ(LocaleByISOCodes(u"US  en"), 0u);
  EXPECT_EQ(LocaleByISOCodes(u"\uFF35S en"), 0u);  // a full-width U is no U
}

// Edge case: the TMX form in other letter cases finds the same LCID.
TEST(LocaleByISOCodesTMX, SmallSetAnyCase) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_EQ(LocaleByISOCodesTMX(u"en-US"), 0x0409u);
  EXPECT_EQ(LocaleByISOCodesTMX(u"EN-us"), 0x0409u);
  EXPECT_EQ(LocaleByISOCodesTMX(u"En-Au"), 0x0C09u);
  EXPECT_EQ(LocaleByISOCodesTMX(u"en"), 0x09u);
  EXPECT_EQ(LocaleByISOCodesTMX(u"he-IL"), 0x040Du);
  EXPECT_EQ(LocaleByISOCodesTMX(u"he"), 0u);  // Hebrew has no language entry
  EXPECT_EQ(LocaleByISOCodesTMX(u"en_US"), 0u);
}

// Country and language codes search lloPrimary only: merged languages have
// no country there.
TEST(LocaleByCountryISOCode, SmallSetPrimaryListOnly) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_EQ(LocaleByCountryISOCode(u"il"), 0x040Du);
  EXPECT_EQ(LocaleByCountryISOCode(u"US"), 0u);
  EXPECT_EQ(LocaleByCountryISOCode(u"GB"), 0u);
  EXPECT_EQ(LocaleByCountryISOCode(u""), 0x09u);
}

TEST(LocaleByISO6391Code, SmallSetPrimaryListOnly) {
  ScopedLocaleSource source(kSmallSet);
  EXPECT_EQ(LocaleByISO6391Code(u"EN"), 0x09u);
  EXPECT_EQ(LocaleByISO6391Code(u"he"), 0x040Du);
  EXPECT_EQ(LocaleByISO6391Code(u"de"), 0u);
  EXPECT_EQ(LocaleByISO6391Code(u""), 0u);
}

// Edge case: an empty name gives the first entry of the lloSub list; a few
// letters find the first locale whose English language name begins with them.
TEST(LocaleByEnglishName, SmallSet) {
  ScopedLocaleSource source({u"0000040D", u"00000409", u"00000809"});
  EXPECT_EQ(LocaleByEnglishName(u""), 0x040Du);
  EXPECT_EQ(LocaleByEnglishName(u"ENG"), 0x0409u);
  EXPECT_EQ(LocaleByEnglishName(u"english"), 0x0409u);
  EXPECT_EQ(LocaleByEnglishName(u"hebrew"), 0x040Du);
  EXPECT_EQ(LocaleByEnglishName(u"hebrews"), 0u);
  EXPECT_EQ(LocaleByEnglishName(u"nglish"), 0u);  // a prefix, not a part
  EXPECT_EQ(LocaleByEnglishName(u"English (United"), 0u);  // the language name, not the display name
}

// On the real list an empty name gives its first entry.
TEST(LocaleByEnglishName, RealEmptyNameIsFirstEntry) {
  TStringList sub;
  GetLocaleList(sub, lloSub);
  ASSERT_GT(sub.Count(), 0);
  EXPECT_EQ(LocaleByEnglishName(u""), LocaleListLCID(sub, 0));
  EXPECT_EQ(LocaleByEnglishName(u"ger"), 0x0407u);
  EXPECT_EQ(LocaleByEnglishName(u"NORWEGIAN"), 0x0414u);
  EXPECT_EQ(LocaleByEnglishName(u"norwegian (n"), 0x0814u);
}

// Only ASCII letters are lower-cased for the comparison: a capital Å does not
// meet the å of "Norwegian (Bokmål)".
TEST(LocaleByEnglishName, AsciiLettersOnlyFold) {
  EXPECT_EQ(LocaleByEnglishName(u"NORWEGIAN (BOKM\u00E5L)"), 0x0414u);
  EXPECT_EQ(LocaleByEnglishName(u"NORWEGIAN (BOKM\u00C5L)"), 0u);
}

// Lookups from several threads at once, starting with no list built, all
// see the same lists and answers.
TEST(ReverseLookups, ConcurrentFirstUse) {
  internal::FreeLocaleLists();
  std::vector<std::thread> threads;
  std::vector<LCID> answers(8);
  for (size_t t = 0; t < answers.size(); ++t) {
    threads.emplace_back([t, &answers] {
      LCID sum = 0;
      for (int i = 0; i < 200; ++i) {
        sum += t % 2 == 0 ? LocaleByISOCodesTMX(u"en-US") : LocaleByAbbr(u"ENU");
        sum += LocaleByCountryISOCode(u"IL");
      }
      answers[t] = sum;
    });
  }
  for (std::thread& th : threads) th.join();
  for (LCID a : answers) EXPECT_EQ(a, 200u * (0x0409u + 0x040Du));
}

// Edge case: en-US in both forms and back, on the real lists.
TEST(LocaleByISOCodesTMX, RealEnglishUnitedStates) {
  EXPECT_EQ(ISOCodesByLocaleTMX(0x0409), u"en-US");
  EXPECT_EQ(ISOCodesByLocale(0x0409), u"US en");
  for (std::u16string_view s : {u"en-US", u"EN-US", u"en-us", u"eN-uS"}) {
    EXPECT_EQ(LocaleByISOCodesTMX(s), 0x0409u) << std::string(s.begin(), s.end());
  }
  EXPECT_EQ(LocaleByISOCodes(u"us EN"), 0x0409u);
  EXPECT_EQ(LocaleByISOCodesTMX(u"en"), 0x09u);
  EXPECT_EQ(LocaleByISOCodesTMX(u"xx-YY"), 0u);
}

// Country lookups on the real lloPrimary list find languages with a single
// locale only: Welsh for GB, not English.
TEST(LocaleByCountryISOCode, RealMergedLanguagesHaveNoCountry) {
  EXPECT_EQ(LocaleByCountryISOCode(u"GB"), WalkList(lloPrimary, CountryISOCodeByLocale, u"GB"));
  EXPECT_EQ(LocaleByCountryISOCode(u"gb"), 0x0452u);
  EXPECT_EQ(LocaleByCountryISOCode(u"IL"), 0x040Du);
  EXPECT_EQ(LocaleByCountryISOCode(u"ZZ"), 0u);
  EXPECT_EQ(LocaleByISO6391Code(u"en"), 0x09u);
  EXPECT_EQ(LocaleByISO6391Code(u"HE"), 0x040Du);
}

// Every indexed lookup answers exactly as a walk over its list with
// CompareText, for the code of every entry of every list and in both cases.
TEST(ReverseLookups, IndexAgreesWithListWalk) {
  struct Kind {
    TLocaleListOpt opt;
    std::function<UnicodeString(LCID)> code_of;
    std::function<LCID(std::u16string_view)> lookup;
  };
  const auto cut2 = [](LCID l) { UnicodeString a = AbbrByLocale(l); if (a.size() > 2) a.resize(2); return a; };
  const std::vector<Kind> kinds = {
      {lloBoth, AbbrByLocale, LocaleByAbbr},
      {lloSub, AbbrByLocale, [](std::u16string_view s) { return LocaleByAbbrEx(s, lloSub); }},
      {lloPrimary, cut2, [](std::u16string_view s) { return LocaleByAbbrEx(s, lloPrimary); }},
      {lloBoth, ISOCodesByLocale, LocaleByISOCodes},
      {lloBoth, ISOCodesByLocaleTMX, LocaleByISOCodesTMX},
      {lloPrimary, CountryISOCodeByLocale, LocaleByCountryISOCode},
      {lloPrimary, ISO6391CodeByLocale, LocaleByISO6391Code},
  };
  int checked = 0;
  for (const Kind& k : kinds) {
    for (TLocaleListOpt opt : {lloPrimary, lloSub, lloBoth}) {
      TStringList list;
      GetLocaleList(list, opt);
      for (int32_t i = 0; i < list.Count(); ++i) {
        const UnicodeString code = k.code_of(LocaleListLCID(list, i));
        for (const UnicodeString& c : {code, LowerCase(code), UpperCase(code)}) {
          ASSERT_EQ(k.lookup(c), WalkList(k.opt, k.code_of, c)) << std::string(c.begin(), c.end());
          ++checked;
        }
      }
    }
  }
  EXPECT_GT(checked, 3000);
}

// LCID -> ISO codes -> TMX codes -> LCID for every locale of the lloBoth list:
// each step lands on the first entry with the same codes, which is the locale
// itself unless an earlier entry shares them (es-ES traditional and
// international sort, for one).
TEST(ReverseLookups, IsoTmxRoundTripEveryLocale) {
  TStringList both;
  GetLocaleList(both, lloBoth);
  int exact = 0;
  for (int32_t i = 0; i < both.Count(); ++i) {
    const LCID start = LocaleListLCID(both, i);
    const UnicodeString iso = ISOCodesByLocale(start);
    const LCID via_iso = LocaleByISOCodes(iso);
    ASSERT_NE(via_iso, 0u) << std::hex << start;
    EXPECT_EQ(ISOCodesByLocale(via_iso), iso);
    const UnicodeString tmx = ISOCodesByLocaleTMX(via_iso);
    const LCID back = LocaleByISOCodesTMX(tmx);
    ASSERT_NE(back, 0u) << std::hex << start;
    EXPECT_EQ(ISOCodesByLocaleTMX(back), tmx);
    EXPECT_EQ(ISOCodesByLocaleTMX(start), tmx) << std::hex << start;
    // The first entry carrying these TMX codes, found by position.
    int32_t first = -1;
    for (int32_t k = 0; k < both.Count() && first < 0; ++k) {
      if (CompareText(ISOCodesByLocaleTMX(LocaleListLCID(both, k)), tmx) == 0) first = k;
    }
    EXPECT_EQ(back, LocaleListLCID(both, first)) << std::hex << start;
    if (first == i) {
      EXPECT_EQ(back, start) << std::hex << start;
      ++exact;
    }
  }
  EXPECT_GT(exact, both.Count() * 9 / 10);
  // Shared codes go to the first: 040A (traditional sort) before 0C0A.
  EXPECT_EQ(LocaleByISOCodesTMX(ISOCodesByLocaleTMX(0x0C0A)), 0x040Au);
}

}  // namespace
}  // namespace quill::Glocales
