// TGScanner's bookmarks and the extraction of the source text between two of
// them.
#include "quill/rtl/trim.h"
#include "quill/scanner/internal/text.h"
#include "quill/scanner/tgscanner.h"

namespace quill::Gscanner {

using internal::CopyView;
using internal::Len;

TGScannerBookmark TGScanner::GetBookmark() const {
  TGScannerBookmark b;
  b.LastTokenIndex = FLastTokenIndex;
  b.TokenQueue = FTokens;
  return b;
}

void TGScanner::SetBookmark(const TGScannerBookmark& Value) {
  FLastTokenIndex = Value.LastTokenIndex;
  FTokens = Value.TokenQueue;
  // Scanning resumes right after the last token held in the queue. FLinePos
  // is deliberately left as the scanning reached it.
  const TGToken last = GetToken(FLastTokenIndex);
  FLine = last.TokLine;
  FTokStart = last.TokStart;
  FTokEnd = last.TokEnd;
}

UnicodeString TGScanner::ExtractPiece(const TGScannerBookmark& Bmrk1,
                                      const TGScannerBookmark& Bmrk2,
                                      bool Inclusive) const {
  if (Bmrk1.LastTokenIndex < 0) return {};
  const TGToken& first = Bmrk1.TokenQueue[0];
  const int32_t L1 = first.TokLine;
  const int32_t S1 = first.TokStart;
  int32_t L2;
  int32_t E2;
  if (Bmrk2.LastTokenIndex < 0) {
    L2 = FSource.Count() - 1;
    E2 = Len(FSource.Get(L2)) + 1;  // an empty source raises the list's error here
  } else {
    const TGToken& last = Bmrk2.TokenQueue[Inclusive ? 0 : -1];
    L2 = last.TokLine;
    E2 = last.TokEnd;
  }
  if (L1 > L2) return {};
  if (L1 == L2) return Trim(CopyView(FSource.Get(L1), S1, int64_t{E2} - S1));

  UnicodeString piece(CopyView(FSource.Get(L1), S1, Len(FSource.Get(L1))));
  for (int32_t line = L1 + 1; line < L2; ++line) {
    piece += u"\r\n";
    piece += FSource.Get(line);
  }
  piece += u"\r\n";
  piece += CopyView(FSource.Get(L2), 1, int64_t{E2} - 1);
  // Only the two ends are trimmed; the line breaks inside stay.
  return Trim(piece);
}

}  // namespace quill::Gscanner
