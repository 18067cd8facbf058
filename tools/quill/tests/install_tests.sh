# The installed package: `cmake --install` to a private prefix, then the
# tool, its samples and a pkg-config build from there.

# Installs the build tree under $TMPDIR/prefix (once per case).
install_tree() {
  [ -n "${QUILL_BUILD_DIR:-}" ] || skip "QUILL_BUILD_DIR not set"
  command -v cmake >/dev/null || skip "no cmake"
  prefix=$TMPDIR/prefix
  cmake --install "$QUILL_BUILD_DIR" --prefix "$prefix" >install.log 2>&1 || fail "install failed: $(tail -5 install.log)"
}

# The installed tool finds its library (RPATH $ORIGIN/../lib) and its samples
# (share/quill/samples) from its own place, not from the build or source tree.
case_install_tool_runs() {
  install_tree
  [ -x "$prefix/bin/quill" ] || skip "the tool is not installed"
  [ -f "$prefix/share/quill/samples/dates.txt" ] || fail "samples not installed under share/quill/samples"
  readelf -d "$prefix/bin/quill" | grep -q 'R.*PATH.*\$ORIGIN/\.\./lib' || fail "no \$ORIGIN RPATH"
  # A line only the installed samples have shows that they are read.
  echo 'dd.mm.yyyy|07.07.2007' >>"$prefix/share/quill/samples/dates.txt"
  # Moved elsewhere, it still works: nothing points into the build tree.
  mv "$prefix" "$TMPDIR/moved"
  set +e
  env -u LD_LIBRARY_PATH -u QUILL_DATA_DIR "$TMPDIR/moved/bin/quill" demo >"$TMPDIR/.out" 2>"$TMPDIR/.err"
  status=$?
  set -e
  out=$(cat "$TMPDIR/.out")
  err=$(cat "$TMPDIR/.err")
  expect_status 0
  expect_out '"07.07.2007" -> 2007-07-07'
  expect_out "== Gcompress"
}

# quill23.pc (and quill23-qt.pc, when the Qt module is built) derive their
# prefix from their own place.
case_install_pkgconfig_relative() {
  command -v pkg-config >/dev/null || skip "no pkg-config"
  install_tree
  for name in quill23 quill23-qt; do
    pc=$prefix/lib/pkgconfig/$name.pc
    if [ ! -f "$pc" ]; then
      [ "$name" = quill23 ] && fail "no quill23.pc under lib/pkgconfig"
      continue
    fi
    grep -q '^prefix=${pcfiledir}/' "$pc" || fail "$name: prefix is not relative: $(grep '^prefix=' "$pc")"
    got=$(PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config --variable=libdir "$name")
    [ "$(realpath "$got")" = "$(realpath "$prefix/lib")" ] || fail "$name: libdir $got"
  done
}

# The README's example builds without a warning with pkg-config from the
# installed tree, and prints what its comments say.
case_install_readme_example() {
  command -v pkg-config >/dev/null || skip "no pkg-config"
  [ -f "${QUILL_SOURCE_DIR:-}/README.md" ] || skip "no README"
  install_tree
  sed -n '/^```cpp$/,/^```$/p' "$QUILL_SOURCE_DIR/README.md" | sed '1d;$d' >example.cc
  grep -q 'int main' example.cc || fail "no example found in README.md"
  export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
  # shellcheck disable=SC2046
  run c++ -Wall -Wextra -Werror example.cc -o example $(pkg-config --cflags --libs quill23) \
    -Wl,-rpath,"$prefix/lib"
  expect_status 0
  run ./example
  expect_status 0
  expect_out "^4 items$"
  expect_out "'12 ' is not a valid integer value"
}
