# Runs PROGRAM in WORK beside a configuration: what the user touches is painted, said and saved, and who
# leaves has decided nothing.
file(REMOVE_RECURSE ${WORK})
file(COPY ${CMAKE_CURRENT_LIST_DIR}/../embedding/resources/privacy.json DESTINATION ${WORK})

set(screen "We would like to know which parts of this program are
used, so that we can make them better. You can change your
mind at any time.

Measurement                                         [1] off
Counts which parts of the program are used, without
building a profile of you.
> ")
string(REPLACE " [1] off" "  [1] on" touched "${screen}")

# expect(INPUT OUTPUT)
function(expect input output)
    file(WRITE ${WORK}/input "${input}")
    execute_process(COMMAND ${PROGRAM} ${WORK} INPUT_FILE ${WORK}/input OUTPUT_VARIABLE actual
        COMMAND_ERROR_IS_FATAL ANY)
    if(NOT actual STREQUAL output)
        message(SEND_ERROR "${actual}")
    endif()
endfunction()

expect("1\nleave\n" "${screen}Measurement: on\n${touched}")
expect("9\n1\nsave\n"
    "${screen}There is no such number\n> Measurement: on\n${touched}accepted: PRIVACY_CAT_1\n")
expect("" "${touched}accepted: PRIVACY_CAT_1\n")
