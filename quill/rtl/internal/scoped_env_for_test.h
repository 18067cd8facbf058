// Test helper: sets environment variables for one scope and drops the locale
// caches on entry and exit, so a test can pin a locale or a code page.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "quill/rtl/syslocale.h"

namespace quill::testing {

class ScopedEnv {
 public:
  ScopedEnv(std::initializer_list<std::pair<const char*, const char*>> vars) {
    for (const auto& [name, value] : vars) {
      const char* old = std::getenv(name);
      saved_.emplace_back(name, old ? std::optional<std::string>(old) : std::nullopt);
      if (value != nullptr) {
        setenv(name, value, 1);
      } else {
        unsetenv(name);
      }
    }
    ResetLocaleCache();
  }
  ~ScopedEnv() {
    for (auto it = saved_.rbegin(); it != saved_.rend(); ++it) {
      if (it->second) {
        setenv(it->first.c_str(), it->second->c_str(), 1);
      } else {
        unsetenv(it->first.c_str());
      }
    }
    ResetLocaleCache();
  }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

}  // namespace quill::testing
