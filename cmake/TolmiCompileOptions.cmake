# Warnings and sanitizers for all targets.
add_compile_options(-Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wno-missing-field-initializers)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY)

if(TOLMI_SANITIZER)
  add_compile_options(-fsanitize=${TOLMI_SANITIZER} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TOLMI_SANITIZER})
  if(TOLMI_SANITIZER MATCHES undefined)
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
