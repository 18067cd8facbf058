// Anchors the unit's error class (type information and destructor) in the library.
#include "quill/frame/errors.h"

namespace quill::Glocales {

ELocalesError::~ELocalesError() = default;

}  // namespace quill::Glocales
