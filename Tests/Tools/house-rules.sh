#!/bin/bash
# Rules of the house that no compiler checks.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

# expect_none_in FILES WHAT GREP-OPTION... : no line of these files, a pattern for each, matches.
expect_none_in() {
  local files what=$2 found status=0
  read -ra files <<<"$1"
  shift 2
  found=$(cd "$root" && grep -rnE "${files[@]/#/--include=}" "$@") || status=$?
  # 2 is a folder that is not there: the rule would hold nothing.
  [[ $status == 1 ]] || fail "$what:"$'\n'"$found"
}

# expect_none WHAT GREP-OPTION... : no line of the sources matches.
expect_none() {
  expect_none_in '*.cpp *.h' "$@"
}

test_native_code_stays_in_its_adapters() {
  expect_none "native headers and tests for the system belong into Sources/Platform/Linux, Sources/Platform/MacOS or Sources/Main" \
    '#include <((X11|pulse|sys|linux)/|(unistd|fcntl|spawn|poll|pthread|dlfcn)\.h)|Q_OS_' \
    Sources/Foundation Sources/Platform/*.h Sources/Platform/*.cpp Sources/Platform/Desktop Sources/Text Sources/TolmiCore Sources/TolmiApp
}

# g++ 12 miscompiles it.
test_nothing_is_awaited_in_a_condition() {
  expect_none "bind the awaited value to a local first" '\b(if|while|switch) *\(.*co_await' Sources Tests Tools
}

test_time_goes_through_the_clock() {
  expect_none "ask the clock" 'singleShot|currentDateTime|qWait\(' Sources/Foundation Sources/Text Sources/TolmiCore Sources/TolmiApp
}

test_the_logic_reads_no_environment() {
  expect_none "only adapters read the environment" 'qEnvironmentVariable|getenv\(' Sources/Foundation Sources/Text Sources/TolmiCore Sources/TolmiApp
}

test_no_text_is_chosen_by_language_beside_the_table() {
  expect_none "put both into the files of Texts/Languages" '[=!]= *AppLanguage::|case AppLanguage::' \
    Sources/TolmiApp Sources/Main
}

test_no_text_is_glued_together() {
  expect_none_in '*.cpp *.h *.qml' "a language may order it otherwise: make it a phrase with places" \
    '(\btext|L10n::\w+)\([^;]*\) *\+|\+ *(L10n::|text\()|\b(view|row)\.texts\.\w+ *\+|\+ *(\w+\.)+texts\.|(\+|\.join\() *"[:.] ?"|\+ *QStringLiteral\("[:.,;] "\)' \
    Sources/TolmiApp Sources/Main
}

test_no_view_has_words_of_its_own() {
  expect_none_in '*.qml' "put them into the files of Texts/Languages" \
    '\b(text|title|label|hint|message|caption|subtitle|shortcut|toolTip|placeholder\w*|\w+(Text|Label|Title)|Accessible\.(name|description)):[^"]*"[^"]*([[:upper:]]|[[:alpha:]] )|qsTr' \
    Sources/TolmiApp
  expect_none_in '*Model.cpp *Controller.cpp *Window.cpp' "put them into the files of Texts/Languages" \
    'QStringLiteral\("[^"]*[[:alpha:]]{2}[,.!?:]? [[:alpha:]%]' Sources/TolmiApp
}

test_rooms_keep_to_their_arrows() {
  expect_status 0 "$root/Tests/Tools/rooms.py" "$root/Sources/TolmiApp"
}

# room NAME FILE [TEXT]: a source file in a module of the test's own.
room() {
  mkdir -p "$work/module/$1"
  printf '%s\n' "${3-}" >"$work/module/$1/$2"
}

test_an_arrow_that_is_not_written_is_found() {
  room Low Low.h
  room High High.h '#include "TolmiApp/Low/Low.h"'
  room High High.qml 'Lamp { }'
  room Lamps Lamp.qml
  printf '| `Low` | - | - |\n| `High` | - | `Low` |\n| `Lamps` | - | - |\n' >"$work/module/README.md"
  expect_status 1 "$root/Tests/Tools/rooms.py" "$work/module"
  expect_equal "$output" "High may not use Lamps, but High/High.qml does"
}

test_a_circle_of_rooms_is_found() {
  room Low Low.h '#include "TolmiApp/High/High.h"'
  room High High.h '#include "TolmiApp/Low/Low.h"'
  printf '| `Low` | - | `High` |\n| `High` | - | `Low` |\n' >"$work/module/README.md"
  expect_status 1 "$root/Tests/Tools/rooms.py" "$work/module"
  expect_equal "$output" "rooms in a circle: High, Low"
}

test_a_module_without_rooms_is_no_success() {
  mkdir "$work/module"
  touch "$work/module/README.md"
  expect_status 1 "$root/Tests/Tools/rooms.py" "$work/module"
}

run_case "$@"
