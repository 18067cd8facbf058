// The Gutils unit's error class is defined with the unit, so that the unit's
// library is complete without the package frame.
#include "quill/frame/errors.h"

namespace quill::Gutils {

EGUtilsError::~EGUtilsError() = default;

}  // namespace quill::Gutils
