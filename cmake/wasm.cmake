# Builds for WebAssembly with Debian's clang-19, lld-19, wasi-libc, libc++-19-dev-wasm32 and libclang-rt-19-dev-wasm32, and binaryen,
# whose wasm-opt clang runs where it finds it; what is built runs in Node.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
foreach(language C CXX ASM)
    set(CMAKE_${language}_COMPILER_TARGET wasm32-wasi)
endforeach()
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_EXECUTABLE_SUFFIX .wasm)
# Node 18 has WASI by the option alone; later ones ignore it.
set(CMAKE_CROSSCOMPILING_EMULATOR node --no-warnings --experimental-wasi-unstable-preview1
    ${CMAKE_CURRENT_LIST_DIR}/../tests/wasm/run.mjs)
