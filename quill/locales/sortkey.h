// Glocales: sort keys.
//
// A sort key is a byte string whose plain byte order (memcmp, shorter first
// on a common prefix) is the order in which the locale's collation sorts the
// texts, with case ignored: sort many strings by computing each key once.
//
//   uint8_t* key = nullptr;
//   const int32_t n = GetSortKey("Zebra", 0x0407, key);   // German collation
//   if (n > 0) { ...; FreeMem(key); }
#pragma once

#include <cstdint>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/getmem.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// The sort key of the 8-bit text `S` (in `Locale`'s ANSI code page) under
// `Locale`'s collation with case ignored (ICU's collator for the locale at
// secondary strength: letters, accents and punctuation count, case and other
// tertiary differences do not). The key bytes end with a 0 byte, counted in
// the result. Two keys compare (memcmp over the shorter length, then
// length) exactly as the collator compares the two texts.
//
// Returns 0 and leaves `Key` untouched when `Locale` is unknown. Otherwise
// `Key` is set to a new block, owned by the caller, who frees it with
// quill::FreeMem, and the result is the key's length. The block is sized
// for all of `S`, while the key covers `S` only up to its first 0 byte; in
// the rare case that this shorter text needs a longer key than the block
// holds, the result is 0 (the block is still the caller's to free).
[[nodiscard]] QUILL_API int32_t GetSortKey(std::string_view S, LCID Locale, uint8_t*& Key);

}  // namespace quill::Glocales
