// Anchors the unit's error class (type information and destructor) in the library.
#include "quill/frame/errors.h"

namespace quill::Ghtmlhlp {

EHtmlHelpError::~EHtmlHelpError() = default;

}  // namespace quill::Ghtmlhlp
