// TStream: the operations every stream gets from Read/Write/Seek.
#include <algorithm>
#include <vector>

#include "quill/rtl/exception.h"
#include "quill/rtl/streams.h"

namespace quill {

TStream::~TStream() = default;

void TStream::ReadBuffer(void* buffer, int64_t count) {
  if (count != 0 && Read(buffer, count) != count) throw EReadError(rtlmsg::SReadError);
}

void TStream::WriteBuffer(const void* buffer, int64_t count) {
  if (count != 0 && Write(buffer, count) != count) throw EWriteError(rtlmsg::SWriteError);
}

int64_t TStream::Size() {
  const int64_t pos = Seek(0, soCurrent);
  const int64_t size = Seek(0, soEnd);
  Seek(pos, soBeginning);
  return size;
}

// A plain stream has no way to change its size; streams that can override this.
void TStream::SetSize(int64_t /*new_size*/) {}

int64_t TStream::CopyFrom(TStream& source, int64_t count) {
  if (count <= 0) {
    source.SetPosition(0);
    count = source.Size();
  }
  constexpr int64_t kChunk = 64 * 1024;
  std::vector<uint8_t> buffer(static_cast<size_t>(std::min(count, kChunk)));
  int64_t left = count;
  while (left > 0) {
    const int64_t n = std::min(left, kChunk);
    source.ReadBuffer(buffer.data(), n);
    WriteBuffer(buffer.data(), n);
    left -= n;
  }
  return count;
}

}  // namespace quill
