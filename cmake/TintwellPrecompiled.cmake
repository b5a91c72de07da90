# Headers that many sources include, compiled once for all of them: most of the time of a build goes
# into those of the C++ library. A source still includes what it uses; the product's own do without.

# tintwell_precompile(TARGET HEADERS [LIBS ...]): TARGET holds HEADERS, compiled as sources that link
# LIBS are.
function(tintwell_precompile target headers)
    cmake_parse_arguments(PARSE_ARGV 2 HEADERS "" "" "LIBS")
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${target} OBJECT ${source})
    target_link_libraries(${target} PRIVATE ${HEADERS_LIBS})
    target_precompile_headers(${target} PRIVATE ${headers})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
endfunction()

# Has the C++ sources of TARGET, a program or a static library that only programs link, begin with the
# headers of FROM, if there is such a target.
function(tintwell_use_precompiled target from)
    if(NOT TARGET ${from})
        return()
    endif()
    target_precompile_headers(${target} REUSE_FROM ${from})
    # The mode that the headers were compiled in.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.mm$")
    set_source_files_properties(${sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()
