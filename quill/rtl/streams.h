// Streams: TStream (seekable bytes), TMemoryStream and TFileStream.
//
// Read/Write transfer up to the count asked and return what they moved;
// ReadBuffer/WriteBuffer raise EReadError "Stream read error" /
// EWriteError "Stream write error" when fewer bytes move.
// Positions and sizes are 64-bit; seeking beyond the end is allowed and a
// write there fills the gap with zeros.
//
//   TMemoryStream ms;  ms.WriteBuffer("abc", 3);  ms.SaveToFile("/tmp/x.bin");
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/tobject.h"
#include "quill/rtl/types.h"

namespace quill {

namespace internal {
class MemoryStreamAccess;  // in-place access for library code (rtl/internal)
}  // namespace internal

enum TSeekOrigin : uint8_t { soBeginning, soCurrent, soEnd };

class QUILL_API TStream : public TObject {
 public:
  ~TStream() override;

  // Moves up to `count` bytes; returns the number moved (0 at the end).
  virtual int64_t Read(void* buffer, int64_t count) = 0;
  virtual int64_t Write(const void* buffer, int64_t count) = 0;
  // Sets the position relative to `origin`; returns the new position.
  virtual int64_t Seek(int64_t offset, TSeekOrigin origin) = 0;

  void ReadBuffer(void* buffer, int64_t count);
  void WriteBuffer(const void* buffer, int64_t count);

  // Property Position.
  [[nodiscard]] int64_t Position() { return Seek(0, soCurrent); }
  void SetPosition(int64_t pos) { Seek(pos, soBeginning); }
  // Property Size: the default finds the end by seeking and restores the
  // position. The default SetSize does nothing (a stream that cannot resize).
  [[nodiscard]] virtual int64_t Size();
  virtual void SetSize(int64_t new_size);

  // Copies `count` bytes from `source`'s position (0 or less: the whole source
  // from position 0); returns the count copied. A short source raises EReadError.
  int64_t CopyFrom(TStream& source, int64_t count);
};

// A stream over a growable byte buffer. The position may be set anywhere,
// even before the start: reads and writes there move nothing. The buffer's
// capacity grows geometrically and is kept when the size shrinks (Clear
// frees it). Copies hold their own bytes.
class QUILL_API TMemoryStream : public TStream {
 public:
  TMemoryStream() = default;
  TMemoryStream(const TMemoryStream& other);
  TMemoryStream& operator=(const TMemoryStream& other);
  ~TMemoryStream() override;

  int64_t Read(void* buffer, int64_t count) override;
  int64_t Write(const void* buffer, int64_t count) override;
  int64_t Seek(int64_t offset, TSeekOrigin origin) override;
  [[nodiscard]] int64_t Size() override { return size_; }
  // Truncates or zero-extends; a position beyond the new end moves to the
  // end; a negative size empties the stream. Raises std::bad_alloc when the
  // memory cannot be had (the stream is then unchanged).
  void SetSize(int64_t new_size) override;

  // Replaces the contents by the file's bytes, position 0. Raises EFOpenError
  // (and leaves the stream unchanged).
  void LoadFromFile(const std::string& file_name);
  void LoadFromStream(TStream& source);
  // Writes the whole contents to the file (created or truncated). Raises EFCreateError.
  void SaveToFile(const std::string& file_name) const;
  void SaveToStream(TStream& dest) const;
  void Clear();

  // The first byte of the contents (null while nothing was ever allocated).
  // Valid until the next call that grows the stream.
  [[nodiscard]] uint8_t* Memory() { return data_.get(); }
  [[nodiscard]] const uint8_t* Memory() const { return data_.get(); }

 private:
  friend class internal::MemoryStreamAccess;

  struct FreeBytes {
    void operator()(uint8_t* p) const noexcept;
  };

  // Makes room for `needed` bytes without touching the size or the bytes
  // beyond it; new room is left uninitialised.
  void Reserve(int64_t needed);

  std::unique_ptr<uint8_t, FreeBytes> data_;
  int64_t size_ = 0;
  int64_t capacity_ = 0;
  int64_t position_ = 0;
};

// File open modes (the runtime's fmXXX values).
inline constexpr uint16_t fmCreate = 0xFF00;
inline constexpr uint16_t fmOpenRead = 0x0000;
inline constexpr uint16_t fmOpenWrite = 0x0001;
inline constexpr uint16_t fmOpenReadWrite = 0x0002;
inline constexpr uint16_t fmShareDenyWrite = 0x0020;
inline constexpr uint16_t fmShareDenyNone = 0x0040;

class QUILL_API TFileStream : public TStream {
 public:
  // Opens or creates `file_name` (UTF-8). fmCreate creates or truncates the
  // file for reading and writing; otherwise the low bits choose fmOpenRead,
  // fmOpenWrite or fmOpenReadWrite. Share flags are accepted and ignored.
  // Raises EFOpenError "Cannot open file "%s". %s" (full absolute path,
  // system error text without final period; a directory counts as a failure)
  // or EFCreateError "Cannot create file "%s". %s".
  TFileStream(const std::string& file_name, uint16_t mode);
  ~TFileStream() override;
  TFileStream(const TFileStream&) = delete;
  TFileStream& operator=(const TFileStream&) = delete;

  int64_t Read(void* buffer, int64_t count) override;
  int64_t Write(const void* buffer, int64_t count) override;
  // Returns -1 when the system refuses the position (before the start).
  int64_t Seek(int64_t offset, TSeekOrigin origin) override;
  // The file's size from the system (no seeking).
  [[nodiscard]] int64_t Size() override;
  // Truncates or extends (with zeros) the file; raises EWriteError "Stream
  // write error" when the system refuses. A position beyond the new end moves
  // to the end.
  void SetSize(int64_t new_size) override;
  [[nodiscard]] const std::string& FileName() const { return file_name_; }

 private:
  int fd_ = -1;
  std::string file_name_;
};

}  // namespace quill
