#!/bin/bash
# Tests of the installed files. TOLMI_BUILD_DIR is the finished build.
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

install_program() {
  cmake --install "${TOLMI_BUILD_DIR:?}" --prefix "$work/usr" >"$work/log" 2>&1 || fail "$(cat "$work/log")"
}

# expect_valid COMMAND FILE...: skipped if the command is not installed.
expect_valid() {
  ! type -P "$1" >/dev/null || expect_status 0 "$@"
}

test_everything_is_in_its_place() {
  local file side
  install_program
  for file in bin/tolmi bin/tolmictl libexec/tolmi/tolmi-keyboard-access \
    share/applications/tolmi.desktop share/metainfo/tolmi.metainfo.xml \
    share/polkit-1/actions/org.tolmi.keyboard-access.policy \
    share/icons/hicolor/scalable/apps/tolmi.svg share/tolmi/models/ggml-tolmi-starter-q8_0.bin \
    share/man/man1/tolmictl.1 share/bash-completion/completions/tolmictl share/zsh/site-functions/_tolmictl \
    share/fish/vendor_completions.d/tolmictl.fish share/dbus-1/interfaces/org.tolmi.Tolmi1.xml; do
    [[ -s $work/usr/$file ]] || fail "$file is missing"
  done
  for side in 16 24 32 48 64 128 256 512; do
    file=$work/usr/share/icons/hicolor/${side}x$side/apps/tolmi.png
    # Width and height are at fixed offsets in every PNG.
    expect_equal "$(od -An -tu1 -j16 -N8 "$file" | tr -s ' ')" \
      " 0 0 $((side / 256)) $((side % 256)) 0 0 $((side / 256)) $((side % 256))" "$file"
  done
}

test_descriptions_are_valid() {
  local share=$work/usr/share
  install_program
  expect_valid desktop-file-validate "$share/applications/tolmi.desktop"
  expect_valid appstreamcli validate --no-net "$share/metainfo/tolmi.metainfo.xml"
  expect_valid xmllint --noout --nonet "$share/dbus-1/interfaces/org.tolmi.Tolmi1.xml"
  expect_contains "$(cat "$share/man/man1/tolmictl.1")" '"Tolmi '"$(sed -nE 's/^project\(Tolmi VERSION ([0-9.]+) .*/\1/p' "$root/CMakeLists.txt")"'"'
  expect_contains "$(cat "$share/applications/tolmi.desktop")" "Exec=tolmi"
  expect_contains "$(cat "$share/metainfo/tolmi.metainfo.xml")" ">tolmi.desktop<"
}

# Otherwise a password would be asked for in the words of any other program.
test_policy_names_the_installed_program() {
  local policy=$work/usr/share/polkit-1/actions/org.tolmi.keyboard-access.policy
  install_program
  expect_valid xmllint --noout --nonet "$policy"
  expect_equal "$(grep -c "exec.path\">$work/usr/libexec/tolmi/tolmi-keyboard-access<" "$policy")" 2
  expect_equal "$(grep -o '<allow_[a-z]*>[a-z_]*' "$policy" | sort | uniq -c | tr -s ' ' | xargs)" \
    "2 <allow_active>auth_admin 2 <allow_any>no 2 <allow_inactive>no"
}

# Which nobody but the user can ask for.
test_no_rule_is_installed() {
  install_program
  expect_equal "$(find "$work/usr" -name '*.rules')" ""
}

run_case "$@"
