# The target docs: API reference of the installed headers and the guides; any warning fails it.
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
    return()
endif()

set(olvik_documented_headers)
foreach(library Olvik3DViewerWidget OlvikSettingsController)
    if(TARGET ${library})
        get_target_property(headers ${library} HEADER_SET)
        list(APPEND olvik_documented_headers ${headers})
    endif()
endforeach()
file(GLOB olvik_guides CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/*.md")

set(DOXYGEN_OUTPUT_DIRECTORY "${PROJECT_SOURCE_DIR}/build/docs")
set(DOXYGEN_PROJECT_NAME "Olvik 3D viewer")
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE README.md)
set(DOXYGEN_IMAGE_PATH "${PROJECT_SOURCE_DIR}/docs/images")
set(DOXYGEN_STRIP_FROM_PATH "${PROJECT_SOURCE_DIR}")
# What a signature says by itself stays without a comment.
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_WARN_IF_INCOMPLETE_DOC NO)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_HIDE_SCOPE_NAMES YES)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED OLVIK3DVIEWER_EXPORT= OLVIKSETTINGS_EXPORT= Q_OBJECT=
    "Q_DECLARE_METATYPE(x)=" "vtkTypeMacro(x,y)=")
doxygen_add_docs(docs
    "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    "${PROJECT_SOURCE_DIR}/SECURITY.md" ${olvik_guides}
    ${olvik_documented_headers}
    COMMENT "Writing the API reference")
