# Installs the build in BINARY_DIR, moves the tree, and builds and runs examples/consumer against it
# in a directory whose name has a blank.
set(work "${BINARY_DIR}/consumer test")
file(REMOVE_RECURSE "${work}")

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(${CMAKE_COMMAND} --install "${BINARY_DIR}" --prefix "${work}/installed")
file(RENAME "${work}/installed" "${work}/moved")
run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/examples/consumer" -B "${work}/build" -G Ninja
    "-DCMAKE_PREFIX_PATH=${work}/moved" -DCMAKE_BUILD_TYPE=Debug)
run(${CMAKE_COMMAND} --build "${work}/build")
run(${CMAKE_COMMAND} -E chdir "${work}" "${work}/build/consumer")
