// For the help launcher's tests: a private folder for the cache and a viewer
// command that records what it was asked to open instead of opening it.
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace quill::Ghtmlhlp::testing {

// Makes a fresh folder below $TMPDIR (or /tmp), points XDG_CACHE_HOME into it
// and QUILL_OPEN_COMMAND / QUILL_WINHELP_COMMAND at a shell that appends its
// last argument, one per line, to a record file. Removes the folder and the
// variables again when destroyed.
class TRecordingViewer {
 public:
  TRecordingViewer() {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp != nullptr && tmp[0] == '/' ? tmp : "/tmp") + "/quill-help-XXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) dir_ = pattern;
    record_ = dir_ / "asked.txt";
    const std::string command = "/bin/sh -c 'printf \"%s\\n\" \"$1\" >> \"$0\"' '" + record_.string() + "'";
    setenv("QUILL_OPEN_COMMAND", command.c_str(), 1);
    setenv("QUILL_WINHELP_COMMAND", command.c_str(), 1);
    setenv("XDG_CACHE_HOME", (dir_ / "cache").c_str(), 1);
  }
  ~TRecordingViewer() {
    unsetenv("QUILL_OPEN_COMMAND");
    unsetenv("QUILL_WINHELP_COMMAND");
    unsetenv("XDG_CACHE_HOME");
    // A viewer that is still running may write its line while the folder is
    // being removed; try again until the folder is gone.
    for (int attempt = 0; attempt < 100; ++attempt) {
      std::error_code ec;
      std::filesystem::remove_all(dir_, ec);
      if (!std::filesystem::exists(dir_, ec)) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  }
  TRecordingViewer(const TRecordingViewer&) = delete;
  TRecordingViewer& operator=(const TRecordingViewer&) = delete;

  [[nodiscard]] const std::filesystem::path& Dir() const { return dir_; }
  [[nodiscard]] std::filesystem::path CacheRoot() const { return dir_ / "cache" / "quill" / "help"; }

  // The lines recorded so far, after waiting (up to 10 s) until there are
  // at least `count` of them: the viewer runs without being waited for.
  [[nodiscard]] std::vector<std::string> Asked(size_t count = 1) const {
    std::vector<std::string> lines;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    for (;;) {
      lines.clear();
      std::ifstream in(record_);
      for (std::string line; std::getline(in, line);) lines.push_back(line);
      if (lines.size() >= count || std::chrono::steady_clock::now() > deadline) return lines;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

 private:
  std::filesystem::path dir_;
  std::filesystem::path record_;
};

// The whole contents of a file ("" when it cannot be read).
inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// A committed test file, by name.
inline std::string TestData(const char* name) { return std::string(QUILL_HELP_TESTDATA) + "/" + name; }

}  // namespace quill::Ghtmlhlp::testing
