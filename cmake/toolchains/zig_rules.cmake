# Zig precompiles no file of the language "c++-header"; the option that makes the precompiled header suffices.
set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -emit-pch -Xclang -include -Xclang <PCH_HEADER>)
