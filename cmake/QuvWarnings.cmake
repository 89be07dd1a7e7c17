# Warning flags shared by the library, the tools, the tests and the benchmarks.
function(quv_set_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
    # GCC 12 reports -Wrestrict on "literal" + std::string inside libstdc++ at -O2 and above
    # (a known compiler bug, fixed in GCC 13): a false positive in the standard headers, not in our
    # code, and it turns up wherever such a string is built. Only that release is spared.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12
       AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(QUV_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()
