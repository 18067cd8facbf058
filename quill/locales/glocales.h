// Glocales: locale identity, naming, lists and code pages.
//
// One include for the whole unit: the locale database (LocaleInfo and the
// supported locales), English names, codes, reverse lookups, the locale
// lists and tree, right-to-left detection and keyboard layouts.
#pragma once

#include "quill/frame/errors.h"
#include "quill/locales/keyboard.h"
#include "quill/locales/localecodes.h"
#include "quill/locales/localeinfo.h"
#include "quill/locales/localelist.h"
#include "quill/locales/localelookup.h"
#include "quill/locales/localenames.h"
#include "quill/locales/localetree.h"
#include "quill/locales/middleeast.h"
