# What makes a macOS bundle of the loadable module: property list, package type, PiPL, signature,
# where it is installed, and what is handed out (target zip).
find_program(TINTWELL_CODESIGN codesign)
set(TINTWELL_SIGN_IDENTITY "-" CACHE STRING "Whom codesign signs for; - is nobody: ad hoc")

# The build number is the low nine bits of the packed version.
function(_tintwell_build_number identity out)
    file(READ ${identity} text)
    string(JSON version GET ${text} version)
    math(EXPR build "${version} & 511")
    set(${out} ${build} PARENT_SCOPE)
endfunction()

# Makes the module TARGET a bundle on macOS; leaves it as it is elsewhere.
function(tintwell_bundle target)
    if(NOT APPLE)
        return()
    endif()
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    set(identity ${PROJECT_SOURCE_DIR}/packaging/identity.json)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${identity})
    _tintwell_build_number(${identity} build)
    set(plist ${PROJECT_SOURCE_DIR}/packaging/Info.plist.in)
    set_target_properties(${target} PROPERTIES
        BUNDLE ON
        BUNDLE_EXTENSION plugin
        MACOSX_BUNDLE_INFO_PLIST ${plist}
        MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION}
        MACOSX_BUNDLE_BUNDLE_VERSION ${build})

    # Where there is no codesign the linker's own ad-hoc signature of the code has to do.
    set(sign "")
    if(TINTWELL_CODESIGN)
        set(sign COMMAND ${TINTWELL_CODESIGN} --force --sign ${TINTWELL_SIGN_IDENTITY}
            $<TARGET_BUNDLE_DIR:${target}>)
    endif()
    set(pkgInfo ${PROJECT_SOURCE_DIR}/packaging/PkgInfo)
    set(makePipl ${PROJECT_SOURCE_DIR}/packaging/make_pipl.py)
    set(contents $<TARGET_BUNDLE_CONTENT_DIR:${target}>)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E make_directory ${contents}/Resources
        COMMAND ${CMAKE_COMMAND} -E copy ${pkgInfo} ${contents}/PkgInfo
        COMMAND Python3::Interpreter ${makePipl} ${identity} ${contents}/Resources/${target}.rsrc
        ${sign}
        VERBATIM)
    # The signature covers them all, so each of them brings the steps above on again.
    set_property(TARGET ${target} APPEND PROPERTY
        LINK_DEPENDS ${identity} ${plist} ${pkgInfo} ${makePipl})
    add_custom_target(zip
        COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/packaging/package_bundle.py
            $<TARGET_BUNDLE_DIR:${target}>
            ${PROJECT_BINARY_DIR}/${target}-${PROJECT_VERSION}.zip
        VERBATIM)
    add_dependencies(zip ${target})
    install(TARGETS ${target} LIBRARY DESTINATION .)
endfunction()
