# Compiler settings of everything in the tree, on one interface target: tintwell_flags.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")

add_library(tintwell_flags INTERFACE)
target_compile_options(tintwell_flags INTERFACE
    # Rounding is decided in the source (native/src/engine/mul_add.h), never by the compiler.
    -ffp-contract=off
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
    -Woverloaded-virtual -Wformat=2 -Wnull-dereference)

if(TINTWELL_SANITIZE)
    set(_sanitize -fsanitize=${TINTWELL_SANITIZE} -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_compile_options(${_sanitize})
    add_link_options(${_sanitize})
    add_library(tintwell_suppressions OBJECT ${CMAKE_CURRENT_LIST_DIR}/sanitizer_suppressions.cpp)
endif()
if(TINTWELL_COVERAGE)
    add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
endif()
