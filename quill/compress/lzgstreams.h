// One-call compression and expansion of streams and files in the "LZG00"
// format.
//
//   quill::TMemoryStream plain, packed;
//   ...                                   // fill `plain`
//   quill::Gcompress::LZGCompressFullStream(&plain, &packed);
//
// Stream rules common to all routines: the destination is written at its
// current position (so output can be appended to existing data) and is never
// rewound; the source is read from its current position, except that the
// "Full" routines first set it to 0. On the expanding side the compressed data
// must run to the end of the source. The working set of the stream routines is
// bounded whatever the stream sizes; the file routines hold both files in
// memory. `OnProgress` may be empty.
#pragma once

#include "quill/compress/compressor.h"
#include "quill/rtl/export.h"
#include "quill/rtl/streams.h"
#include "quill/rtl/types.h"

namespace quill::Gcompress {

// Compresses Source (from its position to its end) into Dest with a temporary
// TLZGCompressor. Raises EGCompressError when a stream is nullptr (source
// checked first); stream errors pass through.
QUILL_API void LZGCompressStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress = {});
// Expands Source (from its position to its end) into Dest. Raises
// EGCompressError "Wrong stream format" when the 5 bytes at the source
// position are not "LZG00"; nothing is written to Dest then.
QUILL_API void LZGDecompressStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress = {});
// Sets the source position to 0, then LZGCompressStream. Dest stays where it
// stands. A nullptr source is not touched and gives the "not defined" error.
QUILL_API void LZGCompressFullStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress = {});
// Sets the source position to 0, then LZGDecompressStream.
QUILL_API void LZGDecompressFullStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress = {});

// Loads the source file into memory, compresses it, and saves the result to
// the destination file. The destination file is always written, also when
// something fails: it then receives what was produced so far (an empty file
// when the source cannot be loaded), and the error travels on afterwards.
// File names are UTF-16; they are passed to the system in UTF-8.
QUILL_API void LZGCompressFile(const UnicodeString& SourceFile, const UnicodeString& DestFile,
                               TProgressEvent OnProgress = {});
// As LZGCompressFile, expanding.
QUILL_API void LZGDecompressFile(const UnicodeString& SourceFile, const UnicodeString& DestFile,
                                 TProgressEvent OnProgress = {});

// True when "LZG00" stands at the stream's current position (nothing else is
// checked; fewer than 5 bytes give false). The position is restored, except
// when the stream itself raises: then the error passes with the position
// wherever the stream left it.
[[nodiscard]] QUILL_API bool IsLZGCompressedStream(TStream& Stream);

}  // namespace quill::Gcompress
