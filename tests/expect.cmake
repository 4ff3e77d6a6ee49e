# For tests of the command line, which set `scratch`, the file that is standard input; `subcommand`
# where they test one.

# expect(STATUS OUTPUT ERRORS ARGUMENT...): regular expressions for the whole of both streams.
function(expect status output errors)
    execute_process(COMMAND ${PROGRAM} ${subcommand} ${ARGN} INPUT_FILE ${scratch}
        RESULT_VARIABLE actual_status OUTPUT_VARIABLE actual_output ERROR_VARIABLE actual_errors)
    if(NOT actual_status STREQUAL status OR NOT actual_output MATCHES "^${output}$"
       OR NOT actual_errors MATCHES "^${errors}$")
        message(SEND_ERROR "${ARGN}: status ${actual_status}\n${actual_output}${actual_errors}")
    endif()
endfunction()

set(one_line "vxprivacy[^\n]+\n")
