#!/usr/bin/env bash
# use_source.sh SOURCE CC CXX [LAUNCHER]: a project takes the library's source into its own build, by add_subdirectory and by FetchContent: it gets the
# library in both forms and nothing else, neither tests nor their packages, no program, no fatal warning.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }; }

cat >"$work/CMakeLists.txt" <<'PROJECT'
cmake_minimum_required(VERSION 3.20)
project(agent LANGUAGES C CXX)
if(WAY STREQUAL "fetched")
    include(FetchContent)
    FetchContent_Declare(vlrcomn SOURCE_DIR ${LIBRARY} BINARY_DIR ${PROJECT_BINARY_DIR}/vlrcomn)
    FetchContent_MakeAvailable(vlrcomn)
else()
    add_subdirectory(${LIBRARY} vlrcomn)
endif()
add_executable(hello ${LIBRARY}/examples/hello.cpp)
target_link_libraries(hello PRIVATE vlrcomn::vlrcomn)
add_executable(worker ${LIBRARY}/examples/worker.c)
target_link_libraries(worker PRIVATE vlrcomn::vlrcomn_static)
set_target_properties(hello worker PROPERTIES C_STANDARD 99 CXX_STANDARD 17)
PROJECT

for way in added fetched; do  # in one folder: the second time only links anew
    quietly cmake -S "$work" -B "$work/build" -G Ninja -DWAY=$way -DLIBRARY="$1" -DCMAKE_C_COMPILER="$2" \
        -DCMAKE_CXX_COMPILER="$3" -DCMAKE_CXX_COMPILER_LAUNCHER="${4-}" -DCMAKE_CXX_FLAGS=-O0 \
        -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON
    rm -f "$work/build/hello" "$work/build/worker"
    quietly cmake --build "$work/build"
    [[ $("$work/build/hello") == *': '* && $("$work/build/worker") == *'stopped after 3' ]]
    if ninja -C "$work/build" -t commands | grep -e -Werror; then exit 1; fi
    [ "$(find "$work/build" -type f -perm -u+x ! -path '*/CMakeFiles/*' -printf '%f\n' | sed 's/\.so.*/.so/' | sort |
        tr '\n' ' ')" = 'hello libvlrcomn.so worker ' ]
done
