// The shared, translatable message texts (resource strings 65520..65524).
//
// Each is a TResStringRec: pass it to an exception constructor or to
// LoadResString() and its current text (a catalog translation or the English
// built-in) is read at that moment.
//
//   throw Gutils::EGUtilsError(Gconsts::_ERRStackFull);   // "Stack is full"
#pragma once

#include "quill/rtl/resstrings.h"

namespace quill {
namespace Gconsts {
inline constexpr TResStringRec _ERRStackFull{65520, u"Stack is full"};
inline constexpr TResStringRec _ERRStackEmpty{65521, u"Stack is empty"};
}  // namespace Gconsts

namespace Gcompress {
inline constexpr TResStringRec _SSourceNotDefined{65522, u"Source stream is not defined"};
inline constexpr TResStringRec _SDestNotDefined{65523, u"Destination stream is not defined"};
inline constexpr TResStringRec _SWrongStreamFormat{65524, u"Wrong stream format"};
}  // namespace Gcompress

namespace Gconsts {
// Every resource string of the library, in identifier order.
inline constexpr const TResStringRec* kResourceStrings[] = {
    &_ERRStackFull, &_ERRStackEmpty, &Gcompress::_SSourceNotDefined,
    &Gcompress::_SDestNotDefined, &Gcompress::_SWrongStreamFormat};
}  // namespace Gconsts
}  // namespace quill
