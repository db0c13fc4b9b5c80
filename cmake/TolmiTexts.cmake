find_package(Python3 REQUIRED COMPONENTS Interpreter)

# tolmi_compile_texts(TARGET FILE...): compiles the texts of these languages, one file each, into TARGET. The generated
# headers with their keys are available to the target and its users.
function(tolmi_compile_texts target)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-texts)
  set(made ${folder}/TolmiApp/Settings/AppLanguages.h ${folder}/TolmiApp/Texts/L10nKeys.h ${folder}/TolmiApp/Texts/L10nTable.cpp)
  set(compiler ${PROJECT_SOURCE_DIR}/Tools/compile-texts)
  add_custom_command(OUTPUT ${made}
    COMMAND Python3::Interpreter ${compiler} ${folder} ${ARGN}
    DEPENDS ${compiler} ${ARGN}
    COMMENT "Compiling the texts of ${target}"
    VERBATIM)
  set_source_files_properties(${made} PROPERTIES SKIP_AUTOMOC ON)
  target_sources(${target} PRIVATE ${made})
  target_include_directories(${target} PUBLIC ${folder})
endfunction()
