#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# A stand-in for Debian on which the packages in $work/installed are installed and apt-get logs its calls. Like the real
# one, dpkg-query reports what it knows and fails if a name is unknown.
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
  stand_in pulseaudio </dev/null
}

# packages_of FILE...: prints the packages in these files of Tools/packages.
packages_of() {
  sed -e 's/#.*//' -e '/^ *$/d' -e 's/:.*//' "${@/#/$root/Tools/packages/}"
}

# Prints the packages that are installed by default.
all_packages() {
  packages_of build.txt desktop.txt
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

test_without_root_and_sudo_the_command_is_shown() {
  stand_in_debian
  all_packages | grep -vx cmake >"$work/installed"
  stand_in id <<<'echo 1000'
  only_programs bash dirname sed sort comm env grep cat
  expect_status 1 "$root/Tools/setup"
  expect_one_line
  expect_contains "$output" "as root, run: apt-get install --no-install-recommends cmake"
}

test_sound_server_of_the_user_is_left_alone() {
  stand_in_debian
  { all_packages | grep -vx pulseaudio; echo pipewire-pulse; } >"$work/installed"
  rm "$work/bin/pulseaudio"
  stand_in apt-get <<TEXT
echo "\$*" >>'$work/calls'
[[ \$* != *download* ]] || touch pulseaudio_1.deb
TEXT
  # shellcheck disable=SC2016
  stand_in dpkg-deb <<<'mkdir -p "$3/usr/bin"; touch "$3/usr/bin/pulseaudio"; chmod +x "$3/usr/bin/pulseaudio"'
  only_programs bash dirname sed sort comm env grep cat touch mkdir mktemp chmod rm mv
  export XDG_CACHE_HOME=$work/cache
  expect_status 0 "$root/Tools/setup"
  [[ -x $work/cache/tolmi/pulseaudio/usr/bin/pulseaudio ]] || fail "there is no private copy: $output"
  grep " install " "$work/calls" | grep -qvw pulseaudio || fail "it was installed: $(cat "$work/calls")"
  : >"$work/calls"
  expect_status 0 "$root/Tools/setup"
  [[ $(cat "$work/calls") != *download* ]] || fail "it was fetched again"
}

test_failing_apt_is_reported() {
  stand_in_debian
  stand_in apt-get <<<'exit 100'
  expect_status 1 "$root/Tools/setup" desktop
  expect_contains "$(tail -n 1 <<<"$output")" "check the network and the package sources"
}

test_unknown_group_is_refused() {
  expect_status 1 "$root/Tools/setup" nonsense
  expect_one_line
}

# A virtual package would always count as missing.
test_every_name_is_that_of_a_real_package() {
  local missing
  missing=$(comm -23 <({ all_packages; packages_of style.txt; } | sort) <(dpkg-query -W -f='${Package}\n' | sort -u))
  # npm may come from elsewhere, and PulseAudio may stay private.
  missing=$(grep -vxE 'npm|pulseaudio' <<<"$missing" || true)
  expect_equal "$missing" "" "not installed under this name"
}

run_case "$@"
