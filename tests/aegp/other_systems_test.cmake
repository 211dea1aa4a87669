# Compiles the layout checks for the systems that the host itself runs on.
cmake_minimum_required(VERSION 3.24)

if(NOT CLANGXX)
  message("skipped: no clang++ on this machine")
  return()
endif()

foreach(target arm64-apple-macos11 x86_64-apple-macos11 x86_64-pc-windows-msvc aarch64-pc-windows-msvc)
  foreach(unit layout_records layout_suites layout_values layout_edition)
    execute_process(
      COMMAND "${CLANGXX}" --target=${target} -std=c++20 -ffreestanding -nostdlibinc -fsyntax-only -Wall -Wextra -Wpedantic
        -Werror -I "${ROOM}/include" -I "${ROOM}/include/SP" "${ROOM}/src/${unit}.cpp"
      RESULT_VARIABLE code ERROR_VARIABLE errors)
    if(NOT code EQUAL 0)
      message(FATAL_ERROR "${unit} does not hold for ${target}:\n${errors}")
    endif()
  endforeach()
endforeach()
