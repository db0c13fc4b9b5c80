# tolmi_allow_links(TARGET dep...): fails the configuration if TARGET links anything but the named targets, which
# enforces the dependency rules of ARCHITECTURE.md.
function(tolmi_allow_links target)
  get_target_property(links ${target} LINK_LIBRARIES)
  foreach(link IN LISTS links)
    if(NOT link IN_LIST ARGN)
      message(FATAL_ERROR "${target} may not link ${link}; allowed: ${ARGN}")
    endif()
  endforeach()
endfunction()
