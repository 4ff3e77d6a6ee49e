# The program's exit statuses and what it says on each stream.

set(scratch ${CMAKE_CURRENT_BINARY_DIR}/command_line_session.jsonl)

# expect(STATUS OUTPUT ERRORS ARGUMENT...): regular expressions for the whole of both streams.
function(expect status output errors)
    execute_process(COMMAND ${PROGRAM} ${ARGN} INPUT_FILE ${scratch}
        RESULT_VARIABLE actual_status OUTPUT_VARIABLE actual_output ERROR_VARIABLE actual_errors)
    if(NOT actual_status STREQUAL status OR NOT actual_output MATCHES "^${output}$"
       OR NOT actual_errors MATCHES "^${errors}$")
        message(SEND_ERROR "${ARGN}: status ${actual_status}\n${actual_output}${actual_errors}")
    endif()
endfunction()

set(one_line "vxprivacy[^\n]+\n")

file(WRITE ${scratch} "{\"do\":\"store\"}\n{\"do\":\"ask\",\"what\":\"shouldDisplayPrivacyCenter\"}")
set(printed "{\"step\":1,\"result\":{}}\n{\"step\":2,\"result\":true}\n")
expect(0 "${printed}" "" play)
expect(0 "${printed}" "" play -)
expect(0 "${printed}" "" play ${scratch})
expect(0 "${VERSION}\n" "" --version)
expect(0 ".*play.*" "" --help)
expect(0 ".*FILE.*" "" play --help)
expect(2 "" "${one_line}")
expect(2 "" "${one_line}" dance)
expect(2 "" "${one_line}" --unknown)
expect(2 "" "${one_line}" play --unknown)
expect(2 "" "${one_line}" play ${scratch} ${scratch})
expect(2 "" "${one_line}" play ${scratch}.not-there)
expect(2 "" "${one_line}" play ${CMAKE_CURRENT_BINARY_DIR})

file(WRITE ${scratch} "{\"do\":\"store\"}\n{\"do\":\"dance\"}\n{\"do\":\"store\"}\n")
expect(2 "{\"step\":1,\"result\":{}}\n{\"step\":2,\"error\":\"unknown step: dance\"}\n" "" play)

file(WRITE ${scratch} "")
expect(0 "" "" play)
file(REMOVE ${scratch})
