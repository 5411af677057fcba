include(GenerateExportHeader)

set(olvik_warnings
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wsuggest-override $<$<BOOL:${OLVIK_WERROR}>:-Werror>)
# A host that adds this project to its own has a compiler, and a mind about warnings, that nobody tried here.
if(NOT PROJECT_IS_TOP_LEVEL)
    set(olvik_warnings "")
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    # In larger units than those of the presets, helpers of files may share names.
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
endif()

# Language level, warnings and sanitizers for every target of this project.
function(olvik_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        AUTOMOC ON
        AUTORCC ON)
    # TBB, which VTK's SMP headers pull in, has a member called emit: Qt's keywords stay off.
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
        # VTK 8.2's widgets are declared with them.
        $<$<VERSION_LESS:${VTK_VERSION},9>:signals=Q_SIGNALS;slots=Q_SLOTS>)
    # A processor that fuses a multiplication with an addition would give other colours.
    target_compile_options(${target} PRIVATE -ffp-contract=off ${olvik_warnings})
    if(OLVIK_SANITIZER)
        target_compile_options(${target} PRIVATE
            -fsanitize=${OLVIK_SANITIZER} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${OLVIK_SANITIZER})
        get_target_property(type ${target} TYPE)
        if(type STREQUAL EXECUTABLE)
            target_sources(${target} PRIVATE
                "${PROJECT_SOURCE_DIR}/tests/support/KeepLibrariesLoaded.cpp")
            # Its dlclose() takes the place of the system's, whose header another source may include.
            set_source_files_properties("${PROJECT_SOURCE_DIR}/tests/support/KeepLibrariesLoaded.cpp"
                TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
            if(OLVIK_SANITIZER MATCHES thread)
                target_sources(${target} PRIVATE
                    "${PROJECT_SOURCE_DIR}/tests/support/TeachQtLocks.cpp")
                # Qt's functions are replaced for the library, too.
                set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
                target_link_libraries(${target} PRIVATE ${OLVIK_QT}::Core)
            endif()
        endif()
    endif()
endfunction()

# olvik_add_library(<name> BASE_NAME <macro prefix> EXPORT_HEADER <file>)
# A shared library with hidden visibility and a generated export header. Sources and public headers are
# added by the folders that hold them.
function(olvik_add_library name)
    cmake_parse_arguments(arg "" "BASE_NAME;EXPORT_HEADER" "" ${ARGN})
    add_library(${name} SHARED)
    add_library(Olvik3DViewerWidget::${name} ALIAS ${name})
    olvik_target_defaults(${name})
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${name}${OLVIK_SUFFIX}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        VERIFY_INTERFACE_HEADER_SETS ON)
    if(NOT OLVIK_SANITIZER)
        target_link_options(${name} PRIVATE -Wl,--no-undefined)
    endif()
    set(generated "${PROJECT_BINARY_DIR}/generated/${name}")
    generate_export_header(${name} BASE_NAME ${arg_BASE_NAME}
        EXPORT_FILE_NAME "${generated}/${arg_EXPORT_HEADER}")
    # A set of its own: one set may not have base folders in the source and in the build tree.
    target_sources(${name} PUBLIC FILE_SET generated_headers TYPE HEADERS
        BASE_DIRS "${generated}" FILES "${generated}/${arg_EXPORT_HEADER}")
endfunction()

# olvik_add_sources(<target> [PUBLIC_HEADERS ...] [SOURCES ...]): one call in each source folder.
function(olvik_add_sources target)
    cmake_parse_arguments(arg "" "" "PUBLIC_HEADERS;SOURCES" ${ARGN})
    target_sources(${target}
        PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}" FILES ${arg_PUBLIC_HEADERS}
        PRIVATE ${arg_SOURCES})
endfunction()

# olvik_add_internals(<name> <source> ...): what the library does not export, for those that look inside: tests,
# fuzzers and benchmarks.
function(olvik_add_internals name)
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    add_library(${name} INTERFACE)
    target_sources(${name} INTERFACE ${ARGN})
    target_include_directories(${name} INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${name} INTERFACE ${OLVIK_QT}::Concurrent)
endfunction()
