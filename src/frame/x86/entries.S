// The exported entries and the constant dispatch table. An entry reads the dispatch index and jumps through its row: it
// touches no argument, adds no frame and checks nothing.
//
//   zeliX  ->  row of zelDispatchTable [dispatch index]
//   column 0: the function of the lowest level, which finds what the level chosen at load has
//   column 1: the one tuned for small in-order cores, or that of column 0 again where there is none

#if defined(__x86_64__)
#define WORD .quad
#define WORD_SIZE 8
#else
#define WORD .long
#define WORD_SIZE 4
#endif

        .altmacro

// hiddenTables group: the tables of a group. levelTables group: what each level has.
        .macro hiddenTables group
        .hidden zel_ssse3_&group
#define ZEL_LEVEL(name, feature, flags) .hidden zel_##name##_conversions_&group
#define ZEL_COLUMN(name, feature, flags) .hidden zel_##name##_&group
#include "levels.def"
        .endm
        .macro levelTables group
        .globl  zel_levels_&group
        .hidden zel_levels_&group
zel_levels_&group:
#define ZEL_LEVEL(name, feature, flags) WORD zel_##name##_conversions_&group
#include "levels.def"
        .endm

#define ZEL_GROUP(group) .set rows_##group, 0; .set rowsS8_##group, 0; hiddenTables group;
#include "frame/groups.def"
#undef ZEL_GROUP
        .set    rows_version, 0
        .set    rowsS8_version, 0
#define ZEL_CLASS(name, cpu, text) .hidden zel_##name##_version
#include "levels.def"
        .hidden zelDispatchIndex

        .section .data.rel.ro, "aw", @progbits
        .balign 16
#define ZEL_GROUP(group) levelTables group;
#include "frame/groups.def"
#undef ZEL_GROUP

// jumpIndexed index, table: continues at the entry of the table that the 32-bit variable names.
// tableJump table, offset: continues at the entry of a table.
#if defined(__x86_64__)
        .macro jumpIndexed index table
        mov     index(%rip), %eax
        lea     table(%rip), %r11
        jmp     *(%r11, %rax, 8)
        .endm
        .macro tableJump table offset
        jmp     *table+offset(%rip)
        .endm
#else
// All arguments are on the stack, so the three scratch registers are free.
        .macro jumpIndexed index table
        call    programCounter
        mov     index-.(%ecx), %eax
        jmp     *table-.+6(%ecx, %eax, 4)
        .endm
        .macro tableJump table offset
        call    programCounter
        jmp     *table+offset-.(%ecx)
        .endm
        .text
        .balign 16
programCounter:
        mov     (%esp), %ecx
        ret
#endif

        .macro define name group columns offset offsetS8
        .text
        .balign 16
ssse3_&name:
        tableJump zel_ssse3_&group, offset
        .if columns - 1
        .balign 16
s8_&name:
        tableJump zel_s8_&group, offsetS8
        .endif
        .balign 16
        .globl  name
        .type   name, @function
name:
        jumpIndexed zelDispatchIndex, row_&name
        .size   name, . - name
        .section .data.rel.ro
row_&name:
        WORD    ssse3_&name
        .if columns - 1
        WORD    s8_&name
        .set    rowsS8_&group, rowsS8_&group + 1
        .else
        WORD    ssse3_&name
        .endif
        .set    rows_&group, rows_&group + 1
        .endm

        .macro export name group columns
        define name, group, columns, %(rows_&group * WORD_SIZE), %(rowsS8_&group * WORD_SIZE)
        .endm

        .section .data.rel.ro
        .balign 16
        .globl  zelDispatchTable
        .hidden zelDispatchTable
zelDispatchTable:

#define ZEL_EXPORT(name, group, columns) export name, group, columns
#include "frame/exports.def"

        .section .note.GNU-stack, "", @progbits
