// Small Gutils helpers: integer minimum and maximum, a random list item, a
// reversible text scrambling, the system default format settings, and the
// unit's progress callback types.
//
//   MinInt(-1, 1) == -1;
//   Decrypt1(Encrypt1(u"abc", u"k"), u"k") == u"abc";
#pragma once

#include <cstdint>
#include <functional>

#include "quill/rtl/export.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/tlist.h"
#include "quill/rtl/tobject.h"
#include "quill/rtl/types.h"

namespace quill::Gutils {

// Progress report with a stop flag the callee may set to ask the caller to
// stop: (sender, position, maximum, stop).
using TGProgressEvent = std::function<void(TObject* Sender, int32_t Position, int32_t Max, bool& Stop)>;
// Progress report without a way back: (sender, position, maximum).
using TGSimpleProgressEvent = std::function<void(TObject* Sender, int32_t Position, int32_t Max)>;

// The smaller of the two values (either one when they are equal).
[[nodiscard]] QUILL_API int32_t MinInt(int32_t A, int32_t B);
// The larger of the two values (either one when they are equal).
[[nodiscard]] QUILL_API int32_t MaxInt(int32_t A, int32_t B);

// A uniformly drawn item of `List` other than `Excluded`. The generator is
// reseeded from the clock on every call and indexes are drawn until the item
// differs from `Excluded`. REQUIRES: List is not empty and holds at least one
// item other than `Excluded`; otherwise the routine never returns (empty
// lists: undefined).
[[nodiscard]] QUILL_API void* GetRandomItem(const TList& List, const void* Excluded);

// Scrambles `S` with `Key` for casual concealment (not a cipher): unit i
// becomes S[i] + Key[j] (j cycling through the key), minus 95 when above 127,
// kept as a 16-bit unit. An empty `S` or `Key` gives `S` unchanged. The
// result has the length of `S`.
[[nodiscard]] QUILL_API UnicodeString Encrypt1(const UnicodeString& S, const UnicodeString& Key);
// The reverse of Encrypt1: S[i] - Key[j], plus 95 when below 32. Restores any
// text whose units all lie in 32..126, whatever the key; other units follow
// the same rule without that guarantee.
[[nodiscard]] QUILL_API UnicodeString Decrypt1(const UnicodeString& S, const UnicodeString& Key);

// Fills `Settings` with the format settings of the system default locale
// (identifier 2048), never the user's locale.
QUILL_API void GetCurrentFormats(TFormatSettings& Settings);

}  // namespace quill::Gutils
