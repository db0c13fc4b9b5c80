#!/bin/bash
# Tests of the full-disk test itself. TOLMI_BUILD_DIR is the finished build.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# without_rights COMMAND...: without any right to mount, even for root.
without_rights() {
  if ! unshare -r true 2>/dev/null; then
    # No user namespaces here, so whoever is not root may not mount anything.
    ((EUID)) || set -- setpriv --bounding-set=-all "$@"
    "$@"
    return
  fi
  # shellcheck disable=SC2016
  unshare -r bash -c 'echo 0 >/proc/sys/user/max_user_namespaces && exec setpriv --bounding-set=-all "$@"' - "$@"
}

test_what_cannot_run_is_reported_as_skipped() {
  local program=${TOLMI_BUILD_DIR:?}/bin/full-disk-test option
  for option in '' --ext4; do
    expect_status 77 without_rights "$program" ${option:+"$option"}
    expect_one_line
    expect_contains "$output" "nothing is tested, since no disk of its own can be mounted here: "
  done
  # A copy, so that the results of the build's own tests stay as they are.
  cp "$TOLMI_BUILD_DIR/Tools/full-disk-test/CTestTestfile.cmake" "$work"
  expect_status 0 without_rights ctest --test-dir "$work" --output-on-failure
  for option in InMemory Ext4; do
    [[ $output =~ FullDisk\.$option\ \.*\*\*\*Skipped ]] || fail "FullDisk.$option is not skipped: $output"
  done
}

run_case "$@"
