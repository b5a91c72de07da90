# Which form of the two native dialogs the module links:
#   native    AppKit (macOS)
#   gnustep   the same source against GNUstep: real windows on Linux
#   terminal  questions in the terminal, for machines without GNUstep
if(APPLE)
    set(_default native)
else()
    set(_default gnustep)
endif()
set(TINTWELL_DIALOGS ${_default} CACHE STRING "Native dialogs: native, gnustep or terminal")
set_property(CACHE TINTWELL_DIALOGS PROPERTY STRINGS native gnustep terminal)

# tintwell_appkit: what a target with Objective-C++ sources for AppKit links.
if(TINTWELL_DIALOGS STREQUAL "native" OR TINTWELL_DIALOGS STREQUAL "gnustep")
    include(TintwellObjcxx)
    tintwell_enable_objcxx()
    add_library(tintwell_appkit INTERFACE)
    target_link_libraries(tintwell_appkit INTERFACE tintwell_objcxx)
    if(TINTWELL_DIALOGS STREQUAL "native")
        target_link_libraries(tintwell_appkit INTERFACE
            "-framework AppKit" "-framework UniformTypeIdentifiers")
    else()
        target_compile_definitions(tintwell_appkit INTERFACE GNU_GUI_LIBRARY=1)
        target_link_libraries(tintwell_appkit INTERFACE gnustep-gui)
    endif()
elseif(NOT TINTWELL_DIALOGS STREQUAL "terminal")
    message(FATAL_ERROR "TINTWELL_DIALOGS: native, gnustep or terminal, not ${TINTWELL_DIALOGS}")
endif()
