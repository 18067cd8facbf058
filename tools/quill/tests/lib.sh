# Helpers for the tool's test cases (sourced by run_case.sh).
#
#   run CMD...          runs CMD, never failing the case; sets $status, and
#                       $out / $err to its standard output and error (also in
#                       the files $TMPDIR/.out and $TMPDIR/.err)
#   expect_status N     the last `run` ended with status N
#   expect_out RE       the last `run`'s standard output matches the
#                       extended regular expression RE (grep -E, any line)
#   expect_err RE       the same for standard error
#   expect_no_out RE    standard output has no line matching RE (also
#                       expect_no_err)
#   expect_empty_out    standard output was empty
#   fail MESSAGE        fails the case;  skip MESSAGE skips it (exit 77)
#   need_root / need_nonroot   skip unless running as (not as) root
#   at_exit COMMAND     runs COMMAND (eval) when the case ends, pass or fail
#   sample_lzg FILE     writes the compressed lzg-sample.txt to FILE
#   numbers FILE N      writes the numbers 1..N, one a line, to FILE

fail() { echo "FAIL: $*" >&2; exit 1; }
skip() { echo "SKIP: $*" >&2; exit 77; }

run() {
  set +e
  "$@" >"$TMPDIR/.out" 2>"$TMPDIR/.err"
  status=$?
  set -e
  out=$(cat "$TMPDIR/.out")
  err=$(cat "$TMPDIR/.err")
  return 0
}

expect_status() {
  [ "$status" -eq "$1" ] || fail "exit status $status, expected $1; stderr: $err"
}
expect_out() {
  grep -q -E -- "$1" "$TMPDIR/.out" || fail "standard output does not match /$1/: $out"
}
expect_err() {
  grep -q -E -- "$1" "$TMPDIR/.err" || fail "standard error does not match /$1/: $err"
}
expect_no_out() {
  ! grep -q -E -- "$1" "$TMPDIR/.out" || fail "standard output matches /$1/: $out"
}
expect_no_err() {
  ! grep -q -E -- "$1" "$TMPDIR/.err" || fail "standard error matches /$1/: $err"
}
expect_empty_out() {
  [ ! -s "$TMPDIR/.out" ] || fail "standard output is not empty: $out"
}
need_root() { [ "$(id -u)" -eq 0 ] || skip "needs root"; }
need_nonroot() { [ "$(id -u)" -ne 0 ] || skip "root ignores file permissions"; }
at_exit() { cleanups+=("$1"); }
sample_lzg() { "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" "$1"; }
numbers() { seq 1 "$2" >"$1"; }
