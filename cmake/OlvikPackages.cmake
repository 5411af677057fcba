# Debian packages, made by `cpack` in a build folder that was configured by the preset package.

set(olvik_packages_dir "${PROJECT_SOURCE_DIR}/packaging")
set(olvik_packages_build_dir "${PROJECT_BINARY_DIR}/packaging")
set(CPACK_COMPONENTS_ALL)

# What Debian's policy asks of /usr/share/doc/<package>; a plain install leaves it out.
find_program(GZIP gzip REQUIRED)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(olvik_debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
cmake_host_system_information(RESULT olvik_debian_suite QUERY DISTRIB_VERSION_CODENAME)
configure_file("${olvik_packages_dir}/changelog.in"
    "${olvik_packages_build_dir}/changelog.Debian" @ONLY)
execute_process(COMMAND ${GZIP} -9nf "${olvik_packages_build_dir}/changelog.Debian"
    COMMAND_ERROR_IS_FATAL ANY)

# olvik_package(<component> NAME <package> SECTION <section> SUMMARY <line> DESCRIPTION <text>
#               [DEPENDS <list>] [MULTIARCH <same|...>])
# Makes a package of everything that is installed in the component.
macro(olvik_package component)
    cmake_parse_arguments(package "" "NAME;SECTION;SUMMARY;DESCRIPTION;MULTIARCH" "DEPENDS" ${ARGN})
    string(TOUPPER ${component} package_key)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    list(JOIN package_DEPENDS ", " CPACK_DEBIAN_${package_key}_PACKAGE_DEPENDS)
    set(CPACK_DEBIAN_${package_key}_PACKAGE_NAME ${package_NAME})
    set(CPACK_DEBIAN_${package_key}_PACKAGE_SECTION ${package_SECTION})
    set(CPACK_DEBIAN_${package_key}_PACKAGE_MULTIARCH ${package_MULTIARCH})
    set(CPACK_DEBIAN_${package_key}_DESCRIPTION "${package_SUMMARY}\n${package_DESCRIPTION}")
    if(package_SECTION STREQUAL libs)
        set(CPACK_DEBIAN_${package_key}_PACKAGE_CONTROL_EXTRA "${olvik_packages_dir}/triggers")
    endif()
    install(FILES
            "${olvik_packages_dir}/copyright"
            "${olvik_packages_build_dir}/changelog.Debian.gz"
        DESTINATION share/doc/${package_NAME}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

# Named by the library's SONAME, as Debian wants it, with a dash between two digits.
string(REGEX REPLACE "([0-9])$" "\\1-" olvik_soname_ending "${OLVIK_SUFFIX}")
string(APPEND olvik_soname_ending ${PROJECT_VERSION_MAJOR})
set(olvik_settings_package libolviksettingscontroller${olvik_soname_ending})
set(olvik_runtime_package libolvik3dviewerwidget${olvik_soname_ending})
set(olvik_development_package libolvik3dviewerwidget${OLVIK_SUFFIX}-dev)
if(OLVIK_QT STREQUAL Qt6)
    set(olvik_qt_packages qt6-base-dev)
else()
    set(olvik_qt_packages qtbase5-dev libqt5opengl5-dev)
endif()
set(olvik_sibling_packages "${olvik_runtime_package} (= ${olvik_debian_version})")
if(TARGET OlvikSettingsController)
    list(APPEND olvik_sibling_packages "${olvik_settings_package} (= ${olvik_debian_version})")
    olvik_package(settings
        NAME ${olvik_settings_package}
        SECTION libs
        MULTIARCH same
        SUMMARY "settings service of the Olvik 3D viewer"
        DESCRIPTION "Keeps the named values of a process in one INI file of the user, for use from
any thread. The 3D viewer remembers its window and its colours with it.")
    set(olvik_settings_dependency "${olvik_settings_package} (>= ${PROJECT_VERSION})")
endif()
olvik_package(runtime
    NAME ${olvik_runtime_package}
    SECTION libs
    MULTIARCH same
    DEPENDS ${olvik_settings_dependency}
    SUMMARY "3D viewer for height profiles of line-scanning sensors"
    DESCRIPTION "Shows the heights that a line-scanning sensor measures as a point cloud inside
a Qt application, while the sensor runs. The operator rotates the cloud, picks
points, measures distances and colours it by height or by own gradients.")
olvik_package(development
    NAME ${olvik_development_package}
    SECTION libdevel
    DEPENDS ${olvik_sibling_packages} libvtk9-dev libvtk9-qt-dev ${olvik_qt_packages}
    SUMMARY "3D viewer for height profiles (development files)"
    DESCRIPTION "Headers, CMake and pkg-config files and the documentation of the Olvik 3D
viewer, which shows the heights of a line-scanning sensor as a point cloud.")
if(TARGET olvik3dviewer_designer)
    olvik_package(designer
        NAME libolvik3dviewerwidget${OLVIK_SUFFIX}-designer
        SECTION libdevel
        MULTIARCH same
        DEPENDS "${olvik_runtime_package} (= ${olvik_debian_version})"
        SUMMARY "3D viewer for height profiles (plugin for Qt Designer)"
        DESCRIPTION "Offers the Olvik 3D viewer in the widget box of Qt Designer, for forms of
measuring applications.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME olvik3dviewer)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package has its own; CPack would put the project's on top.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "The Olvik 3D viewer authors")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE olvik3dviewer)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Olvik 3D viewer authors <olvik3dviewer@example.org>")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    "${PROJECT_BINARY_DIR}" "${PROJECT_BINARY_DIR}/settings")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/OlvikRemoveMaintainerScripts.cmake")
include(CPack)
