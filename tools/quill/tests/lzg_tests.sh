# quill lzg: compressing, expanding, testing and describing LZG00 files.

case_lzg_missing_file() {
  run "$QUILL" lzg decompress /nonexistent/in.lzg out
  expect_status 1
  [ ! -e out ] || fail "a failed run left out behind"
}

case_lzg_not_lzg() {
  run "$QUILL" lzg test "$SAMPLES/lzg-sample.txt"
  [ "$status" -ne 0 ] || fail "a plain text file passed as LZG00"
}

# Compress, then expand, through standard input and output.
case_lzg_round_trip() {
  "$QUILL" lzg compress - - <"$SAMPLES/lzg-sample.txt" | "$QUILL" lzg decompress - - >back
  cmp back "$SAMPLES/lzg-sample.txt"
}

# A named pipe (here /dev/stdin fed by a pipe) is read whole, like "-".
case_lzg_info_from_pipe() {
  size=$(stat -c %s "$SAMPLES/lzg-sample.txt")
  "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" - | "$QUILL" lzg info /dev/stdin >info
  grep -q -E "expanded: +$size bytes" info || fail "$(cat info)"
}
