// Gstrings: delimited text, string-list sections and name/value pairs.
#pragma once

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"
#include "quill/strings/namevalue.h"
