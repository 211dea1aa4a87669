# Fails unless MODULE exports EntryPointFunc and nothing else.
#   cmake -DNM=nm -DMODULE=Exflate.so -P check_exports.cmake
execute_process(COMMAND "${NM}" -D --defined-only "${MODULE}" OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "[0-9a-f]+ " "" symbols "${listing}")
string(STRIP "${symbols}" symbols)
if(NOT symbols STREQUAL "T EntryPointFunc")
  message(FATAL_ERROR "The module exports:\n${symbols}\ninstead of EntryPointFunc alone")
endif()
