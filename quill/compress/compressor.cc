#include "quill/compress/compressor.h"

#include <cstring>
#include <typeinfo>

#include "quill/compress/internal/lzcoder.h"
#include "quill/compress/internal/lzformat.h"
#include "quill/frame/errors.h"
#include "quill/frame/gconsts.h"

namespace quill {
namespace Gcompress {

// ---------------------------------------------------------------- TGCompressor

TGCompressor::~TGCompressor() = default;

void TGCompressor::Compress() {
  if (FSrcStream == nullptr) throw EGCompressError(_SSourceNotDefined);
  if (FDestStream == nullptr) throw EGCompressError(_SDestNotDefined);
  WriteHeader();
  CompressSource();
}

void TGCompressor::Decompress() {
  if (FSrcStream == nullptr) throw EGCompressError(_SSourceNotDefined);
  if (FDestStream == nullptr) throw EGCompressError(_SDestNotDefined);
  ReadHeader();
  DecompressSource();
}

void TGCompressor::ReadBits(int32_t Count) { (void)Count; }
void TGCompressor::WriteBits(int32_t Count) { (void)Count; }

void TGCompressor::ReadHeader() { AbstractError(); }
void TGCompressor::WriteHeader() { AbstractError(); }
void TGCompressor::CompressSource() { AbstractError(); }
void TGCompressor::DecompressSource() { AbstractError(); }

void TGCompressor::DoOnProgress(int32_t Position, int32_t MaxValue) {
  if (FOnProgress) FOnProgress(this, Position, MaxValue);
}

// -------------------------------------------------------------- TLZGCompressor

namespace {

void ReportProgress(void* context, int32_t position, int32_t max_value) {
  static_cast<TGCompressor*>(context)->DoOnProgress(position, max_value);
}

internal::LZProgress ProgressOf(TGCompressor* self) {
  // Nothing to call: no callback, and DoOnProgress is the inherited one.
  if (!self->OnProgress() && typeid(*self) == typeid(TLZGCompressor)) return {};
  return internal::LZProgress{self, &ReportProgress};
}

}  // namespace

TLZGCompressor::~TLZGCompressor() = default;

void TLZGCompressor::WriteHeader() {
  uint8_t header[internal::kHeaderSize];
  std::memcpy(header, internal::kMagic, 5);
  const uint32_t v = static_cast<uint32_t>(FVersion);
  for (int i = 0; i < 4; ++i) header[5 + i] = static_cast<uint8_t>(v >> (8 * i));
  FDestStream->WriteBuffer(header, internal::kHeaderSize);
}

bool TLZGCompressor::CheckHeader(int32_t& Version) {
  char magic[5] = {};
  FSrcStream->Read(magic, 5);
  const bool ok = std::memcmp(magic, internal::kMagic, 5) == 0;
  if (ok) {
    // Bytes the stream does not deliver leave the old bytes of Version.
    uint8_t bytes[4];
    const uint32_t old = static_cast<uint32_t>(Version);
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<uint8_t>(old >> (8 * i));
    FSrcStream->Read(bytes, 4);
    uint32_t v = 0;
    for (int i = 0; i < 4; ++i) v |= uint32_t{bytes[i]} << (8 * i);
    Version = static_cast<int32_t>(v);
  }
  return ok;
}

void TLZGCompressor::ReadHeader() {
  if (!CheckHeader(FVersion)) throw EGCompressError(_SWrongStreamFormat);
}

void TLZGCompressor::CompressSource() {
  internal::LZEncode(*FSrcStream, *FDestStream, ProgressOf(this));
}

void TLZGCompressor::DecompressSource() {
  internal::LZDecode(*FSrcStream, *FDestStream, ProgressOf(this));
}

}  // namespace Gcompress
}  // namespace quill
