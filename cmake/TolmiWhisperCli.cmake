# For Tests/CMakeLists.txt. A test that runs the real whisper-cli names the fixture "whisper-cli" in FIXTURES_REQUIRED and
# finds the program at TOLMI_TEST_WHISPER_CLI, the starting model at TOLMI_STARTING_MODEL, recordings in TOLMI_SAMPLES_DIR.
set(TOLMI_TEST_WHISPER_CLI ${CMAKE_BINARY_DIR}/test-tools/whisper-cli)
set(TOLMI_STARTING_MODEL ${CMAKE_SOURCE_DIR}/Resources/StartingModel/ggml-tolmi-starter-q8_0.bin)
set(TOLMI_SAMPLES_DIR ${CMAKE_SOURCE_DIR}/Resources/Samples)

add_test(NAME Tools.whisper-cli
  COMMAND ${CMAKE_SOURCE_DIR}/Tools/whisper-cli/install --build --prefix ${CMAKE_BINARY_DIR}/test-tools)
# Always the pinned version, so that every machine tests the same one; compiled if not cached.
set_tests_properties(Tools.whisper-cli PROPERTIES LABELS tools FIXTURES_SETUP whisper-cli TIMEOUT 1500)
