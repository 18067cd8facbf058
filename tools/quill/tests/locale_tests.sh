# quill locale: facts of one locale, the three lists, and lookups. The system
# locale is pinned to en-US for every case.

case_locale_info_lcid() {
  run "$QUILL" locale info 0409
  expect_status 0
  expect_out "^LOCALE_SNAME +en-US$"
  expect_out "^LOCALE_SLANGUAGE +English \(United States\)$"
  expect_out "^LOCALE_SABBREVLANGNAME +ENU$"
  expect_out "^LOCALE_IDEFAULTANSICODEPAGE +1252$"
  expect_out "^ISOCodesByLocale +\"US en\"$"
  expect_out "^ISOCodesByLocaleTMX +en-US$"
}

# A tag names the same locale; case and '_' do not matter.
case_locale_info_tag() {
  run "$QUILL" locale info de_de
  expect_status 0
  expect_out "^LCID +0x0407$"
  expect_out "^LOCALE_SNATIVELANGNAME +Deutsch$"
  run "$QUILL" locale info 0x0C0A
  expect_status 0
  expect_out "^LocaleEngName +Spanish \(International Sort\)$"
}

# The display name follows the system locale.
case_locale_info_system_language() {
  QUILL_SYSTEM_LOCALE=de-DE run "$QUILL" locale info en-US
  expect_status 0
  expect_out "^LOCALE_SLANGUAGE +Englisch \(Vereinigte Staaten\)$"
}

# The layout is found by containment: every bit of 0x0401 is set in the US
# handle 0x04090409, so the order of the layouts decides.
case_locale_info_middle_east_and_keyboard() {
  QUILL_KEYBOARD_LAYOUTS="ara,us" run "$QUILL" locale info ar-SA
  expect_status 0
  expect_out "^IsMiddleEast +true$"
  expect_out "^GetKLByLocale +0x04010401$"
  QUILL_KEYBOARD_LAYOUTS="us,ara" run "$QUILL" locale info ar-SA
  expect_out "^GetKLByLocale +0x04090409$"
  QUILL_KEYBOARD_LAYOUTS="" run "$QUILL" locale info he-IL
  expect_out "^IsMiddleEast +false$"
  expect_out "^GetKLByLocale +0x0000040D$"
}

case_locale_info_unknown() {
  run "$QUILL" locale info 0xABCD
  expect_status 1
  expect_err "locale 0xABCD is not known"
  run "$QUILL" locale info xx-YY
  expect_status 1
  expect_err "locale \"xx-YY\" is not known"
}

case_locale_info_bad_lcid() {
  run "$QUILL" locale info 0xZZ
  expect_status 2
  expect_err "\"0xZZ\" is not a hexadecimal LCID"
}

# The default list is every supported locale, ascending.
case_locale_list_sub() {
  run "$QUILL" locale list
  expect_status 0
  expect_out "^0x0409	English \(United States\)$"
  [ "$(head -n 1 "$TMPDIR/.out")" = "0x0401	Arabic (Saudi Arabia)" ] || fail "first line: $(head -n 1 "$TMPDIR/.out")"
  sort -c "$TMPDIR/.out" || fail "not in ascending order"
  run "$QUILL" locale list --sub
  [ "$(wc -l < "$TMPDIR/.out")" -gt 250 ] || fail "too few locales"
}

case_locale_list_primary() {
  run "$QUILL" locale list --primary
  expect_status 0
  expect_out "^0x0009	English$"
  expect_out "^0x040D	Hebrew \(Israel\)$"
  expect_no_out "^0x0409	"
}

# The language entry comes directly before the first locale of the language.
case_locale_list_both() {
  run "$QUILL" locale list --both
  expect_status 0
  grep -A1 -E "^0x0009	English$" "$TMPDIR/.out" | grep -q -E "^0x0409	English \(United States\)$" ||
    fail "English entry not before 0x0409"
}

case_locale_list_json() {
  run "$QUILL" locale list --primary --json
  expect_status 0
  expect_out '^\[$'
  expect_out '^  \{"lcid": 9, "hex": "0x0009", "name": "English"\},$'
  expect_out '^\]$'
  if command -v python3 >/dev/null; then
    python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); assert len(d) > 100' "$TMPDIR/.out" || fail "not JSON"
  fi
}

case_locale_list_options_exclusive() {
  run "$QUILL" locale list --primary --both
  expect_status 2
}

case_locale_find() {
  run "$QUILL" locale find EN-us
  expect_status 0
  expect_out "^TMX codes +0x0409 +en-US +English \(United States\)$"
  run "$QUILL" locale find "US en"
  expect_out "^ISO codes +0x0409 "
  run "$QUILL" locale find ger
  expect_out "^English name +0x0407 "
  run "$QUILL" locale find IL
  expect_out "^country code +0x040D "
}

case_locale_find_nothing() {
  run "$QUILL" locale find qqqq
  expect_status 1
  expect_err "no locale matches \"qqqq\""
  run "$QUILL" locale find ""
  expect_status 2
}

# Standard output that cannot be written is an error.
case_locale_list_full_stdout() {
  [ -w /dev/full ] || skip "no /dev/full"
  run sh -c '"$0" locale list >/dev/full' "$QUILL"
  expect_status 1
  expect_err "cannot write standard output"
}
