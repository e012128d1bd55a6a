# 32-bit big-endian PowerPC Linux. Programs are run by qemu.
set(triple powerpc-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR ppc)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-ppc -L /usr/powerpc-linux-gnu)
# Texts that the linker may not merge need no address each, and so no relocation. The machine's pages
# are of 4 KiB; the linker's default of 64 KiB would leave holes of that size in every library.
set(CMAKE_CXX_FLAGS_INIT -fno-merge-constants)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -Wl,-z,max-page-size=4096)
