# Linux on this machine's processor with musl by the Zig compiler, run natively. Of the C libraries that can be
# run here it comes nearest to the home machine's: cancellation runs clean-up handlers and unwinds nothing.
# -DZIG=path of the compiler
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZIG)
set(CMAKE_C_COMPILER ${ZIG} cc -target x86_64-linux-musl)
set(CMAKE_CXX_COMPILER ${ZIG} c++ -target x86_64-linux-musl)
set(CMAKE_USER_MAKE_RULES_OVERRIDE ${CMAKE_CURRENT_LIST_DIR}/zig_rules.cmake)
set(VLRCOMN_MUSL ON)  # asked by the tests
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
set(CMAKE_FIND_ROOT_PATH ${CMAKE_CURRENT_LIST_DIR}/none)  # libraries of this machine need its own C library
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
