# Cross build for Windows with Debian's MinGW-w64. KOLM_WINDOWS_QT, a cache or
# environment variable, names the folder of a Qt for it (the one that holds
# bin/, lib/, plugins/).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

# Threads as C++ means them need the posix variant of the compiler.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(kolm_windows_qt "$ENV{KOLM_WINDOWS_QT}")
if(NOT kolm_windows_qt)
  set(kolm_windows_qt "${CMAKE_CURRENT_LIST_DIR}/../build/windows-qt/qt5-mingw")
endif()
set(KOLM_WINDOWS_QT "${kolm_windows_qt}" CACHE PATH "Qt for MinGW-w64")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KOLM_WINDOWS_QT)
get_filename_component(kolm_windows_qt "${KOLM_WINDOWS_QT}" ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH "${kolm_windows_qt}" /usr/x86_64-w64-mingw32)
set(CMAKE_PREFIX_PATH "${kolm_windows_qt}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
