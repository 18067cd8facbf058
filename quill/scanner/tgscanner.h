// Gscanner: TGScanner, a configurable tokenizer for Pascal, C, SQL and Perl
// source and for plain templates.
//
// The scanner reads a text held as a string list of lines (Source) and walks
// it token by token. A source style installs the separator text, the quotes,
// the escape symbol and the comment markers of a language family; each can
// also be changed by hand afterwards. The scanner keeps a queue of 21 tokens:
// the current one, ten before it and ten already scanned ahead, so a parser
// can look around without rescanning; bookmarks save and restore that queue.
//
//   TGScanner sc;
//   sc.Source().SetText(u"x := 1;");
//   sc.SetSourceStyle(ssPascal);           // the default style
//   for (sc.FirstToken(); !sc.EOS(); sc.NextToken())
//     use(sc.TokType(), sc.RealStr(), sc.TokLine(), sc.TokStart());
//
// The walk presents every token of the source; a source of ten tokens or fewer
// is followed by one extra token (the content of the slot after the last one,
// an empty ttUnknown token on a fresh scanner) before EOS() turns true.
//
// A scanner is used by one thread at a time. It is not copyable.
#pragma once

#include <array>
#include <cstdint>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/tobject.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/types.h"
#include "quill/scanner/token.h"

namespace quill::Gscanner {

class QUILL_API TGScanner : public TObject {
 public:
  // Create: six empty string lists (unsorted, duplicates allowed, lookups
  // ignore case), line 0, token start and end 1, Localize true, an empty
  // queue of ttUnknown tokens, last-token index 0; then the Pascal style.
  TGScanner();
  // Destroy.
  ~TGScanner() override;
  TGScanner(const TGScanner&) = delete;
  TGScanner& operator=(const TGScanner&) = delete;

  // ---- Walking the source ----

  // Restarts at the top of Source (Localize keeps its value) and fills the
  // current slot and up to ten ahead. With no lines it stops at once and the
  // last-token index keeps its value. May raise what scanning raises (below).
  void FirstToken();
  // Advances by one token: while the source lasts the queue keeps ten tokens
  // ahead; after its end each call only shifts the queue until EOS().
  //
  // Raises quill::Exception "\"%s\" not a character" for a Pascal character
  // code above 65535, and the Gstrings conversion errors for malformed codes
  // and escapes (such as #$$, #1$2, \8 or \9); the queue is then unchanged.
  void NextToken();
  // Scans the token after the last one in the queue in template mode (a first
  // character that is a separator quotes the token, so /abc/ is one string)
  // and makes it the current token. The look-ahead held before the call is
  // dropped and scanned again after the template token.
  void NextTokenAsTemplate();
  // True once the last-token index has dropped below 0.
  [[nodiscard]] bool EOS() const { return FLastTokenIndex < 0; }

  // ---- The queue ----

  // Slot `Index` (-10..10). Raises quill::Exception "Token %d is not
  // available" (not EScannerError) for any other index.
  [[nodiscard]] TGToken GetToken(int32_t Index) const;
  [[nodiscard]] TGToken Tokens(int32_t Index) const { return GetToken(Index); }
  // The current token (slot 0) without a copy, for loops that read every
  // token: the reference shows whatever the slot holds after the next call
  // that moves or changes the queue.
  [[nodiscard]] const TGToken& CurrentToken() const noexcept { return FTokens[0]; }
  // Overwrites slot `Index`; raises as GetToken.
  void SetToken(int32_t Index, const TGToken& Value);
  // Moves every slot one place towards the past (the oldest is dropped; slot
  // 10 keeps its content, so it equals slot 9 afterwards) and lowers the
  // last-token index by 1. Constant time.
  void ShiftTokens();
  // The TokStr texts of slots -10..-1 run together, oldest first.
  [[nodiscard]] UnicodeString GetPrevToksStr() const;
  [[nodiscard]] UnicodeString PrevToksStr() const { return GetPrevToksStr(); }

  // ---- Bookmarks, pairs, pieces ----

  // A copy of the last-token index and of the 21 slots.
  [[nodiscard]] TGScannerBookmark GetBookmark() const;
  [[nodiscard]] TGScannerBookmark Bookmark() const { return GetBookmark(); }
  // Restores the index and the slots, then resumes scanning right after the
  // token in the slot at the restored index (its line and TokEnd). The line
  // offset used for TokPos is deliberately not restored: tokens scanned after
  // a jump to another line carry TokPos values from the offset reached
  // before. Raises "Token %d is not available" when the restored index lies
  // outside -10..10 (the slots are already restored then).
  void SetBookmark(const TGScannerBookmark& Value);

  // Searches forward from the token after the current one, up to the Token2
  // that closes the current level, for a token whose type is in
  // RightTokenTypes and whose text is in the comma list RightTokens. Nested
  // Token1 ... Token2 pairs count levels; a token of the comma list
  // WrongTokens blocks right tokens at its level for the rest of the call.
  // Token1/Token2 are compared exactly with the lower-cased TokStr (give them
  // in lower case); the two lists ignore case. Found: true, and the scanner
  // stays on that token. Not found (closing Token2 at level 0, or end of
  // source): false, and the scanner is back where it was.
  [[nodiscard]] bool ScanToPair(const UnicodeString& Token1, const UnicodeString& Token2,
                                const UnicodeString& RightTokens,
                                const UnicodeString& WrongTokens,
                                TGTokenTypes RightTokenTypes);

  // The source text from the current token of Bmrk1 to the current token of
  // Bmrk2 (Inclusive) or to the token before it, lines joined by CR LF, blanks
  // and control characters trimmed at the two ends only. Empty when Bmrk1 is
  // at end of source or the end line lies before the start line. A Bmrk2 at
  // end of source reaches to the end of the last line. Comments and blank
  // lines in between are part of the piece. Line indexes outside Source raise
  // the string list's EStringListError (for example on an empty source).
  [[nodiscard]] UnicodeString ExtractPiece(const TGScannerBookmark& Bmrk1,
                                           const TGScannerBookmark& Bmrk2,
                                           bool Inclusive) const;

  // ---- The current token (slot 0) ----

  [[nodiscard]] TGTokenType GetTokType() const { return FTokens[0].TokType; }
  [[nodiscard]] TGTokenType TokType() const { return GetTokType(); }
  // Computed on each read: RealStr of slot 0 lower-cased.
  [[nodiscard]] UnicodeString GetTokStr() const;
  [[nodiscard]] UnicodeString TokStr() const { return GetTokStr(); }
  [[nodiscard]] UnicodeString GetRealStr() const;
  [[nodiscard]] UnicodeString RealStr() const { return GetRealStr(); }
  [[nodiscard]] int32_t GetTokLine() const { return FTokens[0].TokLine; }
  [[nodiscard]] int32_t TokLine() const { return GetTokLine(); }
  [[nodiscard]] int32_t GetTokStart() const { return FTokens[0].TokStart; }
  [[nodiscard]] int32_t TokStart() const { return GetTokStart(); }
  [[nodiscard]] int32_t GetTokEnd() const { return FTokens[0].TokEnd; }
  [[nodiscard]] int32_t TokEnd() const { return GetTokEnd(); }
  [[nodiscard]] int32_t GetTokPos() const { return FTokens[0].TokPos; }
  [[nodiscard]] int32_t TokPos() const { return GetTokPos(); }
  // TokEnd minus TokStart of slot 0.
  [[nodiscard]] int32_t GetTokLength() const { return FTokens[0].TokEnd - FTokens[0].TokStart; }
  [[nodiscard]] int32_t TokLength() const { return GetTokLength(); }

  // ---- Configuration ----

  // The text, one line per item. SetSource copies the content of `Value`;
  // the scanner never keeps the caller's list. Changes take effect at the
  // next scan.
  [[nodiscard]] TStringList& Source() { return FSource; }
  [[nodiscard]] const TStringList& Source() const { return FSource; }
  void SetSource(const TStrings& Value);
  // Names that classify as ttVariable / ttFunction; reserved words
  // (ttReservedWord). Lookups ignore case. The setters copy the content.
  [[nodiscard]] TStringList& Vars() { return FVars; }
  [[nodiscard]] const TStringList& Vars() const { return FVars; }
  void SetVars(const TStrings& Value);
  [[nodiscard]] TStringList& Funcs() { return FFuncs; }
  [[nodiscard]] const TStringList& Funcs() const { return FFuncs; }
  void SetFuncs(const TStrings& Value);
  [[nodiscard]] TStringList& RWords() { return FRWords; }
  [[nodiscard]] const TStringList& RWords() const { return FRWords; }
  void SetWords(const TStrings& Value);

  // The separator text: separators written one after another with single
  // blanks between them. Membership is a plain substring test over the whole
  // text (see IsSeparator).
  [[nodiscard]] const UnicodeString& Seps() const { return FSeps; }
  void SetSeps(const UnicodeString& Value);
  // String quote, quote of C character constants, character-code or escape
  // symbol.
  [[nodiscard]] WideChar StrQuote() const { return FStrQuote; }
  void SetStrQuote(WideChar Value) { FStrQuote = Value; }
  [[nodiscard]] WideChar CharQuote() const { return FCharQuote; }
  void SetCharQuote(WideChar Value) { FCharQuote = Value; }
  [[nodiscard]] WideChar ExtraCharSymbol() const { return FExtraCharSymbol; }
  void SetExtraCharSymbol(WideChar Value) { FExtraCharSymbol = Value; }

  // Setting the current style again does nothing, even when settings were
  // changed by hand meanwhile. Any other style is stored; every style but
  // ssNone installs its separator text, string quote, escape symbol,
  // character quote, line comment and block comments:
  //   ssPascal  ' # ' "//" "(*-*),{-}"      ssC  " \ ' "//" "/*-*/"
  //   ssSQL     ' \ ' "//" "/*-*/"           ssPerl " \ ' "#" (none)
  // ssNone keeps every setting in force (strings are then read the C way).
  [[nodiscard]] TSourceStyle SourceStyle() const { return FSourceStyle; }
  void SetSourceStyle(TSourceStyle Value);

  // Block comments as text: items "opener-closer" separated by commas, for
  // example "(*-*),{-}"; the empty text for none. Setting splits by the comma
  // text rules (commas and blanks separate, double quotes group); the first
  // '-' of an item divides opener from closer, so a closer may contain '-'
  // and an item without '-' is skipped. Setting the text that is already in
  // force (exact comparison) does nothing.
  [[nodiscard]] UnicodeString GetBlockComments() const;
  [[nodiscard]] UnicodeString BlockComments() const { return GetBlockComments(); }
  void SetBlockComments(const UnicodeString& Value);

  // The localize state: true at creation; a line comment holding the marker
  // LOCALIZE OFF or LOCALIZE ON switches it. FirstToken does not reset it.
  [[nodiscard]] bool Localize() const { return FLocalize; }

 protected:
  // ---- The engine. Positions are 1-based; a character read past either
  // end of S is the character 0, which matches no quote, symbol, digit or
  // separator. ----

  // Scans one token into FRealStr, FTokStart and FTokEnd and returns its
  // type; ttUnknown without change at end of source.
  TGTokenType InternalNextToken();
  // True when FLine is not below Source.Count.
  [[nodiscard]] bool InternalEOS() const { return FLine >= FSource.Count(); }
  // Writes the token just scanned into slot `Index`.
  void FillToken(int32_t Index, TGTokenType TokType);
  // A two-character separator at I (the character after I not a space) moves
  // I onto its second character; else the single character at I is tested.
  // Both tests are substring tests over the whole separator text.
  bool IsSeparator(const UnicodeString& S, int32_t& I) const;
  // True if the line comment text stands at I; also reads a LOCALIZE marker
  // from the 13 characters after it.
  bool isLineComment(const UnicodeString& S, int32_t I);
  // True, and the matching closer, for the first opener that stands at I.
  bool isBlockComment(const UnicodeString& S, int32_t I, UnicodeString& Closer) const;
  [[nodiscard]] bool isNumber(const UnicodeString& Str) const;
  [[nodiscard]] bool isVar(const UnicodeString& Str) const;
  [[nodiscard]] bool isFunc(const UnicodeString& Str) const;
  [[nodiscard]] bool IsQuote(WideChar Ch) const { return Ch == FStrQuote; }
  [[nodiscard]] bool IsExtraCharSymb(WideChar Ch) const { return Ch == FExtraCharSymbol; }
  // RunPascalString in the Pascal style, RunCString in every other one.
  bool RunString(const UnicodeString& S, int32_t& I, UnicodeString& Str);
  bool RunPascalString(const UnicodeString& S, int32_t& I, UnicodeString& Str);
  bool RunCString(const UnicodeString& S, int32_t& I, UnicodeString& Str);
  WideChar RunCChar(const UnicodeString& S, int32_t& I);
  WideChar RunPascalExtraChar(const UnicodeString& S, int32_t& I);
  WideChar RunCExtraChar(const UnicodeString& S, int32_t& I);

 private:
  void RebuildSepTable();
  void RebuildCommentStarts();
  // Membership of a character / of two adjacent characters in FSeps, and
  // whether a comment marker may start with a character (inline: asked for
  // nearly every character of the source).
  [[nodiscard]] bool SepsContain(WideChar c) const {
    if (c < 128) return (sep_single_[c >> 6] >> (c & 63)) & 1u;
    return FSeps.find(c) != UnicodeString::npos;
  }
  [[nodiscard]] bool SepsContainPair(WideChar a, WideChar b) const {
    if (a < 128 && b < 128) {
      const unsigned idx = a * 128u + b;
      return (sep_pair_[idx >> 6] >> (idx & 63)) & 1u;
    }
    return SepsContainOtherPair(a, b);
  }
  [[nodiscard]] bool SepsContainOtherPair(WideChar a, WideChar b) const;
  [[nodiscard]] bool MayOpenComment(WideChar c) const {
    if (c < 128) return (comment_start_[c >> 6] >> (c & 63)) & 1u;
    return comment_start_other_;
  }
  void RefillAhead(int32_t first);
  // Raises "Token %d is not available" unless -10 <= Index <= 10.
  void CheckIndex(int32_t Index) const;

  TStringList FSource;
  TStringList FVars;
  TStringList FFuncs;
  UnicodeString FRealStr;
  int32_t FLastTokenIndex = 0;
  UnicodeString FSeps;
  TStringList FRWords;
  int32_t FLine = 0;
  int32_t FTokStart = 1;
  int32_t FTokEnd = 1;
  int32_t FLinePos = 0;
  TGTokenQueue FTokens;
  TSourceStyle FSourceStyle = ssNone;
  WideChar FStrQuote = 0;
  WideChar FExtraCharSymbol = 0;
  WideChar FCharQuote = 0;
  UnicodeString FLineCommentStr;
  TStringList FBlockComments1;
  TStringList FBlockComments2;
  bool FScanTemplate = false;
  bool FLocalize = true;

  // Lookup tables derived from FSeps and from the comment markers, rebuilt by
  // their setters: membership of ASCII characters and ASCII pairs in FSeps,
  // and the ASCII characters that may start a comment. Other characters are
  // looked up in the texts themselves.
  std::array<uint64_t, 2> sep_single_{};
  std::array<uint64_t, 128 * 128 / 64> sep_pair_{};
  std::array<uint64_t, 2> comment_start_{};
  bool comment_start_other_ = false;
};

}  // namespace quill::Gscanner
