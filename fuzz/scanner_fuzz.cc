// Tokenizes arbitrary lines in every style and moves about the result with
// bookmarks, NextTokenAsTemplate, ScanToPair and ExtractPiece. Nothing may
// crash, hang or read out of bounds; the only exceptions allowed are the
// documented ones: the general class ("not a character", "Token %d is not
// available"), the Gstrings digit errors, the integer conversion error, and
// the string list's index error.
//
// Input layout: byte 0 picks the style (low 3 bits, modulo 5) and options
// (bit 3: text as UTF-16LE code units instead of widened bytes; bit 4: the
// first line sets BlockComments; bit 5: the second line sets Seps); byte 1
// seeds the walk's choices; the rest is the text, split into lines at LF.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <typeinfo>

#include "quill/scanner/gscanner.h"

namespace {

using quill::UnicodeString;
using namespace quill::Gscanner;

bool Documented(const quill::Exception& e) {
  const std::type_info& t = typeid(e);
  return t == typeid(quill::Exception) || t == typeid(quill::Gstrings::EGStringsError) ||
         t == typeid(quill::EConvertError) || t == typeid(quill::EStringListError);
}

void Run(TGScanner& sc, uint8_t seed) {
  TGScannerBookmark marks[3] = {sc.GetBookmark(), sc.GetBookmark(), sc.GetBookmark()};
  sc.FirstToken();
  unsigned step = 0;
  for (; !sc.EOS() && step < 4000; ++step) {
    const unsigned choice = (seed + step * 37u) % 23u;
    if (choice == 0) marks[step % 3] = sc.GetBookmark();
    if (choice == 1) sc.NextTokenAsTemplate();
    if (choice == 2) (void)sc.ScanToPair(u"(", u")", u"x,1,a", u";", TGTokenTypes{ttIdent, ttNumber});
    if (choice == 3) (void)sc.ScanToPair(u"begin", u"end", u"then", u"", TGTokenTypes{ttIdent});
    if (choice == 4) (void)sc.ExtractPiece(marks[0], marks[1], (step & 1) != 0);
    if (choice == 5 && step < 2000) sc.SetBookmark(marks[(step / 3) % 3]);
    (void)sc.TokStr();
    (void)sc.PrevToksStr();
    sc.NextToken();
  }
  (void)sc.ExtractPiece(marks[2], sc.GetBookmark(), true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const uint8_t opts = data[0];
  const uint8_t seed = data[1];
  data += 2;
  size -= 2;

  UnicodeString text;
  if (opts & 0x08) {
    for (size_t i = 0; i + 1 < size; i += 2) text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
  } else {
    for (size_t i = 0; i < size; ++i) text += static_cast<char16_t>(data[i]);
  }

  TGScanner sc;
  sc.SetSourceStyle(static_cast<TSourceStyle>((opts & 7) % 5));
  size_t from = 0;
  int line = 0;
  while (from <= text.size()) {
    size_t lf = text.find(u'\n', from);
    if (lf == UnicodeString::npos) lf = text.size();
    UnicodeString l = text.substr(from, lf - from);
    if (line == 0 && (opts & 0x10)) sc.SetBlockComments(l);
    else if (line == 1 && (opts & 0x20)) sc.SetSeps(l);
    else sc.Source().Add(l);
    ++line;
    from = lf + 1;
  }

  try {
    Run(sc, seed);
  } catch (const quill::Exception& e) {
    if (!Documented(e)) std::abort();
  }
  return 0;
}
