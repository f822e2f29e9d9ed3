# What CPack does with the folder that cmake --install has made of the program.
set(options)
if(CPACK_KOLM_SUPPLIES)
  list(APPEND options --supplies "${CPACK_KOLM_SUPPLIES}")
endif()
if(CPACK_KOLM_SIGNER)
  list(APPEND options --sign "${CPACK_KOLM_SIGNER}")
endif()
execute_process(
  COMMAND "${CPACK_KOLM_PYTHON}" "${CPACK_KOLM_SCRIPTS}/make_package.py"
    --stage "${CPACK_TEMPORARY_INSTALL_DIRECTORY}" --output "${CPACK_PACKAGE_DIRECTORY}"
    --version "${CPACK_PACKAGE_VERSION}" --qt "${CPACK_KOLM_QT}"
    --compiler "${CPACK_KOLM_COMPILER}" --tools "${CPACK_KOLM_TOOLS}"
    --contact "${CPACK_KOLM_CONTACT}" ${options}
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "There is no package: ${result}")
endif()
