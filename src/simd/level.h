// The level that a kernel source is compiled for. The build sets ZEL_LEVEL, the name of the namespace around all code that
// depends on the level; nothing outside that namespace may be an inline function or a template that kernels use, or the
// linker could keep the copy of a higher level for a lower one.
//
// A processor is a folder here. Its level.h has for each level of it
//
//     Traits traits      what the level does well
//     ZEL_WORDS          the header that defines all words declared in words/
//     ZEL_OWN_...        the headers with forms of its own, in place of those of this folder that are built of words
#pragma once

#ifndef ZEL_LEVEL
#error "kernel sources are compiled with ZEL_LEVEL, see CMakeLists.txt"
#endif

// The level whose code has what no level does in another way, the walk over images, for those above it as well. In its namespace
// these find types and what is always inlined; the rest is defined at that level alone.
#ifndef ZEL_FRAME
#define ZEL_FRAME ZEL_LEVEL
#endif

#define ZEL_INLINE [[gnu::always_inline]] inline
#define ZEL_NOINLINE [[gnu::noinline]]
#define ZEL_INLINE_LAMBDA __attribute__((always_inline))

namespace zel::ZEL_FRAME {}

namespace zel::ZEL_LEVEL {

using namespace zel::ZEL_FRAME;

// What a level tells of itself. No result depends on it, only which of several ways is taken.
struct Traits {
    int lanes;                  // of 16 bytes in a vector
    bool bypasses;              // there are stores that bypass the caches
    bool bypassesByWholeLines;  // a vector that bypasses the caches is a whole line of them, so memory takes it at once
    bool bypassesByParts;       // vectors that bypass them and are parts of a line are worth it, where these soon meet
    bool selectsAtOnce;         // choosing between two vectors by a third takes one operation
    bool packsUnsignedWords;    // packUnsignedWords saturates from above, too
    bool looksUpQuickly;        // a vector of bytes by a table that is made at the call takes a few operations
    bool fuses;                 // nearMulAdd rounds once
    bool drivesByShape;         // the way to a kernel is worth code of its own for each shape of images
    bool holdsConstants;        // registers are so many that a rule of some operations has its constants in them
    int droppedBits;            // that the signed high product drops in one operation, 15 or 16
    int independentVectors;     // that are best worked on in turn where each step waits for the one before
};

}  // namespace zel::ZEL_LEVEL

#if defined(__x86_64__) || defined(__i386__)
#include "simd/x86/level.h"
#elif defined(__aarch64__)
#include "simd/neon/level.h"
#elif defined(__wasm_simd128__)
#include "simd/wasm/level.h"
#else
#error "there are no words for this processor"
#endif
