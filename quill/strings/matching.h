// Gstrings: List membership, symbol and template matching, line breaks.
#pragma once

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {}  // namespace quill::Gstrings
