# vxprivacy_finish_library(TARGET [REQUIRES module...] [INSIDE_REQUIRES module...] [INSIDE_LIBRARIES flag...]
#                          DESCRIPTION text)
#
# Gives vxprivacy_NAME what all our libraries share, installs it with its public headers and adds it to what
# find_package(VXPrivacy) offers, and to pkg-config as vxprivacy-NAME. REQUIRES are the pkg-config modules that
# whoever links it needs beside it; INSIDE_REQUIRES, and the linker's flags INSIDE_LIBRARIES, are those that it
# needs beside a static library alone.
function(vxprivacy_finish_library target)
    cmake_parse_arguments(PARSE_ARGV 1 library "" "DESCRIPTION" "REQUIRES;INSIDE_REQUIRES;INSIDE_LIBRARIES")
    string(REPLACE vxprivacy_ "" name ${target})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        VERIFY_INTERFACE_HEADER_SETS ON
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}) # while it is 0.x
    if(BUILD_SHARED_LIBS)
        vxprivacy_share(${target})
    else()
        list(APPEND library_REQUIRES ${library_INSIDE_REQUIRES})
    endif()
    if(NOT VXPRIVACY_INSTALL)
        return()
    endif()
    install(TARGETS ${target} EXPORT VXPrivacyTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

    list(JOIN library_REQUIRES ", " requires)
    set(libraries)
    if(NOT BUILD_SHARED_LIBS)
        list(JOIN library_INSIDE_LIBRARIES " " libraries)
    endif()
    # Relative to the file itself, so that an installed tree can be moved.
    file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    cmake_path(SET up NORMALIZE ${up}.)
    set(file ${PROJECT_BINARY_DIR}/pkgconfig/vxprivacy-${name}.pc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/vxprivacy.pc.in ${file} @ONLY)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()

# One of several shared libraries: it finds the others beside it, lacks nothing, and shows what its headers
# declare and no template of the standard library that it was made with.
function(vxprivacy_share target)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH $ORIGIN)
    target_link_options(${target} PRIVATE LINKER:--no-undefined)
    if(NOT target STREQUAL vxprivacy_c) # which shows less
        set(script ${PROJECT_SOURCE_DIR}/cmake/vxprivacy.map)
        set_target_properties(${target} PROPERTIES LINK_DEPENDS ${script})
        target_link_options(${target} PRIVATE LINKER:--version-script=${script})
    endif()
endfunction()

# Installs the files of the CMake package; to be called after the libraries.
function(vxprivacy_install_package)
    set(directory ${CMAKE_INSTALL_LIBDIR}/cmake/VXPrivacy)
    configure_package_config_file(
        ${PROJECT_SOURCE_DIR}/cmake/VXPrivacyConfig.cmake.in
        ${PROJECT_BINARY_DIR}/VXPrivacyConfig.cmake
        INSTALL_DESTINATION ${directory})
    write_basic_package_version_file(
        ${PROJECT_BINARY_DIR}/VXPrivacyConfigVersion.cmake COMPATIBILITY SameMinorVersion)
    install(EXPORT VXPrivacyTargets NAMESPACE vxprivacy:: DESTINATION ${directory} COMPONENT development)
    install(FILES
        ${PROJECT_BINARY_DIR}/VXPrivacyConfig.cmake
        ${PROJECT_BINARY_DIR}/VXPrivacyConfigVersion.cmake
        DESTINATION ${directory} COMPONENT development)
endfunction()
