// Gstrings: normalising line breaks to CR LF.
#pragma once

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gstrings {

// `s` with every line break written as CR LF: LF alone and CR alone (also as
// the last character) become CR LF, CR LF stays. LF CR counts as two breaks
// and becomes CR LF CR LF.
//
// A counting pass sizes the result, which is then allocated once and filled.
// When nothing changes, `s` itself is returned: pass an rvalue
// (`text = AdjustLineBreaks(std::move(text))`) and text already in CR LF form
// goes through without any copy or allocation.
[[nodiscard]] QUILL_API UnicodeString AdjustLineBreaks(UnicodeString s);

}  // namespace quill::Gstrings
