#!/bin/bash
# Formatters and linters. Every case can be run by hand.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# Prints the files of the tree with these name endings, null-terminated.
files_named() {
  find "$root"/{Benchmarks,Sources,Tests,Tools} -type f -name "$1" -print0
}

test_cpp_is_formatted() {
  { files_named '*.h'; files_named '*.cpp'; } >"$work/files"
  expect_status 0 xargs -0 -a "$work/files" -n 100 -P "$(nproc)" clang-format --dry-run -Werror
}

# Only the checks of qmllint that need no types: it cannot resolve our own types, and the view tests load every file
# with all of them. (qmlformat of Qt 6.4 breaks destructuring, so nothing formats QML.)
test_qml_passes_qmllint() {
  local qmllint category categories=()
  qmllint=$(qtpaths6 --query QT_HOST_BINS)/qmllint
  for category in alias deferred-property-id import property required type unqualified; do
    categories+=("--$category" disable)
  done
  files_named '*.qml' >"$work/files"
  # One file a process: with several, that of Qt 6.4 crashes about every tenth time.
  expect_status 0 xargs -0 -a "$work/files" -n 1 -P "$(nproc)" "$qmllint" --ignore-settings "${categories[@]}" \
    --multiline-strings warning --unused-imports warning
}

# Finds scripts by their first line, since most have no file extension; sourced files are checked with them.
test_scripts_pass_shellcheck() {
  cd "$root"
  grep -rlIE --exclude-dir={build,.git,.cache} '^#!(/usr)?/bin/(env )?(ba)?sh$' . >"$work/files"
  expect_status 0 xargs -a "$work/files" shellcheck -x
}

test_no_tabs_or_trailing_blanks() {
  cd "$root"
  expect_status 1 grep -rnIE --exclude-dir={build,.git,.cache,Data} \
    --include=*.{cpp,h,qml,py,sh,cmake,md} --include=CMakeLists.txt '[[:blank:]]+$|'$'\t' .
}

run_case "$@"
