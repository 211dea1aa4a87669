# zlib and libzip for WebAssembly, from the sources of the very versions that the native build has from Debian: only the same
# library packs to the same bytes. `tools/setup web` puts them into build/sources.
#   ZLIB::ZLIB, PkgConfig::LIBZIP
file(GLOB zlib_folder "${PROJECT_SOURCE_DIR}/build/sources/zlib-*")
file(GLOB libzip_folder "${PROJECT_SOURCE_DIR}/build/sources/libzip-*")
if(NOT EXISTS "${zlib_folder}/zlib.h" OR NOT EXISTS "${libzip_folder}/lib/zip.h")
  message(FATAL_ERROR "The sources of zlib and libzip are not in build/sources: run tools/setup web")
endif()

file(GLOB zlib_sources "${zlib_folder}/*.c")
add_library(zlib STATIC ${zlib_sources})
target_include_directories(zlib SYSTEM PUBLIC "${zlib_folder}")
target_compile_options(zlib PRIVATE -w)
add_library(ZLIB::ZLIB ALIAS zlib)

# libzip's own build would ask the compiler a hundred questions, two minutes long; these are the answers.
set(zip_folder "${CMAKE_CURRENT_BINARY_DIR}/libzip")
foreach(fact FILENO FSEEKO FTELLO LOCALTIME_R NULLABLE SNPRINTF STRCASECMP STRDUP STRTOLL STRTOULL STDBOOL_H STRINGS_H UNISTD_H)
  set(HAVE_${fact} 1)
endforeach()
set(SIZEOF_OFF_T 8)
set(SIZEOF_SIZE_T 4)
set(LIBZIP_TYPES_INCLUDE "#include <inttypes.h>")
foreach(bits 8 16 32 64)
  set(ZIP_INT${bits}_T int${bits}_t)
  set(ZIP_UINT${bits}_T uint${bits}_t)
endforeach()
configure_file("${libzip_folder}/cmake-config.h.in" "${zip_folder}/config.h")
configure_file("${libzip_folder}/cmake-zipconf.h.in" "${zip_folder}/zipconf.h")

# The sentences of its errors stand as comments in its header.
file(STRINGS "${libzip_folder}/lib/zip.h" errors REGEX "^#define ZIP_ER_[A-Z_]+ [0-9]+")
set(sentences "")
set(kinds "")
foreach(error IN LISTS errors)
  string(REGEX MATCH "/\\* ([NSZ]) ([^*]*[^* ]) *\\*/" found "${error}")
  string(APPEND kinds "    ZIP_ET_${CMAKE_MATCH_1}_,\n")
  string(APPEND sentences "    \"${CMAKE_MATCH_2}\",\n")
endforeach()
string(REPLACE "ZIP_ET_N_" "ZIP_ET_NONE" kinds "${kinds}")
string(REPLACE "ZIP_ET_S_" "ZIP_ET_SYS" kinds "${kinds}")
string(REPLACE "ZIP_ET_Z_" "ZIP_ET_ZLIB" kinds "${kinds}")
file(CONFIGURE OUTPUT "${zip_folder}/zip_err_str.c" CONTENT "#include \"zipint.h\"
const char* const _zip_err_str[] = {
@sentences@};
const int _zip_nerr_str = sizeof(_zip_err_str) / sizeof(_zip_err_str[0]);
const int _zip_err_type[] = {
@kinds@};
" @ONLY)

file(GLOB zip_sources "${libzip_folder}/lib/zip_*.c")
list(FILTER zip_sources EXCLUDE REGEX "win32|crypto|winzip|bzip2|_xz|uwp")
add_library(zip STATIC ${zip_sources} "${zip_folder}/zip_err_str.c")
target_include_directories(zip SYSTEM PUBLIC "${libzip_folder}/lib" "${zip_folder}")
target_compile_options(zip PRIVATE -w)
target_compile_definitions(zip PRIVATE HAVE_CONFIG_H)
target_link_libraries(zip PUBLIC zlib)
add_library(PkgConfig::LIBZIP ALIAS zip)
