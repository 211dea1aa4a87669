# What plug-ins are built against, for find_package(aegp):
#   aegp::aegp           the declarations of the interface
#   aegp::suite_handler  the class AEGP_SuiteHandler, and the declarations with it
#   add_aegp_plugin(<target> <source>...)  makes the module <target>.so, which exports its entry point alone
get_filename_component(prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
if(NOT TARGET aegp::aegp)
  add_library(aegp::aegp INTERFACE IMPORTED)
  set_target_properties(aegp::aegp PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${prefix}/include/aegp;${prefix}/include/aegp/SP")
  add_library(aegp::suite_handler STATIC IMPORTED)
  set_target_properties(aegp::suite_handler PROPERTIES
    IMPORTED_LOCATION "${prefix}/lib/libaegp_suite_handler.a" INTERFACE_LINK_LIBRARIES aegp::aegp)
endif()

function(add_aegp_plugin target)
  add_library(${target} MODULE ${ARGN})
  target_link_libraries(${target} PRIVATE aegp::suite_handler)
  set_target_properties(${target} PROPERTIES PREFIX "" SUFFIX ".so" C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
endfunction()
