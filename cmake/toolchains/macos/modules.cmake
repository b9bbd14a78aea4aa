# The Zig compiler makes no bundles; the Mac loads dynamic libraries as well.
foreach(language C CXX)
    set(CMAKE_SHARED_MODULE_CREATE_${language}_FLAGS "-dynamiclib -Wl,-undefined,dynamic_lookup")
endforeach()

include(${CMAKE_CURRENT_LIST_DIR}/../zig_rules.cmake)
