# Makes a stand-in kit of our own headers, marked by a macro, and builds the room with AEGP_SDK_DIR set to it.
cmake_minimum_required(VERSION 3.24)

set(project "${CMAKE_CURRENT_LIST_DIR}/kit_switch")
set(kit "${WORK}/kit")
set(code_of_the_kit 1999)

function(configure build sdk_dir result output)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${project}" -B "${build}" -G "${GENERATOR}" -DCMAKE_CXX_COMPILER=${COMPILER}
      -DROOT=${ROOT} -DEXFLATE_WERROR=ON -DAEGP_SDK_DIR=${sdk_dir}
    RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  string(REGEX REPLACE "[ \n]+" " " text "${text}")
  set(${result} "${code}" PARENT_SCOPE)
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(build_all build result output)
  execute_process(COMMAND "${CMAKE_COMMAND}" --build "${build}"
    RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  set(${result} "${code}" PARENT_SCOPE)
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(expect_to_run program)
  execute_process(COMMAND "${program}" RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${program} ended with ${code}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
file(COPY "${ROOT}/aegp/include/" DESTINATION "${kit}/Headers")
file(MAKE_DIRECTORY "${kit}/Util")
file(RENAME "${kit}/Headers/AEGP_SuiteHandler.h" "${kit}/Util/AEGP_SuiteHandler.h")
file(RENAME "${kit}/Headers/entry.h" "${kit}/Util/entry.h")
file(COPY "${ROOT}/aegp/src/AEGP_SuiteHandler.cpp" DESTINATION "${kit}/Util")
file(APPEND "${kit}/Headers/AEConfig.h" "#define STAND_IN_KIT ${code_of_the_kit}\n")
# Its conversion to a narrower type is a warning to us; the kit's units need not be free of those.
file(WRITE "${kit}/Util/MissingSuiteError.cpp"
  "#include \"AEGP_SuiteHandler.h\"\nvoid AEGP_SuiteHandler::MissingSuiteError() const { double code = STAND_IN_KIT; A_Err narrowed = code; throw narrowed; }\n")

# With the kit.
configure("${WORK}/with" "${kit}" code output)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the kit was not accepted:\n${output}")
endif()
build_all("${WORK}/with" code output)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the room does not build against the kit:\n${output}")
endif()
expect_to_run("${WORK}/with/plugin_side")
expect_to_run("${WORK}/with/host_side")

# With a kit that lays a suite out differently.
file(READ "${kit}/Headers/aegp_suites/layer_suite_5.h" text)
string(REPLACE "typedef struct AEGP_LayerSuite5 {" "typedef struct AEGP_LayerSuite5 { void (*AEGP_Extra)(void);" text "${text}")
file(WRITE "${kit}/Headers/aegp_suites/layer_suite_5.h" "${text}")
build_all("${WORK}/with" code output)
if(code EQUAL 0 OR NOT output MATCHES "AEGP_LayerSuite5 is not laid out as the host's")
  message(FATAL_ERROR "a kit with another Layer Suite 5 was not refused by the layout checks:\n${output}")
endif()

# With folders that are no kit.
file(MAKE_DIRECTORY "${WORK}/empty")
configure("${WORK}/without" "${WORK}/empty" code output)
if(code EQUAL 0 OR NOT output MATCHES "AEGP_SDK_DIR is '[^']*/empty', but Headers/AE_GeneralPlug.h is not in that folder")
  message(FATAL_ERROR "an empty folder was not refused in a clear sentence:\n${output}")
endif()
file(REMOVE "${kit}/Util/MissingSuiteError.cpp")
configure("${WORK}/half" "${kit}" code output)
if(code EQUAL 0 OR NOT output MATCHES "but Util/MissingSuiteError.cpp is not in that folder")
  message(FATAL_ERROR "half a kit was not refused in a clear sentence:\n${output}")
endif()
