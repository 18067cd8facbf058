// The LZG coder stated with its window classes, step by step.
//
// These classes are the readable statement of the algorithm: a ring of bytes
// (TSlideWindow), a ring of positions (TPositionsList), one position list per
// byte value (TLZDictionary) and the coder's window with its lookahead
// (TLZSlideWindow). ReferenceCompress/ReferenceDecompress drive them exactly
// as the coding loops do. The fast coder in lzcoder.h must produce the same
// bytes; the tests hold the two side by side.
//
// One guard is added to the plain statement: RealIndex wraps a negative index
// back into the ring, so a copy whose distance reaches before the first byte
// (damaged data) reads the ring's unwritten bytes, which are zero.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "quill/compress/compressor.h"
#include "quill/compress/internal/lzformat.h"
#include "quill/rtl/streams.h"
#include "quill/rtl/tobject.h"

namespace quill::Gcompress::internal {

// A fixed-capacity ring of bytes. Indexes passed to Data/SetData count from
// the oldest byte held.
class TSlideWindow : public TObject {
 public:
  // Create: a zero-filled ring of AMaxWinSize bytes, all counters 0.
  explicit TSlideWindow(int32_t AMaxWinSize);
  ~TSlideWindow() override;
  TSlideWindow(const TSlideWindow&) = delete;
  TSlideWindow& operator=(const TSlideWindow&) = delete;

  // Physical index of relative index `Index` (one wrap at most each way).
  [[nodiscard]] int32_t RealIndex(int32_t Index) const;
  // Advances a physical index by `Count`, wrapping once.
  void IncIntIndex(int32_t& Index, int32_t Count) const;
  // Adds `Count` bytes at the end; when the ring overflows, the oldest bytes
  // are dropped (overwritten, not moved) and GlobalStart grows.
  virtual void Grow(int32_t Count);
  // Grow(1), then stores `Value` as the newest byte.
  void AddByte(uint8_t Value);
  // Forgets the `Count` oldest bytes; GlobalStart is not changed.
  void DeleteFirst(int32_t Count);

  [[nodiscard]] uint8_t Data(int32_t Index) const { return FData[RealIndex(Index)]; }
  void SetData(int32_t Index, uint8_t Value) { FData[RealIndex(Index)] = Value; }
  [[nodiscard]] int32_t MaxWinSize() const { return FMaxWinSize; }
  [[nodiscard]] int32_t Size() const { return FSize; }
  [[nodiscard]] int32_t Start() const { return FStart; }
  [[nodiscard]] int32_t GlobalStart() const { return FGlobalStart; }

 protected:
  int32_t FStart = 0;        // physical index of the oldest byte
  int32_t FMaxWinSize;       // capacity
  int32_t FGlobalStart = 0;  // bytes ever dropped from the front
  int32_t FSize = 0;         // bytes held
  std::unique_ptr<uint8_t[]> FData;
};

// A ring of 32-bit positions kept four bytes each in the byte ring. Positions
// are added in rising order, so the list is sorted; a full list drops its
// oldest entry when a new one is added.
class TPositionsList : public TSlideWindow {
 public:
  explicit TPositionsList(int32_t AMaxPosCount);
  ~TPositionsList() override;

  [[nodiscard]] int32_t Count() const { return FSize / 4; }
  [[nodiscard]] int32_t Items(int32_t Index) const;
  void SetItems(int32_t Index, int32_t Value);
  void AddPosition(int32_t Value);
  // Drops the N oldest entries; does nothing when N > Count.
  void DeleteFirstItems(int32_t N);
  // Binary search: true and the entry's index when found, else false and the
  // index where it would be inserted.
  [[nodiscard]] bool Find(int32_t Position, int32_t& Index) const;

 private:
  [[nodiscard]] bool FindIn(int32_t Position, int32_t Lo, int32_t Hi, int32_t& Index) const;
};

// For each byte value, the positions where it was last coded (40 at most).
class TLZDictionary : public TObject {
 public:
  TLZDictionary();
  ~TLZDictionary() override;

  // Adds GlobalStart + DataIndex to the list of the byte at `Data`.
  void AddItem(const uint8_t* Data, int32_t GlobalStart, int32_t DataIndex);
  [[nodiscard]] TPositionsList& Positions(int index) { return *FPositions[index]; }

 private:
  std::array<std::unique_ptr<TPositionsList>, 256> FPositions;
};

// The coder's window: coded history followed by the lookahead (compressing),
// or the last 2,048 output bytes (expanding).
class TLZSlideWindow : public TSlideWindow {
 public:
  TLZSlideWindow(int32_t AMaxWinSize, int32_t AMaxBufSize, int32_t AMaxStrSize, TProcType AProcType);
  ~TLZSlideWindow() override;

  // When compressing, keeps FBufIndex on the first uncoded byte as the front
  // slides; then grows the ring.
  void Grow(int32_t Count) override;

  [[nodiscard]] int32_t BufSize() const { return FSize - FBufIndex; }
  [[nodiscard]] uint8_t Buffer(int32_t Index) const { return Data(FBufIndex + Index); }
  [[nodiscard]] int32_t BufIndex() const { return FBufIndex; }

  // Reads `Count` bytes from the stream into the ring's end (wrapping) and
  // grows by Count, whatever the stream delivered.
  void AddBytesFromStream(TStream& Stream, int32_t Count);
  // Tops the lookahead up to its capacity; returns the count added.
  int32_t FillBufferFromStream(TStream& Stream);
  // Writes `Count` bytes from physical index P (wrapping once).
  void WriteRaw(TStream& Stream, int32_t P, int32_t Count);
  void WriteBytesToStream(TStream& Stream, int32_t Index, int32_t Count);
  // Marks `Length` lookahead bytes as coded and enters each in the dictionary.
  void EnlargeDictionary(uint16_t Length);
  // Searches the dictionary for the longest match of the lookahead's start.
  [[nodiscard]] bool FindMatch(uint16_t& Offset, uint16_t& Length);
  // Appends a copy of `Len` bytes from `Offset` back and writes it out.
  void UnpackSequence(uint16_t Offset, uint16_t Len, TStream& DestStream);

 private:
  int32_t FMaxStrSize;
  int32_t FMaxBufSize;
  std::unique_ptr<TLZDictionary> FDictionary;
  int32_t FBufIndex = 0;
  TProcType FProcType;
};

// The coding loops over the window classes (the statement of CompressSource
// and DecompressSource).
void ReferenceCompress(TStream& src, TStream& dst, const LZProgress& progress);
void ReferenceDecompress(TStream& src, TStream& dst, const LZProgress& progress);

}  // namespace quill::Gcompress::internal
