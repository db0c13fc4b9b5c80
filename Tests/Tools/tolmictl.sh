#!/bin/bash
# Tests of tolmictl without a running Tolmi, and of what describes it. TOLMI_BUILD_DIR is the finished build.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"
documents=$root/Resources/Tolmictl

tolmictl() {
  "${TOLMI_BUILD_DIR:?}/bin/tolmictl" "$@"
}

# The names in the help, one a line, without those of the options.
names_in_help() {
  tolmictl --help | sed -nE 's/^  ([a-z]+) .*/\1/p' | sort
}

names_in_manual() {
  sed -n '/^\.SH COMMANDS/,/^\.SH OPTIONS/p' "$documents/tolmictl.1" | grep -A1 '^\.TP' | sed -nE 's/^\.B ([a-z]+)$/\1/p' | sort
}

names_in_bash() {
  bash -c "source $documents/tolmictl.bash; COMP_WORDS=(tolmictl '') COMP_CWORD=1; _tolmictl; printf '%s\n' \"\${COMPREPLY[@]}\"" |
    grep -v '^-' | sort
}

names_in_zsh() {
  sed -nE "s/^  '([a-z]+):.*/\1/p" "$documents/_tolmictl" | sort
}

names_in_fish() {
  sed -nE 's/.* -a ([a-z]+) .*/\1/p' "$documents/tolmictl.fish" | sort
}

test_everything_names_the_same_commands() {
  local names
  names=$(names_in_help)
  expect_contains "$names" release
  expect_equal "$(names_in_manual)" "$names" "the manual page"
  expect_equal "$(names_in_bash)" "$names" "the completion of bash"
  expect_equal "$(names_in_zsh)" "$names" "the completion of zsh"
  expect_equal "$(names_in_fish)" "$names" "the completion of fish"
}

test_everything_names_the_same_options() {
  local option file
  for option in follow json version help; do
    expect_contains "$(tolmictl --help)" "--$option "
    expect_contains "$(sed 's/\\-/-/g' "$documents/tolmictl.1")" "--$option"
    for file in tolmictl.bash _tolmictl; do
      expect_contains "$(<"$documents/$file")" "--$option"
    done
    expect_contains "$(<"$documents/tolmictl.fish")" "-l $option "
  done
}

test_bash_completes_what_fits() {
  # shellcheck source=Resources/Tolmictl/tolmictl.bash
  source "$documents/tolmictl.bash"
  COMP_WORDS=(tolmictl st) COMP_CWORD=1
  _tolmictl
  expect_equal "${COMPREPLY[*]}" "start stop status studio"
  COMP_WORDS=(tolmictl status --f) COMP_CWORD=2
  _tolmictl
  expect_equal "${COMPREPLY[*]}" "--follow"
  COMP_WORDS=(tolmictl press '') COMP_CWORD=2
  _tolmictl
  expect_equal "${COMPREPLY[*]}" ""
}

# Skipped where the shell is not installed.
test_other_shells_read_their_completions() {
  if type -P zsh >/dev/null; then
    expect_status 0 zsh -n "$documents/_tolmictl"
  fi
  if type -P fish >/dev/null; then
    expect_status 0 fish --no-execute "$documents/tolmictl.fish"
  fi
}

test_the_manual_page_is_well_formed() {
  type -P groff >/dev/null || return 0
  expect_status 0 groff -man -ww -z "${TOLMI_BUILD_DIR:?}/Sources/Tolmictl/tolmictl.1"
  expect_equal "$output" ""
}

test_wrong_usage_is_told_apart() {
  local line
  for line in '' nothing 'press twice' 'press --json' '--follow' 'status --loud' '-x'; do
    # shellcheck disable=SC2086 # several arguments
    expect_status 2 tolmictl $line
    expect_one_line
    expect_contains "$output" "tolmictl: "
  done
}

test_help_and_version_need_no_bus() {
  export DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere
  expect_status 0 tolmictl --help
  expect_contains "$output" "Usage: tolmictl COMMAND"
  expect_status 0 tolmictl --version
  expect_equal "$output" "tolmictl $(sed -nE 's/^project\(Tolmi VERSION ([0-9.]+) .*/\1/p' "$root/CMakeLists.txt")"
}

test_without_a_bus_tolmi_does_not_run() {
  export DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere
  local command
  while read -r command; do
    expect_status 3 tolmictl "$command"
    expect_one_line
    expect_contains "$output" "There is no session bus"
  done < <(names_in_help)
}

run_case "$@"
