# Programs for Windows, made on Linux by the cross compiler with threads of its own kind.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(compiler x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${compiler}-gcc-posix)
set(CMAKE_CXX_COMPILER ${compiler}-g++-posix)
set(CMAKE_RC_COMPILER ${compiler}-windres)
# The libraries that were built for it: packaging/windows/build makes them.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELMOOR_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH /usr/${compiler} ${VELMOOR_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The time of linking would be in each program, and no two builds would be equal.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,--no-insert-timestamp")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-Wl,--no-insert-timestamp")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-Wl,--no-insert-timestamp")
