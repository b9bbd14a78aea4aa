# What `cmake --install` lays down: the library in both forms, the headers, vlrprops, the manual, the examples,
# the gdb printers, a package config for find_package(vlrcomn) and a pkg-config file. Three components, each a
# Debian package of its own (cmake/packages.cmake): runtime, development, tools.
include(CMakePackageConfigHelpers)

install(TARGETS vlrcomn vlrcomn_static EXPORT vlrcomnTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS vlrprops RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
# Completions: Debian's zsh looks for those of packages in a folder of its own.
set(zsh_folder site-functions)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND EXISTS /etc/debian_version)
    set(zsh_folder vendor-completions)
endif()
set(completions ${PROJECT_SOURCE_DIR}/tools/vlrprops/completions)
install(FILES ${completions}/vlrprops.bash RENAME vlrprops
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
install(FILES ${completions}/_vlrprops DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_folder} COMPONENT tools)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vlrcomn DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/tools/gdb/vlrcomn_gdb.py DESTINATION ${CMAKE_INSTALL_DATADIR}/vlrcomn
    COMPONENT development)
# Installing stripped leaves archives as they are.
install(CODE "if(CMAKE_INSTALL_DO_STRIP)
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-debug
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/libvlrcomn.a\")
endif()" COMPONENT development)

# Manual pages: those of programs go with the programs, those of functions with the headers.
file(GLOB manual_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/man/*.[1-8])
foreach(page ${manual_pages})
    string(REGEX MATCH "[1-8]$" section ${page})
    set(component tools)
    if(section EQUAL 3 OR section EQUAL 7)
        set(component development)
    endif()
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vlrcomn)
install(EXPORT vlrcomnTargets NAMESPACE vlrcomn:: DESTINATION ${package_folder} COMPONENT development)
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/vlrcomnConfig.cmake.in ${PROJECT_BINARY_DIR}/vlrcomnConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vlrcomnConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vlrcomnConfig.cmake ${PROJECT_BINARY_DIR}/vlrcomnConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT development)

# What a program that is linked with the static library needs besides; pkg-config --static tells it.
set(VLRCOMN_PC_PRIVATE_LIBRARIES "-pthread")
foreach(library ${CMAKE_DL_LIBS} m stdc++ c++ expat)
    if(library IN_LIST CMAKE_DL_LIBS OR library IN_LIST CMAKE_CXX_IMPLICIT_LINK_LIBRARIES
       OR (library STREQUAL "expat" AND TARGET EXPAT::EXPAT))
        string(PREPEND VLRCOMN_PC_PRIVATE_LIBRARIES "-l${library} ")
    endif()
endforeach()
# The file finds its prefix from its own place, so that the installed tree can be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH VLRCOMN_PC_PREFIX ${pkgconfig_folder} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" VLRCOMN_PC_PREFIX "${VLRCOMN_PC_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/vlrcomn.pc.in ${PROJECT_BINARY_DIR}/vlrcomn.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vlrcomn.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)

include(cmake/packages.cmake)
