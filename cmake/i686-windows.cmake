# Toolchain file: 32-bit Windows with MinGW-w64.
#
# The win32 thread model: the library starts no thread, and the posix model would pull the imports of a
# pthread emulation into it.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-win32)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-win32)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

# The libraries that scripts/windows-libraries has built, and where that puts them.
set(librariesFolder "$ENV{QUILLPRESS_WINDOWS_LIBRARIES}")
if(NOT librariesFolder)
  set(cacheFolder "$ENV{XDG_CACHE_HOME}")
  if(NOT cacheFolder)
    set(cacheFolder "$ENV{HOME}/.cache")
  endif()
  set(librariesFolder ${cacheFolder}/quillpress/windows-libraries)
endif()
set(CMAKE_FIND_ROOT_PATH ${librariesFolder} /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The x87 unit would round in other places than a 64-bit build does; with SSE2 both give the same page text.
# Callers built by other compilers keep the stack aligned to 4 bytes only, which SSE2 code has to put right.
set(arithmetic "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_C_FLAGS_INIT "${arithmetic}")
set(CMAKE_CXX_FLAGS_INIT "${arithmetic}")

# Nothing but Windows' own libraries may be needed on the target machine.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
