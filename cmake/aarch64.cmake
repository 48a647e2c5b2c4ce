# Builds for 64-bit Arm on another machine by clang and lld; a cross GCC is not needed. The headers and libraries are Debian's
# libstdc++-12-dev-arm64-cross and libc6-dev-arm64-cross, or those of a system for arm64 in the folder -DCMAKE_SYSROOT=, which must
# be a whole path; -DCMAKE_FIND_ROOT_PATH= adds folders to search. Tests run by qemu-aarch64; packages, and the tests that read what
# is built, need binutils-aarch64-linux-gnu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

foreach(language C CXX ASM)
    set(CMAKE_${language}_COMPILER_TARGET aarch64-linux-gnu)
endforeach()
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_OBJDUMP /usr/bin/aarch64-linux-gnu-objdump CACHE FILEPATH "What the checks of the library's form read it by")
set(CMAKE_STRIP /usr/bin/aarch64-linux-gnu-strip CACHE FILEPATH "What makes the files of packages smaller")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT -fuse-ld=lld)
endforeach()

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
if(CMAKE_SYSROOT)
    set(arm64_files ${CMAKE_SYSROOT})
    foreach(what LIBRARY INCLUDE PACKAGE)
        set(CMAKE_FIND_ROOT_PATH_MODE_${what} ONLY)
    endforeach()
else()  # and Debian's folder of arm64 on this machine, and what has no architecture
    set(arm64_files /usr/aarch64-linux-gnu)
endif()
list(APPEND CMAKE_FIND_ROOT_PATH ${arm64_files})
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L ${arm64_files})
