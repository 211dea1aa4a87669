# Language level, warnings, sanitizers and coverage: every compiler flag of the project is set in this file.

option(EXFLATE_WERROR "Treat warnings as errors" OFF)
option(EXFLATE_COVERAGE "Instrument for gcov" OFF)
option(EXFLATE_FUZZ "Instrument for libFuzzer and check the standard library's preconditions; needs Clang" OFF)
set(EXFLATE_SANITIZE "" CACHE STRING "Value for -fsanitize=, empty for none")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(NOT EMSCRIPTEN)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(MINGW)
  # Nothing of the compiler's own has to be on the machine that loads the result. The same sources give the same bytes: the
  # linker would put the time into them, and an address made from the name of the output file.
  add_link_options(-static -s "LINKER:--no-insert-timestamp" "LINKER:--disable-auto-image-base")
endif()

if(EMSCRIPTEN)
  # The program travels over networks: more than this makes it twice as large and no faster.
  set(CMAKE_C_FLAGS_RELEASE "-O2 -DNDEBUG")
  set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
  # Exceptions as the engines know them since 2021; JavaScript's would cost more than twice the time.
  add_compile_options(-fwasm-exceptions)
  add_link_options(-fwasm-exceptions)
  # Of all that the machine has for itself only these headers are good for another one.
  include_directories(SYSTEM "${EXFLATE_PORTABLE_HEADERS}")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion)
# GCC 12 sees overlaps in optimised string concatenations where there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(EMSCRIPTEN)
  # A class may have members that the twin of its methods has no use for.
  add_compile_options(-Wno-unused-private-field)
endif()
if(EXFLATE_WERROR)
  add_compile_options(-Werror)
endif()

if(EXFLATE_SANITIZE)
  add_compile_options(-fsanitize=${EXFLATE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${EXFLATE_SANITIZE})
endif()

if(EXFLATE_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(EXFLATE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

# Gives the target the fuzzer's main program.
function(link_with_fuzzer target)
  target_link_options(${target} PRIVATE -fsanitize=fuzzer)
endfunction()

# For code that is not ours: sanitizers stay, but it does not lead the fuzzer.
function(leave_out_of_coverage target)
  if(EXFLATE_FUZZ)
    target_compile_options(${target} PRIVATE -fno-sanitize=fuzzer-no-link)
  endif()
endfunction()

# For what works little: small code instead of fast code.
function(compile_for_size)
  foreach(target IN LISTS ARGN)
    target_compile_options(${target} PRIVATE -Oz)
  endforeach()
endfunction()

# Test programs run once: optimising them takes far longer than they run.
set(EXFLATE_TEST_OPTIONS -O0)
