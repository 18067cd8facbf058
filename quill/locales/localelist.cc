// Building, caching and copying the three locale lists.
#include "quill/locales/localelist.h"

#include <algorithm>
#include <cstdio>
#include <mutex>

#include "quill/locales/internal/localelist_steps.h"
#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/rtl/casing.h"
#include "quill/strings/convert.h"
#include "quill/strings/slicing.h"

namespace quill::Glocales {
namespace internal {
namespace {

LCID PrimaryOf(const TLocaleEntry& e) { return GetPrimaryLangID(e.Value); }

}  // namespace

TLocaleEntries ScratchLocaleList(std::span<const UnicodeString> locale_strings) {
  TLocaleEntries list;
  for (const UnicodeString& s : locale_strings) {
    if (s.empty()) continue;
    const auto lcid = static_cast<LCID>(Gstrings::HexToInt(s));
    UnicodeString name = LocaleInfo(lcid, LOCALE_SLANGUAGE);
    if (!name.empty()) list.push_back({std::move(name), lcid});
  }
  return list;
}

void MakePrimaryList(TLocaleEntries& list) {
  for (size_t i = 0; i < list.size(); ++i) {
    const LCID p = PrimaryOf(list[i]);
    const auto later = list.begin() + static_cast<std::ptrdiff_t>(i) + 1;
    const auto kept = std::remove_if(later, list.end(), [p](const TLocaleEntry& e) { return PrimaryOf(e) == p; });
    if (kept == list.end()) continue;  // a language with one locale keeps its full entry
    list.erase(kept, list.end());
    list[i].Text = Gstrings::GetBeforeSep(u"(", list[i].Text);
    list[i].Value = p;
  }
}

void MakeBothList(TLocaleEntries& list) {
  // The bound is read on every pass: inserted language entries lengthen the
  // walk, and the last entry is never looked at.
  size_t i = 0;
  while (i + 1 < list.size()) {
    const LCID p = PrimaryOf(list[i]);
    const bool has_language_entry =
        std::any_of(list.begin(), list.end(), [p](const TLocaleEntry& e) { return e.Value == p; });
    if (has_language_entry) {
      ++i;
      continue;
    }
    const bool has_sibling = std::any_of(list.begin() + static_cast<std::ptrdiff_t>(i) + 1, list.end(),
                                         [p](const TLocaleEntry& e) { return PrimaryOf(e) == p; });
    if (!has_sibling) {
      ++i;
      continue;
    }
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(i), {Gstrings::GetBeforeSep(u"(", list[i].Text), p});
    i += 2;
  }
}

TLocaleEntries BuildLocaleList(std::span<const UnicodeString> locale_strings, TLocaleListOpt opt) {
  TLocaleEntries list = ScratchLocaleList(locale_strings);
  if (opt == lloPrimary) MakePrimaryList(list);
  if (opt == lloBoth) MakeBothList(list);
  return list;
}

std::vector<UnicodeString> SystemLocaleStrings() {
  std::vector<UnicodeString> out;
  for (LCID l : EnumSystemLocales()) {
    char buf[12];
    std::snprintf(buf, sizeof buf, "%08X", static_cast<unsigned>(l));
    out.emplace_back(buf, buf + 8);
  }
  return out;
}

UnicodeString FoldCode(std::u16string_view code) {
  UnicodeString out(code);
  for (char16_t& c : out) {
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - (u'a' - u'A'));
  }
  return out;
}

namespace {

std::mutex g_mutex;
std::array<std::shared_ptr<const TCachedLocaleList>, 3> g_lists;
std::function<std::vector<UnicodeString>()> g_source;

std::shared_ptr<const TCachedLocaleList> MakeCachedList(std::span<const UnicodeString> strings, TLocaleListOpt opt) {
  auto cached = std::make_shared<TCachedLocaleList>();
  cached->entries = BuildLocaleList(strings, opt);
  // try_emplace keeps the first entry for each code: the lookups answer with
  // the first match in list order.
  for (const TLocaleEntry& e : cached->entries) {
    UnicodeString abbr = AbbrByLocale(e.Value);
    if (opt == lloPrimary && abbr.size() > 2) abbr.resize(2);
    cached->abbr.try_emplace(FoldCode(abbr), e.Value);
    cached->iso.try_emplace(FoldCode(ISOCodesByLocale(e.Value)), e.Value);
    cached->tmx.try_emplace(FoldCode(ISOCodesByLocaleTMX(e.Value)), e.Value);
    cached->country.try_emplace(FoldCode(CountryISOCodeByLocale(e.Value)), e.Value);
    cached->lang.try_emplace(FoldCode(ISO6391CodeByLocale(e.Value)), e.Value);
    cached->english_lower.push_back(LowerCase(LocaleInfo(e.Value, LOCALE_SENGLANGUAGE)));
  }
  return cached;
}

}  // namespace

std::shared_ptr<const TCachedLocaleList> CachedLocaleList(TLocaleListOpt opt) {
  std::lock_guard lock(g_mutex);
  auto& slot = g_lists.at(opt);
  if (!slot) {
    const std::vector<UnicodeString> strings = g_source ? g_source() : SystemLocaleStrings();
    slot = MakeCachedList(strings, opt);
  }
  return slot;
}

bool LocaleListCached(TLocaleListOpt opt) {
  std::lock_guard lock(g_mutex);
  return g_lists.at(opt) != nullptr;
}

void FreeLocaleLists() {
  std::lock_guard lock(g_mutex);
  for (auto& list : g_lists) list.reset();
}

void SetLocaleSource(std::function<std::vector<UnicodeString>()> source) {
  std::lock_guard lock(g_mutex);
  g_source = std::move(source);
  for (auto& list : g_lists) list.reset();
}

}  // namespace internal

void GetLocaleList(TStrings& List, TLocaleListOpt Opt) {
  const auto cached = internal::CachedLocaleList(Opt);
  List.Clear();
  for (const internal::TLocaleEntry& e : cached->entries) {
    List.AddObject(e.Text, reinterpret_cast<TObject*>(static_cast<uintptr_t>(e.Value)));
  }
}

}  // namespace quill::Glocales
