#include "quill/compress/internal/lzreference.h"

#include <algorithm>
#include <cstring>

namespace quill::Gcompress::internal {

// ---------------------------------------------------------------- TSlideWindow

TSlideWindow::TSlideWindow(int32_t AMaxWinSize)
    : FMaxWinSize(AMaxWinSize), FData(new uint8_t[static_cast<size_t>(AMaxWinSize)]()) {}

TSlideWindow::~TSlideWindow() = default;

int32_t TSlideWindow::RealIndex(int32_t Index) const {
  int32_t r = FStart + Index;
  if (r >= FMaxWinSize) r -= FMaxWinSize;
  // Only a damaged copy distance reaches before the ring's start.
  if (r < 0) r += FMaxWinSize;
  return r;
}

void TSlideWindow::IncIntIndex(int32_t& Index, int32_t Count) const {
  Index += Count;
  if (Index >= FMaxWinSize) Index -= FMaxWinSize;
}

void TSlideWindow::Grow(int32_t Count) {
  FSize += Count;
  if (FSize > FMaxWinSize) {
    const int32_t excess = FSize - FMaxWinSize;
    IncIntIndex(FStart, excess);
    FGlobalStart += excess;
    FSize = FMaxWinSize;
  }
}

void TSlideWindow::AddByte(uint8_t Value) {
  Grow(1);
  SetData(FSize - 1, Value);
}

void TSlideWindow::DeleteFirst(int32_t Count) {
  IncIntIndex(FStart, Count);
  FSize -= Count;
}

// -------------------------------------------------------------- TPositionsList

TPositionsList::TPositionsList(int32_t AMaxPosCount) : TSlideWindow(AMaxPosCount * 4) {}

TPositionsList::~TPositionsList() = default;

// The capacity and every entry's offset are multiples of 4, so an entry never
// straddles the ring's wrap.
int32_t TPositionsList::Items(int32_t Index) const {
  int32_t value;
  std::memcpy(&value, &FData[RealIndex(Index * 4)], 4);
  return value;
}

void TPositionsList::SetItems(int32_t Index, int32_t Value) {
  std::memcpy(&FData[RealIndex(Index * 4)], &Value, 4);
}

void TPositionsList::AddPosition(int32_t Value) {
  // When full, this overwrites the oldest entry, which Grow then drops.
  std::memcpy(&FData[RealIndex(FSize)], &Value, 4);
  Grow(4);
}

void TPositionsList::DeleteFirstItems(int32_t N) {
  if (N <= Count()) DeleteFirst(N * 4);
}

bool TPositionsList::Find(int32_t Position, int32_t& Index) const {
  return FindIn(Position, 0, Count() - 1, Index);
}

bool TPositionsList::FindIn(int32_t Position, int32_t Lo, int32_t Hi, int32_t& Index) const {
  if (Lo > Hi) {
    Index = Lo;
    return false;
  }
  const int32_t mid = (Lo + Hi) / 2;
  const int32_t item = Items(mid);
  if (Position < item) return FindIn(Position, Lo, mid - 1, Index);
  if (Position == item) {
    Index = mid;
    return true;
  }
  return FindIn(Position, mid + 1, Hi, Index);
}

// --------------------------------------------------------------- TLZDictionary

TLZDictionary::TLZDictionary() {
  for (auto& list : FPositions) list = std::make_unique<TPositionsList>(kPositionsPerByte);
}

TLZDictionary::~TLZDictionary() = default;

void TLZDictionary::AddItem(const uint8_t* Data, int32_t GlobalStart, int32_t DataIndex) {
  FPositions[*Data]->AddPosition(GlobalStart + DataIndex);
}

// -------------------------------------------------------------- TLZSlideWindow

TLZSlideWindow::TLZSlideWindow(int32_t AMaxWinSize, int32_t AMaxBufSize, int32_t AMaxStrSize,
                               TProcType AProcType)
    : TSlideWindow(AMaxWinSize),
      FMaxStrSize(AMaxStrSize),
      FMaxBufSize(AMaxBufSize),
      FDictionary(std::make_unique<TLZDictionary>()),
      FProcType(AProcType) {}

TLZSlideWindow::~TLZSlideWindow() = default;

void TLZSlideWindow::Grow(int32_t Count) {
  if (FProcType == ptCompress) {
    const int32_t excess = FSize + Count - FMaxWinSize;
    if (excess >= 1) FBufIndex -= excess;
  }
  TSlideWindow::Grow(Count);
}

void TLZSlideWindow::AddBytesFromStream(TStream& Stream, int32_t Count) {
  const int32_t p = RealIndex(FSize);
  if (p + Count < FMaxWinSize) {
    Stream.Read(&FData[p], Count);
  } else {
    Stream.Read(&FData[p], FMaxWinSize - p);
    const int32_t rest = p + Count - FMaxWinSize;
    if (rest > 0) Stream.Read(&FData[0], rest);
  }
  Grow(Count);
}

int32_t TLZSlideWindow::FillBufferFromStream(TStream& Stream) {
  const int64_t left = Stream.Size() - Stream.Position();
  const int32_t n = static_cast<int32_t>(std::min<int64_t>(FMaxBufSize - BufSize(), left));
  if (n >= 1) AddBytesFromStream(Stream, n);
  return n;
}

void TLZSlideWindow::WriteRaw(TStream& Stream, int32_t P, int32_t Count) {
  if (P + Count < FMaxWinSize) {
    Stream.WriteBuffer(&FData[P], Count);
  } else {
    Stream.WriteBuffer(&FData[P], FMaxWinSize - P);
    Stream.WriteBuffer(&FData[0], P + Count - FMaxWinSize);
  }
}

void TLZSlideWindow::WriteBytesToStream(TStream& Stream, int32_t Index, int32_t Count) {
  WriteRaw(Stream, RealIndex(Index), std::min(Count, FSize));
}

void TLZSlideWindow::EnlargeDictionary(uint16_t Length) {
  const int32_t first = FBufIndex;
  FBufIndex += Length;
  for (int32_t i = first; i < first + Length; ++i)
    FDictionary->AddItem(&FData[RealIndex(i)], FGlobalStart, i);
}

bool TLZSlideWindow::FindMatch(uint16_t& Offset, uint16_t& Length) {
  if (FBufIndex > FSize - kMinMatch) return false;
  Length = 0;
  bool found = false;
  TPositionsList& list = FDictionary->Positions(Buffer(0));
  for (int32_t i = list.Count() - 1; i >= 0; --i) {
    const int32_t pos = list.Items(i);
    if (pos < FGlobalStart) {
      // This entry and every older one have left the window.
      list.DeleteFirstItems(i + 1);
      return found;
    }
    const int32_t r = pos - FGlobalStart;
    int32_t j = 1;
    while (j < BufSize() && Data(r + j) == Buffer(j) && j < FMaxStrSize) ++j;
    if (j > 2 && j > Length) {
      found = true;
      Length = static_cast<uint16_t>(j);
      Offset = static_cast<uint16_t>(FBufIndex - r);
      if (Length > kGoodEnough - 1) return true;
    }
  }
  return found;
}

void TLZSlideWindow::UnpackSequence(uint16_t Offset, uint16_t Len, TStream& DestStream) {
  int32_t s = RealIndex(FSize - Offset);
  int32_t t = RealIndex(FSize);
  const int32_t first = s;
  for (int32_t k = 0; k < Len; ++k) {
    FData[t] = FData[s];
    IncIntIndex(s, 1);
    IncIntIndex(t, 1);
  }
  // Written from where the copy was read, after the copy: with a full window
  // and a distance above 2,048 - Len this shows the bytes the copy has just
  // put over the front of its own source.
  WriteRaw(DestStream, first, Len);
  Grow(Len);
}

// ---------------------------------------------------------------- coding loops

void ReferenceCompress(TStream& src, TStream& dst, const LZProgress& progress) {
  TLZSlideWindow window(kWindowSize, kLookahead, kMaxMatch, ptCompress);
  uint8_t literals[kMaxLiteralRun];
  int32_t count = 0;
  auto flush = [&] {
    const uint8_t head = static_cast<uint8_t>(count * 2);
    dst.WriteBuffer(&head, 1);
    dst.WriteBuffer(literals, count);
    count = 0;
  };
  while (src.Position() < src.Size() || window.BufSize() > 0) {
    window.FillBufferFromStream(src);
    uint16_t offset = 0;
    uint16_t length = 0;
    if (window.FindMatch(offset, length)) {
      if (count > 0) flush();
      uint8_t token[2];
      EncodeCopy(token, offset, length);
      dst.WriteBuffer(token, 2);
      window.EnlargeDictionary(length);
    } else {
      if (count == kMaxLiteralRun) flush();
      literals[count++] = window.Buffer(0);
      window.EnlargeDictionary(1);
    }
    progress(src.Position(), src.Size());
  }
  if (count > 0) flush();
}

void ReferenceDecompress(TStream& src, TStream& dst, const LZProgress& progress) {
  TLZSlideWindow window(kWindowSize, 0, kMaxMatch, ptDecompress);
  while (src.Position() < src.Size()) {
    uint8_t b = 0;
    src.Read(&b, 1);
    if (b & 1) {
      uint8_t c = 0;  // a stream cut inside the token reads as 0
      src.Read(&c, 1);
      uint32_t distance = 0;
      uint32_t length = 0;
      DecodeCopy(b | (uint32_t{c} << 8), distance, length);
      window.UnpackSequence(static_cast<uint16_t>(distance), static_cast<uint16_t>(length), dst);
    } else {
      const int32_t n = b >> 1;
      window.AddBytesFromStream(src, n);
      window.WriteBytesToStream(dst, window.Size() - n, n);
    }
    progress(src.Position(), src.Size());
  }
}

}  // namespace quill::Gcompress::internal
