// The unit-global separator sets, shared by the character classes and the
// unit's start-up and shutdown. Not installed.
#pragma once

#include "quill/rtl/types.h"

namespace quill::Gstrings::internal {

// The 8-bit and the UTF-16 separator set: independent strings, empty at
// start-up and cleared by the last stop. Process-wide and unguarded.
AnsiString& SeparatorsA();
UnicodeString& SeparatorsW();

}  // namespace quill::Gstrings::internal
