if(NOT CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    message(FATAL_ERROR "AVX-512 is emulated with g++ alone")
endif()
# Otherwise g++ 12 moves the stack in every turn of a loop that passes a vector in memory, and never back.
set(stack -maccumulate-outgoing-args)
set(emulation -mavx2 -Wno-psabi -include ${CMAKE_CURRENT_LIST_DIR}/avx512.h ${stack})
add_kernels(zelcc_avx512_emulated avx512 ${emulation})
add_conversions(zelcc_emulated SHARED zelcc_ssse3 zelcc_avx2 zelcc_avx512_emulated zelcc_s8)
target_compile_definitions(zelcc_emulated PRIVATE ZEL_EMULATED_AVX512)

add_executable(zelcc_tests_emulated $<TARGET_OBJECTS:zelcc_test_objects>
    $<FILTER:$<TARGET_OBJECTS:zelcc_model>,EXCLUDE,features> harness/features.cpp)
target_compile_definitions(zelcc_tests_emulated PRIVATE ZELCC_EMULATED_AVX512)
target_include_directories(zelcc_tests_emulated PRIVATE . ${PROJECT_SOURCE_DIR}/zelcore)
target_link_libraries(zelcc_tests_emulated PRIVATE zelcc_catalog zelcc_emulated GTest::gtest ${CMAKE_DL_LIBS})
set_target_properties(zelcc_tests_emulated PROPERTIES ENABLE_EXPORTS ON)
if(ZELCC_EMULATED_AVX512 STREQUAL ALL)
    add_results(avx512-emulated zelcc_tests_emulated avx512 "*-${left_out}" 4)
else()
    add_results(avx512-emulated zelcc_tests_emulated avx512 "*Quickly*:*Misaligned*")
endif()

add_simd_tests(avx512-emulated avx512 zelCpuAvx2 ${emulation})

# The words themselves, one by one: what the processor makes of random arguments, and the emulation.
foreach(form native emulated)
    add_executable(zelcc_words_${form} emulation/words.cpp)
    target_compile_definitions(zelcc_words_${form} PRIVATE ZEL_LEVEL=${form})
    target_compile_options(zelcc_words_${form} PRIVATE -O2 -ffp-contract=off)
endforeach()
target_compile_options(zelcc_words_native PRIVATE ${level_flags_avx512})
target_compile_options(zelcc_words_emulated PRIVATE ${emulation})
add_test(NAME emulation.words COMMAND zelcc_words_native $<TARGET_FILE:zelcc_words_emulated>)
set_tests_properties(emulation.words PROPERTIES SKIP_RETURN_CODE 77)
