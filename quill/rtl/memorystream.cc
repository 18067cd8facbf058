// TMemoryStream: a stream over a growable byte buffer.
//
// The bytes live in a malloc'ed block so that growth can use realloc (large
// blocks are usually moved by remapping pages, not by copying). Growing the
// block never initialises it: Write fills what it appends, and the two places
// where new bytes must read as zero (SetSize, and the gap a write leaves after
// a seek beyond the end) clear them explicitly.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#include "quill/rtl/streams.h"

namespace quill {

void TMemoryStream::FreeBytes::operator()(uint8_t* p) const noexcept { std::free(p); }

TMemoryStream::TMemoryStream(const TMemoryStream& other)
    : TStream(other), position_(other.position_) {
  Reserve(other.size_);
  if (other.size_ > 0) std::memcpy(data_.get(), other.data_.get(), static_cast<size_t>(other.size_));
  size_ = other.size_;
}

TMemoryStream& TMemoryStream::operator=(const TMemoryStream& other) {
  if (this != &other) {
    Reserve(other.size_);
    if (other.size_ > 0)
      std::memcpy(data_.get(), other.data_.get(), static_cast<size_t>(other.size_));
    size_ = other.size_;
    position_ = other.position_;
  }
  return *this;
}

TMemoryStream::~TMemoryStream() = default;

void TMemoryStream::Reserve(int64_t needed) {
  if (needed <= capacity_) return;
  // Geometric growth (1.5x) keeps a run of appends linear overall.
  int64_t capacity = std::max<int64_t>(needed, 64);
  if (capacity_ <= INT64_MAX / 3) capacity = std::max(capacity, capacity_ + capacity_ / 2);
  if (static_cast<uint64_t>(capacity) > SIZE_MAX / 2) throw std::bad_alloc();
  void* p = std::realloc(data_.get(), static_cast<size_t>(capacity));
  if (p == nullptr) {
    // Retry with exactly what is needed before giving up.
    capacity = needed;
    p = std::realloc(data_.get(), static_cast<size_t>(capacity));
    if (p == nullptr) throw std::bad_alloc();
  }
  (void)data_.release();  // realloc took over (or freed) the old block
  data_.reset(static_cast<uint8_t*>(p));
  capacity_ = capacity;
}

int64_t TMemoryStream::Read(void* buffer, int64_t count) {
  // A position before the start or at/after the end reads nothing.
  if (count <= 0 || position_ < 0 || position_ >= size_) return 0;
  const int64_t n = std::min(count, size_ - position_);
  std::memcpy(buffer, data_.get() + position_, static_cast<size_t>(n));
  position_ += n;
  return n;
}

int64_t TMemoryStream::Write(const void* buffer, int64_t count) {
  // A position so far out that the end would overflow cannot be written.
  if (count <= 0 || position_ < 0 || count > INT64_MAX - position_) return 0;
  const int64_t end = position_ + count;
  if (end > size_) {
    Reserve(end);
    // A gap left by seeking beyond the end reads as zeros.
    if (position_ > size_)
      std::memset(data_.get() + size_, 0, static_cast<size_t>(position_ - size_));
    size_ = end;
  }
  std::memcpy(data_.get() + position_, buffer, static_cast<size_t>(count));
  position_ = end;
  return count;
}

int64_t TMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
  switch (origin) {
    case soBeginning: position_ = offset; break;
    case soCurrent: position_ += offset; break;
    case soEnd: position_ = size_ + offset; break;
  }
  return position_;
}

void TMemoryStream::SetSize(int64_t new_size) {
  // A negative size empties the stream.
  new_size = std::max<int64_t>(new_size, 0);
  if (new_size > size_) {
    Reserve(new_size);
    std::memset(data_.get() + size_, 0, static_cast<size_t>(new_size - size_));
  }
  size_ = new_size;
  if (position_ > new_size) position_ = new_size;
}

void TMemoryStream::LoadFromFile(const std::string& file_name) {
  TFileStream file(file_name, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(file);
}

void TMemoryStream::LoadFromStream(TStream& source) {
  source.SetPosition(0);
  const int64_t n = std::max<int64_t>(source.Size(), 0);
  // Read into a fresh block and replace only once the read succeeded, so a
  // failed load leaves us unchanged.
  TMemoryStream loaded;
  loaded.Reserve(n);
  if (n > 0) source.ReadBuffer(loaded.data_.get(), n);
  loaded.size_ = n;
  data_.swap(loaded.data_);
  std::swap(capacity_, loaded.capacity_);
  size_ = n;
  position_ = 0;
}

void TMemoryStream::SaveToFile(const std::string& file_name) const {
  TFileStream file(file_name, fmCreate);
  SaveToStream(file);
}

void TMemoryStream::SaveToStream(TStream& dest) const {
  if (size_ > 0) dest.WriteBuffer(data_.get(), size_);
}

void TMemoryStream::Clear() {
  data_.reset();
  size_ = 0;
  capacity_ = 0;
  position_ = 0;
}

}  // namespace quill
