// Gscanner: the token vocabulary.
//
// A scanner (tgscanner.h) cuts a text held as lines into tokens. Each token is
// a TGToken record: its type, its text as scanned (RealStr), the lower-cased
// text for case-free comparisons (TokStr), and where it stands in the source.
// The scanner keeps 21 of them in a TGTokenQueue: slot 0 is the current token,
// slots -1..-10 the ten before it (newest first), slots 1..10 the ten already
// scanned ahead. A TGScannerBookmark is a full snapshot of that queue.
//
//   TGToken t = scanner.GetToken(0);
//   if (t.TokType == ttIdent && t.TokStr == u"begin") ...
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>

#include "quill/rtl/export.h"
#include "quill/rtl/smallset.h"
#include "quill/rtl/types.h"

namespace quill::Gscanner {

// What a token is. The ordinals are fixed (stored in one byte).
enum TGTokenType : uint8_t {
  ttUnknown,       // 0: a word that is neither identifier nor number, an
                   //    unterminated string, or the empty token at the end
  ttIdent,         // 1: a word starting with an identifier character
  ttReservedWord,  // 2: an identifier found in RWords
  ttSeparator,     // 3: a one- or two-character separator from Seps
  ttChar,          // 4: a Pascal '#' code or a C character constant
  ttString,        // 5: a string constant (quotes removed, escapes resolved)
  ttLString,       // 6: a string constant written with the prefix L
  ttNumber,        // 7: a word that converts completely as a number
  ttVariable,      // 8: an identifier found in Vars
  ttFunction,      // 9: an identifier found in Funcs
  ttStrTemplate,   // 10: reserved for template scanning; never assigned
};

// A set of token types (a bit set over the eleven members).
//
//   TGTokenTypes words{ttIdent, ttReservedWord};
//   if (words.Contains(t.TokType)) ...
using TGTokenTypes = TSmallSet<TGTokenType, ttStrTemplate, uint16_t>;

// One token. A token always lies within one line.
struct TGToken {
  TGTokenType TokType = ttUnknown;
  // RealStr lower-cased by the runtime's locale-aware lower-casing.
  UnicodeString TokStr;
  // The text as scanned; for string and character tokens the decoded value.
  UnicodeString RealStr;
  // Index of the source line holding the token, from 0.
  int32_t TokLine = 0;
  // 1-based position of the token's first character in its line.
  int32_t TokStart = 0;
  // 1-based position where scanning resumes after the token (normally one
  // past its last character; a C character constant ends on its closing
  // quote).
  int32_t TokEnd = 0;
  // Offset of the first character in the whole text, from 0, counting every
  // line break as two characters (the lines joined by CR LF).
  int32_t TokPos = 0;
  // The scanner's Localize state when the token was scanned.
  bool TokLocalize = false;

  friend bool operator==(const TGToken&, const TGToken&) = default;
};

// The scanner's 21 token slots, indexed from -10 to 10.
//
// The slots form a ring: Rotate() moves every slot one place towards the past
// in constant time, whatever the tokens hold. Indexing outside -10..10 is the
// caller's error and is not checked here (the scanner's GetToken checks it).
class TGTokenQueue {
 public:
  static constexpr int32_t Low = -10;
  static constexpr int32_t High = 10;
  static constexpr int32_t Size = High - Low + 1;

  // REQUIRES: Low <= index <= High.
  [[nodiscard]] TGToken& operator[](int32_t index) { return slots_[Physical(index)]; }
  [[nodiscard]] const TGToken& operator[](int32_t index) const { return slots_[Physical(index)]; }

  // Slot i receives what slot i+1 held, for i from -10 to 9; the old slot -10
  // is dropped and slot 10 is left holding that stale token: the caller
  // overwrites it (or copies slot 9 into it, as ShiftTokens does).
  void Rotate() { head_ = static_cast<uint8_t>(head_ + 1 == Size ? 0 : head_ + 1); }

  // Slot-by-slot equality (not the ring's physical layout).
  friend bool operator==(const TGTokenQueue& a, const TGTokenQueue& b) {
    for (int32_t i = Low; i <= High; ++i)
      if (!(a[i] == b[i])) return false;
    return true;
  }

 private:
  [[nodiscard]] size_t Physical(int32_t index) const {
    int32_t p = head_ + index - Low;
    return static_cast<size_t>(p >= Size ? p - Size : p);
  }
  std::array<TGToken, Size> slots_{};
  uint8_t head_ = 0;
};

// A complete snapshot of a scanner's queue.
struct TGScannerBookmark {
  // The scanner's last-token index: the highest slot still to be presented;
  // below 0 means end of source.
  int32_t LastTokenIndex = 0;
  TGTokenQueue TokenQueue;
};

// How strings, comments and separators are read (see TGScanner::SetSourceStyle).
enum TSourceStyle : uint8_t { ssNone, ssPascal, ssC, ssSQL, ssPerl };

}  // namespace quill::Gscanner
