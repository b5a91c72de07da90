# Objective-C++: tintwell_objcxx is what a target with .mm sources links. On macOS it is the system's
# own; elsewhere GNUstep's Foundation with GCC's runtime, built by clang whatever builds the rest,
# since GCC's Objective-C++ has no blocks.
include_guard(GLOBAL)

macro(tintwell_enable_objcxx)
    if(NOT APPLE)
        find_program(TINTWELL_GNUSTEP_CONFIG gnustep-config)
        find_program(TINTWELL_CLANGXX NAMES clang++-16)
        if(NOT TINTWELL_GNUSTEP_CONFIG OR NOT TINTWELL_CLANGXX)
            message(FATAL_ERROR "Objective-C++ needs GNUstep and clang++-16: "
                "scripts/install-packages build metal, "
                "or configure with -DTINTWELL_METAL=off -DTINTWELL_DIALOGS=terminal")
        endif()
        if(NOT CMAKE_OBJCXX_COMPILER)
            set(CMAKE_OBJCXX_COMPILER ${TINTWELL_CLANGXX})
        endif()
    endif()
    # The language's compiler, clang, would have a say in how GCC precompiles headers.
    set(pchExtension ${CMAKE_PCH_EXTENSION})
    set(pchPrologue ${CMAKE_PCH_PROLOGUE})
    enable_language(OBJCXX)
    set(CMAKE_PCH_EXTENSION ${pchExtension})
    set(CMAKE_PCH_PROLOGUE ${pchPrologue})
    set(CMAKE_OBJCXX_STANDARD ${CMAKE_CXX_STANDARD})
    set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
    set(CMAKE_OBJCXX_EXTENSIONS OFF)
    set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
    set(CMAKE_OBJCXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
    if(NOT TARGET tintwell_objcxx)
        _tintwell_objcxx_target()
    endif()
endmacro()

function(_tintwell_objcxx_target)
    add_library(tintwell_objcxx INTERFACE)
    if(APPLE)
        target_link_libraries(tintwell_objcxx INTERFACE "-framework Foundation")
        return()
    endif()
    # The runtime's headers, objc/objc.h and the like, come with GCC. They go last: clang's own must
    # win where both have one.
    execute_process(COMMAND g++ -print-file-name=include/objc/objc.h
        OUTPUT_VARIABLE objc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    cmake_path(GET objc PARENT_PATH objc)
    cmake_path(GET objc PARENT_PATH objc)
    execute_process(COMMAND ${TINTWELL_GNUSTEP_CONFIG} --variable=GNUSTEP_SYSTEM_HEADERS
        OUTPUT_VARIABLE headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

    target_compile_definitions(tintwell_objcxx INTERFACE
        GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
    set(options -fobjc-runtime=gcc -fblocks -fobjc-exceptions -fno-strict-aliasing
        -fconstant-string-class=NSConstantString "SHELL:-idirafter ${objc}")
    target_compile_options(tintwell_objcxx INTERFACE "$<$<COMPILE_LANGUAGE:OBJCXX>:${options}>")
    target_include_directories(tintwell_objcxx SYSTEM INTERFACE
        ${PROJECT_SOURCE_DIR}/platform/mac/gnustep ${headers})
    target_link_libraries(tintwell_objcxx INTERFACE gnustep-base objc BlocksRuntime)
endfunction()
