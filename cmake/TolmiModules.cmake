# tolmi_allow_links(TARGET dep...): stops the configuration when TARGET links anything but the named targets,
# so that the arrows of ARCHITECTURE.md hold by construction.
function(tolmi_allow_links target)
  get_target_property(links ${target} LINK_LIBRARIES)
  foreach(link IN LISTS links)
    if(NOT link IN_LIST ARGN)
      message(FATAL_ERROR "${target} may not link ${link}; allowed: ${ARGN}")
    endif()
  endforeach()
endfunction()
