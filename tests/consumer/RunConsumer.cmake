# Installs the library into a folder of the test, builds the consumer's project and the minimal example
# against it, runs all hosts. Expects BUILD_DIR, WORK_DIR, SOURCE_DIR, EXAMPLE_DIR and BUILD_TYPE.

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
        "-DCMAKE_PREFIX_PATH=${prefix}" "-DVTK_DIR=${VTK_DIR}" "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
    run(${CMAKE_COMMAND} --build "${WORK_DIR}/${build}")
endforeach()

set(ENV{XDG_CONFIG_HOME} "${WORK_DIR}/config")
set(ENV{XDG_DATA_HOME} "${WORK_DIR}/data")
set(ENV{QT_LOGGING_RULES} "default.debug=false")
file(GLOB libraries LIST_DIRECTORIES true "${prefix}/lib*" "${prefix}/lib*/*-linux-gnu")
list(JOIN libraries ":" library_path)
set(ENV{LD_LIBRARY_PATH} "${library_path}:$ENV{LD_LIBRARY_PATH}")
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
