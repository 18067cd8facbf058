# Inputs are read to their end whatever size the system reports; read
# errors, directories and a closed standard input are errors.

# /proc files report size 0: the whole file is still compressed.
case_in_proc_file_lzg() {
  cat /proc/version >expected
  run "$QUILL" lzg compress /proc/version v.lzg
  expect_status 0
  "$QUILL" lzg decompress v.lzg back
  cmp back expected || fail "/proc/version was not read whole ($(stat -c %s back) bytes)"
}

case_in_proc_file_tokens() {
  run "$QUILL" tokens /proc/self/status
  expect_status 0
  [ "$(wc -l <"$TMPDIR/.out")" -gt 20 ] || fail "only $(wc -l <"$TMPDIR/.out") tokens from /proc/self/status"
  expect_out $'\tttIdent\tName$'
}

# A read error is reported, with status 1 and no output file.
case_in_read_error() {
  run "$QUILL" lzg compress /proc/self/mem out.lzg
  expect_status 1
  expect_err "cannot read /proc/self/mem: Input/output error"
  [ ! -e out.lzg ] || fail "out.lzg was left"
  run "$QUILL" tokens /proc/self/mem
  expect_status 1
  expect_err "cannot read /proc/self/mem"
}

# A directory is no input.
case_in_directory() {
  mkdir adir
  for cmd in "lzg compress adir out" "lzg decompress adir out" "lzg info adir" "lzg test adir" "tokens adir"; do
    # shellcheck disable=SC2086
    run "$QUILL" $cmd
    expect_status 1
    expect_err "cannot read adir: it is a directory"
  done
  [ ! -e out ] || fail "out was created"
}

# A closed standard input is an error, not an empty input.
case_in_closed_stdin() {
  for cmd in "lzg compress - out" "lzg decompress - out" "lzg info -" "lzg test -" "tokens -"; do
    set +e
    # shellcheck disable=SC2086
    "$QUILL" $cmd <&- >/dev/null 2>err
    status=$?
    set -e
    err=$(cat err)
    expect_status 1
    grep -q "cannot read standard input: it is closed" err || fail "$cmd: $err"
  done
  [ ! -e out ] || fail "out was created"
}

# A missing input names the file and the reason.
case_in_missing() {
  run "$QUILL" tokens no-such-file.pas
  expect_status 1
  expect_err "cannot open no-such-file.pas: No such file or directory"
}
