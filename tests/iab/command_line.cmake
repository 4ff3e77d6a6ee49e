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
