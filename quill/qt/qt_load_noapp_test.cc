// Loading and unloading the Qt module at run time (dlopen/dlclose) installs
// and removes its user-interface service and RunProgram's event hook. This
// program links only the core library.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "quill/utils/process.h"
#include "quill/utils/questions.h"
#include "quill/utils/uiservice.h"

namespace quill::Gutils {
namespace {

TEST(QtModuleLoad, InstallsAtLoadAndRemovesAtUnload) {
  ASSERT_EQ(&UIService(), &TerminalUIService());
  // Qt itself stays loaded (as in any Qt program): only the module comes
  // and goes, and Qt's own start-up allocations stay reachable.
  ASSERT_NE(::dlopen("libQt6Widgets.so.6", RTLD_NOW | RTLD_GLOBAL | RTLD_NODELETE), nullptr) << ::dlerror();
  void* module = ::dlopen(QUILL_QT_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << ::dlerror();
  EXPECT_NE(&UIService(), &TerminalUIService());  // the module's service
  // Its hook is in place (and is handed back here, then restored).
  TProcessMessagesHook hook = SetProcessMessagesHook({});
  EXPECT_TRUE(static_cast<bool>(hook));
  SetProcessMessagesHook(std::move(hook));

  ASSERT_EQ(::dlclose(module), 0);
  EXPECT_EQ(::dlopen(QUILL_QT_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the module stayed loaded";
  EXPECT_EQ(&UIService(), &TerminalUIService());
  EXPECT_FALSE(static_cast<bool>(SetProcessMessagesHook({})));
}

}  // namespace
}  // namespace quill::Gutils
