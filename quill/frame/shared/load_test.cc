// Loading libquill23.so starts its units and unloading stops them; a host that
// calls Initialize/Finalize itself only moves the start counts.
#include <dlfcn.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using CountFn = int32_t (*)();
using VoidFn = void (*)();

struct Library {
  void* handle = dlopen(QUILL_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  ~Library() {
    if (handle != nullptr) dlclose(handle);
  }
  template <typename F>
  F Symbol(const char* name) const {
    return reinterpret_cast<F>(dlsym(handle, name));
  }
};

TEST(LibraryLoad, StartsUnitsAndHostCallsOnlyMoveCounts) {
  Library lib;
  ASSERT_NE(lib.handle, nullptr) << dlerror();
  // The entry points are exported unmangled.
  auto initialize = lib.Symbol<VoidFn>("Initialize");
  auto finalize = lib.Symbol<VoidFn>("Finalize");
  ASSERT_NE(initialize, nullptr);
  ASSERT_NE(finalize, nullptr);
  ASSERT_NE(lib.Symbol<void*>("GetPackageInfoTable"), nullptr);

  // quill::Gstrings::StartCount() and quill::Ghtmlhlp::StartCount().
  auto strings_count = lib.Symbol<CountFn>("_ZN5quill8Gstrings10StartCountEv");
  auto help_count = lib.Symbol<CountFn>("_ZN5quill8Ghtmlhlp10StartCountEv");
  ASSERT_NE(strings_count, nullptr);
  ASSERT_NE(help_count, nullptr);

  EXPECT_EQ(strings_count(), -1) << "loading starts every unit once";
  EXPECT_EQ(help_count(), -1);
  initialize();
  EXPECT_EQ(strings_count(), -2);
  finalize();
  EXPECT_EQ(strings_count(), -1) << "the host's stop is not the last stop";
}

}  // namespace
