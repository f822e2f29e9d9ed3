# Tests that start the real program on a simulated PC.

if(KOLM_SANITIZE)
  set(slow_program KOLM_SLOW_PROGRAM)
  set(time_limit 900)
  set(window_limit 1500)
else()
  set(slow_program)
  set(time_limit 180)
  set(window_limit 300)
endif()

# program_test(name [CLOUD] ...): the other words are kolm_test's.
function(program_test name)
  cmake_parse_arguments(arg "CLOUD" "TIMEOUT;QPA" "SOURCES;DEFINITIONS;DEPENDS;WITH" ${ARGN})
  if(arg_CLOUD)
    list(APPEND arg_SOURCES "${PROJECT_SOURCE_DIR}/tests/cloud/cloud_peer.cpp")
    list(APPEND arg_DEFINITIONS CLOUD_SIM="$<TARGET_FILE:cloud-sim>")
    list(APPEND arg_DEPENDS cloud-sim)
  endif()
  kolm_test(${name}
    SOURCES ${name}.cpp "${PROJECT_SOURCE_DIR}/tests/e2e/program.cpp" ${arg_SOURCES}
    LINK kolm_base Qt5::Gui Qt5::Network
    LABELS e2e
    NEEDS simpc
    LOCK control_port
    DEFINITIONS
      PROGRAM="$<TARGET_FILE:KOLM_Streaming_Assistant>"
      ADB="$<TARGET_FILE:adb-sim>"
      SEED="$<TARGET_FILE:simpc-seed>"
      ${slow_program}
      ${arg_DEFINITIONS}
    DEPENDS KOLM_Streaming_Assistant simpc-seed streaming-server-sim adb-sim ${arg_DEPENDS}
    TIMEOUT ${arg_TIMEOUT}
    WITH ${arg_WITH}
    QPA ${arg_QPA})
endfunction()
