// The information window's unit-global reference, shared by the question
// routines and the service registry.
#pragma once

#include "quill/utils/uiservice.h"

namespace quill::Gutils::internal {

// Destroys the information window if `Service` made it (it is about to be
// uninstalled and its code may go away) and clears the reference.
void DropInfoWindowOf(const TUIService* Service);

}  // namespace quill::Gutils::internal
