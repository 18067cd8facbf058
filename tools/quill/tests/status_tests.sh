# Exit statuses and messages common to every command: 0 done, 1 file or data
# error, 2 usage or format error; standard output that cannot be written is
# an error.

# CLI11's own codes (104-114) never escape: usage errors are status 2.
case_usage_missing_argument() {
  run "$QUILL" date parse dd.mm.yyyy
  expect_status 2
  expect_err "TEXT is required"
}

case_usage_unknown_option() {
  run "$QUILL" tokens --frobnicate x.pas
  expect_status 2
}

case_usage_no_subcommand() {
  run "$QUILL"
  expect_status 2
}

# The unknown word is named, at the top level and below a command.
case_usage_unknown_subcommand() {
  run "$QUILL" frobnicate
  expect_status 2
  expect_err 'unknown command "frobnicate"'
  run "$QUILL" lzg squeeze a b
  expect_status 2
  expect_err 'unknown command "squeeze" for quill lzg'
}

case_help_exits_0() {
  run "$QUILL" --help
  expect_status 0
  expect_out "Exit status: 0 done, 1 file or data error, 2 usage"
}

# `> /dev/full`: every command that prints reports the failed write.
full_fails() {
  [ -w /dev/full ] || skip "no /dev/full"
  set +e
  "$@" >/dev/full 2>"$TMPDIR/.err"
  status=$?
  set -e
  err=$(cat "$TMPDIR/.err")
  expect_status 1
  expect_err "cannot write standard output: No space left on device"
}
case_full_stdout_demo() { full_fails "$QUILL" demo; }
case_full_stdout_date() { full_fails "$QUILL" date name 2024-05-05; }
case_full_stdout_hex() { full_fails "$QUILL" hex ff; }
case_full_stdout_version() { full_fails "$QUILL" version "$SAMPLES/gutils-version-sample.exe"; }
case_full_stdout_tokens() { full_fails "$QUILL" tokens "$SAMPLES/scanner-demo.pas"; }
case_full_stdout_help() { full_fails "$QUILL" --help; }
case_full_stdout_lzg_info() {
  "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" s.lzg
  full_fails "$QUILL" lzg info s.lzg
}
case_full_stdout_lzg_test() {
  "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" s.lzg
  full_fails "$QUILL" lzg test s.lzg
}
case_full_stdout_lzg_decompress() {
  "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" s.lzg
  full_fails "$QUILL" lzg decompress s.lzg -
}

# A closed standard output (>&-) is an error for a command that prints, and
# no file the tool opens takes its place.
case_closed_stdout() {
  set +e
  "$QUILL" date name 2024-05-05 >&- 2>"$TMPDIR/.err"
  status=$?
  set -e
  err=$(cat "$TMPDIR/.err")
  expect_status 1
  expect_err "cannot write standard output: it is closed"
  # A command that prints nothing still works, and writes its file.
  "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" s.lzg >&-
  "$QUILL" lzg decompress s.lzg back >&-
  cmp back "$SAMPLES/lzg-sample.txt"
}
