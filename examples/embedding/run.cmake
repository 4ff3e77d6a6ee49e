# Runs PROGRAM, the code of the README, in a directory of its own beside the resources that ship with it:
# who says yes is measured, and is not asked again; who says no is not measured.
file(REMOVE_RECURSE ${WORK})

# expect(FOLDER INPUT OUTPUT)
function(expect folder input output)
    file(MAKE_DIRECTORY ${WORK}/${folder})
    file(COPY ${CMAKE_CURRENT_LIST_DIR}/resources DESTINATION ${WORK}/${folder})
    file(WRITE ${WORK}/input "${input}")
    execute_process(COMMAND ${PROGRAM} WORKING_DIRECTORY ${WORK}/${folder} INPUT_FILE ${WORK}/input
        OUTPUT_VARIABLE actual COMMAND_ERROR_IS_FATAL ANY)
    if(NOT actual STREQUAL output)
        message(SEND_ERROR "${folder}: ${actual}")
    endif()
endfunction()

set(question "May we measure how you use this program? [y/n] ")
expect(yes "y\n" "${question}measuring\n")
expect(yes "" "measuring\n")
expect(no "n\n" "${question}not measuring\n")
