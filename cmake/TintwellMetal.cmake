# What the GPU path computes with:
#   native    Metal (macOS)
#   software  the same sources on a device made of threads (software_metal), for tests
#   off       no device can be used: the hosts render on the CPU
if(APPLE)
    set(_default native)
else()
    set(_default software)
endif()
set(TINTWELL_METAL ${_default} CACHE STRING "The GPU path's device: native, software or off")
set_property(CACHE TINTWELL_METAL PROPERTY STRINGS native software off)

if(TINTWELL_METAL STREQUAL "native" OR TINTWELL_METAL STREQUAL "software")
    include(TintwellObjcxx)
    tintwell_enable_objcxx()
    # tintwell_metal_framework: what sources that include Metal/Metal.h link.
    add_library(tintwell_metal_framework INTERFACE)
    target_link_libraries(tintwell_metal_framework INTERFACE tintwell_objcxx)
    if(TINTWELL_METAL STREQUAL "native")
        target_link_libraries(tintwell_metal_framework INTERFACE "-framework Metal")
    else()
        target_link_libraries(tintwell_metal_framework INTERFACE tintwell_software_metal)
    endif()
elseif(NOT TINTWELL_METAL STREQUAL "off")
    message(FATAL_ERROR "TINTWELL_METAL: native, software or off, not ${TINTWELL_METAL}")
endif()
