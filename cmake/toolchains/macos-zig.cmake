# Mac OS X by the Zig compiler, which carries the C library's headers; compiles and links, runs nothing.
# -DZIG=path of the compiler -DZIG_TARGET=x86_64-macos or aarch64-macos
#
# The frameworks are not there: macos/ holds declarations and link stubs of the few functions in use.
# Only this file adds them, so a real Mac takes its own.
set(CMAKE_SYSTEM_NAME Darwin)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZIG ZIG_TARGET)
string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${ZIG_TARGET}")
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)  # no program is run while building
set(CMAKE_USER_MAKE_RULES_OVERRIDE ${CMAKE_CURRENT_LIST_DIR}/macos/modules.cmake)
set(CMAKE_C_COMPILER ${ZIG} cc -target ${ZIG_TARGET})
set(CMAKE_CXX_COMPILER ${ZIG} c++ -target ${ZIG_TARGET})
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-14)
set(CMAKE_C_FLAGS_INIT "-isystem ${CMAKE_CURRENT_LIST_DIR}/macos/include")
set(CMAKE_CXX_FLAGS_INIT "-isystem ${CMAKE_CURRENT_LIST_DIR}/macos/include")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT
        "-L${CMAKE_CURRENT_LIST_DIR}/macos/lib -F${CMAKE_CURRENT_LIST_DIR}/macos/Frameworks")
endforeach()
