# Builds WebAssembly with Debian's emscripten, whose JavaScript parts look for their packages where Debian has them.
set(ENV{NODE_PATH} "/usr/share/nodejs")
find_file(EMSCRIPTEN_PLATFORM Emscripten.cmake PATHS /usr/share/emscripten/cmake/Modules/Platform "$ENV{EMSCRIPTEN}/cmake/Modules/Platform"
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
include("${EMSCRIPTEN_PLATFORM}")

# Libraries that are nothing but headers, taken out of a folder that also holds what belongs to this machine alone.
set(EXFLATE_PORTABLE_HEADERS "${CMAKE_BINARY_DIR}/portable_headers")
file(COPY /usr/include/rapidjson DESTINATION "${EXFLATE_PORTABLE_HEADERS}")
set(RAPIDJSON_INCLUDE_DIR "${EXFLATE_PORTABLE_HEADERS}")
set(JSMN_INCLUDE_DIR /usr/include)
