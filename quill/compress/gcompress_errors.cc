// The Gcompress unit's error class is defined with the unit, so that the
// unit's library is complete without the package frame.
#include "quill/frame/errors.h"

namespace quill::Gcompress {

EGCompressError::~EGCompressError() = default;

}  // namespace quill::Gcompress
