#!/bin/bash
# The form of the sources: what formatters and linters say. Every case is a command that can be run by hand.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# Files of the tree by the end of their names, each with a zero byte behind it.
files_named() {
  find "$root"/{Benchmarks,Sources,Tests,Tools} -type f -name "$1" -print0
}

test_cpp_is_formatted() {
  { files_named '*.h'; files_named '*.cpp'; } >"$work/files"
  expect_status 0 xargs -0 -a "$work/files" -n 100 -P "$(nproc)" clang-format --dry-run -Werror
}

# Of what qmllint knows, the part that needs no types: those of our own items it cannot resolve, and the tests of the
# views load every file with all of them. (qmlformat of Qt 6.4 breaks destructuring, so nothing formats QML.)
test_qml_passes_qmllint() {
  local qmllint category categories=()
  qmllint=$(qtpaths6 --query QT_HOST_BINS)/qmllint
  for category in alias deferred-property-id import property required type unqualified; do
    categories+=("--$category" disable)
  done
  files_named '*.qml' >"$work/files"
  expect_status 0 xargs -0 -a "$work/files" "$qmllint" --ignore-settings "${categories[@]}" \
    --multiline-strings warning --unused-imports warning
}

# Scripts by their first line, since most bear no ending; what they source is read with them.
test_scripts_pass_shellcheck() {
  cd "$root"
  grep -rlIE --exclude-dir={build,.git,.cache} '^#!(/usr)?/bin/(env )?(ba)?sh$' . >"$work/files"
  expect_status 0 xargs -a "$work/files" shellcheck -x
}

test_lines_end_where_their_text_ends() {
  cd "$root"
  expect_status 1 grep -rnIE --exclude-dir={build,.git,.cache,Data} \
    --include=*.{cpp,h,qml,py,sh,cmake,md} --include=CMakeLists.txt '[[:blank:]]+$|'$'\t' .
}

run_case "$@"
