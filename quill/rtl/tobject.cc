#include "quill/rtl/tobject.h"

namespace quill {

// Out of line so that the vtable and type information live in one object file.
TObject::~TObject() = default;

}  // namespace quill
