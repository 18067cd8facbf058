// TMemoryStream: a stream over a growable byte buffer.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "quill/rtl/streams.h"

namespace quill {

TMemoryStream::~TMemoryStream() = default;

int64_t TMemoryStream::Read(void* buffer, int64_t count) {
  const int64_t size = Size();
  // A position before the start or at/after the end reads nothing.
  if (count <= 0 || position_ < 0 || position_ >= size) return 0;
  const int64_t n = std::min(count, size - position_);
  std::memcpy(buffer, data_.data() + position_, static_cast<size_t>(n));
  position_ += n;
  return n;
}

int64_t TMemoryStream::Write(const void* buffer, int64_t count) {
  // A position so far out that the end would overflow cannot be written.
  if (count <= 0 || position_ < 0 || count > INT64_MAX - position_) return 0;
  const int64_t end = position_ + count;
  // Writing past the end grows the buffer; a gap left by seeking beyond the
  // end is zero-filled by the resize.
  if (end > Size()) data_.resize(static_cast<size_t>(end));
  std::memcpy(data_.data() + position_, buffer, static_cast<size_t>(count));
  position_ = end;
  return count;
}

int64_t TMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
  switch (origin) {
    case soBeginning: position_ = offset; break;
    case soCurrent: position_ += offset; break;
    case soEnd: position_ = Size() + offset; break;
  }
  return position_;
}

void TMemoryStream::SetSize(int64_t new_size) {
  // A negative size empties the stream.
  new_size = std::max<int64_t>(new_size, 0);
  data_.resize(static_cast<size_t>(new_size));
  if (position_ > new_size) position_ = new_size;
}

void TMemoryStream::LoadFromFile(const std::string& file_name) {
  TFileStream file(file_name, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(file);
}

void TMemoryStream::LoadFromStream(TStream& source) {
  source.SetPosition(0);
  const int64_t n = source.Size();
  std::vector<uint8_t> bytes(static_cast<size_t>(std::max<int64_t>(n, 0)));
  if (n > 0) source.ReadBuffer(bytes.data(), n);
  // Replace only once the read succeeded, so a failed load leaves us unchanged.
  data_.swap(bytes);
  position_ = 0;
}

void TMemoryStream::SaveToFile(const std::string& file_name) const {
  TFileStream file(file_name, fmCreate);
  SaveToStream(file);
}

void TMemoryStream::SaveToStream(TStream& dest) const {
  if (!data_.empty()) dest.WriteBuffer(data_.data(), static_cast<int64_t>(data_.size()));
}

void TMemoryStream::Clear() {
  std::vector<uint8_t>().swap(data_);
  position_ = 0;
}

}  // namespace quill
