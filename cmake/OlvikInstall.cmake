include(CMakePackageConfigHelpers)

# Components: runtime and settings (one library each), development (all that a host's build needs) and
# licence, which distribution packages replace by a file of their own.
set(olvik_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/olvik3dviewer)
set(olvik_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Olvik3DViewerWidget)

function(olvik_install_library target component)
    install(TARGETS ${target} EXPORT Olvik3DViewerWidgetTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT ${component} NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION ${olvik_include_dir} COMPONENT development
        FILE_SET generated_headers DESTINATION ${olvik_include_dir} COMPONENT development
        INCLUDES DESTINATION ${olvik_include_dir})
endfunction()

# After all folders have added their headers.
olvik_install_library(Olvik3DViewerWidget runtime)
if(TARGET OlvikSettingsController)
    olvik_install_library(OlvikSettingsController settings)
endif()

install(EXPORT Olvik3DViewerWidgetTargets
    NAMESPACE Olvik3DViewerWidget::
    DESTINATION ${olvik_config_dir}
    COMPONENT development)
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/Olvik3DViewerWidgetConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/Olvik3DViewerWidgetConfig.cmake"
    INSTALL_DESTINATION ${olvik_config_dir})
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/Olvik3DViewerWidgetConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/Olvik3DViewerWidgetConfig.cmake"
    "${PROJECT_BINARY_DIR}/Olvik3DViewerWidgetConfigVersion.cmake"
    DESTINATION ${olvik_config_dir}
    COMPONENT development)

# Relative to the file itself, so that the installed tree may be moved.
set(olvik_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH olvik_pkgconfig_to_prefix "/${olvik_pkgconfig_dir}" /)
configure_file("${CMAKE_CURRENT_LIST_DIR}/olvik3dviewer.pc.in"
    "${PROJECT_BINARY_DIR}/olvik3dviewer.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/olvik3dviewer.pc"
    DESTINATION ${olvik_pkgconfig_dir}
    COMPONENT development)

# Side by side as in the source tree: the guides link to the examples.
install(DIRECTORY docs
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT development
    FILES_MATCHING PATTERN *.md PATTERN *.png)
install(DIRECTORY examples/common examples/embedded examples/minimal
    DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
    COMPONENT development)
install(FILES LICENSE
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT licence)
