# quill help FILE[::TOPIC]: through the library's help launcher and its engine
# plugin, with a viewer that records what it was asked to open.

help_data() { echo "$QUILL_SOURCE_DIR/quill/htmlhlp/testdata"; }

# Points the viewer at a recorder and the cache into $TMPDIR.
record_viewer() {
  export XDG_CACHE_HOME="$TMPDIR/cache"
  export QUILL_OPEN_COMMAND="/bin/sh -c 'printf \"%s\\n\" \"\$1\" >> \"\$0\"' $TMPDIR/asked.txt"
}

# The viewer runs without being waited for: wait for its line.
asked() {
  for _ in $(seq 1 200); do
    [ -s "$TMPDIR/asked.txt" ] && break
    sleep 0.05
  done
  [ -s "$TMPDIR/asked.txt" ] || fail "the viewer was not started"
  head -n 1 "$TMPDIR/asked.txt"
}

# A topic of a compiled help file is extracted into the cache and its page
# handed to the viewer.
case_help_chm_topic() {
  record_viewer
  run "$QUILL" help "$(help_data)/test.chm::/pages/guide/compress.htm"
  expect_status 0
  expect_out "^shown: .*test.chm::/pages/guide/compress.htm$"
  page=$(asked)
  case "$page" in
    "$TMPDIR/cache/quill/help/"*/pages/guide/compress.htm) ;;
    *) fail "viewer asked for $page" ;;
  esac
  cmp "$page" "$(help_data)/pages/guide/compress.htm" || fail "extracted page differs"
}

# Without a topic: the file's default one.
case_help_chm_default_topic() {
  record_viewer
  run "$QUILL" help "$(help_data)/test.chm"
  expect_status 0
  cmp "$(asked)" "$(help_data)/pages/index.htm" || fail "not the default topic"
}

# --context N: the page the file's context map gives N; an unmapped number
# shows nothing.
case_help_context_number() {
  record_viewer
  run "$QUILL" help --context 42 "$(help_data)/test.chm"
  expect_status 0
  cmp "$(asked)" "$(help_data)/pages/guide/compress.htm" || fail "not the page of context 42"
  run "$QUILL" help --context 43 "$(help_data)/test.chm"
  expect_status 1
  expect_err "nothing to show"
  run "$QUILL" help --context x "$(help_data)/test.chm"
  expect_status 2
}

# An HTML page is handed on as it is, relative names made absolute.
case_help_html_page() {
  record_viewer
  cp "$(help_data)/pages/index.htm" page.htm
  run "$QUILL" help page.htm
  expect_status 0
  [ "$(asked)" = "$TMPDIR/page.htm" ] || fail "viewer asked for $(asked)"
}

# Nothing to show: status 1, no viewer started.
case_help_missing_topic() {
  record_viewer
  run "$QUILL" help "$(help_data)/test.chm::/no/such/page.htm"
  expect_status 1
  expect_err "nothing to show for .*test.chm::/no/such/page.htm"
  run "$QUILL" help "$TMPDIR/missing.chm"
  expect_status 1
  [ ! -e "$TMPDIR/asked.txt" ] || fail "a viewer was started"
}

# A topic that climbs out of the cache is refused.
case_help_traversal_refused() {
  record_viewer
  run "$QUILL" help "$(help_data)/traversal.chm::/../../zzescape.htm"
  expect_status 1
  [ ! -e "$TMPDIR/cache/zzescape.htm" ] || fail "written outside the cache"
  [ ! -e "$TMPDIR/cache/quill/zzescape.htm" ] || fail "written outside the cache"
}

# The engine cannot be loaded: the library's error, status 1.
case_help_engine_missing() {
  record_viewer
  QUILL_HELP_ENGINE=/nonexistent/libquill23-hhctrl.so run "$QUILL" help "$(help_data)/test.chm"
  expect_status 1
  expect_err "Can't load Library 'hhctrl.ocx'"
}

case_help_usage() {
  run "$QUILL" help
  expect_status 2
  expect_err "FILE is required"
}
