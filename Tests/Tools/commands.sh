#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

test_help_is_printed() {
  local command
  for command in run test Tools/screenshots Tools/setup Tools/try-targets Tools/virtual-desktop \
    Tools/whisper-cli/install; do
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

# A tree with the two commands, whose tools do nothing. It needs configuring, and its build takes $1 steps.
stand_in_tree() {
  mkdir -p "$work/tree/Tools/whisper-cli"
  cp "$root/test" "$root/run" "$root/CMakePresets.json" "$work/tree"
  cp "$root/Tools/common.sh" "$work/tree/Tools"
  local tool
  for tool in setup whisper-cli/install; do
    printf '#!/bin/bash\n' >"$work/tree/Tools/$tool"
    chmod +x "$work/tree/Tools/$tool"
  done
  stand_in cmake <<TEXT
echo "cmake \$*" >>'$work/calls'
case "\$*" in
  *" -n") for ((step = 1; step <= $1; step++)); do echo "[\$step/$1] Compiling"; done ;;
esac
TEXT
}

# A ctest whose Nth run fails in the tests listed in $work/failures-N, one "NUMBER:NAME" per line, or without naming any
# if that file is empty. Those in $work/desktop have the label.
stand_in_ctest() {
  touch "$work/desktop"
  stand_in ctest <<TEXT
list='' picked=''
while ((\$#)); do
  case \$1 in
    --test-dir) folder=\$2 ;;
    --output-log) log=\$2 ;;
    -N) list=yes ;;
    -I) picked=\${2#,0,,} ;;
  esac
  shift
done
if [[ \$list ]]; then
  # With a label, the real ctest applies the numbers to the tests of that label, and so picks others.
  [[ ! \$picked ]] || exit 0
  sed 's/\([0-9]*\):/  Test #\1: /' '$work/desktop'
  exit 0
fi
echo "\$picked" >>'$work/rounds'
failures=$work/failures-\$(grep -c '' '$work/rounds')
if [[ ! -f \$failures ]]; then
  echo "100% tests passed, 0 tests failed out of 5" >"\$log"
elif [[ -s \$failures ]]; then
  mkdir -p "\$folder/Testing/Temporary"
  cp "\$failures" "\$folder/Testing/Temporary/LastTestsFailed.log"
  exit 8
else
  exit 8
fi
TEXT
}

# expect_outcome STATUS TEXT: ./test in the stand-in tree must exit with that status and print that line.
expect_outcome() {
  stand_in_tree 0
  mkdir -p "$work/tree/build/release"
  stand_in_ctest
  expect_status "$1" "$work/tree/test" --release-only
  expect_equal "$(tail -n 1 <<<"$output")" "test: release: $2"
}

test_tests_that_pass_run_once() {
  expect_outcome 0 "100% tests passed, 0 tests failed out of 5"
  expect_equal "$(cat "$work/rounds")" ""
}

test_failing_desktop_test_gets_a_second_try() {
  printf '12:Window.Opens\n3:Sound.Plays\n' | tee "$work/desktop" >"$work/failures-1"
  expect_outcome 0 "passed at the second try only: Window.Opens Sound.Plays"
  expect_equal "$(tail -n 1 "$work/rounds")" "12,3"
}

test_desktop_test_that_fails_twice_fails() {
  printf '12:Window.Opens\n3:Sound.Plays\n' | tee "$work/desktop" >"$work/failures-1"
  echo '3:Sound.Plays' >"$work/failures-2"
  expect_outcome 1 "failed: Sound.Plays; passed at the second try only: Window.Opens"
}

test_other_tests_get_no_second_try() {
  echo '7:Text.IsTrimmed' >"$work/failures-1"
  expect_outcome 1 "failed: Text.IsTrimmed"
  expect_equal "$(cat "$work/rounds")" ""
}

test_second_try_does_not_hide_another_failure() {
  echo '12:Window.Opens' >"$work/desktop"
  printf '12:Window.Opens\n7:Text.IsTrimmed\n' >"$work/failures-1"
  expect_outcome 1 "failed: Text.IsTrimmed; passed at the second try only: Window.Opens"
}

test_second_try_that_runs_nothing_is_a_failure() {
  echo '12:Window.Opens' | tee "$work/desktop" >"$work/failures-1"
  touch "$work/failures-2"
  expect_outcome 1 "failed: Window.Opens"
}

test_name_without_a_test_fails() {
  touch "$work/failures-1"
  expect_outcome 1 "no test of that name"
}

test_cold_build_says_what_takes_time() {
  stand_in_tree 120
  stand_in_ctest
  mkdir -p "$work/tree/build/release"
  expect_status 0 "$work/tree/test" --release-only
  expect_contains "$output" "test: configuring the release build"
  expect_contains "$output" "test: building: 120 steps"
}

test_warm_build_says_nothing() {
  stand_in_tree 0
  stand_in_ctest
  mkdir -p "$work/tree/build/release"
  touch "$work/tree/build/release/build.ninja"
  expect_status 0 "$work/tree/test" --release-only
  expect_equal "${output%%$'\n'*}" "test: testing"
}

run_case "$@"
