include(CMakePackageConfigHelpers)

# After all folders have added their headers.
set(olvik_libraries Olvik3DViewerWidget)
if(TARGET OlvikSettingsController)
    list(APPEND olvik_libraries OlvikSettingsController)
endif()
install(TARGETS ${olvik_libraries} EXPORT Olvik3DViewerWidgetTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/olvik3dviewer
    FILE_SET generated_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/olvik3dviewer
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/olvik3dviewer)

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
