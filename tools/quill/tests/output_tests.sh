# Outputs of `quill lzg` are written safely: devices, FIFOs and links are
# never replaced, modes and hard links are kept, write-protected files are
# refused without --force, the temporary file is short, beside OUT, and
# removed on failure and on SIGINT/SIGTERM; write errors name file and reason.

# A character device (a private copy of /dev/null) is written, not replaced.
case_out_device_kept() {
  need_root
  mknod null c 1 3 || skip "cannot create a device node here"
  sample_lzg s.lzg
  run "$QUILL" lzg decompress s.lzg null
  expect_status 0
  [ -c null ] || fail "the device was replaced: $(ls -l null)"
}

# A FIFO is written to: its reader gets the whole expanded file.
case_out_fifo_written() {
  sample_lzg s.lzg
  mkfifo pipe
  cat pipe >got &
  reader=$!
  run "$QUILL" lzg decompress s.lzg pipe
  wait "$reader"
  expect_status 0
  [ -p pipe ] || fail "the FIFO was replaced"
  cmp got "$SAMPLES/lzg-sample.txt" || fail "the reader did not get the file"
}

# A symbolic link is followed: the target gets the data, the link stays.
case_out_symlink_followed() {
  sample_lzg s.lzg
  mkdir real
  echo old >real/file
  ln -s real/file link
  run "$QUILL" lzg decompress s.lzg link
  expect_status 0
  [ -L link ] || fail "the link was replaced by a file"
  cmp real/file "$SAMPLES/lzg-sample.txt" || fail "the link's target was not written"
  ls -a real | grep -q '^\.quill-' && fail "a temporary file was left"
  # A dangling link creates its target.
  ln -s made dangling
  run "$QUILL" lzg decompress s.lzg dangling
  expect_status 0
  [ -L dangling ] && cmp made "$SAMPLES/lzg-sample.txt" || fail "the dangling link's target was not created"
}

# An existing output keeps its mode (0600 stays 0600).
case_out_mode_kept() {
  sample_lzg s.lzg
  echo old >out
  chmod 600 out
  run "$QUILL" lzg decompress s.lzg out
  expect_status 0
  [ "$(stat -c %a out)" = 600 ] || fail "mode became $(stat -c %a out)"
  cmp out "$SAMPLES/lzg-sample.txt"
  # A new output gets the usual mode under the umask.
  (umask 027 && "$QUILL" lzg decompress s.lzg new)
  [ "$(stat -c %a new)" = 640 ] || fail "a new file got mode $(stat -c %a new)"
}

# Every hard link of the output sees the new contents.
case_out_hardlink_kept() {
  sample_lzg s.lzg
  echo old >a
  ln a b
  run "$QUILL" lzg decompress s.lzg a
  expect_status 0
  cmp b "$SAMPLES/lzg-sample.txt" || fail "the hard link was broken"
  [ "$(stat -c %i a)" = "$(stat -c %i b)" ] || fail "a and b are no longer the same file"
}

# A write-protected output is refused (also for root), unless --force.
case_out_write_protected() {
  sample_lzg s.lzg
  echo old >ro
  chmod 444 ro
  run "$QUILL" lzg decompress s.lzg ro
  expect_status 1
  expect_err "cannot write ro: it is write-protected"
  [ "$(cat ro)" = old ] || fail "the write-protected file was replaced"
  run "$QUILL" lzg decompress --force s.lzg ro
  expect_status 0
  cmp ro "$SAMPLES/lzg-sample.txt"
  [ "$(stat -c %a ro)" = 444 ] || fail "--force changed the mode to $(stat -c %a ro)"
  run "$QUILL" lzg compress -f "$SAMPLES/lzg-sample.txt" ro
  expect_status 0
}

# A valid name of 255 bytes works: the temporary name does not grow from it.
case_out_long_name() {
  sample_lzg s.lzg
  name=$(printf 'n%.0s' $(seq 1 255))
  run "$QUILL" lzg decompress s.lzg "$name"
  expect_status 0
  cmp "$name" "$SAMPLES/lzg-sample.txt"
  name=$(printf 'n%.0s' $(seq 1 244))
  run "$QUILL" lzg compress "$SAMPLES/lzg-sample.txt" "$name"
  expect_status 0
}

# A directory or an empty name as OUT: a real reason, not "Success".
case_out_directory_or_empty() {
  sample_lzg s.lzg
  mkdir adir
  run "$QUILL" lzg decompress s.lzg adir
  expect_status 1
  expect_err "cannot write adir: it is a directory"
  expect_no_err "Success"
  run "$QUILL" lzg decompress s.lzg ""
  expect_status 2
  expect_err "output file name is empty"
  expect_no_err "Success"
}

# While a run waits for input, its temporary file is a short name in OUT's
# folder; SIGTERM and SIGINT remove it and leave no OUT.
stop_with() {
  set -m  # background jobs keep SIGINT (not ignored as without job control)
  sample_lzg s.lzg
  mkdir outdir
  mkfifo feed
  "$QUILL" lzg compress feed outdir/out &
  pid=$!
  exec 3>feed
  printf 'some data' >&3
  for _ in $(seq 1 100); do
    ls -A outdir | grep -q . && break
    sleep 0.05
  done
  temp=$(ls -A outdir)
  [ -n "$temp" ] || fail "no temporary file in OUT's folder"
  [ "${#temp}" -le 16 ] || fail "temporary name too long: $temp"
  kill "-$1" "$pid"
  set +e
  wait "$pid"
  set -e
  exec 3>&-
  [ -z "$(ls -A outdir)" ] || fail "left behind after SIG$1: $(ls -A outdir)"
}
case_out_sigterm_cleans() { stop_with TERM; }
case_out_sigint_cleans() { stop_with INT; }

# A failed run (truncated input) leaves neither OUT nor a temporary file.
case_out_failed_run_leaves_nothing() {
  sample_lzg s.lzg
  head -c -1 s.lzg >cut.lzg
  mkdir outdir
  run "$QUILL" lzg decompress cut.lzg outdir/out
  expect_status 1
  [ -z "$(ls -A outdir)" ] || fail "left behind: $(ls -A outdir)"
}

# A full disk names the file and the reason; nothing is left on the disk.
case_out_disk_full() {
  need_root
  numbers big.txt 200000
  mkdir small
  mount -t tmpfs -o size=64k tmpfs small 2>/dev/null || skip "cannot mount a small tmpfs"
  at_exit "umount '$TMPDIR/small'"
  run "$QUILL" lzg compress big.txt small/out.lzg
  expect_status 1
  expect_err "cannot write small/out.lzg: No space left on device"
  [ -z "$(ls -A small)" ] || fail "left behind: $(ls -A small)"
}

# A file size limit (EFBIG) is reported the same way.
case_out_file_too_large() {
  numbers big.txt 200000
  set +e
  (ulimit -f 16 && trap '' XFSZ && exec "$QUILL" lzg compress big.txt out.lzg) 2>err
  status=$?
  set -e
  err=$(cat err)
  expect_status 1
  grep -q "cannot write out.lzg: File too large" err || fail "$err"
  [ ! -e out.lzg ] || fail "a partial out.lzg was left"
}

# A full device written directly (a private copy of /dev/full).
case_out_device_full() {
  need_root
  mknod full c 1 7 || skip "cannot create a device node here"
  sample_lzg s.lzg
  run "$QUILL" lzg decompress s.lzg full
  expect_status 1
  expect_err "cannot write full: No space left on device"
  [ -c full ] || fail "the device was replaced"
}
