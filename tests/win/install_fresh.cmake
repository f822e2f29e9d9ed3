# Installs BUILD into FOLDER, where nothing of an earlier version is left.
file(REMOVE_RECURSE "${FOLDER}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${FOLDER}"
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The program cannot be installed: ${result}")
endif()
