# Compiles the units that are built for macOS with the C++ library that macOS has, and with stand-in declarations of Core
# Foundation.
#   cmake -DCLANGXX=clang++ "-DUNITS=a.cpp;b.cpp" "-DINCLUDES=folder;..." -P check_other_library.cmake
cmake_minimum_required(VERSION 3.24)
list(TRANSFORM INCLUDES PREPEND "-I")
foreach(unit IN LISTS UNITS)
  execute_process(
    COMMAND "${CLANGXX}" -stdlib=libc++ -std=c++20 -fsyntax-only -DJSMN_STATIC -w ${INCLUDES} "${unit}"
    RESULT_VARIABLE code ERROR_VARIABLE errors)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${unit} does not compile with libc++:\n${errors}")
  endif()
endforeach()
