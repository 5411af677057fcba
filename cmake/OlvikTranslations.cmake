# Translations of the library's own texts: a template from the sources, and one .qm for each language, both
# compiled into the library as :/olvik3dviewer/translations and installed. Without Qt's Linguist tools the
# library is built in English only.
#
#   translations         what the default build makes: the template and the .qm files
#   update_translations  brings new and changed source texts into translations/*.ts, to be translated
set(olvik_languages de)

find_package(${OLVIK_QT}LinguistTools ${OLVIK_QT_VERSION} QUIET)
if(NOT ${OLVIK_QT}LinguistTools_FOUND)
    message(STATUS "${OLVIK_QT}LinguistTools not found: the viewer speaks English only")
    return()
endif()

set(olvik_translated_folders viewer render gradient)
set(olvik_translations "${PROJECT_BINARY_DIR}/translations")
set(olvik_template "${olvik_translations}/olvik3dviewer.ts")
list(TRANSFORM olvik_languages REPLACE "(.+)" "translations/olvik3dviewer_\\1.ts" OUTPUT_VARIABLE olvik_ts)
set_source_files_properties(${olvik_ts} PROPERTIES OUTPUT_LOCATION "${olvik_translations}")
qt_add_translation(olvik_qm ${olvik_ts} OPTIONS -silent)

# A host that adds this project to its own has targets, and texts, of its own.
if(PROJECT_IS_TOP_LEVEL)
    get_target_property(olvik_sources Olvik3DViewerWidget SOURCES)
    add_custom_command(OUTPUT "${olvik_template}"
        COMMAND ${OLVIK_QT}::lupdate -silent -no-obsolete ${olvik_translated_folders} -ts "${olvik_template}"
        DEPENDS ${olvik_sources}
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        VERBATIM)
    add_custom_target(translations ALL DEPENDS "${olvik_template}" ${olvik_qm})
    add_custom_target(update_translations
        COMMAND ${OLVIK_QT}::lupdate -no-obsolete -locations none ${olvik_translated_folders} -ts ${olvik_ts}
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        VERBATIM)
endif()

list(TRANSFORM olvik_languages REPLACE "(.+)" "<file>olvik3dviewer_\\1.qm</file>" OUTPUT_VARIABLE files)
list(JOIN files "" files)
file(CONFIGURE OUTPUT "${olvik_translations}/translations.qrc" CONTENT
    "<RCC><qresource prefix=\"/olvik3dviewer/translations\">${files}</qresource></RCC>\n")
qt_add_resources(olvik_resource "${olvik_translations}/translations.qrc")
set_source_files_properties(${olvik_resource} PROPERTIES SKIP_AUTOGEN ON)
target_sources(Olvik3DViewerWidget PRIVATE ${olvik_resource})

if(OLVIK_INSTALL)
    install(FILES ${olvik_qm}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/olvik3dviewer${OLVIK_SUFFIX}/translations
        COMPONENT runtime)
endif()
