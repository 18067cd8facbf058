// The Gstrings unit's error class is defined with the unit, so that the
// unit's library is complete without the package frame.
#include "quill/frame/errors.h"

namespace quill::Gstrings {

EGStringsError::~EGStringsError() = default;

}  // namespace quill::Gstrings
