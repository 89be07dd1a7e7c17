# Installs the built package into a scratch prefix, then configures, builds and runs a tiny
# consumer project that finds it with find_package(quvmathpack CONFIG REQUIRED).
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
message(STATUS "consumer built and ran against ${prefix}")
