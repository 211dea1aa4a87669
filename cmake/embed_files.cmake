# Writes a C++ unit that carries the bytes of FILES, each followed by a zero byte, as rows {name, bytes, size} of TABLE, an
# array of TYPE that HEADER declares. The last row's name is null.
#   cmake "-DFILES=a;b" -DOUTPUT=unit.cpp -DHEADER=scripts.h -DTYPE=EmbeddedFile -DTABLE=embedded_files -P embed_files.cmake
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

file(WRITE "${OUTPUT}" "// Embedded files. Made by embed_files.cmake.
#include \"${HEADER}\"

namespace {

${arrays}
}  // namespace

const ${TYPE} ${TABLE}[] = {
${rows}    {nullptr, nullptr, 0},
};
")
