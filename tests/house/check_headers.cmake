# Compiles each public header alone: cmake -DBUILD_DIR=... -P check_headers.cmake
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${BUILD_DIR}" --target all_verify_interface_header_sets
                RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "a public header does not compile alone")
endif()
