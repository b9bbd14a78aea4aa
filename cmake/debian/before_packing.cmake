# Run by cpack for the installed trees, one for each component: adds what Debian wants beside the files that
# `cmake --install` lays down, and compresses the manual.
set(gzip gzip -9 -n)
set(work ${CPACK_TEMPORARY_DIRECTORY}/debian)
file(MAKE_DIRECTORY ${work})

# The licence has one home, the section of the README.
file(READ ${CPACK_VLRCOMN_SOURCE}/README.md readme)
string(REGEX MATCH "\n## Licence\n\n([^#]+)" section "${readme}")
string(REGEX REPLACE "\n+$" "\n" licence "${CMAKE_MATCH_1}")
if(NOT licence)
    message(FATAL_ERROR "README.md has no section on the licence")
endif()
file(WRITE ${work}/copyright "${licence}")

execute_process(
    COMMAND ${CPACK_VLRCOMN_SOURCE}/cmake/debian/changelog
            ${CPACK_VLRCOMN_SOURCE}/CHANGELOG.md "${CPACK_PACKAGE_CONTACT}"
    COMMAND ${gzip}
    OUTPUT_FILE ${work}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)

foreach(component ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share)
    file(COPY ${work}/copyright ${work}/changelog.gz DESTINATION ${share}/doc/${package})

    file(GLOB_RECURSE pages ${share}/man/*.[1-8])
    if(pages)
        execute_process(COMMAND ${gzip} ${pages} COMMAND_ERROR_IS_FATAL ANY)
    endif()

    # Whoever ships the packages sets CPACK_PACKAGE_CONTACT; until then lintian has to bear with the address.
    if(CPACK_PACKAGE_CONTACT MATCHES "@localhost>$")
        file(WRITE ${share}/lintian/overrides/${package}
            "# The owner has not chosen a maintainer yet.\n"
            "${package}: bogus-mail-host *\n${package}: bogus-mail-host-in-debian-changelog *\n")
    endif()
endforeach()
