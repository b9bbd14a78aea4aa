# What `cmake --install` lays down: the library in both forms, the headers, vlrprops, a package config
# for find_package(vlrcomn), a pkg-config file, the man pages and the gdb printers.
include(CMakePackageConfigHelpers)

install(TARGETS vlrcomn vlrcomn_static EXPORT vlrcomnTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET vlrprops)
    install(TARGETS vlrprops RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vlrcomn DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
file(GLOB pages ${PROJECT_SOURCE_DIR}/docs/man/*.3)
install(FILES ${PROJECT_SOURCE_DIR}/docs/man/vlrprops.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man3)
install(FILES ${PROJECT_SOURCE_DIR}/tools/gdb/vlrcomn_gdb.py DESTINATION ${CMAKE_INSTALL_DATADIR}/vlrcomn)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vlrcomn)
install(EXPORT vlrcomnTargets NAMESPACE vlrcomn:: DESTINATION ${package_folder})
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/vlrcomnConfig.cmake.in ${PROJECT_BINARY_DIR}/vlrcomnConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vlrcomnConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vlrcomnConfig.cmake
              ${PROJECT_BINARY_DIR}/vlrcomnConfigVersion.cmake DESTINATION ${package_folder})

set(VLRCOMN_PC_PRIVATE_LIBRARIES "-lstdc++ -pthread")
if(CMAKE_DL_LIBS)
    string(PREPEND VLRCOMN_PC_PRIVATE_LIBRARIES "-l${CMAKE_DL_LIBS} ")
endif()
if(TARGET EXPAT::EXPAT)
    string(PREPEND VLRCOMN_PC_PRIVATE_LIBRARIES "-lexpat ")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/vlrcomn.pc.in ${PROJECT_BINARY_DIR}/vlrcomn.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vlrcomn.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
