include(CMakePackageConfigHelpers)

set(olvik_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Olvik3DViewerWidget)

install(EXPORT Olvik3DViewerWidgetTargets
    NAMESPACE Olvik3DViewerWidget::
    DESTINATION ${olvik_config_dir})
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
    DESTINATION ${olvik_config_dir})
