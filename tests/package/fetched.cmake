# Builds a project that fetches VXPrivacy; what it installs is its program alone.
file(REMOVE_RECURSE ${WORK})

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/fetched -B ${WORK}/build -G Ninja
    -DFETCHCONTENT_SOURCE_DIR_VXPRIVACY=${SOURCE_DIR} -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0)
run(${CMAKE_COMMAND} --build ${WORK}/build --target fetched)
run(${CMAKE_COMMAND} --install ${WORK}/build --prefix ${WORK}/installed)
run(${CMAKE_COMMAND} -E chdir ${WORK} installed/bin/fetched)
file(GLOB_RECURSE installed RELATIVE ${WORK}/installed ${WORK}/installed/*)
if(NOT installed STREQUAL "bin/fetched")
    message(FATAL_ERROR "installed: ${installed}")
endif()
