// The exported entries. This processor has one level of kernels and no columns, so an entry continues at its place in the table
// of its group: it touches no argument, adds no frame and checks nothing.

#define ZEL_GROUP(group) .set rows_##group, 0; .hidden zel_neon_##group;
ZEL_GROUP(version)
#include "frame/groups.def"
#undef ZEL_GROUP

        .macro export name, group
        .balign 16
        .globl  \name
        .type   \name, %function
\name:
        adrp    x16, zel_neon_\group + rows_\group
        ldr     x16, [x16, :lo12:zel_neon_\group + rows_\group]
        br      x16
        .size   \name, . - \name
        .set    rows_\group, rows_\group + 8
        .endm

        .text
#define ZEL_EXPORT(name, group, columns) export name, group
#include "frame/exports.def"

// Every program that reads it finds the first column chosen.
        .section .rodata
        .balign 4
        .globl  zelDispatchIndex
        .hidden zelDispatchIndex
zelDispatchIndex:
        .word   0

        .section .note.GNU-stack, "", %progbits
