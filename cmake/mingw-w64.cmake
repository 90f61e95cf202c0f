# Builds for 64-bit Windows with mingw-w64 as Debian packages it, with the posix threads that C++'s
# standard library needs there. ZEBEK_WINDOWS_LIBRARIES is the folder in which scripts/build-windows
# installed the static libraries.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Without this the compiler assumes which registers an inline function leaves alone, though the linker
# may take another file's copy of it, which was compiled with other options and uses more.
set(CMAKE_CXX_FLAGS_INIT "-fno-ipa-ra")
# The time of the build is not in the program, so that the same sources give the same bytes.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s -Wl,--no-insert-timestamp")

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZEBEK_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH ${ZEBEK_WINDOWS_LIBRARIES} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
