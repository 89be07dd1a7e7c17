# Installs the built package into a scratch prefix, then configures, builds and runs a tiny
# consumer project that finds it with find_package(quvmathpack CONFIG REQUIRED). When the
# quvmath program was built, also checks the installed program: it runs from another
# directory, finds the sample data installed beside it, and carries the RPATH that lets it
# find a shared library (proved by running it when the library is shared).
set(prefix "${BUILD_DIR}/consumer-check/prefix")
set(consumer_build "${BUILD_DIR}/consumer-check/build")
file(REMOVE_RECURSE "${BUILD_DIR}/consumer-check")

if(NOT BUILD_TYPE)
  set(BUILD_TYPE Release)
endif()

function(run_step)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "step failed (${rc}): ${ARGV}\n${out}\n${err}")
  endif()
endfunction()

run_step(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}" --config ${BUILD_TYPE})
run_step(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${consumer_build}"
  -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE})
run_step(${CMAKE_COMMAND} --build "${consumer_build}")
run_step("${consumer_build}/consumer")

set(program "${prefix}/bin/quvmath")
if(EXISTS "${program}")
  set(sample "${prefix}/share/quvmathpack/sample.asc")
  if(NOT EXISTS "${sample}")
    message(FATAL_ERROR "the sample data is not installed: ${sample}")
  endif()
  execute_process(COMMAND "${program}" stats WORKING_DIRECTORY "${consumer_build}"
    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "the installed quvmath stats failed (${rc}):\n${out}\n${err}")
  endif()
  # The first line names the file read: the installed copy, not the source tree's.
  string(REGEX MATCH "^[^\n]*" first_line "${out}")
  file(REAL_PATH "${sample}" sample_real)
  file(REAL_PATH "${first_line}" read_real)
  if(NOT read_real STREQUAL sample_real)
    message(FATAL_ERROR "the installed quvmath read ${first_line}, not ${sample}")
  endif()
  find_program(READELF readelf)
  if(READELF)
    execute_process(COMMAND "${READELF}" -d "${program}" OUTPUT_VARIABLE dynamic)
    if(NOT dynamic MATCHES "\\$ORIGIN/\\.\\./lib")
      message(FATAL_ERROR "the installed quvmath has no RPATH to its library:\n${dynamic}")
    endif()
  endif()
endif()
message(STATUS "consumer built and ran against ${prefix}")
