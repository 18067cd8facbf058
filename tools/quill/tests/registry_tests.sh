# quill reg: values in the per-user store, and registry files in and out.
# Every case has its own store in its private folder; HOME and XDG_CONFIG_HOME
# point there too, so that no case can reach the real user's store.
export QUILL_REGISTRY="$TMPDIR/registry.db"
export HOME="$TMPDIR"
export XDG_CONFIG_HOME="$TMPDIR/config"

# The first bytes of a file as hex ("fffe5700").
first_bytes() { od -A n -t x1 -N "$2" "$1" | tr -d ' \n'; }

# A registry file written by hand, as UTF-8 with LF line ends.
hand_written() {
  cat <<'EOF'
Windows Registry Editor Version 5.00

; written by hand
[HKEY_CURRENT_USER\Software\Hand]
@="default text"
"Path"="C:\\Program Files\\Quill \"23\""
"Count"=dword:0000000a
"Negative"=dword:ffffffff
"Blob"=hex:00,01,02,\
  fe,ff
"Home"=hex(2):25,00,48,00,4f,00,4d,00,45,00,25,00,00,00
"Text"=hex(1):c3,00,00,00
"Gone"="soon"
"Gone"=-

[HKEY_CURRENT_USER\Software\Hand\Sub Key]
"Größe"="groß"

[HKEY_CURRENT_USER\Software\Hand\Old]
"x"="y"

[-HKEY_CURRENT_USER\Software\Hand\Old]
EOF
}

case_reg_set_get_string() {
  "$QUILL" reg set 'Software\Quill' Greeting 'Hello, wörld'
  run "$QUILL" reg get 'Software\Quill' Greeting
  expect_status 0
  [ "$out" = 'Hello, wörld' ] || fail "got: $out"
  [ -f "$QUILL_REGISTRY" ] || fail "the store is not at \$QUILL_REGISTRY"
}

# Names compare without case and keep the case first written.
case_reg_names_ignore_case() {
  "$QUILL" reg set 'Software\Quill' Greeting hi
  run "$QUILL" reg get 'SOFTWARE\quill' GREETING
  expect_status 0
  [ "$out" = hi ] || fail "got: $out"
  run "$QUILL" reg list 'software'
  expect_out '^Quill\\$'
}

case_reg_set_get_dword() {
  "$QUILL" reg set K n 0x0000000a --type dword
  [ "$("$QUILL" reg get K n)" = 10 ] || fail "0x0000000a"
  # The store's integer is signed: all bits set reads as -1.
  "$QUILL" reg set K n 4294967295 --type dword
  [ "$("$QUILL" reg get K n)" = -1 ] || fail "4294967295"
  "$QUILL" reg set K n -2147483648 --type dword
  [ "$("$QUILL" reg get K n)" = -2147483648 ] || fail "-2147483648"
}

case_reg_set_bad_dword_writes_nothing() {
  for bad in 4294967296 -2147483649 12x 0x123456789 '' 0x; do
    run "$QUILL" reg set K n "$bad" --type dword
    expect_status 2
  done
  run "$QUILL" reg get K
  expect_status 1
}

case_reg_set_get_binary() {
  "$QUILL" reg set K b '01,02,FF' --type binary
  [ "$("$QUILL" reg get K b)" = 01,02,ff ] || fail "01,02,FF"
  "$QUILL" reg set K b '0a0b 0c' --type binary
  [ "$("$QUILL" reg get K b)" = 0a,0b,0c ] || fail "0a0b 0c"
  run "$QUILL" reg set K b '012' --type binary
  expect_status 2
  run "$QUILL" reg set K b 'zz' --type binary
  expect_status 2
}

case_reg_help_names_exit_statuses() {
  run "$QUILL" reg --help
  expect_status 0
  expect_out 'Exit status: 0 done; 1 a missing key or value'
}

case_reg_set_unknown_type() {
  run "$QUILL" reg set K n 1 --type qword
  expect_status 2
}

# "" names the default value; get without NAME reads it.
case_reg_default_value() {
  "$QUILL" reg set K '' 'the default'
  [ "$("$QUILL" reg get K)" = 'the default' ] || fail "get K"
  [ "$("$QUILL" reg get K '')" = 'the default' ] || fail "get K ''"
  run "$QUILL" reg list K
  expect_out '^@	sz	the default$'
}

case_reg_get_missing_key() {
  run "$QUILL" reg get 'Software\Nowhere' x
  expect_status 1
  expect_err 'key "HKEY_CURRENT_USER\\Software\\Nowhere" does not exist'
  expect_empty_out
}

case_reg_get_missing_value() {
  "$QUILL" reg set K a 1
  run "$QUILL" reg get K b
  expect_status 1
  expect_err 'value "b" does not exist in "HKEY_CURRENT_USER\\K"'
  run "$QUILL" reg get K
  expect_status 1
  expect_err 'the default value does not exist'
}

case_reg_delete_value_and_key() {
  "$QUILL" reg set 'A\B\C' v 1
  "$QUILL" reg set 'A\B' w 2
  "$QUILL" reg delete 'A\B' w
  run "$QUILL" reg get 'A\B' w
  expect_status 1
  # Without NAME the key goes with everything below it.
  "$QUILL" reg delete 'A\B'
  run "$QUILL" reg get 'A\B\C' v
  expect_status 1
  expect_err 'key .* does not exist'
  run "$QUILL" reg list A
  expect_status 0
  expect_no_out '^B\\$'
}

case_reg_delete_missing() {
  run "$QUILL" reg delete 'Software\Nowhere'
  expect_status 1
  expect_err 'does not exist'
  "$QUILL" reg set K a 1
  run "$QUILL" reg delete K b
  expect_status 1
  expect_err 'value "b" does not exist'
  run "$QUILL" reg delete ''
  expect_status 2
  expect_err 'root key cannot be deleted'
}

case_reg_root_prefix() {
  "$QUILL" reg set 'HKEY_CURRENT_USER\Software\P' v 1
  [ "$("$QUILL" reg get 'HKCU\Software\P' v)" = 1 ] || fail "HKCU prefix"
  [ "$("$QUILL" reg get 'Software\P' v)" = 1 ] || fail "no prefix"
  run "$QUILL" reg get 'HKEY_LOCAL_MACHINE\Software' v
  expect_status 2
  expect_err 'only keys below HKEY_CURRENT_USER'
}

case_reg_list_text() {
  "$QUILL" reg set 'S\Q' s text
  "$QUILL" reg set 'S\Q' n 7 --type dword
  "$QUILL" reg set 'S\Q' b 01ff --type binary
  "$QUILL" reg set 'S\Q\Sub' x 1
  run "$QUILL" reg list 'S\Q'
  expect_status 0
  expected=$(printf '[HKEY_CURRENT_USER\\S\\Q]\ns\tsz\ttext\nn\tdword\t7\nb\tbinary\t01,ff\nSub\\')
  [ "$out" = "$expected" ] || fail "got: $out"
  run "$QUILL" reg list 'S\Q' --recursive
  expect_out '^\[HKEY_CURRENT_USER\\S\\Q\\Sub\]$'
  expect_out '^x	sz	1$'
  run "$QUILL" reg list 'S\Missing'
  expect_status 1
}

# The text form escapes what would break its lines: backslash, tab, CR, LF.
case_reg_list_text_escapes() {
  "$QUILL" reg set K "$(printf 'a\tb')" "$(printf 'C:\\dir\r\nnext')"
  run "$QUILL" reg list K
  expect_out '^a\\tb	sz	C:\\\\dir\\r\\nnext$'
  [ "$(printf '%s\n' "$out" | wc -l)" -eq 2 ] || fail "got: $out"
  # get prints the data as it is.
  [ "$("$QUILL" reg get K "$(printf 'a\tb')")" = "$(printf 'C:\\dir\r\nnext')" ] || fail "get"
}

# A store that is not a database: a clear error naming the file.
case_reg_store_unusable() {
  echo "not a database" >"$QUILL_REGISTRY"
  run "$QUILL" reg get K
  expect_status 1
  expect_err "Registry database \".*registry\.db\" cannot be used"
  printf 'Windows Registry Editor Version 5.00\n[HKEY_CURRENT_USER\\A]\n' >ok.reg
  run "$QUILL" reg import ok.reg
  expect_status 1
  expect_err 'cannot be used'
}

case_reg_list_json() {
  "$QUILL" reg set 'S\Q' 'say "hi"' 'a\b'
  "$QUILL" reg set 'S\Q' n -5 --type dword
  "$QUILL" reg set 'S\Q\Sub' x 1
  run "$QUILL" reg list 'S\Q' --json
  expect_status 0
  expect_out '"key":"S\\\\Q"'
  expect_out '\{"name":"say \\"hi\\"","type":"sz","data":"a\\\\b"\}'
  expect_out '\{"name":"n","type":"dword","data":-5\}'
  expect_out '"subkeys":\["Sub"\]'
  expect_no_out '"key":"S\\\\Q\\\\Sub"'
  run "$QUILL" reg list 'S\Q' --json --recursive
  expect_out '"key":"S\\\\Q\\\\Sub"'
  if command -v python3 >/dev/null; then
    python3 -c 'import json,sys; d=json.load(sys.stdin); assert len(d)==2 and d[1]["values"][0]["data"]=="1", d' <"$TMPDIR/.out" ||
      fail "not the JSON expected"
  fi
}

# Exported files are UTF-16LE with a byte-order mark and CR LF line ends.
case_reg_export_format() {
  "$QUILL" reg set 'Software\E' v 'x'
  "$QUILL" reg export 'Software\E' e.reg
  [ "$(first_bytes e.reg 4)" = fffe5700 ] || fail "starts with $(first_bytes e.reg 4)"
  iconv -f UTF-16LE -t UTF-8 e.reg | tail -c +4 >e.txt
  expected=$(printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\E]\r\n"v"="x"\r\n\r\n')
  [ "$(cat e.txt)" = "$expected" ] || fail "got: $(od -c e.txt | head)"
  # "-" writes the same bytes to standard output.
  "$QUILL" reg export 'Software\E' - >e2.reg
  cmp e.reg e2.reg
}

case_reg_export_unwritable() {
  "$QUILL" reg set K v 1
  run "$QUILL" reg export K /nonexistent/dir/out.reg
  expect_status 1
  expect_err '/nonexistent/dir/out.reg'
}

# A write-protected file (no write permission for anyone, so this holds for
# root too) is kept unless --force.
case_reg_export_write_protected() {
  "$QUILL" reg set K v 1
  echo old >ro.reg
  chmod a-w ro.reg
  run "$QUILL" reg export K ro.reg
  expect_status 1
  [ "$(cat ro.reg)" = old ] || fail "ro.reg was replaced"
  "$QUILL" reg export --force K ro.reg
  [ "$(first_bytes ro.reg 2)" = fffe ] || fail "--force did not write"
}

case_reg_export_missing_key() {
  run "$QUILL" reg export 'Software\Nowhere' out.reg
  expect_status 1
  expect_err 'does not exist'
  [ ! -e out.reg ] || fail "a missing key left out.reg behind"
}

# Export, delete, import: the tree comes back with every type and name.
case_reg_export_import_round_trip() {
  "$QUILL" reg set 'Software\RT' '' 'default'
  "$QUILL" reg set 'Software\RT' 'quote"back\slash' 'C:\dir "q"'
  "$QUILL" reg set 'Software\RT' Exp '%HOME%\x' --type expand_sz
  "$QUILL" reg set 'Software\RT' N 0xdeadbeef --type dword
  "$QUILL" reg set 'Software\RT' Empty '' --type binary
  "$QUILL" reg set 'Software\RT' Big "$(head -c 200 /dev/zero | tr '\0' 'a' | sed 's/aa/7f/g')" --type binary
  "$QUILL" reg set 'Software\RT' Lines "$(printf 'one\ntwo')"
  "$QUILL" reg set 'Software\RT\Ünïcödé\Deep' 'ключ' '日本 😀'
  "$QUILL" reg list 'Software\RT' --recursive --json >before.json
  "$QUILL" reg export 'Software\RT' rt.reg
  "$QUILL" reg delete 'Software\RT'
  run "$QUILL" reg get 'Software\RT'
  expect_status 1
  "$QUILL" reg import rt.reg
  "$QUILL" reg list 'Software\RT' --recursive --json >after.json
  cmp before.json after.json || fail "$(diff before.json after.json)"
  [ "$("$QUILL" reg get 'Software\RT' Lines)" = "$(printf 'one\ntwo')" ] || fail "a string with a line break"
  # Importing the same file again changes nothing.
  "$QUILL" reg import - <rt.reg
  "$QUILL" reg list 'Software\RT' --recursive --json >again.json
  cmp before.json again.json
}

check_hand_written() {
  [ "$("$QUILL" reg get 'Software\Hand')" = 'default text' ] || fail "@"
  [ "$("$QUILL" reg get 'Software\Hand' Path)" = 'C:\Program Files\Quill "23"' ] || fail "Path"
  [ "$("$QUILL" reg get 'Software\Hand' Count)" = 10 ] || fail "Count"
  [ "$("$QUILL" reg get 'Software\Hand' Negative)" = -1 ] || fail "Negative"
  [ "$("$QUILL" reg get 'Software\Hand' Blob)" = 00,01,02,fe,ff ] || fail "Blob"
  [ "$("$QUILL" reg get 'Software\Hand' Home)" = '%HOME%' ] || fail "Home"
  [ "$("$QUILL" reg get 'Software\Hand' Text)" = 'Ã' ] || fail "Text"
  [ "$("$QUILL" reg get 'Software\Hand\Sub Key' 'Größe')" = 'groß' ] || fail "Größe"
  run "$QUILL" reg get 'Software\Hand' Gone
  expect_status 1
  run "$QUILL" reg get 'Software\Hand\Old' x
  expect_status 1
  run "$QUILL" reg list 'Software\Hand' --json
  expect_out '"name":"Home","type":"expand_sz"'
}

case_reg_import_hand_written_utf8() {
  hand_written >hand.reg
  "$QUILL" reg import hand.reg
  check_hand_written
}

case_reg_import_hand_written_utf16() {
  { printf '\377\376'; hand_written | sed 's/$/\r/' | iconv -f UTF-8 -t UTF-16LE; } >hand16.reg
  [ "$(first_bytes hand16.reg 2)" = fffe ] || fail "no byte-order mark"
  "$QUILL" reg import hand16.reg
  check_hand_written
}

case_reg_import_ansi() {
  # Latin-1 bytes that are not UTF-8: read in the ANSI code page (1252 here).
  printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Caf\351]\r\n"n"="\351t\351"\r\n' >ansi.reg
  QUILL_ANSI_CODEPAGE=1252 "$QUILL" reg import ansi.reg
  [ "$("$QUILL" reg get 'Café' n)" = 'été' ] || fail "$("$QUILL" reg list '' --recursive)"
}

# A bad line anywhere refuses the whole file: nothing before it is written.
case_reg_import_malformed_writes_nothing() {
  "$QUILL" reg set 'Software\Keep' v old
  cat >bad.reg <<'EOF'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\New]
"a"="1"
[HKEY_CURRENT_USER\Software\Keep]
"v"="new"
"b"=dword:12345678x
"c"="3"
EOF
  run "$QUILL" reg import bad.reg
  expect_status 2
  expect_err '^quill: bad\.reg:7: dword data must be 1 to 8 hex digits'
  run "$QUILL" reg get 'Software\New' a
  expect_status 1
  [ "$("$QUILL" reg get 'Software\Keep' v)" = old ] || fail "Keep\\v was changed"
}

case_reg_import_continuation_error_line() {
  printf 'Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\K]\n"b"=hex:01,02,\\\n  03,\\\n  4g\n' >bad.reg
  run "$QUILL" reg import bad.reg
  expect_status 2
  expect_err 'bad\.reg:6: expected a hex byte'
}

case_reg_import_unsupported_type() {
  printf 'Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\K]\n"ok"="1"\n"m"=hex(7):61,00,00,00,00,00\n' >multi.reg
  run "$QUILL" reg import multi.reg
  expect_status 2
  expect_err 'multi\.reg:5: hex\(7\) values \(multi-string\) are not supported'
  run "$QUILL" reg get K ok
  expect_status 1
}

case_reg_import_other_root() {
  printf 'Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\Software]\n' >hklm.reg
  run "$QUILL" reg import hklm.reg
  expect_status 2
  expect_err 'hklm\.reg:3: only keys below HKEY_CURRENT_USER'
}

case_reg_import_not_a_registry_file() {
  run "$QUILL" reg import "$SAMPLES/lzg-sample.txt"
  expect_status 2
  expect_err ':1: the file must start with the line "Windows Registry Editor Version 5.00"'
}

case_reg_import_missing_file() {
  run "$QUILL" reg import /nonexistent/x.reg
  expect_status 1
  expect_err 'cannot open /nonexistent/x.reg'
}

# A key the store refuses (a name over 255 characters) fails the import with
# the file's line, and the lines before it are rolled back.
case_reg_import_store_refusal_rolls_back() {
  long=$(head -c 300 /dev/zero | tr '\0' k)
  printf 'Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\First]\n"a"="1"\n[HKEY_CURRENT_USER\\%s]\n' "$long" >long.reg
  run "$QUILL" reg import long.reg
  expect_status 1
  expect_err 'long\.reg:5: .*nothing was imported'
  run "$QUILL" reg get First a
  expect_status 1
}

case_reg_import_deletions() {
  "$QUILL" reg set 'Software\D\Tree\Leaf' v 1
  "$QUILL" reg set 'Software\D' keep 1
  "$QUILL" reg set 'Software\D' drop 1
  printf 'Windows Registry Editor Version 5.00\n\n[-HKEY_CURRENT_USER\\Software\\D\\Tree]\n[-HKEY_CURRENT_USER\\Software\\D\\Never]\n[HKEY_CURRENT_USER\\Software\\D]\n"drop"=-\n"never"=-\n' >del.reg
  "$QUILL" reg import del.reg
  run "$QUILL" reg list 'Software\D' --recursive
  expect_out '^keep	sz	1$'
  expect_no_out 'drop|Tree|Leaf'
}
