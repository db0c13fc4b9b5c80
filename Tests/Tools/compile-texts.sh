#!/bin/bash
# Tests of Tools/compile-texts.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# language CODE NAME PLACE [ROW...]: writes a language file; a row is a line with a space for the tab after its key.
language() {
  local code=$1 name=$2 place=$3 row
  shift 3
  {
    printf '[Language]\nname\t%s\nplace\t%s\n[Key]\n' "$name" "$place"
    for row; do
      printf '%s\n' "${row/ /$'\t'}"
    done
  } >"$work/$code.texts"
}

compile() {
  expect_status "$1" "$root/Tools/compile-texts" "$work/made" "$work"/*.texts
}

expect_refusal() {
  compile 1
  expect_one_line
  expect_contains "$output" "$1"
  expect_no_file "$work/made"
}

english() {
  language en English 2 'hello Hello, %1' 'key Option key' 'key@linux Alt key' "$@"
}

test_languages_are_ordered_by_place() {
  english
  language de German 3 'hello Hallo, %1'
  language ro Romanian 1 'hello Salut, %1'
  compile 0
  expect_equal "$(sed -n 's/^    \([A-Z][a-z]*\),$/\1/p' "$work/made/TolmiApp/Settings/AppLanguages.h" | xargs)" \
    "Romanian English German"
}

test_the_same_texts_are_not_written_again() {
  english
  compile 0
  touch -d 2001-01-01 "$work/made/TolmiApp/Texts/"*
  compile 0
  [[ ! $work/made/TolmiApp/Texts/L10nKeys.h -nt $work/en.texts ]] || fail "everything is compiled anew"
}

test_a_language_without_english_is_refused() {
  language ro Romanian 1 'hello Salut'
  expect_refusal "there is no en.texts"
}

test_an_unknown_key_is_refused() {
  english
  language ro Romanian 1 'helo Salut, %1'
  expect_refusal "ro.texts:5: helo is no key of [Key] in en.texts"
}

test_a_key_with_two_texts_is_refused() {
  english 'hello Hi, %1'
  expect_refusal "en.texts:8: hello has a text already"
}

test_a_key_without_a_text_is_refused() {
  english 'empty '
  expect_refusal "en.texts:8: no key, tab and text"
}

test_a_blank_at_an_end_of_a_text_is_refused() {
  english 'greeting Hello '
  expect_refusal "en.texts:8: no key, tab and text"
}

test_other_placeholders_are_refused() {
  english
  language ro Romanian 1 'hello Salut'
  expect_refusal "ro.texts:5: hello has other places"
}

test_a_text_without_its_wording_for_linux_is_refused() {
  english
  language ro Romanian 1 'key Tasta Option'
  expect_refusal "ro.texts:5: key stands without key@linux"
}

test_a_wording_for_linux_alone_is_refused() {
  english 'other@linux Other'
  expect_refusal "en.texts:8: other@linux stands without other"
}

test_an_unknown_section_is_refused() {
  english '[Keys]'
  expect_refusal "en.texts:8: there is no section [Keys]"
}

test_two_languages_at_one_place_are_refused() {
  english
  language ro Romanian 2
  expect_refusal "place 2 is that of en.texts"
}

run_case "$@"
