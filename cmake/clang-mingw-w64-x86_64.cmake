# Cross toolchain: 64-bit Windows with clang (clang++ --target=x86_64-w64-mingw32), over the same
# mingw-w64 headers, C++ library and linker as cmake/mingw-w64-x86_64.cmake: the module's second
# compiler. clang does not find Debian's mingw-w64 GCC folder by itself (it is named "12-win32", not a
# version), so its C++ headers and libraries are named here. The win32 thread model's C++ library:
# the module uses no thread of its own, and this one needs no pthread library after it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_SYSROOT /usr/x86_64-w64-mingw32)
file(GLOB KIV_MINGW_GCC_FOLDERS LIST_DIRECTORIES true /usr/lib/gcc/x86_64-w64-mingw32/*-win32)
list(SORT KIV_MINGW_GCC_FOLDERS)
set(KIV_MINGW_GCC "")
if(KIV_MINGW_GCC_FOLDERS)
  list(POP_BACK KIV_MINGW_GCC_FOLDERS KIV_MINGW_GCC)  # the newest
endif()
if(NOT KIV_MINGW_GCC)
  message(FATAL_ERROR "no mingw-w64 GCC (win32) in /usr/lib/gcc/x86_64-w64-mingw32: tools/install-deps.sh installs it")
endif()
set(CMAKE_CXX_FLAGS_INIT "-nostdinc++ -isystem ${KIV_MINGW_GCC}/include/c++ -isystem ${KIV_MINGW_GCC}/include/c++/x86_64-w64-mingw32 -isystem ${KIV_MINGW_GCC}/include/c++/backward")
# (On the link line, the compile-only flags above and the C++ runtime flags of C programs are unused.)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L${KIV_MINGW_GCC} -Wno-unused-command-line-argument")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-L${KIV_MINGW_GCC} -Wno-unused-command-line-argument")
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
