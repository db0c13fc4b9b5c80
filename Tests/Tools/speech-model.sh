#!/bin/bash
# shellcheck source=Tests/Tools/check.sh
source "$(dirname "${BASH_SOURCE[0]}")/check.sh"

make=$root/Tools/speech-model/make

test_grammar_and_tokens() {
  python3 "$root/Tests/Tools/speech_model_tests.py"
}

test_spectrum_windows_training_and_examination() {
  OMP_NUM_THREADS=1 /usr/bin/python3 "$root/Tests/Tools/speech_model_training_tests.py"
}

# The complete process up to a file that whisper-cli loads. With so little training the model's output is noise.
test_dry_run_makes_a_model() {
  "$make" --dry-run --work "$work/work" --out "$work/model.bin"
  local cli size
  cli=$("$root/Tools/whisper-cli/install" --build --where)
  "$cli" -m "$work/model.bin" -f "$root/Resources/Samples/english-1.wav" -l en -t 1 -otxt -of "$work/text" \
    >/dev/null 2>"$work/said" || fail "whisper-cli does not take the model: $(tail -n 3 "$work/said")"
  [[ -f $work/text.txt ]] || fail "no text was written"
  size=$(stat -c %s "$work/model.bin")
  ((size < 12 * 1024 * 1024)) || fail "the model has $size bytes"
  # Training is complete and must not run again.
  expect_status 0 "$make" --dry-run --work "$work/work" --out "$work/again.bin"
  cmp "$work/model.bin" "$work/again.bin" || fail "a run that was finished gave another model"
}

run_case "$@"
