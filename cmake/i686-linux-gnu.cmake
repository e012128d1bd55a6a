# 32-bit x86 Linux. Programs run on an x86-64 machine as they are, with the cross packages'
# libraries. (qemu-i386 hangs in programs of several threads.)
set(triple i686-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_CROSSCOMPILING_EMULATOR
  /usr/i686-linux-gnu/lib/ld-linux.so.2 --library-path /usr/i686-linux-gnu/lib)
