# Which form of the two native dialogs the module links, and how its Objective-C++ is compiled:
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
if(TINTWELL_DIALOGS STREQUAL "native")
    enable_language(OBJCXX)
    add_library(tintwell_appkit INTERFACE)
    target_link_libraries(tintwell_appkit INTERFACE
        "-framework AppKit" "-framework Foundation" "-framework UniformTypeIdentifiers")
elseif(TINTWELL_DIALOGS STREQUAL "gnustep")
    find_program(TINTWELL_GNUSTEP_CONFIG gnustep-config)
    # GCC's Objective-C++ has no blocks, so these sources are clang's whatever builds the rest.
    find_program(TINTWELL_CLANGXX NAMES clang++-16)
    if(NOT TINTWELL_GNUSTEP_CONFIG OR NOT TINTWELL_CLANGXX)
        message(FATAL_ERROR "TINTWELL_DIALOGS=gnustep needs GNUstep and clang++-16: "
            "scripts/install-packages build dialogs, or configure with -DTINTWELL_DIALOGS=terminal")
    endif()
    if(NOT CMAKE_OBJCXX_COMPILER)
        set(CMAKE_OBJCXX_COMPILER ${TINTWELL_CLANGXX})
    endif()
    enable_language(OBJCXX)

    # The runtime's headers, objc/objc.h and the like, come with GCC. They go last: clang's own must
    # win where both have one.
    execute_process(COMMAND g++ -print-file-name=include/objc/objc.h
        OUTPUT_VARIABLE _objc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    cmake_path(GET _objc PARENT_PATH _objc)
    cmake_path(GET _objc PARENT_PATH _objc)
    execute_process(COMMAND ${TINTWELL_GNUSTEP_CONFIG} --variable=GNUSTEP_SYSTEM_HEADERS
        OUTPUT_VARIABLE _headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

    add_library(tintwell_appkit INTERFACE)
    target_compile_definitions(tintwell_appkit INTERFACE
        GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_GUI_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
    set(_options -fobjc-runtime=gcc -fblocks -fobjc-exceptions -fno-strict-aliasing
        -fconstant-string-class=NSConstantString "SHELL:-idirafter ${_objc}")
    target_compile_options(tintwell_appkit INTERFACE "$<$<COMPILE_LANGUAGE:OBJCXX>:${_options}>")
    target_include_directories(tintwell_appkit SYSTEM INTERFACE
        ${PROJECT_SOURCE_DIR}/platform/mac/gnustep ${_headers})
    target_link_libraries(tintwell_appkit INTERFACE gnustep-gui gnustep-base objc BlocksRuntime)
elseif(NOT TINTWELL_DIALOGS STREQUAL "terminal")
    message(FATAL_ERROR "TINTWELL_DIALOGS: native, gnustep or terminal, not ${TINTWELL_DIALOGS}")
endif()
