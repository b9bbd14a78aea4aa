# Run by cpack for the finished packages: CPack calls ldconfig from scripts of its own and cannot be told
# otherwise; the packages have Debian's trigger for it (triggers).
foreach(package ${CPACK_PACKAGE_FILES})
    set(tree ${package}.tree)
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
    if(EXISTS ${tree}/DEBIAN/postinst)
        file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
        execute_process(COMMAND dpkg-deb --root-owner-group --build ${tree} ${package}
            OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endif()
    file(REMOVE_RECURSE ${tree})
endforeach()
