#!/bin/bash
# Rules of the house that no compiler checks.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# expect_none WHAT GREP-OPTION... : no line of the sources matches.
expect_none() {
  local what=$1 found
  shift
  found=$(cd "$root" && grep -rnE --include='*.cpp' --include='*.h' "$@") || return 0
  fail "$what:"$'\n'"$found"
}

test_native_code_stays_in_its_adapters() {
  expect_none "native headers and tests for the system belong into Sources/Platform/Linux, Sources/Platform/MacOS or Sources/Main" \
    '#include <((X11|pulse|sys|linux)/|(unistd|fcntl|spawn|poll|pthread|dlfcn)\.h)|Q_OS_' \
    Sources/Platform/*.h Sources/Platform/*.cpp Sources/Platform/Desktop Sources/Text Sources/TolmiCore Sources/TolmiApp
}

# g++ 12 miscompiles it.
test_nothing_is_awaited_in_a_condition() {
  expect_none "bind the awaited value to a local first" '\b(if|while|switch) *\(.*co_await' Sources Tests Tools
}

test_time_goes_through_the_clock() {
  expect_none "ask the clock" 'singleShot|currentDateTime|qWait\(' Sources/Text Sources/TolmiCore Sources/TolmiApp
}

test_the_logic_reads_no_environment() {
  expect_none "only adapters read the environment" 'qEnvironmentVariable|getenv\(' Sources/Text Sources/TolmiCore Sources/TolmiApp
}

run_case "$@"
