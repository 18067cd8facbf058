// Quill: every public header of the library.
#pragma once

#include "quill/compress/gcompress.h"
#include "quill/dattime/gdattime.h"
#include "quill/frame/quill23.h"
#include "quill/htmlhlp/ghtmlhlp.h"
#include "quill/locales/glocales.h"
#include "quill/rtl/rtl.h"
#include "quill/scanner/gscanner.h"
#include "quill/strings/gstrings.h"
#include "quill/utils/gutils.h"
