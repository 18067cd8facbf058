#include "quill/rtl/resstrings.h"

#include <dlfcn.h>
#include <libintl.h>

#include <cstdlib>
#include <mutex>
#include <string>

#include "quill/rtl/unicode.h"

namespace quill {
namespace {

constexpr const char* kDomain = "quill23";

// The installed catalog directory: <prefix>/share/locale, where <prefix> is
// the directory above the one holding this library (or the executable it is
// linked into), so an installed tree can be moved as a whole.
std::string InstalledLocaleDir() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&InstalledLocaleDir), &info) != 0 && info.dli_fname != nullptr) {
    std::string path = info.dli_fname;
    const auto file = path.rfind('/');
    if (file != std::string::npos) {
      path.resize(file);  // .../lib
      const auto dir = path.rfind('/');
      if (dir != std::string::npos) return path.substr(0, dir) + "/share/locale";
    }
  }
  return "/usr/local/share/locale";
}

std::once_flag g_bound;

void BindOnce() {
  std::call_once(g_bound, [] {
    const char* dir = std::getenv("QUILL_LOCALEDIR");
    bindtextdomain(kDomain, dir != nullptr && *dir != '\0' ? dir : InstalledLocaleDir().c_str());
    // Translations come back as UTF-8 whatever the process's character set.
    bind_textdomain_codeset(kDomain, "UTF-8");
  });
}

}  // namespace

UnicodeString LoadResString(const TResStringRec& rec) {
  if (rec.Text == nullptr) return UnicodeString();
  BindOnce();
  const std::string english = UnicodeToUtf8(rec.Text);
  const char* text = dgettext(kDomain, english.c_str());
  // No translation: gettext hands back the key itself.
  if (text == english.c_str()) return UnicodeString(rec.Text);
  return Utf8ToUnicode(text);
}

void BindResourceCatalog(const std::string& dir) {
  BindOnce();
  bindtextdomain(kDomain, dir.c_str());
  bind_textdomain_codeset(kDomain, "UTF-8");
}

}  // namespace quill
