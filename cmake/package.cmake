# Installs libMPUEvent with its headers, the CMake package and the pkg-config file. The installed tree
# may be moved.
include(CMakePackageConfigHelpers)
set(packageDirectory ${CMAKE_INSTALL_LIBDIR}/cmake/MPUEvent)

install(TARGETS MPUEvent EXPORT MPUEventTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT MPUEventTargets NAMESPACE MPUEvent:: DESTINATION ${packageDirectory})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/MPUEventConfig.cmake.in
  ${PROJECT_BINARY_DIR}/MPUEventConfig.cmake INSTALL_DESTINATION ${packageDirectory})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MPUEventConfigVersion.cmake
  COMPATIBILITY ${packageCompatibility})
install(FILES
  ${PROJECT_BINARY_DIR}/MPUEventConfig.cmake
  ${PROJECT_BINARY_DIR}/MPUEventConfigVersion.cmake
  DESTINATION ${packageDirectory})
if(MPUEVENT_OPENPEGASUS)
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/FindOpenPegasus.cmake DESTINATION ${packageDirectory})
endif()

# pkg-config knows no targets. mpuevent_pkgconfig(TARGET): adds what a compiler and a linker are told
# of TARGET to the caller's `cflags` and `libs`. Where a parent project installs a library of its own
# is not known: it is looked for beside libMPUEvent.
function(mpuevent_pkgconfig target)
  get_target_property(type ${target} TYPE)
  get_target_property(imported ${target} IMPORTED)
  if(imported)
    set(definitions $<TARGET_PROPERTY:${target},INTERFACE_COMPILE_DEFINITIONS>)
    set(directories $<TARGET_PROPERTY:${target},INTERFACE_INCLUDE_DIRECTORIES>)
    string(APPEND cflags " $<$<BOOL:${definitions}>:-D$<JOIN:${definitions}, -D>>"
      " $<$<BOOL:${directories}>:-I$<JOIN:${directories}, -I>>")
  endif()
  if(type STREQUAL INTERFACE_LIBRARY)
    get_target_property(options ${target} INTERFACE_LINK_OPTIONS)
    if(options)
      list(TRANSFORM options REPLACE "^LINKER:" "-Wl,")
      list(JOIN options " " options)
      string(APPEND libs " ${options}")
    endif()
    get_target_property(parts ${target} INTERFACE_LINK_LIBRARIES)
    foreach(part IN LISTS parts)
      if(TARGET ${part})
        mpuevent_pkgconfig(${part})
      elseif(part MATCHES "^/")
        get_filename_component(directory ${part} DIRECTORY)
        string(APPEND libs " ${part}")
        string(FIND "${libs} " " -Wl,-rpath,${directory} " at)
        if(at EQUAL -1)
          string(APPEND libs " -Wl,-rpath,${directory}")
        endif()
      elseif(part)
        string(REGEX REPLACE "^([^-])" "-l\\1" part ${part})
        string(APPEND libs " ${part}")
      endif()
    endforeach()
  elseif(imported)
    string(APPEND libs " $<TARGET_LINKER_FILE:${target}> -Wl,-rpath,$<TARGET_FILE_DIR:${target}>")
  else()
    string(APPEND libs " -l$<TARGET_LINKER_FILE_BASE_NAME:${target}>")
  endif()
  set(cflags ${cflags} PARENT_SCOPE)
  set(libs ${libs} PARENT_SCOPE)
endfunction()

set(cflags "")
set(libs "")
mpuevent_pkgconfig(MPUEvent::trace)
set(cflags "")
set(privateLibs "")
if(BUILD_SHARED_LIBS)
  set(privateLibs ${libs})
  set(libs "")
endif()
mpuevent_pkgconfig(MPUEvent::cmap)
mpuevent_pkgconfig(MPUEvent::pegasus)
file(RELATIVE_PATH prefixFromPkgConfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/mpuevent.pc.in ${PROJECT_BINARY_DIR}/mpuevent.pc.in @ONLY)
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/mpuevent.pc INPUT ${PROJECT_BINARY_DIR}/mpuevent.pc.in)
install(FILES ${PROJECT_BINARY_DIR}/mpuevent.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
