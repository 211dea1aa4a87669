# Stands in for cmake/embed_files.cmake in the copies: the unit that it writes reads FILES when the program starts, so
# that a mutated script needs no build.
#   cmake "-DFILES=a;b" -DOUTPUT=unit.cpp -DHEADER=scripts.h -DTYPE=EmbeddedFile -DTABLE=embedded_files -P read_scripts.cmake
set(texts "")
set(rows "")
set(number 0)
foreach(file IN LISTS FILES)
  get_filename_component(name "${file}" NAME)
  string(APPEND texts "const std::string file_${number} = contents(\"${file}\");\n")
  string(APPEND rows "    {\"${name}\", file_${number}.c_str(), file_${number}.size()},\n")
  math(EXPR number "${number} + 1")
endforeach()

file(WRITE "${OUTPUT}" "// The scripts as they are when the program starts. Made by read_scripts.cmake.
#include <fstream>
#include <iterator>
#include <string>

#include \"${HEADER}\"

namespace {

std::string contents(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

${texts}
}  // namespace

const ${TYPE} ${TABLE}[] = {
${rows}    {nullptr, nullptr, 0},
};
")
