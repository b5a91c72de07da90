# cmake -DKERNEL=... -DARGS=... -DTEXTS=FOLDER -DSOURCE=... -P embed_kernel.cmake
#
# Puts the argument header in the place of the kernel's include line and writes the whole as
# tintwell_lut_fused.metal and tintwell_lut_apart.metal into FOLDER, for lints and tests, and as a
# string constant in the C++ file SOURCE. One configuration builds for two processors, so there it is
# the preprocessor that chooses, by the key of native/src/engine/mul_add.h.
file(READ ${KERNEL} kernel)
file(READ ${ARGS} args)
# The pragma belongs to the header's life as a file.
string(REPLACE "#pragma once\n" "" args "${args}")
set(include "#include \"native/src/gpu_args.h\"\n")
string(FIND "${kernel}" "${include}" place)
if(place EQUAL -1)
    message(FATAL_ERROR "${KERNEL} does not include native/src/gpu_args.h")
endif()
string(REPLACE "${include}" "${args}" text "${kernel}")

set(fused "#define TW_FUSED_MUL_ADD 1")
set(apart "#define TW_FUSED_MUL_ADD 0")
file(WRITE ${TEXTS}/tintwell_lut_fused.metal "${fused}\n${text}")
file(WRITE ${TEXTS}/tintwell_lut_apart.metal "${apart}\n${text}")
file(WRITE ${SOURCE} "#include \"gpu/kernel_source.h\"

const char twgpu::kKernelSource[] =
#if defined(__aarch64__)
    \"${fused}\\n\"
#else
    \"${apart}\\n\"
#endif
    R\"kernel(${text})kernel\";
")
