# cmake -DKERNEL=... -DARGS=... -DTEXT=... -DSOURCE=... -P embed_kernel.cmake
#
# Writes the kernel's whole text, with the argument header in the place of its include line, as TEXT
# (for the lints) and as a string constant in the C++ file SOURCE.
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

file(WRITE ${TEXT} "${text}")
file(WRITE ${SOURCE} "#include \"gpu/kernel_source.h\"

const char twgpu::kKernelSource[] = R\"kernel(${text})kernel\";
")
