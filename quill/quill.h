// Quill: every public header of the library.
#pragma once

#include "quill/frame/quill23.h"
#include "quill/rtl/rtl.h"
#include "quill/strings/gstrings.h"
