// TGScanner's token queue: checked slot access, the shift, the text of the
// previous tokens and the current-token accessors.
#include "quill/rtl/exception.h"
#include "quill/scanner/internal/text.h"
#include "quill/scanner/tgscanner.h"

namespace quill::Gscanner {

void TGScanner::CheckIndex(int32_t Index) const {
  if (Index < TGTokenQueue::Low || Index > TGTokenQueue::High)
    // The general exception class, not EScannerError: callers catch it as such.
    throw Exception(u"Token %d is not available", {Index});
}

TGToken TGScanner::GetToken(int32_t Index) const {
  CheckIndex(Index);
  return FTokens[Index];
}

void TGScanner::SetToken(int32_t Index, const TGToken& Value) {
  CheckIndex(Index);
  FTokens[Index] = Value;
}

void TGScanner::ShiftTokens() {
  FTokens.Rotate();
  FTokens[TGTokenQueue::High] = FTokens[TGTokenQueue::High - 1];
  --FLastTokenIndex;
}

UnicodeString TGScanner::GetPrevToksStr() const {
  UnicodeString out;
  for (int32_t i = TGTokenQueue::Low; i <= -1; ++i) out += FTokens[i].TokStr;
  return out;
}

UnicodeString TGScanner::GetTokStr() const {
  // Lower-cased on each read, not taken from the slot's TokStr: a token
  // written by SetToken reads consistently.
  UnicodeString out;
  internal::LowerInto(FTokens[0].RealStr, out);
  return out;
}

UnicodeString TGScanner::GetRealStr() const { return FTokens[0].RealStr; }

}  // namespace quill::Gscanner
