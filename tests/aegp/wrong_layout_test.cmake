# Spoils one thing at a time in a copy of the headers or of the checks: each must stop the compiler with the right sentence.
cmake_minimum_required(VERSION 3.24)

function(fresh_copy)
  file(REMOVE_RECURSE "${WORK}")
  file(MAKE_DIRECTORY "${WORK}")
  file(COPY "${ROOM}/include" "${ROOM}/src" DESTINATION "${WORK}")
endfunction()

function(compile unit result errors)
  execute_process(
    COMMAND "${COMPILER}" -std=c++20 -fsyntax-only -I "${WORK}/include" -I "${WORK}/include/SP" "${WORK}/src/${unit}.cpp"
    RESULT_VARIABLE code ERROR_VARIABLE text)
  set(${result} "${code}" PARENT_SCOPE)
  set(${errors} "${text}" PARENT_SCOPE)
endfunction()

# must_stop(<unit> <file> <text in it> <spoilt text> <sentence of the compiler>)
function(must_stop unit file from to sentence)
  fresh_copy()
  file(READ "${WORK}/${file}" text)
  string(REPLACE "${from}" "${to}" spoilt "${text}")
  if(spoilt STREQUAL text)
    message(FATAL_ERROR "${file} does not hold '${from}': nothing was spoilt")
  endif()
  file(WRITE "${WORK}/${file}" "${spoilt}")
  compile(${unit} code errors)
  if(code EQUAL 0)
    message(FATAL_ERROR "${unit} still compiles with '${to}' in ${file}")
  endif()
  string(FIND "${errors}" "${sentence}" found)
  if(found EQUAL -1 OR NOT errors MATCHES "static.assert")
    message(FATAL_ERROR "${unit} fails with '${to}' in ${file}, but not for '${sentence}':\n${errors}")
  endif()
endfunction()

fresh_copy()
foreach(unit layout_records layout_suites layout_values layout_edition)
  compile(${unit} code errors)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${unit} does not compile unspoilt:\n${errors}")
  endif()
endforeach()

# The checks' own numbers.
must_stop(layout_records include/records.def "RECORD(AEGP_FootageInterp, 72, 8)" "RECORD(AEGP_FootageInterp, 71, 8)"
  "AEGP_FootageInterp is not laid out as the host's")
must_stop(layout_records include/records.def "FIELD_IF(AEGP_CollectionItemV2, stream_refH, 48," "FIELD_IF(AEGP_CollectionItemV2, stream_refH, 40,"
  "AEGP_CollectionItemV2::stream_refH is not where the host has it")
must_stop(layout_suites src/layout_suites.cpp "(LayerSuite, 7, 13, 48)" "(LayerSuite, 7, 13, 49)"
  "AEGP_LayerSuite7 is not laid out as the host's")
must_stop(layout_suites include/suites.def "SLOT(AEGP_StreamSuite4, 13," "SLOT(AEGP_StreamSuite4, 14,"
  "AEGP_StreamSuite4::AEGP_GetNewStreamValue is not where the host has it")

# Suites: a slot too many, two slots exchanged, a wrong integer, a wrong name.
must_stop(layout_suites include/aegp_suites/layer_suite_5.h "typedef struct AEGP_LayerSuite5 {"
  "typedef struct AEGP_LayerSuite5 { void (*AEGP_Extra)(void);" "AEGP_LayerSuite5 is not laid out as the host's")
must_stop(layout_suites include/aegp_suites/memory_suite_1.h "AEGP_LockMemHandle)(AEGP_MemHandle memH, void** ptr_to_ptr);\n    A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle memH)"
  "AEGP_UnlockMemHandle)(AEGP_MemHandle memH);\n    A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle memH, void** ptr_to_ptr)"
  "AEGP_MemorySuite1::AEGP_LockMemHandle is not where the host has it")
must_stop(layout_suites include/aegp_suites/names_and_versions.h "kAEGPLayerSuiteVersion5 11" "kAEGPLayerSuiteVersion5 5"
  "kAEGPLayerSuiteVersion5 does not have the host's value")
must_stop(layout_suites include/aegp_suites/names_and_versions.h "AEGP Proj Suite" "AEGP Project Suite"
  "kAEGPProjSuite is not the host's text")

# Types: width, sign, packing, order of fields.
must_stop(layout_records include/A.h "typedef A_char A_LegacyEnumType" "typedef A_long A_LegacyEnumType"
  "A_LegacyEnumType is not laid out as the host's")
must_stop(layout_records include/aegp_types/memory.h "typedef A_u_long AEGP_MemSize" "typedef A_long AEGP_MemSize"
  "AEGP_MemSize is not unsigned")
must_stop(layout_records include/FIEL_Public.h "#pragma pack(push, 2)" "#pragma pack(push, 4)"
  "FIEL_Label::type is not where the host has it")
must_stop(layout_records include/aegp_types/collection.h "AEGP_StreamRefH stream_refH;" "A_long extra; AEGP_StreamRefH stream_refH; "
  "AEGP_CollectionItemV2 is not laid out as the host's")

# Values.
must_stop(layout_values include/aegp_types/layer.h "AEGP_LayerFlag_LAYER_IS_3D = 1 << 11" "AEGP_LayerFlag_LAYER_IS_3D = 1 << 12"
  "AEGP_LayerFlag_LAYER_IS_3D does not have the host's value")
must_stop(layout_edition include/AE_Effect.h "PF_Xfer_DISSOLVE," "PF_Xfer_DISSOLVE = 7,"
  "PF_Xfer_DISSOLVE does not have the host's value")
