#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# A machine on which a package is installed when it stands in $work/installed, and whose apt-get writes down its calls.
# Like the real one, dpkg-query reports what it knows and fails when one name is unknown.
stand_in_debian() {
  touch "$work/installed" "$work/calls"
  stand_in dpkg-query <<TEXT
shift 2
status=0
for name; do
  if grep -qx "\$name" "$work/installed"; then echo "installed \$name"; else status=1; fi
done
exit \$status
TEXT
  stand_in apt-get <<<"echo \"\$*\" >>'$work/calls'"
  stand_in id <<<'echo 0'
  stand_in npm </dev/null
}

all_packages() {
  sed -e 's/#.*//' -e '/^ *$/d' -e 's/:.*//' "$root"/Tools/packages/*.txt
}

test_complete_machine_is_left_alone() {
  stand_in_debian
  all_packages >"$work/installed"
  expect_status 0 "$root/Tools/setup"
  expect_equal "$output" ""
  expect_equal "$(cat "$work/calls")" ""
}

test_just_the_missing_ones_are_installed() {
  stand_in_debian
  all_packages | grep -vxE 'cmake|xvfb' >"$work/installed"
  expect_status 0 "$root/Tools/setup"
  expect_contains "$(head -n 1 "$work/calls")" " update"
  local call
  call=$(tail -n 1 "$work/calls")
  expect_contains "$call" "--no-remove --no-install-recommends"
  expect_equal "${call#*--no-install-recommends }" "cmake xvfb"
}

test_bare_machine_gets_all_of_a_group() {
  stand_in_debian
  expect_status 0 "$root/Tools/setup" desktop
  expect_contains "$(tail -n 1 "$work/calls")" " openbox "
  [[ $(tail -n 1 "$work/calls") != *" cmake "* ]] || fail "a package of another group was installed"
}

test_present_command_needs_no_package() {
  stand_in_debian
  all_packages | grep -vx npm >"$work/installed"
  expect_status 0 "$root/Tools/setup"
  expect_equal "$(cat "$work/calls")" ""
}

test_without_root_and_sudo_the_command_is_told() {
  stand_in_debian
  all_packages | grep -vx cmake >"$work/installed"
  stand_in id <<<'echo 1000'
  local tool
  mkdir "$work/few"
  for tool in bash dirname sed sort comm env; do
    ln -s "$(type -P $tool)" "$work/few/$tool"
  done
  ln -s "$(type -P grep)" "$work/few/grep"
  PATH=$work/bin:$work/few expect_status 1 "$root/Tools/setup"
  expect_one_line
  expect_contains "$output" "as root, run: apt-get install --no-install-recommends cmake"
}

test_failing_apt_is_told() {
  stand_in_debian
  stand_in apt-get <<<'exit 100'
  expect_status 1 "$root/Tools/setup" desktop
  expect_contains "$(tail -n 1 <<<"$output")" "check the network and the package sources"
}

test_unknown_group_is_refused() {
  expect_status 1 "$root/Tools/setup" nonsense
  expect_one_line
}

# A name that a package only provides would count as missing for ever.
test_every_name_is_that_of_a_real_package() {
  local missing
  missing=$(comm -23 <(all_packages | sort) <(dpkg-query -W -f='${Package}\n' | sort -u))
  [[ ! $missing || $missing == npm ]] || fail "not installed under this name: $missing"
}

run_case "$@"
