# Links a test program with support/fault_injection.cpp and sends the calls listed there through it. Needs
# a linker that wraps symbols; on Mac OS X the caller leaves the program out, or the tests between
# #if defined(FAULT_INJECTION) and #endif.
set(VLRCOMN_FAULT_INJECTION ${CMAKE_CURRENT_LIST_DIR}/fault_injection.cpp)
function(vlrcomn_inject_faults target)
    target_sources(${target} PRIVATE ${VLRCOMN_FAULT_INJECTION})
    target_compile_definitions(${target} PRIVATE FAULT_INJECTION)
    # A call added to the list has to be wrapped in build folders that are there already.
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${VLRCOMN_FAULT_INJECTION})
    file(STRINGS ${VLRCOMN_FAULT_INJECTION} lines REGEX "^WRAP[A-Z_]*\\(")
    foreach(line ${lines})
        string(REGEX REPLACE "^WRAP[A-Z_]*\\(([a-z0-9_]+),.*" "\\1" symbol "${line}")
        target_link_options(${target} PRIVATE LINKER:--wrap=${symbol})
        if(line MATCHES "^WRAP_LARGE")
            target_link_options(${target} PRIVATE LINKER:--wrap=${symbol}64)
        endif()
    endforeach()
endfunction()
