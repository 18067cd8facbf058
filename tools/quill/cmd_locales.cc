// quill locale: locale identity, lists and lookups (Glocales).
//
//   quill locale info LCID|TAG                    every locale fact of one locale
//   quill locale list [--primary|--sub|--both] [--json]
//   quill locale find TEXT                        finds locales by ISO codes (both forms),
//                                                 abbreviation, country or language code,
//                                                 or the start of the English language name
//
// LCID is hexadecimal ("0409", "0x0409"; a value is read as hexadecimal when
// it starts with 0x or holds a decimal digit); anything else is a language
// tag ("en-US", "de", "sr-Latn-RS"). Status 1 when the locale is not known or
// `find` finds nothing, 2 for an LCID that is not hexadecimal.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "quill/locales/glocales.h"
#include "quill/rtl/localefacts.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/unicode.h"
#include "tools/quill/commands.h"
#include "tools/quill/io.h"

namespace quilltool {
namespace {

using namespace quill::Glocales;
using quill::LCID;

std::string Utf8(const quill::UnicodeString& s) { return quill::UnicodeToUtf8(s); }

std::string Hex(uint64_t v, int digits = 4) {
  char buf[24];
  std::snprintf(buf, sizeof buf, "0x%0*llX", digits, static_cast<unsigned long long>(v));
  return buf;
}

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// An LCID written in hexadecimal, or 0 with `is_lcid` false for a tag.
LCID ParseLcid(const std::string& arg, bool& is_lcid) {
  std::string text = arg;
  const bool prefixed = text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  bool has_digit = false;
  for (char c : text) has_digit = has_digit || (c >= '0' && c <= '9');
  is_lcid = prefixed || has_digit;
  if (!is_lcid) return 0;
  if (prefixed) text.erase(0, 2);
  if (text.empty() || text.size() > 8) throw ToolError(kExitUsage, "\"" + arg + "\" is not a hexadecimal LCID");
  LCID v = 0;
  for (char c : text) {
    if (!IsHexDigit(c)) throw ToolError(kExitUsage, "\"" + arg + "\" is not a hexadecimal LCID");
    v = (v << 4) | static_cast<LCID>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
  }
  return v;
}

// The locale whose tag is `tag` (ASCII case ignored, '_' read as '-'), the
// lowest LCID when several share it; 0 when none.
LCID LcidByTag(const std::string& tag) {
  const quill::WinLocaleFact* fact = quill::FindLocaleFactByTag(tag);
  return fact == nullptr ? 0 : fact->lcid;
}

LCID ResolveArgument(const std::string& text) {
  bool is_lcid = false;
  const LCID lcid = ParseLcid(text, is_lcid);
  if (is_lcid) {
    if (LocaleInfo(lcid, LOCALE_SNAME).empty()) throw ToolError(kExitDataError, "locale " + Hex(lcid) + " is not known");
    return lcid;
  }
  const LCID found = LcidByTag(text);
  if (found == 0) throw ToolError(kExitDataError, "locale \"" + text + "\" is not known");
  return found;
}

void PrintInfo(LCID lcid) {
  std::ostream& out = Stdout();
  struct Type {
    const char* name;
    uint32_t type;
  };
  const Type types[] = {
      {"LOCALE_SNAME", LOCALE_SNAME},
      {"LOCALE_ILANGUAGE", LOCALE_ILANGUAGE},
      {"LOCALE_SLANGUAGE", LOCALE_SLANGUAGE},
      {"LOCALE_SENGLISHDISPLAYNAME", LOCALE_SENGLISHDISPLAYNAME},
      {"LOCALE_SENGLANGUAGE", LOCALE_SENGLANGUAGE},
      {"LOCALE_SNATIVELANGNAME", LOCALE_SNATIVELANGNAME},
      {"LOCALE_SABBREVLANGNAME", LOCALE_SABBREVLANGNAME},
      {"LOCALE_SISO639LANGNAME", LOCALE_SISO639LANGNAME},
      {"LOCALE_SISO3166CTRYNAME", LOCALE_SISO3166CTRYNAME},
      {"LOCALE_SCOUNTRY", LOCALE_SCOUNTRY},
      {"LOCALE_SENGCOUNTRY", LOCALE_SENGCOUNTRY},
      {"LOCALE_SNATIVECTRYNAME", LOCALE_SNATIVECTRYNAME},
      {"LOCALE_IDEFAULTANSICODEPAGE", LOCALE_IDEFAULTANSICODEPAGE},
      {"LOCALE_IDEFAULTCODEPAGE", LOCALE_IDEFAULTCODEPAGE},
  };
  auto line = [&out](const std::string& name, const std::string& value) {
    out << name << std::string(name.size() < 28 ? 28 - name.size() : 1, ' ') << value << '\n';
  };
  line("LCID", Hex(lcid));
  for (const Type& t : types) line(t.name, Utf8(LocaleInfo(lcid, t.type)));
  line("LocaleEngName", Utf8(LocaleEngName(lcid)));
  line("AbbrByLocale", Utf8(AbbrByLocale(lcid)));
  line("ISOCodesByLocale", "\"" + Utf8(ISOCodesByLocale(lcid)) + "\"");
  line("ISOCodesByLocaleTMX", Utf8(ISOCodesByLocaleTMX(lcid)));
  line("GetLocaleSLanguage", Utf8(GetLocaleSLanguage(lcid)));
  line("IsMiddleEast", IsMiddleEast(lcid) ? "true" : "false");
  line("GetKLByLocale", Hex(GetKLByLocale(static_cast<uint16_t>(lcid & 0xFFFF)), 8));
}

std::string JsonString(const std::string& s) {
  std::string out = "\"";
  for (unsigned char c : s) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", c);
      out += buf;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

void PrintList(TLocaleListOpt opt, bool json) {
  quill::TStringList list;
  GetLocaleList(list, opt);
  std::ostream& out = Stdout();
  if (json) out << "[\n";
  for (int32_t i = 0; i < list.Count(); ++i) {
    const LCID lcid = LocaleListLCID(list, i);
    const std::string name = Utf8(list.Strings(i));
    if (json) {
      out << "  {\"lcid\": " << lcid << ", \"hex\": \"" << Hex(lcid) << "\", \"name\": " << JsonString(name) << "}"
          << (i + 1 < list.Count() ? ",\n" : "\n");
    } else {
      out << Hex(lcid) << '\t' << name << '\n';
    }
  }
  if (json) out << "]\n";
}

// One line per kind of code or name that finds a locale; false when none does.
bool PrintFound(const std::string& text) {
  const quill::UnicodeString t = quill::Utf8ToUnicode(text);
  struct Kind {
    const char* what;
    LCID found;
  };
  const Kind kinds[] = {
      {"TMX codes", LocaleByISOCodesTMX(t)},       {"ISO codes", LocaleByISOCodes(t)},
      {"abbreviation", LocaleByAbbr(t)},           {"country code", LocaleByCountryISOCode(t)},
      {"ISO 639-1 code", LocaleByISO6391Code(t)},  {"English name", LocaleByEnglishName(t)},
  };
  bool any = false;
  std::ostream& out = Stdout();
  for (const Kind& k : kinds) {
    if (k.found == 0) continue;
    any = true;
    const std::string what = k.what;
    out << what << std::string(16 - what.size(), ' ') << Hex(k.found) << "  " << Utf8(LocaleInfo(k.found, LOCALE_SNAME))
        << "  " << Utf8(LocaleEngName(k.found)) << '\n';
  }
  return any;
}

}  // namespace

void RegisterLocaleCommands(CLI::App& app) {
  auto* locale = app.add_subcommand("locale", "Locale facts, lists and lookups");
  locale->require_subcommand(1);

  auto* info = locale->add_subcommand("info", "Print every locale fact of LCID (hexadecimal) or TAG (en-US)");
  static std::string info_arg;
  info->add_option("LCID|TAG", info_arg, "Hexadecimal LCID (0409, 0x0C0A) or language tag (de-DE)")->required();
  info->callback([] { PrintInfo(ResolveArgument(info_arg)); });

  auto* list = locale->add_subcommand("list", "List the supported locales: LCID, tab, display name");
  static bool primary = false, sub = false, both = false, json = false;
  auto* p = list->add_flag("--primary", primary, "One entry per language");
  auto* s = list->add_flag("--sub", sub, "Every locale (the default)");
  auto* b = list->add_flag("--both", both, "Every locale, plus an entry before the first locale of each language with several");
  p->excludes(s)->excludes(b);
  s->excludes(b);
  list->add_flag("--json", json, "Print a JSON array of {lcid, hex, name}");
  list->callback([] { PrintList(primary ? lloPrimary : both ? lloBoth : lloSub, json); });

  auto* find = locale->add_subcommand("find", "Find locales by ISO or TMX codes, abbreviation or English name");
  static std::string find_text;
  find->add_option("TEXT", find_text, "Codes (\"en-US\", \"US en\", \"ENU\", \"US\", \"en\") or the start of an English name")
      ->required();
  find->callback([] {
    if (find_text.empty()) throw ToolError(kExitUsage, "TEXT is empty");
    if (!PrintFound(find_text)) throw ToolError(kExitDataError, "no locale matches \"" + find_text + "\"");
  });
}

}  // namespace quilltool
