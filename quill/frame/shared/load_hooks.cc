// Load and unload hooks of libquill23.so (compiled into the shared library
// only). Loading the library registers the module and starts every unit in
// table order; unloading (dlclose or process exit) stops them in reverse order
// and unregisters it, so a linked application needs no call of its own.
//
// Ordering: this object is linked after every unit's objects, so the load hook
// runs after their static initialisation. The unload work is registered with
// the C++ runtime's exit list at the end of the load hook, for this library's
// handle: that list runs last-registered first, both at process exit and at
// dlclose, so the units stop before any static object they touch is destroyed.
// (A plain ELF destructor would run after the static destructors at exit.)
#include "quill/frame/quill23.h"

extern "C" {
extern void* __dso_handle;
int __cxa_atexit(void (*func)(void*), void* arg, void* dso_handle);
}

namespace {

void QuillLibraryUnload(void*) {
  quill::Finalize();
  quill::LibraryEntry(0);
}

__attribute__((constructor)) void QuillLibraryLoad() {
  quill::LibraryEntry(1);
  quill::Initialize();
  __cxa_atexit(&QuillLibraryUnload, nullptr, &__dso_handle);
}

}  // namespace
