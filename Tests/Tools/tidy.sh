#!/bin/bash
# Tests tidy.py on a small tree with a stand-in for clang-tidy.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# A unity library of two files, and a clang-tidy that logs what it reads and fails if that contains $1.
stand_in_library() {
  local tree=$work/tree unit=$work/tree/build/CMakeFiles/Lib.dir/Unity/unity_0_cxx.cxx
  mkdir -p "$tree/Tests/Tools" "$tree/Sources" "${unit%/*}"
  cp "$root/Tests/Tools/tidy.py" "$tree/Tests/Tools"
  touch "$tree/.clang-tidy" "$tree/Sources/One.cpp" "$tree/Sources/Two.cpp" "$unit.o"
  printf '#include "%s"\n' "$tree/Sources/One.cpp" "$tree/Sources/Two.cpp" "$tree/build/generated.cpp" >"$unit"
  cat >"$tree/build/compile_commands.json" <<TEXT
[{ "directory": "$tree/build", "file": "$unit", "command": "c++ -o CMakeFiles/Lib.dir/Unity/unity_0_cxx.cxx.o -c $unit" }]
TEXT
  find "$tree" -type f -exec touch -d '1 minute ago' {} +
  touch "$work/read"
  stand_in clang-tidy <<TEXT
cat "\${*: -1}" >>'$work/read'
if grep -q "$1" "\${*: -1}"; then echo "a finding in $1"; exit 1; fi
TEXT
}

tidy() {
  "$work/tree/Tests/Tools/tidy.py" "$work/tree/build" "$@"
}

test_sources_are_read_together_and_generated_ones_are_not() {
  stand_in_library none
  expect_status 0 tidy Lib
  expect_equal "$(grep -c 'Sources/\(One\|Two\)' "$work/read")" 2
  expect_equal "$(grep -c 'generated' "$work/read" || true)" 0
}

test_clean_ones_are_read_again_when_compiled_again() {
  stand_in_library none
  expect_status 0 tidy Lib
  : >"$work/read"
  expect_status 0 tidy Lib
  expect_equal "$(cat "$work/read")" ""
  touch -d '1 minute' "$work/tree/build/CMakeFiles/Lib.dir/Unity/unity_0_cxx.cxx.o"
  expect_status 0 tidy Lib
  expect_contains "$(cat "$work/read")" "One.cpp"
}

test_findings_are_reported_every_time() {
  stand_in_library Two.cpp
  expect_status 1 tidy Lib
  expect_equal "$output" "a finding in Two.cpp"
  expect_status 1 tidy Lib
  expect_equal "$output" "a finding in Two.cpp"
}

test_uncompiled_sources_are_a_failure() {
  stand_in_library none
  rm "$work"/tree/build/CMakeFiles/Lib.dir/Unity/*.o
  expect_status 1 tidy Lib
  expect_contains "$output" "build Lib first"
  expect_status 1 tidy Other
  expect_contains "$output" "no target Other"
}

run_case "$@"
