# Linux on i386: 32-bit words, little-endian, run natively.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
# One row whose char is unsigned, as on other processors, shows what leans on its sign.
set(CMAKE_C_FLAGS_INIT "-funsigned-char")
set(CMAKE_CXX_FLAGS_INIT "-funsigned-char")
set(CMAKE_FIND_ROOT_PATH /usr/i686-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
