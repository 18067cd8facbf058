// The library entry: what the operating system's load and unload
// notifications do to the module record.
#include <dlfcn.h>

#include "quill/frame/quill23.h"

namespace quill {
namespace {

TLibModule& Module() {
  // Never destroyed: the unload notification may come after static destructors.
  static TLibModule* module = new TLibModule();
  return *module;
}

// The path of the object that holds this code (the shared library when loaded
// as one, else the program).
std::string OwnFileName() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&LibraryEntry), &info) != 0 && info.dli_fname != nullptr) {
    return info.dli_fname;
  }
  return {};
}

}  // namespace

const TLibModule& LibModule() { return Module(); }

bool LibraryEntry(int reason) {
  TLibModule& m = Module();
  // Every notification records the module and marks it as a library.
  m.IsLibrary = true;
  m.FileName = OwnFileName();
  if (reason == 1) {
    m.Registered = true;  // process attach: the module joins the module list
  } else if (reason == 0) {
    m.Registered = false;  // process detach: leave the module list
  }
  return true;
}

}  // namespace quill
