set(SOURCE_PATH ${CMAKE_CURRENT_LIST_DIR}/../..)

if(VCPKG_TARGET_IS_WINDOWS)
    vcpkg_check_linkage(ONLY_STATIC_LIBRARY)
endif()
vcpkg_cmake_configure(
    SOURCE_PATH ${SOURCE_PATH}
    OPTIONS
        -DVXPRIVACY_C=OFF # a shared library, whatever the triplet says
        -DVXPRIVACY_TOOLS=OFF
        -DVXPRIVACY_TESTS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME VXPrivacy CONFIG_PATH lib/cmake/VXPrivacy)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR}/debug/include ${CURRENT_PACKAGES_DIR}/debug/share)
vcpkg_install_copyright(FILE_LIST ${SOURCE_PATH}/LICENSE)
