# Messages of date, version and hex: errors on standard error with the
# reason, and no wrong answer with status 0.

# A failed `date parse` says so on standard error, not standard output.
case_date_parse_error_to_stderr() {
  run "$QUILL" date parse dd.mm.yyyy 31.02.2023
  expect_status 1
  expect_empty_out
  expect_err '"31.02.2023" could not be read as dd.mm.yyyy'
}

# A five-digit year is refused, not read as 1000-01-01.
case_date_parse_five_digit_year() {
  run "$QUILL" date parse dd.mm.yyyy 01.01.10000
  expect_status 1
  expect_no_out 1000-01-01
  expect_err "the number 10000 has more than four digits"
  run "$QUILL" date parse dd.mm.yyyy 31.12.9999
  expect_status 0
  expect_out "^9999-12-31$"
}

# The version sample with byte `offset` past the UTF-16 text `key` set to
# the bytes `bytes` (printf escapes).
patched_sample() {
  local key=$1 skip=$2 bytes=$3 out=$4 pattern="" c at
  for ((c = 0; c < ${#key}; c++)); do pattern+="${key:c:1}\\x00"; done
  cp "$SAMPLES/gutils-version-sample.exe" "$out"
  at=$(LC_ALL=C grep -obUaP "$pattern" "$out" | head -1 | cut -d: -f1)
  [ -n "$at" ] || skip "cannot find $key in the sample"
  # shellcheck disable=SC2059
  printf "$bytes" | dd of="$out" bs=1 seek=$((at + skip)) conv=notrunc status=none
}

# Missing, unreadable, not a PE file, no version information: four messages.
case_version_messages() {
  run "$QUILL" version missing.exe
  expect_status 1
  expect_err "cannot open missing.exe: No such file or directory"
  mkdir adir
  run "$QUILL" version adir
  expect_status 1
  expect_err "cannot read adir: it is a directory"
  run "$QUILL" version "$SAMPLES/lzg-sample.txt"
  expect_status 1
  expect_err "is not a Windows executable or DLL"
  # The version block's key damaged: a PE file without version information.
  patched_sample VS_VERSION_INFO 0 'X' noversion.exe
  run "$QUILL" version noversion.exe
  expect_status 1
  expect_err "noversion.exe has no version information"
}

# Every field empty: the message names the translation looked under.
case_version_empty_fields_name_translation() {
  # The first translation becomes 0410/04B0, a table the file lacks.
  patched_sample Translation 26 '\x10\x04' other.exe
  run "$QUILL" version other.exe
  expect_status 0
  expect_out "^CompanyName: $"
  expect_err "every field is empty: looked under translation 041004B0 \(language 0410, code page 04B0\)"
  run "$QUILL" version "$SAMPLES/gutils-version-sample.exe"
  expect_no_err "every field is empty"
}

case_hex_error_status() {
  run "$QUILL" hex 1G
  expect_status 1
  expect_err "^quill: hex: "
}
