#include "quill/rtl/syslocale.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "quill/rtl/formatsettings.h"
#include "quill/rtl/internal/localecache.h"
#include "quill/rtl/internal/localenames.h"
#include "quill/rtl/localefacts.h"

namespace quill {
namespace internal {
namespace {
std::atomic<uint64_t> g_generation{1};
}  // namespace

uint64_t LocaleCacheGeneration() { return g_generation.load(std::memory_order_acquire); }

}  // namespace internal

namespace {
constexpr LCID kEnUs = 0x0409;

std::string_view Env(const char* name) {
  const char* v = std::getenv(name);
  return v == nullptr ? std::string_view() : std::string_view(v);
}

bool IsCLocale(std::string_view name) {
  return name == "C" || name == "POSIX" || name.starts_with("C.") || name.starts_with("C@");
}

bool IsDigits(std::string_view s) {
  if (s.empty()) return false;
  for (char c : s) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

}  // namespace

namespace internal {

std::string PosixNameToTag(std::string_view name) {
  std::string_view modifier;
  if (const auto at = name.find('@'); at != std::string_view::npos) {
    modifier = name.substr(at + 1);
    name = name.substr(0, at);
  }
  if (const auto dot = name.find('.'); dot != std::string_view::npos) name = name.substr(0, dot);
  std::string tag(name);
  for (char& c : tag) {
    if (c == '_') c = '-';
  }
  // Script modifiers become script subtags; others (euro, ...) carry no locale facts.
  if (modifier == "latin" || modifier == "cyrillic" || modifier == "devanagari") {
    const std::string script = modifier == "latin" ? "Latn" : modifier == "cyrillic" ? "Cyrl" : "Deva";
    const auto dash = tag.find('-');
    tag = dash == std::string::npos ? tag + "-" + script
                                    : tag.substr(0, dash) + "-" + script + tag.substr(dash);
  }
  if (const WinLocaleFact* f = FindLocaleFactByTag(tag)) return std::string(f->tag);
  // Not in the table: lower-case language, upper-case two-letter regions.
  bool first = true;
  size_t start = 0;
  for (size_t i = 0; i <= tag.size(); ++i) {
    if (i == tag.size() || tag[i] == '-') {
      const size_t len = i - start;
      for (size_t k = start; k < i; ++k) {
        char& c = tag[k];
        const bool upper = !first && len == 2;
        if (upper && c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        if (!upper && first && c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
      }
      first = false;
      start = i + 1;
    }
  }
  return tag;
}

std::string LangFromConfigFile(const char* path) {
  std::ifstream in(path);
  std::string line;
  std::string found;
  while (std::getline(in, line)) {
    std::string_view v(line);
    while (!v.empty() && (v.front() == ' ' || v.front() == '\t')) v.remove_prefix(1);
    if (v.starts_with("export ")) v.remove_prefix(7);
    if (!v.starts_with("LANG=")) continue;
    v.remove_prefix(5);
    while (!v.empty() && (v.back() == '\r' || v.back() == ' ' || v.back() == '\t')) v.remove_suffix(1);
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) {
      v = v.substr(1, v.size() - 2);
    }
    found = std::string(v);  // the last assignment wins, as in a shell
  }
  return found;
}

std::string TagFromSetting(std::string_view value) {
  if (value.empty()) return {};
  if (IsCLocale(value)) return "en-US";
  if (value.size() > 2 && value[0] == '0' && (value[1] == 'x' || value[1] == 'X')) {
    char* end = nullptr;
    const std::string text(value);
    const unsigned long n = std::strtoul(text.c_str() + 2, &end, 16);
    if (end != nullptr && *end == '\0') {
      const WinLocaleFact* f = FindLocaleFact(static_cast<LCID>(n));
      return f != nullptr ? std::string(f->tag) : std::string();
    }
    return {};
  }
  if (IsDigits(value)) {
    const WinLocaleFact* f = FindLocaleFact(static_cast<LCID>(std::strtoul(std::string(value).c_str(), nullptr, 10)));
    return f != nullptr ? std::string(f->tag) : std::string();
  }
  return PosixNameToTag(value);
}

std::string SystemTagFrom(std::string_view override_value, std::initializer_list<const char*> files) {
  if (std::string tag = TagFromSetting(override_value); !tag.empty()) return tag;
  for (const char* path : files) {
    if (std::string tag = TagFromSetting(LangFromConfigFile(path)); !tag.empty()) return tag;
  }
  return "en-US";
}

}  // namespace internal

namespace {

std::string ComputeSystemTag() {
  return internal::SystemTagFrom(Env("QUILL_SYSTEM_LOCALE"), {"/etc/default/locale", "/etc/locale.conf"});
}

std::string ComputeUserTag(const std::string& system_tag) {
  // The first variable that is set decides, as in POSIX. "C"/"POSIX" state no
  // preference, so the system default is used for them.
  for (const char* var : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const std::string_view v = Env(var);
    if (v.empty()) continue;
    if (IsCLocale(v)) break;
    std::string tag = internal::PosixNameToTag(v);
    if (!tag.empty()) return tag;
    break;
  }
  return system_tag;
}

LCID TagToLcid(const std::string& tag) {
  const WinLocaleFact* f = FindLocaleFactByTag(tag);
  return f != nullptr ? f->lcid : kEnUs;
}

struct Answers {
  std::optional<std::string> system_tag;
  std::optional<std::string> user_tag;
};

std::mutex g_mutex;
Answers g_answers;

const std::string& SystemTagLocked() {
  if (!g_answers.system_tag) g_answers.system_tag = ComputeSystemTag();
  return *g_answers.system_tag;
}

const std::string& UserTagLocked() {
  if (!g_answers.user_tag) g_answers.user_tag = ComputeUserTag(SystemTagLocked());
  return *g_answers.user_tag;
}

}  // namespace

std::string SystemDefaultLocaleTag() {
  std::lock_guard lock(g_mutex);
  return SystemTagLocked();
}

std::string UserDefaultLocaleTag() {
  std::lock_guard lock(g_mutex);
  return UserTagLocked();
}

LCID GetSystemDefaultLCID() { return TagToLcid(SystemDefaultLocaleTag()); }

LCID GetUserDefaultLCID() { return TagToLcid(UserDefaultLocaleTag()); }

LCID ResolveLCID(LCID locale) {
  if (locale == LOCALE_SYSTEM_DEFAULT) return GetSystemDefaultLCID();
  if (locale == LOCALE_USER_DEFAULT || locale == LOCALE_NEUTRAL) return GetUserDefaultLCID();
  return locale;
}

std::string LCIDToTag(LCID locale) {
  if (locale == LOCALE_SYSTEM_DEFAULT) return SystemDefaultLocaleTag();
  if (locale == LOCALE_USER_DEFAULT || locale == LOCALE_NEUTRAL) return UserDefaultLocaleTag();
  const WinLocaleFact* f = FindLocaleFact(locale);
  return f != nullptr ? std::string(f->tag) : std::string();
}

// Every 8-bit conversion asks for the code page, so the answer is kept where
// it can be read without the lock; 0 means "not computed yet".
namespace {
std::atomic<TCodePage> g_acp{0};
}  // namespace

TCodePage GetACP() {
  if (const TCodePage cached = g_acp.load(std::memory_order_acquire); cached != 0) return cached;
  std::lock_guard lock(g_mutex);
  if (g_acp.load(std::memory_order_relaxed) == 0) {
    TCodePage cp = 0;
    const std::string_view forced = Env("QUILL_ANSI_CODEPAGE");
    if (IsDigits(forced)) cp = static_cast<TCodePage>(std::strtoul(std::string(forced).c_str(), nullptr, 10));
    if (cp == 0) {
      const WinLocaleFact* f = FindLocaleFact(TagToLcid(SystemTagLocked()));
      cp = f != nullptr ? f->ansi_cp : 1252;
      if (cp == 0) cp = 65001;  // a Unicode-only locale
    }
    g_acp.store(cp, std::memory_order_release);
  }
  return g_acp.load(std::memory_order_relaxed);
}

TCodePage GetOEMCP() {
  const WinLocaleFact* f = FindLocaleFact(GetSystemDefaultLCID());
  if (f == nullptr || f->oem_cp == 0) return 437;  // unknown: the en-US page
  if (f->oem_cp == 1) return 65001;                 // a Unicode-only locale
  return f->oem_cp;
}

void ResetLocaleCache() {
  {
    std::lock_guard lock(g_mutex);
    g_answers = Answers{};
    g_acp.store(0, std::memory_order_release);
  }
  internal::g_generation.fetch_add(1, std::memory_order_acq_rel);
  ResetFormatSettings();
}

}  // namespace quill
