# Linux on 32-bit big-endian PowerPC with glibc: the home machine's byte order and word size, run under
# user-mode emulation.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR powerpc)
set(CMAKE_C_COMPILER powerpc-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER powerpc-linux-gnu-g++)
# char is unsigned on Linux for PowerPC and signed on the home machine.
set(CMAKE_C_FLAGS_INIT "-fsigned-char")
set(CMAKE_CXX_FLAGS_INIT "-fsigned-char")
# Programs name the place of their libraries themselves: with the emulator's own option for it a program would
# see the files there in the place of this machine's.
set(powerpc_libraries /usr/powerpc-linux-gnu/lib)
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${powerpc_libraries}/ld.so.1 -Wl,--disable-new-dtags -Wl,-rpath,${powerpc_libraries}")
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-ppc)
set(CMAKE_FIND_ROOT_PATH /usr/powerpc-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
