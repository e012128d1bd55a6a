# find_soname(VARIABLE NAME): the name by which libNAME is loaded at run time, for libraries that are
# loaded when they are needed; a program that is static cannot. MPUEVENT_NAME_FILE is where it was found.
function(find_soname variable name)
  find_library(MPUEVENT_${name}_FILE ${name})
  execute_process(COMMAND ${CMAKE_OBJDUMP} -p ${MPUEVENT_${name}_FILE} OUTPUT_VARIABLE headers ERROR_QUIET)
  if(NOT headers MATCHES "SONAME +([^ \n]+)")
    message(FATAL_ERROR "No soname found in lib${name} (${MPUEVENT_${name}_FILE})")
  endif()
  set(${variable} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()
