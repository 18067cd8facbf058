// The fast LZG coder used by TLZGCompressor.
//
// LZEncode produces exactly the tokens of the window classes in
// lzreference.h (the readable statement of the algorithm), and LZDecode
// exactly their output, including for damaged data; the tests compare both on
// many inputs. The working set is bounded: a 2,048-byte history, the match
// index, and fixed-size I/O buffers, whatever the stream sizes.
//
// Differences that only a caller watching the streams during a run can see:
// the source is read in large blocks rather than 127 bytes at a time, and the
// output is written in large blocks. The positions passed to the progress hook
// are the ones the 127-byte reader would have reached, and when an error
// passes every token completed so far is written before it travels on.
#pragma once

#include "quill/compress/internal/lzformat.h"
#include "quill/rtl/streams.h"

namespace quill::Gcompress::internal {

// Codes `src` from its position to its end into tokens written to `dst` at
// its position. REQUIRES: the source delivers the bytes its size promises; if
// it delivers fewer, coding ends with the bytes delivered. `rebase_every` is
// how often the match index renumbers its 32-bit positions (tests make it
// small).
void LZEncode(TStream& src, TStream& dst, const LZProgress& progress,
              int64_t rebase_every = int64_t{1} << 30);

// Decodes tokens from `src` until its position reaches its size, writing to
// `dst`. Never reads or writes outside its own buffers and the streams.
//
// Memory streams (exactly TMemoryStream, not subclasses) are worked on in
// place when no progress hook is given and source and destination are
// different objects:
//  - a memory source is decoded straight from its bytes; afterwards, also
//    when an error passes, its position is just after the last token decoded
//    (its size at the end of a normal run). Other sources are read in 64 KB
//    blocks and may be left up to a block further on when an error passes.
//  - a memory destination whose position equals its size is appended to in
//    place once this run has produced 2,048 bytes; it is grown ahead of the
//    decoder and cut back to the real end (position there too) when decoding
//    stops, normally or by an error. Any other destination receives the
//    output through Write in large blocks.
// In both cases every token completed before an error is in the destination.
// REQUIRES: writing to `dst` does not shrink or rewrite the part of `src`
// still to be decoded (a wrapper that appends to the source's memory stream is
// fine: the tokens are then read from wherever that memory moved).
void LZDecode(TStream& src, TStream& dst, const LZProgress& progress);

}  // namespace quill::Gcompress::internal
