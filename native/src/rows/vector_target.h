// Regions of code that use instructions beyond what the compiler is told to assume.
#pragma once

// TW_TARGET_BEGIN("avx2") ... TW_TARGET_END: the functions defined between the two, and no others,
// are compiled for these processor features on top of the file's own. Regions rather than options
// for the whole file: code of the standard library's headers stays outside them, so that the linker
// cannot keep a copy of an inline function that only newer processors run, and a macOS build of
// both slices at once passes nothing to the slice that does not know the option.
#define TW_PRAGMA(text) _Pragma(#text)
#if defined(__wasm__)
// One set of instructions for the whole module.
#define TW_TARGET_BEGIN(features)
#define TW_TARGET_END
#elif defined(__clang__)
#define TW_TARGET_BEGIN(features) \
    TW_PRAGMA(clang attribute push(__attribute__((target(features))), apply_to = function))
#define TW_TARGET_END TW_PRAGMA(clang attribute pop)
#else
#define TW_TARGET_BEGIN(features) TW_PRAGMA(GCC push_options) TW_PRAGMA(GCC target(features))
#define TW_TARGET_END TW_PRAGMA(GCC pop_options)
#endif
