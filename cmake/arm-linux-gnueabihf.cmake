# 32-bit ARM, hard-float, Linux: Debian's cross compiler, and libraries unpacked by scripts/sysroot.sh.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_INSTALL_LIBDIR lib/arm-linux-gnueabihf CACHE PATH "Where libraries go")
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)

set(sysroot ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-armhf)
cmake_path(NORMAL_PATH sysroot)
list(APPEND CMAKE_FIND_ROOT_PATH ${sysroot})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,-rpath-link,${sysroot}/usr/lib/arm-linux-gnueabihf)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${sysroot})
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # notes about a change of the C++ ABI in GCC 7 only
