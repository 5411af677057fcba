include(CMakePackageConfigHelpers)

# Components: runtime and settings (one library each), development (all that a host's build needs) and
# licence, which distribution packages replace by a file of their own.
set(olvik_package ${PROJECT_NAME}${OLVIK_SUFFIX})
set(olvik_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/olvik3dviewer${OLVIK_SUFFIX})
set(olvik_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${olvik_package})
set(olvik_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# GNUInstallDirs would name it by the project of the host that adds this one to its own.
set(olvik_doc_dir "$CACHE{CMAKE_INSTALL_DOCDIR}")
if(OLVIK_PACKAGES)
    set(olvik_doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${olvik_development_package})
elseif(NOT olvik_doc_dir)
    set(olvik_doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${olvik_package})
endif()

function(olvik_install_library target component)
    install(TARGETS ${target} EXPORT ${olvik_package}Targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT ${component} NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION ${olvik_include_dir} COMPONENT development
        FILE_SET generated_headers DESTINATION ${olvik_include_dir} COMPONENT development
        INCLUDES DESTINATION ${olvik_include_dir})
endfunction()

# After all folders have added their headers.
olvik_install_library(Olvik3DViewerWidget runtime)
install(TARGETS OlvikSettingsService EXPORT ${olvik_package}Targets)
if(TARGET OlvikSettingsController)
    olvik_install_library(OlvikSettingsController settings)
    set(olvik_settings_dir "$ORIGIN")
    set(olvik_pkgconfig_settings_libs -lOlvikSettingsController${OLVIK_SUFFIX})
    set(olvik_pkgconfig_settings_cflags "")
else()
    get_target_property(library OlvikSettingsService INTERFACE_LINK_LIBRARIES)
    cmake_path(GET library PARENT_PATH olvik_settings_dir)
    cmake_path(GET library STEM LAST_ONLY library)
    string(REGEX REPLACE "^lib" "-l" library ${library})
    set(olvik_pkgconfig_settings_libs "-L${olvik_settings_dir} ${library}")
    set(olvik_pkgconfig_settings_cflags "-I${OLVIK_SETTINGS_SERVICE}/include")
endif()
# A host's own search path does not help a library to find what it needs itself: the settings, and a VTK
# that is not the system's.
set_target_properties(Olvik3DViewerWidget PROPERTIES
    INSTALL_RPATH_USE_LINK_PATH ON
    INSTALL_RPATH "${olvik_settings_dir};${CMAKE_INSTALL_RPATH}")

install(EXPORT ${olvik_package}Targets
    NAMESPACE Olvik3DViewerWidget::
    DESTINATION ${olvik_config_dir}
    COMPONENT development)
# A newer Qt of the same major version will do, an older one may lack what the library was linked with.
string(REGEX MATCH "^[0-9]+\\.[0-9]+" olvik_qt_built_with "${${OLVIK_QT}_VERSION}")
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/Olvik3DViewerWidgetConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/${olvik_package}Config.cmake"
    INSTALL_DESTINATION ${olvik_config_dir})
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/${olvik_package}ConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/${olvik_package}Config.cmake"
    "${PROJECT_BINARY_DIR}/${olvik_package}ConfigVersion.cmake"
    DESTINATION ${olvik_config_dir}
    COMPONENT development)

set(olvik_pkgconfig_qt Core Gui Widgets)
list(TRANSFORM olvik_pkgconfig_qt REPLACE "(.+)" "${OLVIK_QT}\\1 >= ${olvik_qt_built_with}")
list(JOIN olvik_pkgconfig_qt ", " olvik_pkgconfig_qt)
# Relative to the file itself, so that the installed tree may be moved.
file(RELATIVE_PATH olvik_pkgconfig_to_prefix "/${olvik_pkgconfig_dir}" /)
configure_file("${CMAKE_CURRENT_LIST_DIR}/olvik3dviewer.pc.in"
    "${PROJECT_BINARY_DIR}/olvik3dviewer${OLVIK_SUFFIX}.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/olvik3dviewer${OLVIK_SUFFIX}.pc"
    DESTINATION ${olvik_pkgconfig_dir}
    COMPONENT development)

# Side by side as in the source tree: the guides link to the examples.
install(DIRECTORY docs
    DESTINATION ${olvik_doc_dir}
    COMPONENT development
    FILES_MATCHING PATTERN *.md PATTERN *.png)
install(DIRECTORY examples/common examples/embedded examples/minimal
    DESTINATION ${olvik_doc_dir}/examples
    COMPONENT development)
install(FILES LICENSE
    DESTINATION ${olvik_doc_dir}
    COMPONENT licence)
