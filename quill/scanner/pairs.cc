// TGScanner::ScanToPair: a forward search for a right token inside a bracketed
// region, counting nested pairs.
#include <algorithm>
#include <vector>

#include "quill/scanner/tgscanner.h"

namespace quill::Gscanner {

bool TGScanner::ScanToPair(const UnicodeString& Token1, const UnicodeString& Token2,
                           const UnicodeString& RightTokens, const UnicodeString& WrongTokens,
                           TGTokenTypes RightTokenTypes) {
  // The temporary lists are released on every path, also when scanning raises.
  TStringList rights;
  TStringList wrongs;
  rights.SetCommaText(RightTokens);
  wrongs.SetCommaText(WrongTokens);
  // Levels at which a wrong token was seen; never removed during the call, so
  // a level once blocked stays blocked even after it was left and re-entered.
  std::vector<int32_t> blocked;
  const TGScannerBookmark start = GetBookmark();
  int32_t level = 0;
  NextToken();
  for (;;) {
    const UnicodeString tok = GetTokStr();
    if (tok == Token2 && level == 0) break;
    if (EOS()) break;
    if (tok == Token1) ++level;
    if (tok == Token2) --level;
    if (wrongs.Count() > 0 && wrongs.IndexOf(tok) >= 0) blocked.push_back(level);
    if (RightTokenTypes.Contains(GetTokType()) && rights.Count() > 0 && rights.IndexOf(tok) >= 0 &&
        std::find(blocked.begin(), blocked.end(), level) == blocked.end())
      return true;
    NextToken();
  }
  SetBookmark(start);
  return false;
}

}  // namespace quill::Gscanner
