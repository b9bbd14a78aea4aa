# Options for every target of this project: warnings, large files on 32-bit hosts, sanitizers.
find_package(Threads REQUIRED)

add_library(vlrcomn_options INTERFACE)
# Static C++ checks of gcc and clang alike; -Wconversion shows where a 32-bit count would lose bits of a 64-bit host.
# Part of somebody else's build, the library keeps to the warnings of that build.
if(is_main_project)
    target_compile_options(vlrcomn_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wformat=2 -Wundef
        $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wno-missing-field-initializers>
        # Who uses what a lock guards holds it: support/thread_annotations.h.
        $<$<COMPILE_LANG_AND_ID:CXX,Clang,AppleClang>:-Wthread-safety>)
endif()
target_compile_options(vlrcomn_options INTERFACE $<$<BOOL:${VLRCOMN_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(vlrcomn_options INTERFACE _FILE_OFFSET_BITS=64)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    target_compile_definitions(vlrcomn_options INTERFACE _GNU_SOURCE)
endif()
target_link_libraries(vlrcomn_options INTERFACE Threads::Threads ${CMAKE_DL_LIBS})

if(VLRCOMN_SANITIZE)
    target_compile_options(vlrcomn_options INTERFACE
        -fsanitize=${VLRCOMN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(vlrcomn_options INTERFACE -fsanitize=${VLRCOMN_SANITIZE})
endif()
