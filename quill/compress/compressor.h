// The compressor framework and the LZG coder.
//
// TGCompressor owns nothing: it holds the caller's source and destination
// streams, an optional progress callback and the fixed order of a run (check
// the streams, header, body). TLZGCompressor is the one concrete coder; it
// writes and reads the "LZG00" format (see docs/lzg-format.md).
//
//   quill::TMemoryStream plain, packed;
//   quill::Gcompress::TLZGCompressor lzg;
//   lzg.SetSrcStream(&plain);
//   lzg.SetDestStream(&packed);
//   lzg.Compress();          // writes "LZG00", the version word, the tokens
//
// Both streams are used from their current positions; the compressor never
// rewinds, truncates or frees them.
#pragma once

#include <cstdint>
#include <functional>

#include "quill/rtl/export.h"
#include "quill/rtl/streams.h"
#include "quill/rtl/tobject.h"

namespace quill::Gcompress {

// Progress callback: the compressor, the source stream's position and its
// size, each cut to its low 32 bits.
using TProgressEvent = std::function<void(TObject* Sender, int32_t Position, int32_t MaxValue)>;

// Direction of a coder window.
enum TProcType : uint8_t { ptCompress, ptDecompress };

// The abstract compressor. Its four header and body operations raise
// EAbstractError ("Abstract Error") unless a subclass overrides them.
class QUILL_API TGCompressor : public TObject {
 public:
  TGCompressor() = default;  // Create: no streams, no callback, version 0
  ~TGCompressor() override;
  TGCompressor(const TGCompressor&) = delete;
  TGCompressor& operator=(const TGCompressor&) = delete;

  // Property SrcStream: plain data for Compress, compressed data for
  // Decompress. Not owned; nullptr means absent.
  [[nodiscard]] TStream* SrcStream() const { return FSrcStream; }
  void SetSrcStream(TStream* value) { FSrcStream = value; }
  // Property DestStream: where the output goes. Not owned.
  [[nodiscard]] TStream* DestStream() const { return FDestStream; }
  void SetDestStream(TStream* value) { FDestStream = value; }
  // Property OnProgress: called once after every coding step.
  [[nodiscard]] const TProgressEvent& OnProgress() const { return FOnProgress; }
  void SetOnProgress(TProgressEvent value) { FOnProgress = std::move(value); }

  // Checks the streams (source first: with both absent the source message
  // wins), then WriteHeader, then CompressSource.
  // Raises EGCompressError "Source stream is not defined" /
  // "Destination stream is not defined"; stream errors pass through.
  void Compress();
  // The same two checks, then ReadHeader, then DecompressSource.
  void Decompress();

  // Bit-level I/O: kept as empty operations on purpose. The coder works in
  // whole bytes and 16-bit words; FBuffer and FBitOffset are never touched.
  void ReadBits(int32_t Count);
  void WriteBits(int32_t Count);

  // Abstract on this class: each raises EAbstractError.
  virtual void ReadHeader();
  virtual void WriteHeader();
  virtual void CompressSource();
  virtual void DecompressSource();
  // Calls OnProgress(this, Position, MaxValue) when a callback is assigned.
  virtual void DoOnProgress(int32_t Position, int32_t MaxValue);

 protected:
  TStream* FSrcStream = nullptr;
  TStream* FDestStream = nullptr;
  TProgressEvent FOnProgress;
  // Header version word: written as 0; on reading it receives the header's
  // value, which nothing looks at again.
  int32_t FVersion = 0;
  uint16_t FBuffer = 0;    // reserved for bit I/O, never used
  uint8_t FBitOffset = 0;  // reserved for bit I/O, never used
};

// The LZ coder over a 2,048-byte window with the "LZG00" header.
class QUILL_API TLZGCompressor : public TGCompressor {
 public:
  TLZGCompressor() = default;
  ~TLZGCompressor() override;

  // Writes "LZG00" and the four little-endian bytes of the version word.
  void WriteHeader() override;
  // Reads 5 bytes at the source position and compares them, case-sensitively,
  // with "LZG00"; only when equal reads 4 more bytes into `Version`. Neither
  // rewinds nor checks how many bytes the stream delivered (missing bytes
  // compare as 0 and leave the matching bytes of `Version` unchanged).
  [[nodiscard]] bool CheckHeader(int32_t& Version);
  // CheckHeader(FVersion); raises EGCompressError "Wrong stream format" when
  // it fails, with the source moved on by the 5 bytes read. Any version is
  // accepted.
  void ReadHeader() override;
  // Codes the source from its position to its end into tokens.
  void CompressSource() override;
  // Decodes tokens until the source position reaches the source size. Damaged
  // or foreign data is decoded as it stands, never outside the window.
  void DecompressSource() override;
};

}  // namespace quill::Gcompress
