#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

desktop=$root/Tools/virtual-desktop
export TMPDIR=$work

processes_of_desktops_here() {
  grep -lsaz "^TOLMI_DESKTOP_DIR=$work/" /proc/[0-9]*/environ || true
}

nothing_is_left() {
  [[ ! $(processes_of_desktops_here) && ! $(find "$work" -maxdepth 1 -name 'tolmi-desktop.*') ]]
}

test_display_has_window_manager_and_size() {
  expect_status 0 "$desktop" bash -c 'xdpyinfo; wmctrl -m'
  expect_contains "$output" "1920x1080 pixels"
  expect_contains "$output" "Name: Openbox"
}

test_typed_keys_reach_a_window() {
  # shellcheck disable=SC2016
  expect_status 0 "$desktop" bash -c '
    xterm -e bash -c "read -r line; echo \"\$line\" >\"\$HOME/line\"" &
    xdotool search --sync --onlyvisible --class xterm windowfocus --sync type "hello"
    xdotool key Return
    wait
    cat "$HOME/line"'
  expect_contains "$output" hello
}

test_clicks_reach_a_window() {
  # shellcheck disable=SC2016
  expect_status 0 "$desktop" bash -c '
    xev -event button >"$HOME/seen" &
    xdotool search --sync --onlyvisible --name "Event Tester" mousemove --sync --window %1 40 40 click 1
    timeout 10 tail -n +1 -f "$HOME/seen" | grep -m 1 ButtonRelease
    kill %1'
  expect_contains "$output" ButtonRelease
}

test_accessibility_bus_is_its_own() {
  # shellcheck disable=SC2016
  expect_status 0 "$desktop" bash -c '
    gdbus call --session --dest org.a11y.Bus --object-path /org/a11y/bus --method org.a11y.Bus.GetAddress
    echo "of $TOLMI_DESKTOP_DIR"'
  expect_contains "$output" "unix:path=${output##*of }/run/at-spi"
  nothing_is_left || fail "left: $(processes_of_desktops_here)"
}

test_layouts_decide_what_right_alt_is() {
  expect_status 0 "$desktop" xmodmap -pke
  expect_contains "$output" "keycode 108 = Alt_R"
  expect_status 0 "$desktop" --layout ro xmodmap -pke
  expect_contains "$output" "keycode 108 = ISO_Level3_Shift"
}

# Records DEVICE while a 440 Hz tone at half of full scale plays to SINK; stores sox's statistics in $output.
measure_tone() {
  # shellcheck disable=SC2016
  expect_status 0 "$desktop" bash -c '
    cd "$HOME"
    sox -n -r 48000 -c 2 tone.wav synth 1 sine 440 vol 0.5
    parecord --device="${!2}" --latency-msec=20 --rate=48000 --file-format=wav heard.wav &
    recorder=$!
    until pactl list short source-outputs | grep -q .; do sleep 0.05; done
    paplay --device="${!1}" tone.wav
    sleep 0.3
    kill -INT $recorder
    wait $recorder
    sox heard.wav -n remix 1 silence 1 0 1% reverse silence 1 0 1% stat' bash "$1" "$2"
}

# expect_measure NAME LOWEST HIGHEST
expect_measure() {
  local value
  value=$(sed -n "s/^$1: *//p" <<<"$output")
  awk -v value="$value" -v low="$2" -v high="$3" 'BEGIN { exit !(value >= low && value <= high) }' ||
    fail "$1 is '$value', not between $2 and $3"
}

# The tone must be complete: neither cut nor repeated.
expect_tone() {
  expect_measure 'Rough   frequency' 438 442
  expect_measure 'Maximum amplitude' 0.49 0.51
  expect_measure 'Length (seconds)' 0.99 1.05
}

test_sound_reaches_the_microphone() {
  measure_tone TOLMI_DESKTOP_MICFEED TOLMI_DESKTOP_MICROPHONE
  expect_tone
}

test_played_sound_can_be_listened_to() {
  export monitor=speaker.monitor
  measure_tone TOLMI_DESKTOP_SPEAKER monitor
  expect_tone
}

test_exit_status_is_passed_on() {
  local status
  for status in 0 1 7 124; do
    expect_status "$status" "$desktop" bash -c "exit $status"
    expect_equal "$output" ""
  done
  expect_status 127 "$desktop" "$work/no-such-command"
  # shellcheck disable=SC2016
  expect_status 143 "$desktop" bash -c 'kill -TERM $$'
}

test_standard_input_and_output_are_the_callers() {
  expect_equal "$(echo word | "$desktop" tr a-z A-Z)" WORD
}

test_nothing_is_left_behind() {
  expect_status 5 "$desktop" --tray bash -c '
    setsid --fork sleep 600
    setsid --fork bash -c "trap : TERM; while :; do sleep 600; done"
    (cd /; nohup sleep 600 >/dev/null 2>&1 &)
    exit 5'
  nothing_is_left || fail "left: $(processes_of_desktops_here; ls "$work")"
}

desktop_runs() {
  [[ -s $work/started ]]
}

test_termination_ends_the_command_too() {
  local pid status=0
  # shellcheck disable=SC2016
  "$desktop" bash -c 'echo $$ >"$1"; sleep 600' bash "$work/started" &
  pid=$!
  eventually desktop_runs
  kill -TERM $pid
  wait $pid || status=$?
  expect_equal $status 143
  nothing_is_left || fail "left: $(processes_of_desktops_here; ls "$work")"
}

test_being_killed_outright_leaves_nothing() {
  # shellcheck disable=SC2016
  "$desktop" bash -c 'echo $$ >"$1"; sleep 600' bash "$work/started" &
  eventually desktop_runs
  kill -KILL $!
  wait $! 2>/dev/null || true
  eventually nothing_is_left
}

test_home_is_its_own() {
  export XDG_DATA_DIRS=/nowhere PULSE_SINK=elsewhere QT_SCALE_FACTOR=3 LC_ALL=C
  # shellcheck disable=SC2016
  expect_status 0 "$desktop" bash -c '
    for folder in "$HOME" "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"; do
      [[ -d $folder && $folder == "$TOLMI_DESKTOP_DIR"/* ]] || echo "wrong: $folder"
    done
    stat -c %a "$TOLMI_DESKTOP_DIR" "$XDG_RUNTIME_DIR"
    env | grep -E "^(XDG_DATA_DIRS|PULSE_SINK|QT_SCALE_FACTOR|LC_ALL)=" || true'
  expect_equal "$output" $'700\n700'
}

test_several_run_at_once() {
  local number pids=()
  for number in 1 2 3; do
    # shellcheck disable=SC2016
    "$desktop" bash -c 'echo "$DISPLAY" >"$1"; until [[ $(cat "$2"/display.* | wc -l) == 3 ]]; do sleep 0.05; done
      pactl list short sinks | wc -l >"$3"' bash "$work/display.$number" "$work" "$work/sinks.$number" &
    pids+=($!)
  done
  wait "${pids[@]}"
  expect_equal "$(cat "$work"/display.* | sort -u | wc -l)" 3
  expect_equal "$(cat "$work"/sinks.*)" $'2\n2\n2'
}

test_failed_start_shows_the_logs() {
  expect_status 125 "$desktop" --layout nonsense true
  expect_contains "$output" "there is no keyboard layout named nonsense"
  expect_contains "$output" "xvfb.log: "
  nothing_is_left || fail "left: $(ls "$work")"
}

# shellcheck disable=SC2016
compositor_of_desktop='grep -lsazFx "TOLMI_DESKTOP_DIR=$TOLMI_DESKTOP_DIR" /proc/[0-9]*/environ |
  sed "s|environ|comm|" | xargs cat 2>/dev/null | grep -cx picom'

test_compositor_can_be_left_out() {
  expect_status 0 "$desktop" bash -c "$compositor_of_desktop"
  expect_status 1 "$desktop" --no-compositor bash -c "$compositor_of_desktop"
}

test_tray_can_be_requested() {
  expect_status 0 "$desktop" --tray xdotool search --class trayer
  expect_status 1 "$desktop" xdotool search --class trayer
}

test_folder_is_kept_on_failure() {
  expect_status 3 "$desktop" --keep-on-failure bash -c 'exit 3'
  local folder=${output##* }
  [[ -d $folder/home && -d $folder/logs ]] || fail "not kept: $output"
  expect_equal "$(processes_of_desktops_here)" ""
  expect_status 0 "$desktop" --keep-on-failure true
  expect_equal "$output" ""
}

run_case "$@"
