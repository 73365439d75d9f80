# Toolchain file for building for 64-bit Windows with the MinGW-w64 cross
# compiler (Debian's g++-mingw-w64-x86-64-posix). Programs are linked statically,
# so that they run without the compiler's DLLs beside them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(TAVRINO_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TAVRINO_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TAVRINO_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${TAVRINO_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${TAVRINO_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
