# Installs the list of parts that the package was built with and of its files, as SPDX 2.3, in share/doc/vxprivacy.
# Versions are those found here; one that a library does not tell is left out.

# vxprivacy_part(NAME LICENCE RELATION VERSION): DEPENDS_ON what is linked or loaded, CONTAINS what is compiled
# in from headers.
function(vxprivacy_part name licence relation version)
    string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id "SPDXRef-${name}")
    if(version)
        set(version "\n      \"versionInfo\": \"${version}\",")
    endif()
    set_property(GLOBAL APPEND_STRING PROPERTY VXPRIVACY_PARTS ",
    {
      \"name\": \"${name}\",
      \"SPDXID\": \"${id}\",${version}
      \"downloadLocation\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"licenseDeclared\": \"${licence}\"
    }")
    set_property(GLOBAL APPEND_STRING PROPERTY VXPRIVACY_RELATIONS ",
    {
      \"spdxElementId\": \"SPDXRef-VXPrivacy\",
      \"relationshipType\": \"${relation}\",
      \"relatedSpdxElement\": \"${id}\"
    }")
endfunction()

function(vxprivacy_find_parts)
    if(VXPRIVACY_SIMDJSON_SOURCE)
        vxprivacy_part(simdjson Apache-2.0 CONTAINS "")
    else()
        find_package(simdjson REQUIRED)
        vxprivacy_part(simdjson Apache-2.0 DEPENDS_ON "${simdjson_VERSION}")
    endif()
    find_package(FastFloat REQUIRED)
    vxprivacy_part(fast_float MIT CONTAINS "${FastFloat_VERSION}")
    if(VXPRIVACY_SERVICES)
        find_package(SQLite3 REQUIRED)
        find_package(SQLiteCpp REQUIRED)
        find_package(CURL REQUIRED)
        find_package(spdlog REQUIRED)
        find_package(fmt REQUIRED)
        vxprivacy_part(sqlite blessing DEPENDS_ON "${SQLite3_VERSION}")
        vxprivacy_part(SQLiteCpp MIT DEPENDS_ON "${SQLiteCpp_VERSION}")
        vxprivacy_part(curl curl DEPENDS_ON "${CURL_VERSION_STRING}")
        vxprivacy_part(spdlog MIT CONTAINS "${spdlog_VERSION}")
        vxprivacy_part(fmt MIT CONTAINS "${fmt_VERSION}")
    endif()
    if(VXPRIVACY_WEB OR VXPRIVACY_TESTING)
        find_package(nlohmann_json REQUIRED)
        vxprivacy_part(nlohmann_json MIT CONTAINS "${nlohmann_json_VERSION}")
    endif()
    if(VXPRIVACY_TOOLS)
        find_package(CLI11 REQUIRED)
        find_package(PkgConfig REQUIRED)
        pkg_check_modules(HTTPLIB REQUIRED cpp-httplib)
        pkg_check_modules(RE2 REQUIRED re2)
        vxprivacy_part(CLI11 BSD-3-Clause CONTAINS "${CLI11_VERSION}")
        vxprivacy_part(cpp-httplib MIT DEPENDS_ON "${HTTPLIB_VERSION}")
        vxprivacy_part(re2 BSD-3-Clause DEPENDS_ON "${RE2_VERSION}")
    endif()
endfunction()

# To be called after all else that is installed.
function(vxprivacy_install_parts_list)
    vxprivacy_find_parts()
    get_property(parts GLOBAL PROPERTY VXPRIVACY_PARTS)
    get_property(relations GLOBAL PROPERTY VXPRIVACY_RELATIONS)
    string(UUID number NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 TYPE SHA1
        NAME "${PROJECT_VERSION}${parts}")
    set(file ${PROJECT_BINARY_DIR}/vxprivacy.spdx.json)
    set(list ${CMAKE_INSTALL_DATADIR}/doc/vxprivacy/vxprivacy.spdx.json)
    file(WRITE ${file}.in "{
  \"spdxVersion\": \"SPDX-2.3\",
  \"dataLicense\": \"CC0-1.0\",
  \"SPDXID\": \"SPDXRef-DOCUMENT\",
  \"name\": \"VXPrivacy-${PROJECT_VERSION}\",
  \"documentNamespace\": \"https://spdx.org/spdxdocs/VXPrivacy-${PROJECT_VERSION}-${number}-@number@\",
  \"creationInfo\": {
    \"created\": \"@created@\",
    \"creators\": [\"Tool: CMake-${CMAKE_VERSION}\"]
  },
  \"packages\": [
    {
      \"name\": \"VXPrivacy\",
      \"SPDXID\": \"SPDXRef-VXPrivacy\",
      \"versionInfo\": \"${PROJECT_VERSION}\",
      \"downloadLocation\": \"NOASSERTION\",
      \"packageVerificationCode\": {
        \"packageVerificationCodeValue\": \"@verification@\",
        \"packageVerificationCodeExcludedFiles\": [\"./${list}\"]
      },
      \"licenseDeclared\": \"Apache-2.0\"
    }${parts}
  ],
  \"files\": [@files@
  ],
  \"relationships\": [
    {
      \"spdxElementId\": \"SPDXRef-DOCUMENT\",
      \"relationshipType\": \"DESCRIBES\",
      \"relatedSpdxElement\": \"SPDXRef-VXPrivacy\"
    }${relations}@contains@
  ]
}
")
    # The time is that of the installation, or SOURCE_DATE_EPOCH's.
    install(CODE "
        include(\"${CMAKE_CURRENT_FUNCTION_LIST_DIR}/InstalledFiles.cmake\")
        string(TIMESTAMP created \"%Y-%m-%dT%H:%M:%SZ\" UTC)
        string(TIMESTAMP number \"%s\" UTC)
        configure_file(\"${file}.in\" \"${file}\" @ONLY)"
        COMPONENT development)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vxprivacy COMPONENT development)
endfunction()
