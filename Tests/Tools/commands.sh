#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

test_help_is_given() {
  local command
  for command in run test Tools/screenshots Tools/setup Tools/virtual-desktop Tools/whisper-cli/install; do
    expect_status 0 "$root/$command" --help
    expect_contains "$output" "Usage: "
  done
}

test_unknown_options_are_refused() {
  local command
  for command in run test Tools/screenshots; do
    expect_status 2 "$root/$command" --nonsense
    expect_one_line
    expect_contains "$output" "unknown option --nonsense"
  done
  expect_status 125 "$root/Tools/virtual-desktop" --nonsense
  expect_one_line
}

test_missing_recording_is_named_before_anything_is_built() {
  expect_status 2 "$root/run" "$work/none.wav"
  expect_one_line
  expect_contains "$output" "$work/none.wav"
}

test_unknown_language_is_refused() {
  expect_status 2 "$root/run" --language de
  expect_one_line
  expect_contains "$output" "en, ro or auto"
}

run_case "$@"
