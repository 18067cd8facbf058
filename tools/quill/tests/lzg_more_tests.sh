# quill lzg: truncation found alike by decompress, info and test; streaming
# of standard input; the progress display.

# A stream cut inside a token: all three commands fail with the same words.
case_lzg_cut_in_token() {
  sample_lzg s.lzg
  head -c -1 s.lzg >cut.lzg
  for cmd in "decompress cut.lzg out" "info cut.lzg" "test cut.lzg"; do
    # shellcheck disable=SC2086
    run "$QUILL" lzg $cmd
    expect_status 1
    expect_err "cut.lzg is truncated or damaged: the LZG00 data ends inside a"
  done
  [ ! -e out ] || fail "decompress left out"
  # Through standard input too.
  set +e
  "$QUILL" lzg decompress - - <cut.lzg >/dev/null 2>"$TMPDIR/.err"
  status=$?
  set -e
  err=$(cat "$TMPDIR/.err")
  expect_status 1
  expect_err "standard input is truncated or damaged"
}

# A stream cut inside the 9-byte header.
case_lzg_cut_in_header() {
  sample_lzg s.lzg
  for n in 3 7; do
    head -c $n s.lzg >h.lzg
    for cmd in "decompress h.lzg out" "info h.lzg" "test h.lzg"; do
      # shellcheck disable=SC2086
      run "$QUILL" lzg $cmd
      expect_status 1
      expect_err "h.lzg is truncated: it ends inside the 9-byte LZG00 header"
    done
  done
}

# test: a missing file (1, "cannot open") is not "not LZG00" (2).
case_lzg_test_missing_vs_not_lzg() {
  run "$QUILL" lzg test missing.lzg
  expect_status 1
  expect_err "cannot open missing.lzg: No such file or directory"
  run "$QUILL" lzg test "$SAMPLES/lzg-sample.txt"
  expect_status 2
  expect_err "is not an LZG00 stream"
  sample_lzg s.lzg
  run "$QUILL" lzg test s.lzg
  expect_status 0
  expect_out "s.lzg: complete LZG00 stream"
  # The help states the same statuses.
  run "$QUILL" lzg test --help
  expect_out "exit 0 when it is, 1 when it cannot be read or is truncated, 2 when it is not LZG00"
}

# info --verify says what the format cannot detect, and finds what it can.
case_lzg_info_verify() {
  sample_lzg s.lzg
  run "$QUILL" lzg info --verify s.lzg
  expect_status 0
  expect_out "no length field and no checksum"
  expect_out "other damage expands without any sign"
  # A copy from distance 0 (bytes 01 00) is a token no writer produces.
  { cat s.lzg; printf '\001\000'; } >odd.lzg
  run "$QUILL" lzg info --verify odd.lzg
  expect_status 1
  expect_err "token\(s\) that no LZG00 writer produces"
}

# Standard input is streamed: 64 MB through a pipe stay far below 64 MB of
# memory.
case_lzg_stdin_streamed() {
  [ -x /usr/bin/time ] || skip "no /usr/bin/time"
  yes "a line of text that repeats, 0123456789" | head -c 64000000 >big.txt || true  # yes ends by SIGPIPE
  /usr/bin/time -f %M -o rss "$QUILL" lzg compress - big.lzg <big.txt
  kb=$(tail -1 rss)
  [ "$kb" -lt 40000 ] || fail "compress from standard input peaked at $kb KB"
  /usr/bin/time -f %M -o rss "$QUILL" lzg decompress - back <big.lzg
  kb=$(tail -1 rss)
  [ "$kb" -lt 40000 ] || fail "decompress from standard input peaked at $kb KB"
  cmp back big.txt
}

# The progress display: at most a few updates a second, with rate and time
# left. A reader that starts a second late makes the run last at least that
# long, however fast the machine.
case_lzg_progress_throttled() {
  head -c 30000000 /dev/urandom >big.bin
  start=$(date +%s.%N)
  QUILL_PROGRESS=always "$QUILL" lzg compress big.bin - 2>progress | { sleep 1.2; cat >big.lzg; }
  end=$(date +%s.%N)
  updates=$(tr -cd '\r' <progress | wc -c)
  allowed=$(awk -v a="$start" -v b="$end" 'BEGIN { printf "%d", (b - a) * 4 + 3 }')
  [ "$updates" -ge 1 ] || fail "no progress shown"
  [ "$updates" -le "$allowed" ] || fail "$updates updates, $allowed allowed"
  grep -q "MB/s" progress || fail "no rate shown: $(tr '\r' '\n' <progress | tail -2)"
  grep -q "left" progress || fail "no time left shown"
  # Unknown size (a pipe): the rate, no time left.
  { head -c 1000000 big.bin; sleep 1; tail -c +1000001 big.bin; } |
    QUILL_PROGRESS=always "$QUILL" lzg compress - big2.lzg 2>progress
  grep -q "MB/s" progress || fail "no rate shown for a pipe"
  cmp big.lzg big2.lzg
}
