# The Debian packages that `cpack` makes (scripts/package): libvlrcomn1, libvlrcomn-dev and vlrprops.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vlrcomn)
set(CPACK_PACKAGE_VENDOR "")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_CONTACT "Engineers of the agent <engineers@localhost>" CACHE STRING "Maintainer of the packages")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)  # on the same version
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvlrcomn${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Common library of the endpoint-management agent
Portability layer in the style of Win32, lists and locks, the machine's
properties, network, users and files for the agent's programs and plug-ins.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvlrcomn-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS libexpat1-dev)  # of the static library
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Common library of the endpoint-management agent (development)
Headers, the static library, CMake and pkg-config files, manual, examples.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME vlrprops)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION admin)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Property report of the endpoint-management agent
vlrprops prints what the agent reports of this machine, as a table or as JSON.")

# Dependencies on system libraries as the programs' own tables tell them; the runtime package tells others
# which version they need.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/source)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# What Debian's own checker, lintian, asks for besides.
set(CPACK_VLRCOMN_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/before_packing.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/after_packing.cmake)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
