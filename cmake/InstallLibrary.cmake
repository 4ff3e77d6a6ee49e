# vxprivacy_install_library(TARGET [REQUIRES module...] [LIBRARIES flag...] DESCRIPTION text)
#
# Installs a library with its public headers and adds it to what find_package(VXPrivacy) offers, and to
# pkg-config as vxprivacy-NAME. REQUIRES are the pkg-config modules and LIBRARIES the linker's flags that
# whoever links it needs beside it.
function(vxprivacy_install_library target)
    cmake_parse_arguments(PARSE_ARGV 1 library "" "DESCRIPTION" "REQUIRES;LIBRARIES")
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    if(NOT VXPRIVACY_INSTALL)
        return()
    endif()
    install(TARGETS ${target} EXPORT VXPrivacyTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

    get_target_property(name ${target} EXPORT_NAME)
    list(JOIN library_REQUIRES ", " requires)
    list(JOIN library_LIBRARIES " " libraries)
    # Relative to the file itself, so that an installed tree can be moved.
    file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    cmake_path(SET up NORMALIZE ${up}.)
    set(file ${PROJECT_BINARY_DIR}/pkgconfig/vxprivacy-${name}.pc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/vxprivacy.pc.in ${file} @ONLY)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
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
