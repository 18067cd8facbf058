// Test helper: a private registry database in a fresh temporary folder for
// one scope. QUILL_REGISTRY points at it while the object lives; afterwards
// the pooled connections are closed and the folder is removed.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "quill/rtl/internal/regstore.h"

namespace quill::testing {

class TempRegistry {
 public:
  TempRegistry() {
    const char* tmp = std::getenv("TMPDIR");
    std::string templ = std::string(tmp != nullptr && *tmp != 0 ? tmp : "/tmp") + "/quill-reg-XXXXXX";
    if (mkdtemp(templ.data()) == nullptr) std::abort();
    dir_ = templ;
    path_ = dir_ + "/registry.db";
    if (const char* old = std::getenv("QUILL_REGISTRY")) saved_ = old;
    setenv("QUILL_REGISTRY", path_.c_str(), 1);
  }
  ~TempRegistry() {
    regstore::CloseIdle();
    if (saved_) {
      setenv("QUILL_REGISTRY", saved_->c_str(), 1);
    } else {
      unsetenv("QUILL_REGISTRY");
    }
    std::error_code ec;
    std::filesystem::remove_all(dir_, ec);
  }
  TempRegistry(const TempRegistry&) = delete;
  TempRegistry& operator=(const TempRegistry&) = delete;

  [[nodiscard]] const std::string& Dir() const { return dir_; }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string dir_;
  std::string path_;
  std::optional<std::string> saved_;
};

}  // namespace quill::testing
