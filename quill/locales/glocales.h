// Glocales: locale identity, naming, lists and code pages.
//
// One include for the whole unit: the locale database (LocaleInfo and the
// supported locales), English names, codes, reverse lookups, the locale
// lists and tree, right-to-left detection and keyboard layouts; code-page
// conversion, character sets, sort keys and string tables of PE files.
//
//   #include <quill/locales/glocales.h>
//   quill::Glocales::StrToWideByCodePage("\xC3\xA9", 65001);   // u"\u00E9"
#pragma once

#include "quill/frame/errors.h"
#include "quill/locales/charsets.h"
#include "quill/locales/codepages.h"
#include "quill/locales/keyboard.h"
#include "quill/locales/loadstring.h"
#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/locales/localelist.h"
#include "quill/locales/localelookup.h"
#include "quill/locales/localenames.h"
#include "quill/locales/localetree.h"
#include "quill/locales/middleeast.h"
#include "quill/locales/sortkey.h"
