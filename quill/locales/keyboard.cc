// Installed keyboard layouts from the XKB configuration, and GetKLByLocale.
#include "quill/locales/keyboard.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "quill/locales/internal/keyboard_steps.h"

namespace quill::Glocales {
namespace {

constexpr size_t kMaxLayouts = 64;  // what the layout list call is asked for

struct XkbLayout {
  std::string_view name;
  HKL handle;  // layout identifier in the high word, input language in the low word
};

// The common XKB layouts and the Windows layout with the input language each
// is usually paired with.
constexpr XkbLayout kXkbLayouts[] = {
    {"al", 0x041C041C},    // Albanian
    {"am", 0x042B042B},    // Armenian
    {"ara", 0x04010401},   // Arabic (101)
    {"at", 0x04070C07},    // German keyboard, German (Austria)
    {"az", 0x042C042C},    // Azeri Latin
    {"ba", 0x041A141A},    // Croatian keyboard, Bosnian (Latin)
    {"be", 0x080C080C},    // Belgian French
    {"bg", 0x04020402},    // Bulgarian
    {"br", 0x04160416},    // Portuguese (Brazil ABNT)
    {"by", 0x04230423},    // Belarusian
    {"ca", 0x10090C0C},    // Canadian French, French (Canada)
    {"ch", 0x08070807},    // Swiss German
    {"cn", 0x08040804},    // Chinese (Simplified), US keyboard
    {"cz", 0x04050405},    // Czech
    {"de", 0x04070407},    // German
    {"dk", 0x04060406},    // Danish
    {"ee", 0x04250425},    // Estonian
    {"es", 0x040A0C0A},    // Spanish keyboard, Spanish (Spain)
    {"fi", 0x040B040B},    // Finnish
    {"fo", 0x04380438},    // Faroese
    {"fr", 0x040C040C},    // French
    {"gb", 0x08090809},    // United Kingdom
    {"ge", 0x04370437},    // Georgian
    {"gr", 0x04080408},    // Greek
    {"hr", 0x041A041A},    // Croatian
    {"hu", 0x040E040E},    // Hungarian
    {"ie", 0x18091809},    // Irish
    {"il", 0x040D040D},    // Hebrew
    {"in", 0x04390439},    // Hindi Traditional
    {"ir", 0x04290429},    // Persian
    {"is", 0x040F040F},    // Icelandic
    {"it", 0x04100410},    // Italian
    {"jp", 0x04110411},    // Japanese
    {"kr", 0x04120412},    // Korean
    {"kz", 0x043F043F},    // Kazakh
    {"latam", 0x080A080A}, // Latin American, Spanish (Mexico)
    {"lt", 0x04270427},    // Lithuanian
    {"lv", 0x04260426},    // Latvian
    {"mk", 0x042F042F},    // Macedonian
    {"mn", 0x04500450},    // Mongolian Cyrillic
    {"mt", 0x043A043A},    // Maltese
    {"nl", 0x04130413},    // Dutch
    {"no", 0x04140414},    // Norwegian
    {"pk", 0x04200420},    // Urdu
    {"pl", 0x04150415},    // Polish (Programmers)
    {"pt", 0x08160816},    // Portuguese
    {"ro", 0x04180418},    // Romanian
    {"rs", 0x0C1A0C1A},    // Serbian (Cyrillic)
    {"ru", 0x04190419},    // Russian
    {"se", 0x041D041D},    // Swedish
    {"si", 0x04240424},    // Slovenian
    {"sk", 0x041B041B},    // Slovak
    {"th", 0x041E041E},    // Thai Kedmanee
    {"tr", 0x041F041F},    // Turkish Q
    {"tw", 0x04040404},    // Chinese (Traditional), US keyboard
    {"ua", 0x04220422},    // Ukrainian
    {"us", 0x04090409},    // US
    {"uz", 0x04430443},    // Uzbek (Latin)
    {"vn", 0x042A042A},    // Vietnamese
};

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string_view Trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = AsciiLower(c);
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// "0x" and 1 to 16 hex digits, or exactly 8 hex digits (no XKB name looks like that).
bool ParseHandle(std::string_view item, HKL& out) {
  const bool prefixed = item.size() > 2 && item[0] == '0' && AsciiLower(item[1]) == 'x';
  if (prefixed) {
    item.remove_prefix(2);
  } else if (item.size() != 8) {
    return false;
  }
  if (item.empty() || item.size() > 2 * sizeof(HKL)) return false;
  HKL v = 0;
  for (char c : item) {
    const int d = HexDigit(c);
    if (d < 0) return false;
    v = (v << 4) | static_cast<HKL>(d);
  }
  out = v;
  return true;
}

}  // namespace

HKL KeyboardLayoutByXkbName(std::string_view Name) {
  for (const XkbLayout& l : kXkbLayouts) {
    if (l.name.size() == Name.size() &&
        std::equal(Name.begin(), Name.end(), l.name.begin(), [](char a, char b) { return AsciiLower(a) == b; })) {
      return l.handle;
    }
  }
  return 0;
}

namespace internal {

std::vector<HKL> ParseKeyboardLayouts(std::string_view list) {
  std::vector<HKL> out;
  while (!list.empty() && out.size() < kMaxLayouts) {
    const size_t comma = list.find(',');
    std::string_view item = Trim(list.substr(0, comma));
    list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
    if (const size_t bracket = item.find('('); bracket != std::string_view::npos) item = Trim(item.substr(0, bracket));
    HKL h = 0;
    if (ParseHandle(item, h) || (h = KeyboardLayoutByXkbName(item)) != 0) out.push_back(h);
  }
  return out;
}

std::string XkbLayoutFromFile(const char* path) {
  std::ifstream in(path);
  std::string line;
  std::string found;
  while (std::getline(in, line)) {
    std::string_view v = Trim(line);
    if (v.starts_with("export ")) v = Trim(v.substr(7));
    if (!v.starts_with("XKBLAYOUT=")) continue;
    v = Trim(v.substr(10));
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) {
      v = v.substr(1, v.size() - 2);
    }
    found = std::string(v);  // the last assignment wins, as in a shell
  }
  return found;
}

HKL KLByLocaleIn(std::span<const HKL> layouts, uint16_t LangID) {
  for (HKL h : layouts) {
    if ((h & LangID) == LangID) return h;
  }
  return static_cast<HKL>(LangID);
}

}  // namespace internal

std::vector<HKL> GetKeyboardLayoutList() {
  if (const char* forced = std::getenv("QUILL_KEYBOARD_LAYOUTS")) return internal::ParseKeyboardLayouts(forced);
  return internal::ParseKeyboardLayouts(internal::XkbLayoutFromFile("/etc/default/keyboard"));
}

HKL GetKLByLocale(uint16_t LangID) { return internal::KLByLocaleIn(GetKeyboardLayoutList(), LangID); }

}  // namespace quill::Glocales
