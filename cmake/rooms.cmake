# Helpers that make targets. A room is a folder with include/<room>/ for everybody, src/ for itself, and a target of the
# room's name; what it may include is exactly what it links. The links given here are the only place where the arrows between
# rooms are written down: write_rooms() passes them on to the tests that guard them.

# add_room(<name> SOURCES <file>... [USES <public target>...] [USES_PRIVATELY <target>...])
# Makes the static library <name>. USES are those whose headers its own public headers include; whoever uses this room sees
# them too. Each header under include/ is compiled alone when the verify target runs.
function(add_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;USES;USES_PRIVATELY" ${ARGN})
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/include/*.h")
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}/include" FILES ${headers})
  target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${ROOM_USES} PRIVATE ${ROOM_USES_PRIVATELY})
  set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  list_room(${name} USES ${ROOM_USES} USES_PRIVATELY ${ROOM_USES_PRIVATELY})
endfunction()

# list_room(<target> [USES <target>...] [USES_PRIVATELY <target>...])
# Lists the current folder as a room whose target was made in another way.
function(list_room target)
  cmake_parse_arguments(ROOM "" "" "USES;USES_PRIVATELY" ${ARGN})
  list(JOIN ROOM_USES "," uses)
  list(JOIN ROOM_USES_PRIVATELY "," uses_privately)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE folder)
  set_property(GLOBAL APPEND_STRING PROPERTY EXFLATE_ROOMS
    "${target}|${folder}|${uses}|${uses_privately}|$<JOIN:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>,:>\n")
endfunction()

# Writes the rooms listed so far into <build>/rooms.txt, a line each: target|folder|uses|uses privately|what it searches for headers.
function(write_rooms)
  get_property(rooms GLOBAL PROPERTY EXFLATE_ROOMS)
  file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/rooms.txt" CONTENT "${rooms}")
endfunction()

# add_room_test(<name> SOURCES <file>... USES <target>...)
# Makes the test program <name> from GoogleTest files and registers each of its tests with CTest.
function(add_room_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_USES} GTest::gmock GTest::gtest_main)
  target_compile_options(${name} PRIVATE ${EXFLATE_TEST_OPTIONS})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
