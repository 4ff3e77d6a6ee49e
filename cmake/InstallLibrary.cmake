# Installs a library with its public headers and adds it to what find_package(VXPrivacy) offers.
function(vxprivacy_install_library target)
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    install(TARGETS ${target} EXPORT VXPrivacyTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()

# Installs the package files; to be called after the libraries.
function(vxprivacy_install_package)
    set(directory ${CMAKE_INSTALL_LIBDIR}/cmake/VXPrivacy)
    configure_package_config_file(
        ${PROJECT_SOURCE_DIR}/cmake/VXPrivacyConfig.cmake.in
        ${PROJECT_BINARY_DIR}/VXPrivacyConfig.cmake
        INSTALL_DESTINATION ${directory})
    write_basic_package_version_file(
        ${PROJECT_BINARY_DIR}/VXPrivacyConfigVersion.cmake COMPATIBILITY SameMinorVersion)
    install(EXPORT VXPrivacyTargets NAMESPACE vxprivacy:: DESTINATION ${directory})
    install(FILES
        ${PROJECT_BINARY_DIR}/VXPrivacyConfig.cmake
        ${PROJECT_BINARY_DIR}/VXPrivacyConfigVersion.cmake
        DESTINATION ${directory})
endfunction()
