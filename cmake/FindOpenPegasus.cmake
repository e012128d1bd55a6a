# Finds an installed OpenPegasus; it ships no package files of its own.
#
# Looked at, in this order: the cache variables OpenPegasus_INCLUDE_DIR and
# OpenPegasus_{pegcommon,pegprovider,pegclient,pegquerycommon}_LIBRARY; the directories
# OpenPegasus_HINTS; PEGASUS_ROOT (sources, or an installation prefix) and PEGASUS_HOME (build
# output), as cache or environment variables; the system's paths. PEGASUS_PLATFORM names the
# platform (LINUX_X86_64_GNU by default on x86-64).
#
# Defines the target OpenPegasus::OpenPegasus, and OpenPegasus_LIBRARY_DIR.

foreach(variable PEGASUS_ROOT PEGASUS_HOME PEGASUS_PLATFORM)
  if(NOT DEFINED ${variable} AND DEFINED ENV{${variable}})
    set(${variable} $ENV{${variable}})
  endif()
endforeach()

if(NOT DEFINED PEGASUS_PLATFORM)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    set(PEGASUS_PLATFORM LINUX_X86_64_GNU)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64")
    set(PEGASUS_PLATFORM LINUX_AARCH64_GNU)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "ppc64")
    set(PEGASUS_PLATFORM LINUX_PPC64_GNU)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "ppc|powerpc")
    set(PEGASUS_PLATFORM LINUX_PPC_GNU)
  else()
    set(PEGASUS_PLATFORM LINUX_IX86_GNU)
  endif()
endif()

find_path(OpenPegasus_INCLUDE_DIR Pegasus/Common/Config.h
  HINTS ${OpenPegasus_HINTS} ${PEGASUS_ROOT}/src ${PEGASUS_ROOT}/include)
set(libraries "")
# libpegprovider needs the last two. Who names them finds them where the others are, also where
# libpegprovider itself does not say where that is.
foreach(library IN ITEMS pegprovider pegcommon pegclient pegquerycommon)
  find_library(OpenPegasus_${library}_LIBRARY NAMES ${library} lib${library}.so.1
    HINTS ${OpenPegasus_HINTS}
      ${PEGASUS_HOME}/lib ${PEGASUS_HOME}/lib64 ${PEGASUS_ROOT}/lib ${PEGASUS_ROOT}/lib64)
  mark_as_advanced(OpenPegasus_${library}_LIBRARY)
  list(APPEND libraries ${OpenPegasus_${library}_LIBRARY})
endforeach()
mark_as_advanced(OpenPegasus_INCLUDE_DIR)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenPegasus REQUIRED_VARS
  OpenPegasus_pegcommon_LIBRARY OpenPegasus_pegprovider_LIBRARY OpenPegasus_pegclient_LIBRARY
  OpenPegasus_pegquerycommon_LIBRARY OpenPegasus_INCLUDE_DIR)

if(OpenPegasus_FOUND AND NOT TARGET OpenPegasus::OpenPegasus)
  get_filename_component(OpenPegasus_LIBRARY_DIR ${OpenPegasus_pegcommon_LIBRARY} DIRECTORY)
  # Global: a parent project links it, too, through libMPUEvent.
  add_library(OpenPegasus::OpenPegasus INTERFACE IMPORTED GLOBAL)
  target_include_directories(OpenPegasus::OpenPegasus SYSTEM INTERFACE ${OpenPegasus_INCLUDE_DIR})
  target_compile_definitions(OpenPegasus::OpenPegasus
    INTERFACE PEGASUS_PLATFORM_${PEGASUS_PLATFORM})
  target_link_libraries(OpenPegasus::OpenPegasus INTERFACE ${libraries})
  # Also for a program that does not use them all itself.
  target_link_options(OpenPegasus::OpenPegasus INTERFACE LINKER:--no-as-needed)
endif()
