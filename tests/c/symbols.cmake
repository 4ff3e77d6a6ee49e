# The shared library shows its own functions and nothing else.
cmake_policy(VERSION 3.23)
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n" ";" symbols "${symbols}")
list(FILTER symbols EXCLUDE REGEX "^(vx_[a-z_]+@@[A-Z0-9_]+ T |VXPRIVACY_[0-9]+ A |$)")
if(symbols)
    message(FATAL_ERROR "shown too: ${symbols}")
endif()
