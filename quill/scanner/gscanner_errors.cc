// Anchors the unit's error class (type information and destructor) in the library.
#include "quill/frame/errors.h"

namespace quill::Gscanner {

EScannerError::~EScannerError() = default;

}  // namespace quill::Gscanner
