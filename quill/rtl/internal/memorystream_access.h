// In-place access to a TMemoryStream's buffer for library code that reads or
// fills it directly instead of going through Read/Write (the LZG decoder).
//
// Only plain TMemoryStream objects qualify (PlainMemoryStream): a subclass
// may override Read/Write/Seek, and bypassing those would change what it sees.
// Pointers handed out stay valid until the stream is grown again, by these
// routines or by anyone else.
#pragma once

#include <cstdint>
#include <typeinfo>

#include "quill/rtl/streams.h"

namespace quill::internal {

class MemoryStreamAccess {
 public:
  // `stream` as a TMemoryStream when it is exactly one, else null.
  [[nodiscard]] static TMemoryStream* PlainMemoryStream(TStream& stream) {
    return typeid(stream) == typeid(TMemoryStream) ? static_cast<TMemoryStream*>(&stream)
                                                   : nullptr;
  }

  // Sets the size to `new_size` (at least the current size) leaving the new
  // bytes uninitialised, and returns the buffer's start. The position is not
  // changed. Raises std::bad_alloc (stream unchanged) when memory runs out.
  [[nodiscard]] static uint8_t* GrowUninitialised(TMemoryStream& m, int64_t new_size) {
    if (new_size > m.size_) {
      m.Reserve(new_size);
      m.size_ = new_size;
    }
    return m.data_.get();
  }

  // Cuts the size back to `new_size` (0 to the current size) keeping the
  // capacity; a position beyond the new end moves to it.
  static void Trim(TMemoryStream& m, int64_t new_size) {
    if (new_size < 0 || new_size > m.size_) return;
    m.size_ = new_size;
    if (m.position_ > new_size) m.position_ = new_size;
  }
};

}  // namespace quill::internal
