// Gcompress: a small, fast stream compressor with its own container format,
// "LZG00" (a 9-byte header, then byte-aligned literal runs and 2-byte copies
// over a 2,048-byte window; see docs/lzg-format.md).
//
//   #include <quill/compress/gcompress.h>
//   quill::Gcompress::LZGCompressFile(u"notes.txt", u"notes.lzg");
//   quill::Gcompress::LZGDecompressFile(u"notes.lzg", u"notes.out");
//
// Failures raise Gcompress::EGCompressError (quill/frame/errors.h) with one
// of three translatable messages, or the streams' own errors.
#pragma once

#include "quill/compress/compressor.h"
#include "quill/compress/lzgstreams.h"
#include "quill/frame/errors.h"
