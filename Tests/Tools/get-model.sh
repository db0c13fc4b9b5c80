#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

export XDG_DATA_HOME=$work/data
models=$XDG_DATA_HOME/Tolmi/models
target=$models/ggml-base.en.bin

# The command with its own table, in which base.en is a file of 5000 bytes.
mkdir "$work/tools"
cp "$root/Tools/get-model" "$work/tools/get-model"
get_model=$work/tools/get-model
original=$work/original
head -c 5000 /dev/urandom >"$original"
sum=$(sha1sum "$original")
printf '%s\t%s\t%s\t%s\n' base.en ggml-base.en.bin 5000 "${sum%% *}" small ggml-small.bin 99999999999999999 0 \
  >"$work/tools/models.tsv"

# serve MODE: starts a server in that mode; sets $address and logs requests to $work/requests.
serve() {
  rm -f "$work/port"
  "$root/Tests/Tools/model-server.py" "$original" "$1" "$work/port" >"$work/requests" &
  server=$!
  trap 'kill $server; rm -rf "$work"' EXIT
  eventually test -f "$work/port"
  address=http://127.0.0.1:$(<"$work/port")
}

expect_installed() {
  cmp "$original" "$target" || fail "what is installed is not what was served"
  expect_no_file "$target.part"
}

expect_nothing_installed() {
  expect_no_file "$target"
}

has_begun() {
  [[ $(stat -c %s "$target.part" 2>/dev/null) == 1000 ]]
}

test_whole_file_is_installed() {
  serve whole
  expect_status 0 "$get_model" --from "$address" base.en
  expect_contains "$output" "base.en is installed: $target"
  expect_equal "$(<"$work/requests")" "/ggml-base.en.bin all"
  expect_installed
  expect_equal "$(stat -c %a "$XDG_DATA_HOME/Tolmi")" 700
}

test_installed_one_is_not_downloaded_again() {
  serve whole
  expect_status 0 "$get_model" --from "$address" base.en
  expect_status 0 "$get_model" --from "$address" base.en
  expect_equal "$(wc -l <"$work/requests")" 1
}

test_damaged_one_is_replaced() {
  serve whole
  mkdir -p "$models"
  echo damaged >"$target"
  expect_status 0 "$get_model" --from "$address" base.en
  expect_installed
}

test_interrupted_download_is_resumed() {
  serve cutting
  expect_status 0 "$get_model" --from "$address" base.en
  expect_equal "$(<"$work/requests")" "$(printf '/ggml-base.en.bin %s\n' all bytes=1000- bytes=2000- bytes=3000- bytes=4000-)"
  expect_installed
}

test_part_of_an_earlier_run_is_resumed() {
  serve whole
  mkdir -p "$models"
  head -c 1234 "$original" >"$target.part"
  expect_status 0 "$get_model" --from "$address" base.en
  expect_equal "$(<"$work/requests")" "/ggml-base.en.bin bytes=1234-"
  expect_installed
}

test_stopped_download_keeps_its_part() {
  serve stalled
  # Job control, because ordinary background jobs of a script ignore SIGINT.
  set -m
  "$get_model" --from "$address" base.en 2>"$work/said" &
  local program=$!
  set +m
  eventually has_begun
  kill -INT -- -$program
  local status=0
  wait $program || status=$?
  expect_equal "$status" 130
  expect_contains "$(<"$work/said")" "run this again to go on"
  has_begun || fail "the part is gone"
  expect_nothing_installed
}

test_second_run_at_once_is_refused() {
  mkdir -p "$models"
  head -c 1000 "$original" >"$target.part"
  exec 8>>"$target.part"
  flock 8
  expect_status 1 "$get_model" --from http://127.0.0.1:1 base.en
  expect_contains "$output" "downloaded already by another program"
}

test_server_without_ranges_restarts_the_download() {
  serve no-ranges
  expect_status 0 "$get_model" --from "$address" base.en
  expect_contains "$output" "starting anew"
  expect_installed
}

test_damaged_part_is_downloaded_again() {
  serve whole
  mkdir -p "$models"
  printf '%01000d' 0 >"$target.part"
  expect_status 0 "$get_model" --from "$address" base.en
  expect_contains "$output" "all of it comes anew"
  expect_installed
}

test_wrong_content_is_thrown_away() {
  serve corrupt
  expect_status 1 "$get_model" --from "$address" base.en
  expect_contains "$output" "checksum is wrong"
  expect_nothing_installed
  expect_no_file "$target.part"
}

test_short_content_is_thrown_away() {
  serve short
  expect_status 1 "$get_model" --from "$address" base.en
  expect_contains "$output" "checksum is wrong"
  expect_nothing_installed
}

test_missing_file_is_reported() {
  serve missing
  expect_status 1 "$get_model" --from "$address" base.en
  expect_contains "$output" "is not to be had there"
  expect_no_file "$target.part"
}

test_redirect_is_followed() {
  serve redirecting
  expect_status 0 "$get_model" --from "$address" base.en
  expect_installed
}

test_unreachable_server_is_reported() {
  serve whole
  kill "$server"
  wait "$server" || true
  trap 'rm -rf "$work"' EXIT
  expect_status 1 "$get_model" --from "$address" base.en
  expect_contains "$output" "cannot be reached; look at your network connection"
  expect_no_file "$target.part"
}

test_full_disk_is_reported_before_the_download() {
  expect_status 1 "$get_model" --from http://127.0.0.1:1 small
  expect_contains "$output" "make room"
}

test_unwritable_folder_is_reported() {
  mkdir -p "$XDG_DATA_HOME"
  echo file >"$XDG_DATA_HOME/Tolmi"
  expect_status 1 "$get_model" --from http://127.0.0.1:1 base.en
  expect_contains "$output" "cannot be made"
}

test_list_shows_installed_models() {
  mkdir -p "$models"
  head -c 1000 "$original" >"$models/ggml-small.bin.part"
  touch "$target"
  expect_status 0 "$get_model" --list
  expect_contains "$output" "base.en             5.0KB  installed"
  expect_contains "$output" "begun: 1.0KB of it is here"
}

test_unknown_model_is_refused() {
  expect_status 1 "$get_model" enormous
  expect_contains "$output" "there is no model named enormous"
}

# The table must list the names that the program looks for, in the same order.
test_table_has_the_models_that_the_program_looks_for() {
  local wanted offered
  wanted=$(grep -o '"ggml-[^"]*\.bin"' "$root/Sources/TolmiCore/TolmiDefaultPaths.cpp" | tr -d '"')
  offered=$(grep -v '^#' "$root/Tools/models.tsv" | sed 's/^\([^\t]*\).*/ggml-\1.bin/')
  [[ $(wc -l <<<"$wanted") == 11 ]] || fail "the program's list was not found"
  expect_equal "$offered" "$wanted"
}

run_case "$@"
