# The tool's everyday commands on the bundled samples.

case_demo() {
  run "$QUILL" demo
  expect_status 0
  expect_out "== Gcompress"
}

case_version() {
  run "$QUILL" --version
  expect_status 0
  expect_out "^quill 23\."
}

case_date_parse() {
  run "$QUILL" date parse "dd.mm.yyyy hh:nn" "24.12.2023 18:30"
  expect_status 0
  expect_out "^2023-12-24T18:30:00$"
}

case_date_name() {
  run "$QUILL" date name 2024-05-05
  expect_status 0
  expect_out "5 of May 2024"
}

# 31 February is no date: status 1.
case_date_unreadable() {
  run "$QUILL" date parse dd.mm.yyyy 31.02.2023
  expect_status 1
}

case_tokens() {
  run "$QUILL" tokens "$SAMPLES/scanner-demo.pas"
  expect_status 0
  expect_out $'^0\t1\t5\t0\tttIdent\tunit$'
}

case_pe_version() {
  run "$QUILL" version "$SAMPLES/gutils-version-sample.exe"
  expect_status 0
  expect_out "FileVersion: 2\.3\.0\.17"
}
