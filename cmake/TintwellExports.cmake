# One reviewed list (packaging/exports.txt) decides what the loadable module exports. A plain line
# is a C symbol; "space::name" is every overload of that C++ function. The list is turned into the
# form that each system's linker reads.

# Sets OUT to the linker's pattern for one line of the list, without the leading underscore that
# macOS adds. After the name a mangled symbol goes on with E, or with B where the C++ library tags
# functions that return its strings.
function(_tintwell_symbol_pattern line out)
    if(line MATCHES "^([A-Za-z0-9_]+)::([A-Za-z0-9_]+)$")
        set(space ${CMAKE_MATCH_1})
        set(name ${CMAKE_MATCH_2})
        string(LENGTH ${space} spaceLength)
        string(LENGTH ${name} nameLength)
        set(${out} "_ZN${spaceLength}${space}${nameLength}${name}[EB]*" PARENT_SCOPE)
    else()
        set(${out} "${line}" PARENT_SCOPE)
    endif()
endfunction()

# Links TARGET so that it exports exactly what LIST, and after it the call, names.
function(tintwell_export_only target list)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
    file(STRINGS ${list} lines REGEX "^[A-Za-z]")
    set(patterns "")
    foreach(line IN LISTS lines ARGN)
        _tintwell_symbol_pattern(${line} pattern)
        list(APPEND patterns ${pattern})
    endforeach()
    if(APPLE)
        list(TRANSFORM patterns PREPEND "_")
        list(JOIN patterns "\n" text)
        set(file ${CMAKE_CURRENT_BINARY_DIR}/${target}.list)
        set(option -Wl,-exported_symbols_list,${file})
        file(CONFIGURE OUTPUT ${file} CONTENT "${text}\n" @ONLY)
    else()
        list(JOIN patterns "; " text)
        set(file ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        set(option -Wl,--version-script=${file} -Wl,-Bsymbolic)
        file(CONFIGURE OUTPUT ${file} CONTENT "{ global: ${text}; local: *; };\n" @ONLY)
    endif()
    target_link_options(${target} PRIVATE ${option})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${file})
endfunction()
