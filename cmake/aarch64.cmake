# Builds for 64-bit Arm on another machine: clang with the headers and libraries of Debian's libstdc++-12-dev-arm64-cross,
# libc6-dev-arm64-cross and lld; a cross GCC is not needed. Tests run by qemu-aarch64, and read what is built by
# binutils-aarch64-linux-gnu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

foreach(language C CXX ASM)
    set(CMAKE_${language}_COMPILER_TARGET aarch64-linux-gnu)
endforeach()
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_OBJDUMP /usr/bin/aarch64-linux-gnu-objdump CACHE FILEPATH "What the checks of the library's form read it by")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT -fuse-ld=lld)
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(what LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${what} ONLY)
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/aarch64-linux-gnu)
