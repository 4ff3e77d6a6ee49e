# What CPack makes of an optimised build (cpack -G DEB): three Debian packages, one for each component.
# The files that Debian wants beside the program are in the packages alone.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "VXPrivacy")
set(CPACK_PACKAGE_CONTACT "The VXPrivacy developers <vxprivacy@users.noreply.github.com>")
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# vxprivacy_debian_package(COMPONENT NAME SECTION SUMMARY TEXT)
macro(vxprivacy_debian_package component name section summary text)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}")
    foreach(file copyright changelog.Debian.gz)
        install(FILES ${PROJECT_BINARY_DIR}/debian/${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
    endforeach()
endmacro()

set(library libvxprivacy-c${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
vxprivacy_debian_package(library ${library} libs "consent management for applications: shared library"
"VXPrivacy decides whether the user of an application must be asked for
consent, shows a privacy center, of categories or of the IAB's vendor
list, and makes the choices effective.
.
This package has the library behind the C interface.")
vxprivacy_debian_package(development libvxprivacy-dev libdevel
    "consent management for applications: development files"
"VXPrivacy decides whether the user of an application must be asked for
consent, shows a privacy center, of categories or of the IAB's vendor
list, and makes the choices effective.
.
This package has what C and C++ applications are built with: headers,
static libraries, CMake and pkg-config files.")
vxprivacy_debian_package(tool vxprivacy devel "consent management for applications: command-line tool"
"VXPrivacy decides whether the user of an application must be asked for
consent, shows a privacy center, of categories or of the IAB's vendor
list, and makes the choices effective.
.
This package has the executable that checks privacy configurations and
vendor lists, reads TC strings, replays scripted sessions and runs the
studio, where all of it is seen at work.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library} (= ${PROJECT_VERSION}-1), libsimdjson-dev, libsqlite3-dev, libsqlitecpp-dev, nlohmann-json3-dev")
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS libcurl4)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS libcurl4)

# Of Debian's rules: libraries tell the dynamic linker of themselves, manual pages are gzipped.
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/gzip_manual.cmake)

configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${PROJECT_BINARY_DIR}/debian/copyright COPYONLY)
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog.Debian)
find_program(GZIP gzip)
if(GZIP)
    execute_process(COMMAND ${GZIP} -9nkf ${PROJECT_BINARY_DIR}/debian/changelog.Debian)
endif()
include(CPack)
