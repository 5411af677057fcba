# Installs the library into a folder of the test, builds the consumer's project and the minimal example
# against it, runs all hosts, and asks for another VTK. Expects BUILD_DIR, WORK_DIR, SOURCE_DIR, EXAMPLE_DIR,
# BUILD_TYPE, VTK_DIR, VTK_RELEASE and VTK_QT_VERSION.

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output
        RESULT_VARIABLE result TIMEOUT 120)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "'${ARGN}' ended with ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/elsewhere")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${WORK_DIR}/prefix")
# The package must not remember where it was installed first.
file(RENAME "${WORK_DIR}/prefix" "${prefix}")
foreach(project "SOURCE_DIR=build" "EXAMPLE_DIR=minimal")
    string(REPLACE "=" ";" project "${project}")
    list(GET project 0 source)
    list(GET project 1 build)
    run(${CMAKE_COMMAND} -G Ninja -S "${${source}}" -B "${WORK_DIR}/${build}"
        "-DCMAKE_PREFIX_PATH=${prefix}" "-DVTK_DIR=${VTK_DIR}" "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}"
        # With it a host names only the libraries that it uses itself.
        -DCMAKE_EXE_LINKER_FLAGS=-Wl,--as-needed)
    run(${CMAKE_COMMAND} --build "${WORK_DIR}/${build}")
endforeach()

set(ENV{XDG_CONFIG_HOME} "${WORK_DIR}/config")
set(ENV{XDG_DATA_HOME} "${WORK_DIR}/data")
set(ENV{QT_LOGGING_RULES} "default.debug=false")
foreach(case "consumer=shown\n" "facade_consumer=closed consumer\n")
    string(REPLACE "=" ";" case "${case}")
    list(GET case 0 program)
    list(GET case 1 expected)
    run("${WORK_DIR}/build/${program}")
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "${program} printed '${output}' instead of '${expected}'")
    endif()
endforeach()

# Nobody closes its window: it has to be there, and silent, when the time is up.
execute_process(COMMAND "${WORK_DIR}/minimal/minimal" OUTPUT_VARIABLE output ERROR_VARIABLE output
    RESULT_VARIABLE result TIMEOUT 4)
if(NOT result MATCHES "timeout" OR output)
    message(FATAL_ERROR "The minimal example ended with '${result}' and printed '${output}'")
endif()

# Nothing but a sentence keeps a host from a VTK, or a Qt, that would crash it.
math(EXPR other_qt "11 - ${VTK_QT_VERSION}")
foreach(found "42.0 for Qt ${VTK_QT_VERSION}" "${VTK_RELEASE} for Qt ${other_qt}")
    string(REGEX MATCHALL "[0-9]+" numbers "${found}")
    list(GET numbers 0 major)
    list(GET numbers 1 minor)
    list(GET numbers 2 qt)
    file(WRITE "${WORK_DIR}/vtk/vtk-config-version.cmake" "set(PACKAGE_VERSION_COMPATIBLE TRUE)")
    file(WRITE "${WORK_DIR}/vtk/vtk-config.cmake"
        "set(VTK_MAJOR_VERSION ${major})\nset(VTK_MINOR_VERSION ${minor})\nset(VTK_QT_VERSION ${qt})\n")
    execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S "${EXAMPLE_DIR}" -B "${WORK_DIR}/refused"
        "-DCMAKE_PREFIX_PATH=${prefix}" "-DVTK_DIR=${WORK_DIR}/vtk" ERROR_VARIABLE output OUTPUT_QUIET)
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
    if(NOT output MATCHES "holds VTK ${found}: ")
        message(FATAL_ERROR "VTK ${found} is not refused:\n${output}")
    endif()
endforeach()
