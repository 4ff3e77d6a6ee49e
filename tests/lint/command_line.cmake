# What `vxprivacy lint` prints, and its exit statuses.

set(scratch ${CMAKE_CURRENT_BINARY_DIR}/lint_command_line.json)
set(subcommand lint)
include(${CMAKE_CURRENT_LIST_DIR}/../expect.cmake)

file(WRITE ${scratch} "{\"information\":{\"version\":1},\n \"categories\": []}")
expect(1 "standard input:2:16: warning: /categories: There are no categories[^\n]+\n    Add [^\n]+\n" "")
expect(1 ".*lint_command_line.json:2:16: warning: .*" "" ${scratch})
expect(1 "\\[.*\"severity\": \"warning\",.*\"line\": 2,.*\"column\": 16,.*\\]\n" "" --json -)
expect(0 "" "" ${SAMPLES}/category.json)
expect(0 "\\[\\]\n" "" --json ${SAMPLES}/category.json)
expect(1 ".*lint_command_line.json:2:16: warning: .*" "" ${SAMPLES}/category.json ${scratch})
expect(1 "\\[.*\"file\": \".*lint_command_line.json\".*\\]\n" "" --json ${SAMPLES}/category.json ${scratch})
expect(2 ".*lint_command_line.json:2:16: warning: .*" "${one_line}" ${scratch}.not-there ${scratch})
expect(2 "" "${one_line}" ${scratch}.not-there)
expect(2 "" "${one_line}" ${CMAKE_CURRENT_BINARY_DIR})
expect(2 "" "${one_line}" --unknown)

# A name in the document cannot break a line of the output.
file(WRITE ${scratch} "{\"categories\":[],\"information\":{\"version\":1},\"texts\":{\"generi\\nc\":1}}")
execute_process(COMMAND ${PROGRAM} lint ${scratch} OUTPUT_VARIABLE output)
string(REGEX REPLACE "[^\n]*lint_command_line.json:1:[0-9]+: [^\n]+\n    [^\n]+\n" "" rest "${output}")
if(NOT output MATCHES "generi.c" OR NOT rest STREQUAL "")
    message(SEND_ERROR "not two lines for each finding: ${output}")
endif()

# A vendor list, and translations of it.
set(subcommand gvl)
file(WRITE ${scratch} "{\"vendorListVersion\":1,\"purposes\":{\"1\":{\"name\":\"a\"}},\"vendors\":{}}")
expect(0 "" "" ${scratch})
expect(0 "" "" -)
expect(1 ".*command_line.json:1:1: error: /specialPurposes: [^\n]+\n.*" "" ${SAMPLES}/gvl/vendor-list.json ${scratch})
expect(0 "" "" ${SAMPLES}/gvl/vendor-list.json ${SAMPLES}/gvl/purposes-de.json ${SAMPLES}/gvl/purposes-fr.json)
expect(2 "" "${one_line}" ${scratch}.not-there)
expect(2 "" "${one_line}")
expect(2 "" "${one_line}" --vendors 1 ${scratch})
file(REMOVE ${scratch})
