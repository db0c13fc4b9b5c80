# Harness for the tests of the tools; sourced. Each test is a function with an empty folder of its own, $work.
# shellcheck shell=bash disable=SC2034
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
search_path=$PATH
trap 'PATH=$search_path; rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

expect_equal() {
  [[ $1 == "$2" ]] || fail "expected '$2', got '$1'${3:+: $3}"
}

expect_contains() {
  [[ $1 == *"$2"* ]] || fail "expected '$2' in: $1"
}

expect_no_file() {
  [[ ! -e $1 && ! -L $1 ]] || fail "$1 should not be there"
}

# expect_status NUMBER COMMAND...: stores the command's output in $output.
expect_status() {
  local expected=$1 status=0
  shift
  output=$("$@" 2>&1 </dev/null) || status=$?
  [[ $status == "$expected" ]] || fail "expected status $expected, got $status from $*: $output"
}

expect_one_line() {
  [[ $output && $output != *$'\n'* ]] || fail "expected one line, got: $output"
}

# eventually COMMAND...: waits until COMMAND succeeds, at most a minute.
eventually() {
  local try
  for ((try = 0; try < 600; try++)); do
    if "$@"; then return; fi
    sleep 0.1
  done
  fail "never came true: $*"
}

# stand_in NAME: puts a script of that name, read from standard input, first on $PATH.
stand_in() {
  mkdir -p "$work/bin"
  { echo '#!/bin/bash'; cat; } >"$work/bin/$1"
  chmod +x "$work/bin/$1"
  [[ $PATH == "$work/bin:"* ]] || export PATH=$work/bin:$PATH
}

# Restricts $PATH to these programs and the stand-ins.
only_programs() {
  local name
  mkdir -p "$work/only"
  for name; do
    ln -s "$(type -P "$name")" "$work/only/$name"
  done
  export PATH=$work/bin:$work/only
}

run_case() {
  [[ $# == 1 && $(type -t "test_$1") == function ]] || fail "there is no test named ${1-}"
  "test_$1"
}
