// Gstrings: string utilities in 8-bit (AnsiString) and UTF-16 (UnicodeString)
// forms. Positions are 1-based, 0 means not found; searches take the pattern
// first and the searched text second.
//
//   #include <quill/strings/gstrings.h>
//   quill::Gstrings::XPos(u"b", u"abcb", 3, 1);   // 4
#pragma once

#include "quill/frame/errors.h"
#include "quill/strings/charclass.h"
#include "quill/strings/convert.h"
#include "quill/strings/delimited.h"
#include "quill/strings/matching.h"
#include "quill/strings/quoting.h"
#include "quill/strings/search.h"
