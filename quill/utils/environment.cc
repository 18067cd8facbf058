// Environment expansion and module file names.
#include "quill/utils/environment.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "quill/rtl/unicode.h"
#include "quill/utils/internal/module.h"

namespace quill::Gutils {

UnicodeString ExpandEnvVars(const UnicodeString& S) {
  const std::u16string_view text(S);
  UnicodeString result;
  result.reserve(text.size() + 1);
  size_t i = 0;
  while (i < text.size()) {
    const size_t pct = text.find(u'%', i);
    if (pct == std::u16string_view::npos) {
      result.append(text.substr(i));
      break;
    }
    result.append(text.substr(i, pct - i));
    const size_t close = text.find(u'%', pct + 1);
    if (close == std::u16string_view::npos) {  // unfinished name: copied as is
      result.append(text.substr(pct));
      break;
    }
    const std::string name = UnicodeToUtf8(text.substr(pct + 1, close - pct - 1));
    // An empty name ("%%") or one holding '=' is never a variable.
    const char* value = name.empty() || name.find('=') != std::string::npos
                            ? nullptr
                            : std::getenv(name.c_str());
    if (value != nullptr) {
      result.append(Utf8ToUnicode(value));
    } else {
      result.append(text.substr(pct, close - pct + 1));
    }
    i = close + 1;
  }
  result.push_back(u'\0');
  return result;
}

namespace internal {

std::string ProgramPath() {
  std::error_code ec;
  std::filesystem::path p = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::string() : p.string();
}

std::string ModuleFileName(int32_t Module) { return Module == 0 ? ProgramPath() : std::string(); }

std::string ModulePathOf(const void* address) {
  Dl_info info{};
  link_map* map = nullptr;
  // A shared library has a name in its link map; the program's entry has none.
  if (dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) != 0 && map != nullptr &&
      map->l_name != nullptr && map->l_name[0] != '\0') {
    std::error_code ec;
    std::filesystem::path module = std::filesystem::canonical(map->l_name, ec);
    return ec ? std::string(map->l_name) : module.string();
  }
  return ProgramPath();
}

}  // namespace internal

UnicodeString DHGetFileName() {
  constexpr size_t kMaxUnits = 261;
  const std::string path = internal::ModulePathOf(reinterpret_cast<const void*>(&DHGetFileName));
  UnicodeString result = Utf8ToUnicode(path);
  if (result.size() > kMaxUnits) result.resize(kMaxUnits);
  return result;
}

}  // namespace quill::Gutils
