// The units' error classes.
//
// Each unit that reports failures has its own class, deriving directly from
// quill::Exception and adding nothing; catch quill::Exception to catch any of
// them. Gdattime has no class of its own.
#pragma once

#include "quill/rtl/exception.h"

namespace quill {
namespace Gstrings { QUILL_DECLARE_EXCEPTION(EGStringsError, Exception); }
namespace Gutils { QUILL_DECLARE_EXCEPTION(EGUtilsError, Exception); }
// Declared and exported for scanner failures, but raised by no routine: the
// scanner's own messages use quill::Exception.
namespace Gscanner { QUILL_DECLARE_EXCEPTION(EScannerError, Exception); }
namespace Glocales { QUILL_DECLARE_EXCEPTION(ELocalesError, Exception); }
namespace Gcompress { QUILL_DECLARE_EXCEPTION(EGCompressError, Exception); }
namespace Ghtmlhlp { QUILL_DECLARE_EXCEPTION(EHtmlHelpError, Exception); }
}  // namespace quill
