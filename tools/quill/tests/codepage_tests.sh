# quill codepage: converting text between code pages, and the list of pages.

# Standard input to standard output: 1252 "été" becomes UTF-8.
case_codepage_convert_stdin() {
  printf '\xe9t\xe9\n' | "$QUILL" codepage convert --from 1252 --to 65001 >got
  printf '\xc3\xa9t\xc3\xa9\n' >want
  cmp got want || fail "$(od -An -tx1 got)"
}

# Files: Russian text from the DOS page 866 to the Windows page 1251.
case_codepage_convert_files() {
  printf '\x8f\xe0\xa8\xa2\xa5\xe2' >in.866   # "Привет" in 866
  run "$QUILL" codepage convert --from 866 --to 1251 in.866 out.1251
  expect_status 0
  printf '\xcf\xf0\xe8\xe2\xe5\xf2' >want
  cmp out.1251 want || fail "$(od -An -tx1 out.1251)"
}

# UTF-8 -> Shift-JIS -> UTF-8 gives the text back.
case_codepage_round_trip_932() {
  printf '\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e abc\n' >text
  "$QUILL" codepage convert --from 65001 --to 932 text - | "$QUILL" codepage convert --from 932 --to 65001 >back
  cmp back text || fail "$(od -An -tx1 back)"
}

# Characters the target page lacks become '?'.
case_codepage_unmappable() {
  printf 'a\xe4\xb8\xadb' | "$QUILL" codepage convert --from 65001 --to 1252 >got
  [ "$(cat got)" = "a?b" ] || fail "$(cat got)"
}

# An unknown page is a usage error with a clear message, and writes nothing.
case_codepage_unknown_page() {
  run "$QUILL" codepage convert --from 12345 --to 65001 /dev/null out
  expect_status 2
  expect_err "unknown code page 12345 for --from"
  [ ! -e out ] || fail "a failed run left out behind"
  run "$QUILL" codepage convert --from 1252 --to 1200
  expect_status 2
  expect_err "unknown code page 1200 for --to"
}

case_codepage_missing_input() {
  run "$QUILL" codepage convert --from 1252 --to 65001 /nonexistent/in.txt out
  expect_status 1
  expect_err "cannot open /nonexistent/in.txt"
}

case_codepage_list() {
  run "$QUILL" codepage list
  expect_status 0
  expect_out "^1252	single-byte	Western European \(Windows\)	"
  expect_out "^932	multi-byte	Japanese"
  expect_out "^65001	multi-byte	Unicode \(UTF-8\)	UTF-8$"
  [ "$(printf '%s\n' "$out" | wc -l)" -ge 50 ] || fail "only $(printf '%s\n' "$out" | wc -l) pages"
}
