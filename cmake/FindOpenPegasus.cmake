# Finds an installed OpenPegasus; it ships no package files of its own.
#
# Looked at, in this order: the cache variables OpenPegasus_INCLUDE_DIR,
# OpenPegasus_pegcommon_LIBRARY and OpenPegasus_pegprovider_LIBRARY; PEGASUS_ROOT (sources, or an
# installation prefix) and PEGASUS_HOME (build output), as cache or environment variables; the
# system's paths. PEGASUS_PLATFORM names the platform (LINUX_X86_64_GNU by default on x86-64).
#
# Defines the target OpenPegasus::OpenPegasus.

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
  HINTS ${PEGASUS_ROOT}/src ${PEGASUS_ROOT}/include)
foreach(library pegcommon pegprovider)
  find_library(OpenPegasus_${library}_LIBRARY ${library} NAMES ${library} lib${library}.so.1
    HINTS ${PEGASUS_HOME}/lib ${PEGASUS_HOME}/lib64 ${PEGASUS_ROOT}/lib ${PEGASUS_ROOT}/lib64)
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenPegasus REQUIRED_VARS
  OpenPegasus_pegcommon_LIBRARY OpenPegasus_pegprovider_LIBRARY OpenPegasus_INCLUDE_DIR)

if(OpenPegasus_FOUND AND NOT TARGET OpenPegasus::OpenPegasus)
  add_library(OpenPegasus::OpenPegasus INTERFACE IMPORTED)
  target_include_directories(OpenPegasus::OpenPegasus SYSTEM INTERFACE ${OpenPegasus_INCLUDE_DIR})
  target_compile_definitions(OpenPegasus::OpenPegasus
    INTERFACE PEGASUS_PLATFORM_${PEGASUS_PLATFORM})
  # libpegprovider itself needs further libraries of the same directory.
  get_filename_component(pegasusLibraryDir ${OpenPegasus_pegprovider_LIBRARY} DIRECTORY)
  target_link_libraries(OpenPegasus::OpenPegasus INTERFACE
    ${OpenPegasus_pegprovider_LIBRARY} ${OpenPegasus_pegcommon_LIBRARY})
  target_link_options(OpenPegasus::OpenPegasus INTERFACE -Wl,-rpath-link,${pegasusLibraryDir})
  set(OpenPegasus_PKGCONFIG_LIBS "-L${pegasusLibraryDir} -lpegprovider -lpegcommon")
  set(OpenPegasus_PKGCONFIG_CFLAGS
    "-I${OpenPegasus_INCLUDE_DIR} -DPEGASUS_PLATFORM_${PEGASUS_PLATFORM}")
  mark_as_advanced(OpenPegasus_INCLUDE_DIR OpenPegasus_pegcommon_LIBRARY
    OpenPegasus_pegprovider_LIBRARY)
endif()
