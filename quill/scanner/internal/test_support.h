// Helpers shared by the scanner's tests (not installed).
#pragma once

#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "quill/scanner/gscanner.h"

namespace quill::Gscanner::testing {

// Opens the engine's protected routines to the tests.
class Probe : public TGScanner {
 public:
  using TGScanner::FillToken;
  using TGScanner::InternalEOS;
  using TGScanner::InternalNextToken;
  using TGScanner::IsSeparator;
  using TGScanner::isBlockComment;
  using TGScanner::isLineComment;
  using TGScanner::isNumber;
  using TGScanner::RunCChar;
  using TGScanner::RunCExtraChar;
  using TGScanner::RunCString;
  using TGScanner::RunPascalExtraChar;
  using TGScanner::RunPascalString;
  using TGScanner::RunString;
};

inline void SetLines(TGScanner& sc, std::initializer_list<std::u16string_view> lines) {
  sc.Source().Clear();
  for (std::u16string_view l : lines) sc.Source().Add(UnicodeString(l));
}

inline const char* TypeName(TGTokenType t) {
  static const char* const names[] = {"ttUnknown",  "ttIdent",    "ttReservedWord", "ttSeparator",
                                      "ttChar",     "ttString",   "ttLString",      "ttNumber",
                                      "ttVariable", "ttFunction", "ttStrTemplate"};
  return t <= ttStrTemplate ? names[t] : "?";
}

// ASCII text as it is; every other code unit as \uXXXX.
inline std::string Escaped(std::u16string_view s) {
  std::string out;
  for (char16_t c : s) {
    if (c >= 32 && c < 127 && c != u'\\') {
      out += static_cast<char>(c);
    } else {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04X", static_cast<unsigned>(c));
      out += buf;
    }
  }
  return out;
}

// "type line:start-end 'text'" for readable comparisons.
inline std::string Describe(const TGToken& t) {
  return std::string(TypeName(t.TokType)) + " " + std::to_string(t.TokLine) + ":" +
         std::to_string(t.TokStart) + "-" + std::to_string(t.TokEnd) + " '" + Escaped(t.RealStr) + "'";
}

// The walk from FirstToken to EOS: the current token of every step.
inline std::vector<TGToken> Walk(TGScanner& sc, size_t limit = 1000000) {
  std::vector<TGToken> out;
  sc.FirstToken();
  while (!sc.EOS() && out.size() < limit) {
    out.push_back(sc.GetToken(0));
    sc.NextToken();
  }
  return out;
}

inline std::vector<std::string> Described(const std::vector<TGToken>& toks) {
  std::vector<std::string> out;
  for (const TGToken& t : toks) out.push_back(Describe(t));
  return out;
}

// The walk described, without the extra empty token a short source ends with.
inline std::vector<std::string> WalkDescribed(TGScanner& sc) {
  std::vector<TGToken> toks = Walk(sc);
  if (!toks.empty() && toks.back() == TGToken{}) toks.pop_back();
  return Described(toks);
}

}  // namespace quill::Gscanner::testing
