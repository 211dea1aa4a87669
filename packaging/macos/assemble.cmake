# Puts the bundle together, anew each time, with what tells people about it beside it.
#   cmake -DNAME=Exflate -DPARTS=folder -DOUTPUT=folder [-DMODULE=file] [-DCODESIGN=program] -P assemble.cmake
# PARTS holds Info.plist, PkgInfo and NAME.rsrc. Without MODULE the bundle has no code, and a note beside it says so. Signing
# comes last: nothing in the bundle may change after it.
cmake_minimum_required(VERSION 3.24)
set(bundle "${OUTPUT}/${NAME}.plugin")
file(REMOVE_RECURSE "${OUTPUT}")
file(COPY "${PARTS}/Info.plist" "${PARTS}/PkgInfo" DESTINATION "${bundle}/Contents")
file(COPY "${PARTS}/${NAME}.rsrc" DESTINATION "${bundle}/Contents/Resources")
file(COPY "${CMAKE_CURRENT_LIST_DIR}/INSTALL.txt" DESTINATION "${OUTPUT}")
if(MODULE)
  file(MAKE_DIRECTORY "${bundle}/Contents/MacOS")
  file(COPY_FILE "${MODULE}" "${bundle}/Contents/MacOS/${NAME}")
else()
  file(COPY "${CMAKE_CURRENT_LIST_DIR}/NOT-BUILT-HERE.txt" DESTINATION "${OUTPUT}")
endif()
if(CODESIGN)
  execute_process(COMMAND "${CODESIGN}" --force --sign - "${bundle}" COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${CODESIGN}" --verify --strict "${bundle}" COMMAND_ERROR_IS_FATAL ANY)
endif()
