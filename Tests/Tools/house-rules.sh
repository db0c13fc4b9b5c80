#!/bin/bash
# Project rules that no compiler checks.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"
# The file patterns are relative to the root.
cd "$root"

# expect_none_in FILES WHAT GREP-OPTION... : no line of these files (patterns) may match.
expect_none_in() {
  local files what=$2 found status=0
  read -ra files <<<"$1"
  shift 2
  found=$(grep -rnE "${files[@]/#/--include=}" "$@") || status=$?
  # Anything but "no line matches" is a failure, including a missing folder.
  [[ $status == 1 ]] || fail "$what:"$'\n'"$found"
}

# expect_none WHAT GREP-OPTION... : no line of the sources may match.
expect_none() {
  expect_none_in '*.cpp *.h' "$@"
}

test_native_code_stays_in_its_adapters() {
  expect_none "native headers and tests for the system belong into Sources/Platform/Linux, Sources/Platform/MacOS or Sources/Main" \
    '#include <((X11|pulse|sys|linux)/|(unistd|fcntl|spawn|poll|pthread|dlfcn)\.h)|Q_OS_' \
    --exclude-dir=Linux --exclude-dir=MacOS Sources/Foundation Sources/Platform Sources/Text Sources/TolmiCore Sources/TolmiApp
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

# Elsewhere a change could be announced before it is stored, twice, or only to QML.
test_only_published_fields_announce_changes() {
  expect_none "publish the field, or connect the signal to those of what it is made of" --exclude-dir=Design \
    '^ *Q_EMIT .*Changed\(\)|Q_EMIT objectWillChange' Sources/TolmiApp Sources/Main
}

test_no_text_is_chosen_by_language_beside_the_table() {
  expect_none "put both into the files of Texts/Languages" '[=!]= *AppLanguage::|case AppLanguage::' \
    Sources/TolmiApp Sources/Main
}

test_no_text_is_concatenated() {
  expect_none_in '*.cpp *.h *.qml' "a language may order it otherwise: make it a phrase with places" \
    '(\btext|L10n::\w+)\([^;]*\) *\+|\+ *(L10n::|text\()|\b(view|row)\.texts\.\w+ *\+|\+ *(\w+\.)+texts\.|(\+|\.join\() *"[:.] ?"|\+ *QStringLiteral\("[:.,;] "\)' \
    Sources/TolmiApp Sources/Main
}

test_no_view_has_hard_coded_text() {
  expect_none_in '*.qml' "put them into the files of Texts/Languages" \
    '\b(text|title|label|hint|message|caption|subtitle|shortcut|toolTip|placeholder\w*|\w+(Text|Label|Title)|Accessible\.(name|description)):[^"]*"[^"]*([[:upper:]]|[[:alpha:]] )|qsTr' \
    Sources/TolmiApp
  expect_none_in '*Model.cpp *Controller.cpp *Window.cpp' "put them into the files of Texts/Languages" \
    'QStringLiteral\("[^"]*[[:alpha:]]{2}[,.!?:]? [[:alpha:]%]' Sources/TolmiApp
}

test_rooms_use_only_listed_rooms() {
  expect_status 0 "$root/Tests/Tools/rooms.py" "$root/Sources/TolmiApp"
}

# A dry run stops at such a list, and the commands use one to count the build steps.
test_no_list_of_sources_is_made_while_building() {
  expect_none_in 'CMakeLists.txt *.cmake' "name the files, or have the build depend on their folder" \
    'GLOB.*CONFIGURE_DEPENDS' CMakeLists.txt cmake Benchmarks Sources Tests Tools
}

# The version is set in CMakeLists.txt; files that the configuration does not generate must follow it.
test_the_changelog_begins_with_this_version() {
  local version date
  version=$(sed -nE 's/^project\(Tolmi VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
  date=$(sed -nE 's/.*<release version="@PROJECT_VERSION@" date="([0-9-]+)".*/\1/p' Resources/Desktop/tolmi.metainfo.xml)
  expect_equal "$(grep -m 1 '^## ' CHANGELOG.md)" "## [$version] - $date"
}

# room NAME FILE [TEXT]: creates a source file in a test module.
room() {
  mkdir -p "$work/module/$1"
  printf '%s\n' "${3-}" >"$work/module/$1/$2"
}

test_an_unlisted_arrow_is_found() {
  room Low Low.h
  room High High.h '#include "TolmiApp/Low/Low.h"'
  room High High.qml 'Lamp { }'
  room Lamps Lamp.qml
  # shellcheck disable=SC2016 # the backticks are the table's own
  printf '| `Low` | - | - |\n| `High` | - | `Low` |\n| `Lamps` | - | - |\n' >"$work/module/README.md"
  expect_status 1 "$root/Tests/Tools/rooms.py" "$work/module"
  expect_equal "$output" "High may not use Lamps, but High/High.qml does"
}

test_a_circle_of_rooms_is_found() {
  room Low Low.h '#include "TolmiApp/High/High.h"'
  room High High.h '#include "TolmiApp/Low/Low.h"'
  # shellcheck disable=SC2016 # the backticks are the table's own
  printf '| `Low` | - | `High` |\n| `High` | - | `Low` |\n' >"$work/module/README.md"
  expect_status 1 "$root/Tests/Tools/rooms.py" "$work/module"
  expect_equal "$output" "rooms in a circle: High, Low"
}

test_a_module_without_rooms_is_a_failure() {
  mkdir "$work/module"
  touch "$work/module/README.md"
  expect_status 1 "$root/Tests/Tools/rooms.py" "$work/module"
}

run_case "$@"
