// Gscanner: a configurable tokenizer for Pascal, C, SQL and Perl source and
// for plain templates.
//
//   #include <quill/scanner/gscanner.h>
//   quill::Gscanner::TGScanner sc;
//   sc.Source().SetText(u"SELECT 'it''s' FROM t -- x");
//   sc.SetSourceStyle(quill::Gscanner::ssSQL);
//   for (sc.FirstToken(); !sc.EOS(); sc.NextToken()) ...
//
// token.h holds the token model (types, token record, queue, bookmark, source
// styles); tgscanner.h the scanner itself.
#pragma once

#include "quill/frame/errors.h"
#include "quill/scanner/tgscanner.h"
#include "quill/scanner/token.h"
