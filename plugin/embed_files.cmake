# Writes a C++ unit that carries the bytes of FILES, each followed by a zero byte, and their table embedded_files.
#   cmake "-DFILES=a;b" -DOUTPUT=unit.cpp -P embed_files.cmake
set(arrays "")
set(rows "")
set(number 0)
foreach(file IN LISTS FILES)
  get_filename_component(name "${file}" NAME)
  file(READ "${file}" bytes HEX)
  string(LENGTH "${bytes}" digits)
  math(EXPR size "${digits} / 2")
  string(REGEX REPLACE "(................................)" "\\1\n    " bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "const char file_${number}[] = {\n    ${bytes}'\\0'};\n")
  string(APPEND rows "    {\"${name}\", file_${number}, ${size}},\n")
  math(EXPR number "${number} + 1")
endforeach()

file(WRITE "${OUTPUT}" "// The embedded scripts. Made by embed_files.cmake.
#include \"embedded_jsx.h\"

namespace {

${arrays}
}  // namespace

const EmbeddedFile embedded_files[] = {
${rows}    {nullptr, nullptr, 0},
};
")
