# Run by CPack 3.25, which adds scripts that call ldconfig to each package with a library and cannot be
# told not to: Debian's way is the trigger alone.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(tree "${package}.tree")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}"
        COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build "${tree}" "${package}"
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE "${tree}")
endforeach()
