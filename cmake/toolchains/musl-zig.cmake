# Linux x86-64 with musl by the Zig compiler, run natively. What it is for: musl's cancellation runs the
# clean-up handlers and no C++ destructor, as the home machine's does.
# -DZIG=path of the compiler
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZIG)
set(CMAKE_C_COMPILER ${ZIG} cc -target x86_64-linux-musl)
set(CMAKE_CXX_COMPILER ${ZIG} c++ -target x86_64-linux-musl)
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
set(CMAKE_FIND_ROOT_PATH /nonexistent)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
