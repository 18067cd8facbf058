// TGScanner's engine: skipping blanks and comments, cutting out one token and
// classifying it, the string, character-code and escape readers, and the
// three entry points FirstToken, NextToken and NextTokenAsTemplate.
#include <string>
#include <string_view>

#include "quill/rtl/casing.h"
#include "quill/rtl/exception.h"
#include "quill/rtl/floatconv.h"
#include "quill/scanner/internal/text.h"
#include "quill/scanner/tgscanner.h"
#include "quill/strings/charclass.h"
#include "quill/strings/convert.h"

namespace quill::Gscanner {

using internal::CharAt;
using internal::CharIs;
using internal::CopyView;
using internal::Len;
using internal::PosFrom;
using internal::StandsAt;

namespace internal {

void LowerInto(std::u16string_view src, UnicodeString& dst) {
  // One pass maps A-Z and notes whether anything is not ASCII (tokens are
  // short: a second pass costs more than it saves); then the rare token
  // that is not is lowered again by the runtime.
  dst.resize(src.size());
  unsigned all = 0;
  WideChar* const out = dst.data();
  for (size_t k = 0; k < src.size(); ++k) {
    const WideChar c = src[k];
    all |= c;
    out[k] = static_cast<WideChar>(c + (static_cast<unsigned>(c - u'A') < 26u ? 32 : 0));
  }
  if (all >= 128) dst = AnsiLowerCase(src);
}

}  // namespace internal

namespace {

// The first character of the decimal text of `value`.
WideChar FirstDecimalDigit(int32_t value) {
  const std::string text = std::to_string(value);
  return static_cast<WideChar>(static_cast<unsigned char>(text[0]));
}

// Restores the string quote changed for template mode, also when an error
// leaves the scan.
class QuoteGuard {
 public:
  QuoteGuard(WideChar& quote, bool active) : quote_(quote), saved_(quote), active_(active) {}
  ~QuoteGuard() {
    if (active_) quote_ = saved_;
  }
  QuoteGuard(const QuoteGuard&) = delete;
  QuoteGuard& operator=(const QuoteGuard&) = delete;

 private:
  WideChar& quote_;
  WideChar saved_;
  bool active_;
};

}  // namespace

// ---------------------------------------------------------------------------
// Character classes of the engine

bool TGScanner::IsSeparator(const UnicodeString& S, int32_t& I) const {
  const WideChar c = CharAt(S, I);
  if (I < Len(S)) {
    const WideChar next = CharAt(S, I + 1);
    if (!Gstrings::IsSpace(next) && SepsContainPair(c, next)) {
      ++I;
      return true;
    }
  }
  // A position outside the line reads the character 0, which is a separator
  // only if someone put a 0 into the separator text.
  return SepsContain(c);
}

bool TGScanner::isLineComment(const UnicodeString& S, int32_t I) {
  if (!StandsAt(S, I, FLineCommentStr)) return false;
  // A marker must lie wholly inside the 13 characters after the comment text:
  // "LOCALIZE ON" after up to two blanks, "LOCALIZE OFF" after at most one.
  std::u16string_view window = CopyView(S, I + Len(FLineCommentStr), 13);
  while (!window.empty() && window.front() <= 32) window.remove_prefix(1);
  while (!window.empty() && window.back() <= 32) window.remove_suffix(1);
  if (window.size() == 11 || window.size() == 12) {
    char16_t upper[12];
    for (size_t k = 0; k < window.size(); ++k) {
      const WideChar ch = window[k];
      upper[k] = (ch >= u'a' && ch <= u'z') ? static_cast<WideChar>(ch - (u'a' - u'A')) : ch;
    }
    const std::u16string_view marker(upper, window.size());
    if (marker == u"LOCALIZE ON") FLocalize = true;
    else if (marker == u"LOCALIZE OFF") FLocalize = false;
  }
  return true;
}

bool TGScanner::isBlockComment(const UnicodeString& S, int32_t I, UnicodeString& Closer) const {
  for (int32_t k = 0; k < FBlockComments1.Count(); ++k) {
    if (StandsAt(S, I, FBlockComments1.Get(k))) {
      Closer = FBlockComments2.Get(k);
      return true;
    }
  }
  return false;
}

bool TGScanner::isNumber(const UnicodeString& Str) const {
  // Fast path: a run of ASCII digits always converts (the length bound keeps
  // overflowing runs on the general path).
  if (!Str.empty() && Str.size() <= 300) {
    bool digits = true;
    for (WideChar c : Str)
      if (c < u'0' || c > u'9') {
        digits = false;
        break;
      }
    if (digits) return true;
  }
  double value = 0;
  return TryStrToFloat(std::u16string_view(Str), value);
}

bool TGScanner::isVar(const UnicodeString& Str) const {
  return FVars.Count() > 0 && FVars.IndexOf(Str) >= 0;
}

bool TGScanner::isFunc(const UnicodeString& Str) const {
  return FFuncs.Count() > 0 && FFuncs.IndexOf(Str) >= 0;
}

// ---------------------------------------------------------------------------
// Strings, character codes and escapes

bool TGScanner::RunString(const UnicodeString& S, int32_t& I, UnicodeString& Str) {
  return FSourceStyle == ssPascal ? RunPascalString(S, I, Str) : RunCString(S, I, Str);
}

bool TGScanner::RunPascalString(const UnicodeString& S, int32_t& I, UnicodeString& Str) {
  Str.clear();
  bool in_quote = false;
  while (I <= Len(S)) {
    const WideChar c = CharAt(S, I);
    if (in_quote) {
      if (IsQuote(c)) {
        if (CharIs(S, I + 1, c)) {
          ++I;  // doubled quote: one quote character
          Str += c;
        } else {
          in_quote = false;
        }
      } else {
        Str += c;
      }
      ++I;
    } else if (IsExtraCharSymb(c)) {
      Str += RunPascalExtraChar(S, I);
    } else if (IsQuote(c)) {
      in_quote = true;
      ++I;
    } else {
      break;
    }
  }
  return !in_quote;
}

bool TGScanner::RunCString(const UnicodeString& S, int32_t& I, UnicodeString& Str) {
  Str.clear();
  if (!CharIs(S, I, FStrQuote)) return false;
  ++I;
  for (;;) {
    if (I > Len(S)) return false;  // unterminated on this line
    const WideChar c = CharAt(S, I);
    if (IsQuote(c)) {
      if (FSourceStyle == ssSQL && CharIs(S, I + 1, c)) {
        Str += c;
        I += 2;
        continue;
      }
      ++I;
      return true;
    }
    if (IsExtraCharSymb(c)) {
      Str += RunCExtraChar(S, I);
    } else {
      Str += c;
      ++I;
    }
  }
}

WideChar TGScanner::RunPascalExtraChar(const UnicodeString& S, int32_t& I) {
  if (!CharIs(S, I, FExtraCharSymbol)) return 0;
  const int32_t symbol = I;
  ++I;
  const int32_t p = I;
  // The run is '$' and decimal digits judged by the low byte; hexadecimal
  // letters are deliberately not part of it (#$1F is the code $1 and a word F).
  while (I <= Len(S)) {
    const unsigned low = CharAt(S, I) & 0xFFu;
    if (low != '$' && !(low >= '0' && low <= '9')) break;
    ++I;
  }
  const std::u16string_view code = CopyView(S, p, I - p);
  int32_t value = 0;
  if (!code.empty() && code[0] == u'$')
    value = Gstrings::HexToInt(code.substr(1));
  else
    value = Gstrings::XStrToInt(code);
  if (value > 65535)
    throw Exception(u"\"%s\" not a character", {UnicodeString(CopyView(S, symbol, I - symbol))});
  return static_cast<WideChar>(value);
}

WideChar TGScanner::RunCChar(const UnicodeString& S, int32_t& I) {
  if (!CharIs(S, I, FCharQuote)) return 0;
  ++I;
  WideChar taken;
  if (CharIs(S, I, FExtraCharSymbol))
    taken = RunCExtraChar(S, I);
  else
    taken = CharAt(S, I);
  // The closing quote is looked for one place after the taken character; after
  // an escape that is one place too far, so '\n' gives 0 unless another quote
  // follows. Kept as it is: callers rely on where the token ends.
  ++I;
  return CharIs(S, I, FCharQuote) ? taken : WideChar{0};
}

WideChar TGScanner::RunCExtraChar(const UnicodeString& S, int32_t& I) {
  if (!CharIs(S, I, FExtraCharSymbol)) return 0;
  ++I;
  const WideChar c = CharAt(S, I);
  switch (c) {
    case u'n': ++I; return 10;
    case u'r': ++I; return 13;
    case u't': ++I; return 9;
    case u'v': ++I; return 11;
    case u'a': ++I; return 7;
    case u'b': ++I; return 8;
    case u'f': ++I; return 12;
    case u'x': {
      // Up to three hexadecimal digits; the result is the first decimal digit
      // of their value (\x41 gives '6'), not the character of that code.
      ++I;
      int32_t k = 0;
      while (k < 3 && Gstrings::IsHexDigit(CharAt(S, I + k))) ++k;
      const std::u16string_view digits = CopyView(S, I, k);
      I += k;
      if (k == 0) return 0;
      return FirstDecimalDigit(Gstrings::HexToInt(digits));
    }
    default:
      break;
  }
  if (c >= u'0' && c <= u'9') {
    // One digit, read as octal ('8' and '9' raise the octal reader's error);
    // its decimal text starts with the digit itself.
    const int32_t value = Gstrings::OctToInt(CopyView(S, I, 1));
    ++I;
    return FirstDecimalDigit(value);
  }
  ++I;  // anything else stands for itself: \\ gives '\', \' gives '
  return c;
}

// ---------------------------------------------------------------------------
// One token

TGTokenType TGScanner::InternalNextToken() {
  if (InternalEOS()) return ttUnknown;
  FRealStr.clear();
  int32_t I = FTokEnd < 1 ? 1 : FTokEnd;  // a zeroed token resumes at the line start
  const UnicodeString* S = &FSource.Get(FLine);
  UnicodeString closer;

  // Moves to the next line; false at the end of the source.
  auto next_line = [&]() {
    FLinePos += Len(*S) + 2;
    ++FLine;
    if (InternalEOS()) return false;
    S = &FSource.Get(FLine);
    return true;
  };

  for (;;) {
    if (I <= Len(*S)) {
      const WideChar c = (*S)[static_cast<size_t>(I) - 1];
      // Most positions cannot open a comment; the table answers that without
      // comparing the markers.
      if (MayOpenComment(c)) {
        if (isLineComment(*S, I)) {
          if (!next_line()) return ttUnknown;
          I = 1;
          continue;
        }
        if (isBlockComment(*S, I, closer)) {
          // The closer is searched from one past the opener's first
          // character, so "(*)" is a whole comment.
          int32_t found = PosFrom(closer, *S, I + 1);
          while (found == 0) {
            if (!next_line()) return ttUnknown;  // the source ends inside the comment
            found = PosFrom(closer, *S, 1);
          }
          I = found + Len(closer);
          continue;
        }
      }
      if (Gstrings::IsSpace(c)) {
        ++I;
        continue;
      }
      break;  // the token starts at I
    }
    if (!next_line()) return ttUnknown;
    I = 1;
  }

  const UnicodeString& line = *S;
  const int32_t start = I;
  int32_t E = I;
  QuoteGuard quote_guard(FStrQuote, FScanTemplate);
  if (FScanTemplate) FStrQuote = CharAt(line, start);

  TGTokenType type = ttUnknown;
  if (IsSeparator(line, E)) {
    const WideChar c = CharAt(line, E);
    if (IsQuote(c)) {
      type = RunString(line, E, FRealStr) ? ttString : ttUnknown;
    } else if (FSourceStyle == ssPascal && IsExtraCharSymb(c)) {
      FRealStr.assign(1, RunPascalExtraChar(line, E));
      type = ttChar;
      while (CharIs(line, E, FExtraCharSymbol)) {
        FRealStr += RunPascalExtraChar(line, E);
        type = ttString;
      }
      if (CharIs(line, E, FStrQuote)) {
        // The Pascal string reader itself goes on over further codes, so
        // #13'a'#10 is one string.
        UnicodeString rest;
        RunString(line, E, rest);
        FRealStr += rest;
        type = ttString;
      }
    } else if (FSourceStyle == ssC && c == FCharQuote) {
      FRealStr.assign(1, RunCChar(line, E));
      type = ttChar;
    } else {
      internal::SetText(FRealStr, CopyView(line, start, E - start + 1));
      type = ttSeparator;
      ++E;
    }
  } else {
    // A pair found in the separator text implies that its first character is
    // in the text as well, so "IsSeparator at E" is plain membership of the
    // character at E; the pair only matters for where a separator ends.
    const int32_t len = Len(line);
    while (E <= len) {
      const WideChar c = line[static_cast<size_t>(E) - 1];
      if (Gstrings::IsSpace(c) || SepsContain(c)) break;
      ++E;
    }
    internal::SetText(FRealStr, CopyView(line, start, E - start));
    // Only the low byte of the first character is tested, deliberately: a
    // character above 255 whose low byte lies in 'A'..'z' starts an
    // identifier too.
    const unsigned low = FRealStr.empty() ? 0u : (FRealStr[0] & 0xFFu);
    if (low >= 'A' && low <= 'z') {
      if (FRWords.Count() > 0 && FRWords.IndexOf(FRealStr) >= 0) {
        type = ttReservedWord;
      } else if (isVar(FRealStr)) {
        type = ttVariable;
      } else if (isFunc(FRealStr)) {
        type = ttFunction;
      } else {
        type = ttIdent;
        if (FRealStr.size() == 1 && FRealStr[0] == u'L' && CharIs(line, E, FStrQuote)) {
          if (RunString(line, E, FRealStr)) type = ttLString;
        }
      }
    } else {
      type = isNumber(FRealStr) ? ttNumber : ttUnknown;
    }
  }

  FTokStart = start;
  FTokEnd = E;
  return type;
}

void TGScanner::FillToken(int32_t Index, TGTokenType TokType) {
  TGToken& slot = FTokens[Index];
  slot.TokType = TokType;
  internal::SetText(slot.RealStr, FRealStr);
  internal::LowerInto(FRealStr, slot.TokStr);
  slot.TokLine = FLine;
  slot.TokStart = FTokStart;
  slot.TokEnd = FTokEnd;
  slot.TokPos = FLinePos + FTokStart - 1;
  slot.TokLocalize = FLocalize;
}

// ---------------------------------------------------------------------------
// Entry points

void TGScanner::FirstToken() {
  FLine = 0;
  FTokStart = 1;
  FTokEnd = 1;
  FLinePos = 0;
  if (InternalEOS()) return;  // no lines: the last-token index stays as it is
  RefillAhead(0);
}

// Scans into slots first..10 until the source ends, then sets the last-token
// index to the number of the slot after the last one filled (at most 10). For a
// short source that presents one further slot after the real tokens.
void TGScanner::RefillAhead(int32_t first) {
  int32_t i = first;
  while (i <= TGTokenQueue::High) {
    const TGTokenType type = InternalNextToken();
    if (InternalEOS()) break;
    FillToken(i, type);
    ++i;
  }
  FLastTokenIndex = i <= TGTokenQueue::High ? i : TGTokenQueue::High;
}

void TGScanner::NextToken() {
  const TGTokenType type = InternalNextToken();
  if (EOS()) return;
  // The shift is a rotation of the ring; slot 10 is overwritten right away
  // while the source lasts, else it takes a copy of slot 9 as ShiftTokens does.
  FTokens.Rotate();
  --FLastTokenIndex;
  if (!InternalEOS()) {
    FillToken(TGTokenQueue::High, type);
    FLastTokenIndex = TGTokenQueue::High;
  } else {
    FTokens[TGTokenQueue::High] = FTokens[TGTokenQueue::High - 1];
  }
}

void TGScanner::NextTokenAsTemplate() {
  TGTokenType type;
  {
    struct TemplateFlag {
      bool& flag;
      explicit TemplateFlag(bool& f) : flag(f) { flag = true; }
      ~TemplateFlag() { flag = false; }
    } template_flag(FScanTemplate);
    type = InternalNextToken();
  }
  if (!EOS()) {
    ShiftTokens();
    if (!InternalEOS()) FillToken(0, type);
  }
  // The look-ahead held before the call is dropped and scanned again.
  RefillAhead(1);
}

}  // namespace quill::Gscanner
