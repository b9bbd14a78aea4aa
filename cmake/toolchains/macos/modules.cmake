# The Zig compiler makes no bundles; the Mac loads dynamic libraries as well.
foreach(language C CXX)
    set(CMAKE_SHARED_MODULE_CREATE_${language}_FLAGS "-dynamiclib -Wl,-undefined,dynamic_lookup")
endforeach()

# It precompiles no file of the language "c++-header"; the option that makes the precompiled header suffices.
set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -emit-pch -Xclang -include -Xclang <PCH_HEADER>)
