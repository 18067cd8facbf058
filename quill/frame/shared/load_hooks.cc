// Load and unload hooks of libquill23.so (compiled into the shared library
// only). Loading the library registers the module and starts every unit in
// table order; unloading stops them in reverse order and unregisters it, so a
// linked application needs no call of its own.
//
// This object is linked after every unit's objects, so its constructor runs
// after their static initialisation; the destructor runs before the library's
// own static destructors.
#include "quill/frame/quill23.h"

namespace {

__attribute__((constructor)) void QuillLibraryLoad() {
  quill::LibraryEntry(1);
  quill::Initialize();
}

__attribute__((destructor)) void QuillLibraryUnload() {
  quill::Finalize();
  quill::LibraryEntry(0);
}

}  // namespace
