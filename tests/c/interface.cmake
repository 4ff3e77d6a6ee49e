# Runs the programs in C with two directories of packaged documents, one for each mode.
cmake_policy(VERSION 3.23)
file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE_DIR}/examples/embedding/resources/privacy.json DESTINATION ${WORK}/category)
file(COPY ${SOURCE_DIR}/samples/gvl/vendor-list.json DESTINATION ${WORK}/iab)
configure_file(${SOURCE_DIR}/samples/iab.json ${WORK}/iab/privacy.json COPYONLY)
execute_process(COMMAND_ERROR_IS_FATAL ANY COMMAND ${PROGRAM}
    ${WORK}/category.sqlite ${WORK}/category ${WORK}/iab.sqlite ${WORK}/iab)
