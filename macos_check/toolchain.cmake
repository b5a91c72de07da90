# Builds for macOS on Linux, with Debian's LLVM 16 and the sysroot beside this file, to see that the
# sources compile, the bundle links and has the right shape, and to have it for the checks. The
# sysroot is written for this and no Apple SDK: what is shipped is built on a Mac.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 20.1)
set(CMAKE_SYSTEM_PROCESSOR arm64)

set(_llvm /usr/lib/llvm-16/bin)
set(_languages C CXX OBJC OBJCXX)
foreach(language IN LISTS _languages)
    set(CMAKE_${language}_COMPILER ${_llvm}/clang)
    if(language MATCHES CXX)
        set(CMAKE_${language}_COMPILER ${_llvm}/clang++)
    endif()
    set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos11)
    # -B: where clang finds "lipo". libcxx: the libc++ configuration of the target.
    set(CMAKE_${language}_FLAGS_INIT
        "-B${CMAKE_CURRENT_LIST_DIR}/toolchain_bin -isystem ${CMAKE_CURRENT_LIST_DIR}/libcxx")
    # llvm-ar makes no index of objects that hold two processors' code.
    set(CMAKE_${language}_ARCHIVE_CREATE
        "${_llvm}/llvm-libtool-darwin -static -no_warning_for_no_symbols -o <TARGET> <OBJECTS>")
    set(CMAKE_${language}_ARCHIVE_APPEND "")
    set(CMAKE_${language}_ARCHIVE_FINISH "")
endforeach()
foreach(tool AR NM OTOOL RANLIB STRIP INSTALL_NAME_TOOL)
    string(TOLOWER ${tool} name)
    string(REPLACE _ - name ${name})
    set(CMAKE_${tool} ${_llvm}/llvm-${name} CACHE FILEPATH "")
endforeach()
foreach(kind EXE MODULE SHARED)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -Wl,-adhoc_codesign")
endforeach()

set(CMAKE_OSX_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/sysroot CACHE PATH "")
set(nlohmann_json_DIR ${CMAKE_CURRENT_LIST_DIR}/host/nlohmann_json CACHE PATH "")
# There is no program to link yet when CMake tries the compiler.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
