# What `vxprivacy tc` prints, and its exit statuses.

set(scratch ${CMAKE_CURRENT_BINARY_DIR}/tc_command_line.json)
set(subcommand tc)
include(${CMAKE_CURRENT_LIST_DIR}/../expect.cmake)

# expect_fault(JSON ERROR): the document cannot be encoded.
function(expect_fault json error)
    file(WRITE ${scratch} "${json}")
    expect(1 "" "vxprivacy tc: ${error}\n" encode ${scratch})
endfunction()

set(core [==[{"Core":{"Created":"2026-11-21T16:00:00.5Z","CmpId":90,"ConsentLanguage":"DE",
    "VendorConsent":{"Vendors":[1,2,3,8]}},"PublisherTC":{"NumCustomPurposes":2}}]==])

file(WRITE ${scratch} "${core}")
execute_process(COMMAND ${PROGRAM} tc encode ${scratch}
    OUTPUT_VARIABLE text OUTPUT_STRIP_TRAILING_WHITESPACE)
expect(0 "${text}\n" "" encode -)
expect(0 "Core\n  Created +2026-11-21T16:00:00.5Z\n.*VendorConsent +4 of 8\n +1-3 8\n.*PublisherTC\n.*"
    "" decode ${text})
expect(0 "{\n  \"Core\": {\n    \"Created\": \"2026-11-21T16:00:00.5Z\",.*\"MaxVendorId\": 8,.*}\n"
    "" decode --json ${text})
expect(1 "" "vxprivacy tc: Core.Created, bit 6: [^\n]+\n" decode C)
expect(2 "" "${one_line}" encode ${scratch}.not-there)
expect(2 "" "${one_line}" encode)
expect(2 "" "${one_line}")

# What is printed as JSON is encoded to the same string again; the string may come from a pipe.
execute_process(COMMAND ${PROGRAM} tc encode ${scratch} COMMAND ${PROGRAM} tc decode --json -
    COMMAND ${PROGRAM} tc encode - OUTPUT_VARIABLE again OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT again STREQUAL text)
    message(SEND_ERROR "${text} came back as ${again}")
endif()

# Rules in force: with bits and source, as JSON, line by line, and by lists.
set(old CQuEYAFQuEYAFBaAAADEARCAAAAAANAQAC64AEOEAAAAIMACAAE.QAAo)
expect(1 "Core.LastUpdated, bits 42 to 77: it has an hour[^\n]+ \\[dates\\]\n +Consent string[^\n]+\n.*purpose: 1 4 .*AllowedVendors.*"
    "" check ${old})
expect(1 "\\[\n  {\n    \"rule\": \"format\",\n    \"field\": \"Core.Created\",\n.*" "" check --json C)
file(WRITE ${scratch} [==[{"Core":{"Created":"2026-11-21T00:00:00Z","LastUpdated":"2026-11-21T00:00:00Z",
    "CmpId":300,"VendorListVersion":17,"TcfPolicyVersion":4,"IsServiceSpecific":true,"PublisherCC":"FR",
    "VendorLegitimateInterest":{"Vendors":[1,2,3]}},"DisclosedVendors":{"Vendors":[1,2,3,4,5]}}]==])
execute_process(COMMAND ${PROGRAM} tc encode ${scratch}
    OUTPUT_VARIABLE valid OUTPUT_STRIP_TRAILING_WHITESPACE)
expect(0 "No rule is broken.\n" "" check ${valid})
file(WRITE ${scratch} "${valid}\n${old}\nC\n")
expect(1 "Line 2\n.*Line 3\n.*" "" check --lines ${scratch})
expect(1 "\\[\\]\n\\[{.*\n\\[{\"rule\":\"format\".*}\\]\n" "" check --lines ${scratch} --json)
expect(1 "{\"Core\":.*}\n{\"Core\":.*}\n{\"error\":\"Core.Created, bit 6: [^\n]+}\n" "" decode --lines ${scratch})
execute_process(COMMAND ${PROGRAM} tc decode --lines ${scratch} COMMAND ${PROGRAM} tc encode --lines -
    OUTPUT_VARIABLE again ERROR_VARIABLE error)
if(NOT again STREQUAL "${valid}\n${old}\n\n" OR NOT error MATCHES "^vxprivacy tc: line 3: /error is not known\n$")
    message(SEND_ERROR "of lines came ${again} and ${error}")
endif()
file(WRITE ${scratch} [==[{"gvlSpecificationVersion":3,"vendorListVersion":17,"tcfPolicyVersion":4,"purposes":{"1":{"id":1},"2":{"id":2}},
    "vendors":{"1":{"id":1,"specialPurposes":[1],"deletedDate":"2024-01-31T00:00:00Z"},"2":{"id":2,"purposes":[1]},
    "3":{"id":3,"legIntPurposes":[2]},"4":{"id":4,"specialPurposes":[1]}}}]==])
expect(1 "[^\n]+deleted vendor: 1 .*no vendor: 5 .*special purpose has vendor: 2 .*must be 1, has vendor: 4 .*"
    "" check ${valid} --gvl ${scratch})
file(WRITE ${scratch} [==[{"cmps":{"300":{"id":300,"deletedDate":"2024-01-31T00:00:00Z"}}}]==])
expect(1 "Core.CmpId, bits 78 to 89: 300 is deleted[^\n]+\n[^\n]+\n" "" check ${valid} --cmps ${scratch})
expect(2 "" "${one_line}" check ${valid} --gvl ${scratch})
expect(2 "" "${one_line}" check)

expect_fault("{" "byte 2: [^\n]+")
expect_fault("[]" "the document must be an object")
expect_fault([==[{"Core":{"CmpId":4096}}]==] "/Core/CmpId must be an integer from 0 to 4095")
expect_fault([==[{"Core":{"CmpId":-1}}]==] "/Core/CmpId must be [^\n]+")
expect_fault([==[{"Core":{"CmpId":1.5}}]==] "/Core/CmpId must be [^\n]+")
expect_fault([==[{"Core":{"cmpId":1}}]==] "/Core/cmpId is not known")
expect_fault([==[{"core":{}}]==] "/core is not known")
expect_fault([==[{"Core":{"Created":"2026-02-29T00:00:00Z"}}]==] "/Core/Created must be a time [^\n]+")
expect_fault([==[{"Core":{"Created":"2187-10-07T20:14:33.6Z"}}]==] "/Core/Created must be a time [^\n]+")
expect_fault([==[{"Core":{"ConsentLanguage":"de"}}]==] "/Core/ConsentLanguage must be two letters [^\n]+")
expect_fault([==[{"Core":{"PurposesConsent":[1,25]}}]==]
    "/Core/PurposesConsent/1 must be an integer from 1 to 24")
expect_fault([==[{"DisclosedVendors":{"MaxVendorId":3,"Vendors":[4]}}]==]
    "/DisclosedVendors/MaxVendorId must not [^\n]+")
expect_fault([==[{"PublisherTC":{"CustomPurposesConsent":[1]}}]==]
    "/PublisherTC/CustomPurposesConsent/0 must [^\n]+")
expect_fault([==[{"Core":{"PubRestrictions":[{"PurposeId":1,"RestrictionType":3,"Vendors":[1]}]}}]==]
    "/Core/PubRestrictions/0/RestrictionType must be 0, 1 or 2")
file(REMOVE ${scratch})
