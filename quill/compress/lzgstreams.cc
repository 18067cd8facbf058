#include "quill/compress/lzgstreams.h"

#include "quill/rtl/unicode.h"

namespace quill::Gcompress {

void LZGCompressStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress) {
  TLZGCompressor compressor;
  compressor.SetSrcStream(Source);
  compressor.SetDestStream(Dest);
  compressor.SetOnProgress(std::move(OnProgress));
  compressor.Compress();
}

void LZGDecompressStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress) {
  TLZGCompressor compressor;
  compressor.SetSrcStream(Source);
  compressor.SetDestStream(Dest);
  compressor.SetOnProgress(std::move(OnProgress));
  compressor.Decompress();
}

void LZGCompressFullStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress) {
  if (Source != nullptr) Source->SetPosition(0);
  LZGCompressStream(Source, Dest, std::move(OnProgress));
}

void LZGDecompressFullStream(TStream* Source, TStream* Dest, TProgressEvent OnProgress) {
  if (Source != nullptr) Source->SetPosition(0);
  LZGDecompressStream(Source, Dest, std::move(OnProgress));
}

namespace {

using StreamRoutine = void (*)(TStream*, TStream*, TProgressEvent);

// Loads the source, runs `routine`, and saves whatever the destination holds
// whether or not an error occurred; the error travels on after the save.
void CodeFile(StreamRoutine routine, const UnicodeString& SourceFile, const UnicodeString& DestFile,
              TProgressEvent OnProgress) {
  TMemoryStream source;
  TMemoryStream dest;
  try {
    source.LoadFromFile(UnicodeToUtf8(SourceFile));
    source.SetPosition(0);
    routine(&source, &dest, std::move(OnProgress));
  } catch (...) {
    dest.SaveToFile(UnicodeToUtf8(DestFile));
    throw;
  }
  dest.SaveToFile(UnicodeToUtf8(DestFile));
}

}  // namespace

void LZGCompressFile(const UnicodeString& SourceFile, const UnicodeString& DestFile,
                     TProgressEvent OnProgress) {
  CodeFile(&LZGCompressStream, SourceFile, DestFile, std::move(OnProgress));
}

void LZGDecompressFile(const UnicodeString& SourceFile, const UnicodeString& DestFile,
                       TProgressEvent OnProgress) {
  CodeFile(&LZGDecompressStream, SourceFile, DestFile, std::move(OnProgress));
}

bool IsLZGCompressedStream(TStream& Stream) {
  TLZGCompressor compressor;
  compressor.SetSrcStream(&Stream);
  const int64_t position = Stream.Position();
  int32_t version = 0;
  const bool result = compressor.CheckHeader(version);
  Stream.SetPosition(position);
  return result;
}

}  // namespace quill::Gcompress
