# harden(TARGETS...): code that reads what nobody vouches for, or that no figure depends on, checks its stack and its copies, and all
# of its links are bound and write-protected at load. On x86 it bears the marks of indirect branches and shadow stacks; which of
# them a linked file gets is the linker's matter, for both need the C library's start code to have them as well.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection=full ZELCC_HAS_CONTROL_FLOW_PROTECTION)

set(hardened_code -fstack-protector-strong)
if(processor STREQUAL wasm)
    set(hardened_code)  # the C library has no check of the stack, on which no return address lies
endif()
set(hardened_link -Wl,-z,relro -Wl,-z,now)
if(ZELCC_HAS_CONTROL_FLOW_PROTECTION)
    list(APPEND hardened_code -fcf-protection=full)
    # Returns are left alone everywhere, so this one holds whatever the start code says.
    list(APPEND hardened_link -Wl,-z,shstk)
endif()
if(NOT ZELCC_SANITIZERS)  # which check copies themselves
    list(APPEND hardened_code $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
endif()

function(harden)
    foreach(target ${ARGN})
        foreach(option ${hardened_code})
            target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:C,CXX>:${option}>)
        endforeach()
        target_link_options(${target} PRIVATE ${hardened_link})
    endforeach()
endfunction()
