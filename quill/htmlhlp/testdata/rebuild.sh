#!/usr/bin/env bash
# Rebuilds the compiled help files the help launcher's tests use, from the
# pages in this folder (needs chmcmd from Debian's fp-utils-3.2.2; the tests
# themselves only read the committed .chm files).
#
#   test.chm       the pages, default topic /pages/index.htm, context numbers
#                  7 (/pages/index.htm) and 42 (/pages/guide/compress.htm);
#                  chmcmd stores the pages' full paths in the context map, so
#                  the file is compiled in a scratch folder, not in the tree
#   traversal.chm  the same file with the object path "/pages/zzescape.htm"
#                  rewritten in place to "/../../zzescape.htm" (same length, so
#                  the directory stays valid): a file whose contents try to
#                  climb out of the extraction folder.
#
# chmlib-fpe.chm is not made here: it is a file the fuzzer found that makes
# chmlib divide by zero in chm_open, kept as found.
set -euo pipefail
cd "$(dirname "$0")"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r pages test.hhp "$scratch"
(cd "$scratch" && chmcmd --no-html-scan test.hhp >/dev/null)
cp "$scratch/test.chm" test.chm
python3 - <<'PY'
data = open("test.chm", "rb").read()
old, new = b"/pages/zzescape.htm", b"/../../zzescape.htm"
assert len(old) == len(new) and data.count(old) == 1, data.count(old)
open("traversal.chm", "wb").write(data.replace(old, new))
PY
echo "rebuilt test.chm and traversal.chm"
