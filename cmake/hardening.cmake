# What a fault in the shipped library or program cannot be used for: overrun frames and known objects end the
# process, a large frame cannot jump over the guard page, a jump through a pointer lands on an entry point only,
# and the tables of the loader are read-only once it is done. Linked by what is installed; a flag that compiler or
# linker lacks is left out. Mac OS X 10.4 has none of the functions that the first two call.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)

add_library(vlrcomn_hardening INTERFACE)
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
    return()
endif()
check_pie_supported()  # from here on programs are position-independent, too

if(NOT VLRCOMN_SANITIZE)  # sanitizers see more, and with their own copies of these calls
    foreach(flag stack-protector-strong stack-clash-protection cf-protection)
        string(MAKE_C_IDENTIFIER VLRCOMN_HAVE_${flag} probe)
        check_cxx_compiler_flag(-f${flag} ${probe})
        target_compile_options(vlrcomn_hardening INTERFACE $<$<BOOL:${${probe}}>:-f${flag}>)
    endforeach()

    # Distributions may define it already, at a higher level; without optimisation it only warns.
    check_cxx_source_compiles("
        #ifdef _FORTIFY_SOURCE
        #error
        #endif
        int main() {}" VLRCOMN_NOT_FORTIFIED)
    target_compile_definitions(vlrcomn_hardening INTERFACE
        $<$<AND:$<BOOL:${VLRCOMN_NOT_FORTIFIED}>,$<CONFIG:Release,RelWithDebInfo,MinSizeRel>>:_FORTIFY_SOURCE=2>)
endif()

check_linker_flag(CXX LINKER:-z,relro,-z,now VLRCOMN_HAVE_READ_ONLY_TABLES)
target_link_options(vlrcomn_hardening INTERFACE
    $<$<BOOL:${VLRCOMN_HAVE_READ_ONLY_TABLES}>:LINKER:-z,relro,-z,now>)
