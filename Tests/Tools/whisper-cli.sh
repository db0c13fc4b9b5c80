#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

install=$root/Tools/whisper-cli/install
tools=$work/tools

stand_in_whisper_cli() {
  stand_in whisper-cli <<'TEXT'
echo "-otxt --output-txt  -of --output-file  -bs --beam-size"
TEXT
}

test_installed_one_is_linked() {
  stand_in_whisper_cli
  expect_status 0 "$install" --prefix "$tools"
  expect_one_line
  expect_equal "$(readlink "$tools/whisper-cli")" "$work/bin/whisper-cli"
  expect_status 0 "$install" --where
  expect_equal "$output" "$work/bin/whisper-cli"
}

test_unrelated_program_is_not_linked() {
  stand_in whisper-cli <<<'echo "something else"'
  expect_status 0 "$install" --prefix "$tools"
  [[ ! $tools/whisper-cli -ef $work/bin/whisper-cli ]] || fail "an unrelated program was taken"
  expect_contains "$("$tools/whisper-cli" --help 2>&1)" --output-txt
}

test_build_is_placed_and_outlives_the_cache() {
  expect_status 0 "$install" --build --prefix "$tools"
  local target
  target=$(readlink "$tools/whisper-cli")
  [[ $target != */* && -f $tools/$target && ! -L $tools/$target ]] || fail "not a file beside its link: $target"
  expect_contains "$("$tools/whisper-cli" --help 2>&1)" --output-txt
}

test_second_run_changes_nothing() {
  expect_status 0 "$install" --build --prefix "$tools"
  local before
  before=$(stat -c '%i %y %n' "$tools"/*)
  expect_status 0 "$install" --build --prefix "$tools"
  expect_equal "$output" ""
  expect_equal "$(stat -c '%i %y %n' "$tools"/*)" "$before"
}

test_broken_link_is_repaired() {
  mkdir -p "$tools"
  ln -s "$work/gone" "$tools/whisper-cli"
  stand_in_whisper_cli
  expect_status 0 "$install" --prefix "$tools"
  expect_equal "$(readlink "$tools/whisper-cli")" "$work/bin/whisper-cli"
}

test_build_for_another_processor_is_replaced() {
  mkdir -p "$tools"
  printf '#!/bin/bash\n' >"$tools/whisper-cli-built-other"
  chmod +x "$tools/whisper-cli-built-other"
  ln -s whisper-cli-built-other "$tools/whisper-cli"
  expect_status 0 "$install" --build --prefix "$tools"
  [[ $(readlink "$tools/whisper-cli") != whisper-cli-built-other ]] || fail "the old build is still linked"
  expect_contains "$("$tools/whisper-cli" --help 2>&1)" --output-txt
}

test_own_program_of_the_user_is_kept() {
  mkdir -p "$tools"
  printf '#!/bin/bash\n' >"$tools/whisper-cli"
  chmod +x "$tools/whisper-cli"
  expect_status 0 "$install" --prefix "$tools"
  expect_equal "$(cat "$tools/whisper-cli")" '#!/bin/bash'
}

test_file_in_the_way_is_refused() {
  mkdir -p "$tools"
  echo precious >"$tools/whisper-cli"
  expect_status 1 "$install" --prefix "$tools"
  expect_one_line
  expect_equal "$(cat "$tools/whisper-cli")" precious
}

# Nothing was installed, and no partial build is left.
expect_nothing_built() {
  expect_no_file "$tools"
  expect_equal "$(find "$work/cache" -type f ! -name lock)" ""
  expect_equal "$(find "$work/cache" -name 'build.*')" ""
}

test_wrong_checksum_is_refused() {
  stand_in npm <<<'echo "not the archive" >nodejs-whisper-0.3.1.tgz'
  XDG_CACHE_HOME=$work/cache expect_status 1 "$install" --build --prefix "$tools"
  expect_contains "$output" "does not have the expected checksum"
  expect_nothing_built
}

test_registry_out_of_reach() {
  stand_in npm <<<'echo "network is down" >&2; exit 1'
  XDG_CACHE_HOME=$work/cache expect_status 1 "$install" --build --prefix "$tools"
  expect_contains "$(tail -n 1 <<<"$output")" "npm could not fetch nodejs-whisper@0.3.1 (network is down)"
  expect_nothing_built
}

test_missing_npm_is_named() {
  only_programs bash cksum dirname readlink mkdir cat
  XDG_CACHE_HOME=$work/cache expect_status 1 "$install" --build --prefix "$tools"
  expect_one_line
  expect_contains "$output" "without npm"
}

test_source_is_put_where_asked() {
  expect_status 0 "$install" --source "$work/source"
  [[ -f $work/source/src/whisper.cpp ]] || fail "the source is not there"
  expect_equal "$(find "$work/source" -maxdepth 1 -name 'fetch.*')" ""
}

test_source_with_a_wrong_checksum_is_refused() {
  stand_in npm <<<'echo "not the archive" >nodejs-whisper-0.3.1.tgz'
  expect_status 1 "$install" --source "$work/source"
  expect_contains "$output" "does not have the expected checksum"
  expect_equal "$(find "$work/source" -mindepth 1)" ""
}

test_samples_are_transcribed_exactly() {
  local whisper_cli sample language
  whisper_cli=$("$install" --build --where)
  for sample in english-1:en english-2:en romanian-1:ro romanian-2:ro; do
    for language in "${sample#*:}" auto; do
      sample=${sample%:*}
      "$whisper_cli" -m "$root/Resources/StartingModel/ggml-tolmi-starter-q8_0.bin" -f "$root/Resources/Samples/$sample.wav" \
        -l "$language" -bo 2 -bs 2 -tp 0 -otxt -of "$work/text" >"$work/log" 2>&1 || fail "$(tail "$work/log")"
      expect_equal "$(sed 's/^ *//' "$work/text.txt")" "$(cat "$root/Resources/Samples/$sample.txt")" "$sample as $language"
    done
  done
}

run_case "$@"
