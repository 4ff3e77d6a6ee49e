# Installs the build in BINARY_DIR, moves the tree into a directory whose name has a blank, looks at
# what was installed, and builds and runs projects against it. SHARED says that the libraries are shared,
# and there is no tool.
cmake_policy(VERSION 3.23)
set(work "${BINARY_DIR}/consumer test")
file(REMOVE_RECURSE "${work}")

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# build_project(PROJECT FOLDER)
function(build_project project folder)
    set(build "${work}/build of ${project}")
    run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/${folder}" -B "${build}" -G Ninja
        "-DCMAKE_PREFIX_PATH=${work}/moved" -DCMAKE_BUILD_TYPE=Debug)
    run(${CMAKE_COMMAND} --build "${build}")
endfunction()

# build_and_run(PROJECT FOLDER): the project's executable has its name.
function(build_and_run project folder)
    build_project(${project} ${folder})
    run(${CMAKE_COMMAND} -E chdir "${work}" "${work}/build of ${project}/${project}")
endfunction()

# Runs a program that is to be the one of the README.
function(run_readme program)
    run(${CMAKE_COMMAND} "-DPROGRAM=${work}/${program}" "-DWORK=${work}/run"
        -P "${SOURCE_DIR}/examples/embedding/run.cmake")
endfunction()

run(${CMAKE_COMMAND} --install "${BINARY_DIR}" --prefix "${work}/installed")
file(RENAME "${work}/installed" "${work}/moved")

file(GLOB_RECURSE strangers RELATIVE "${work}/moved" "${work}/moved/*")
list(FILTER strangers EXCLUDE REGEX "^(include/vxprivacy|lib[^/]*)/")
list(SORT strangers)
set(expected share/doc/vxprivacy/vxprivacy.spdx.json)
if(NOT SHARED)
    run("${work}/moved/bin/vxprivacy" lint "${SOURCE_DIR}/samples/category.json")
    list(APPEND expected bin/vxprivacy share/bash-completion/completions/vxprivacy
        share/man/man1/vxprivacy.1 share/zsh/site-functions/_vxprivacy)
    list(SORT expected)
endif()
if(NOT strangers STREQUAL expected)
    message(FATAL_ERROR "installed outside include/vxprivacy and lib: ${strangers}")
endif()
# The list of parts names what was found to build with, each with its version, and every file with its checksums.
file(READ "${work}/moved/share/doc/vxprivacy/vxprivacy.spdx.json" list)
file(GLOB_RECURSE installed RELATIVE "${work}/moved" "${work}/moved/*")
foreach(file IN LISTS installed)
    file(SHA256 "${work}/moved/${file}" sum)
    string(FIND "${list}" "\"./${file}\"" name)
    string(FIND "${list}" "${sum}" checksum)
    if(NOT IS_SYMLINK "${work}/moved/${file}" AND NOT file MATCHES "spdx" AND (name EQUAL -1 OR checksum EQUAL -1))
        message(FATAL_ERROR "the list of parts has not ${file} with its checksum ${sum}")
    endif()
endforeach()
string(JSON files LENGTH "${list}" files)
string(JSON parts LENGTH "${list}" packages)
string(JSON relations LENGTH "${list}" relationships)
string(JSON created GET "${list}" creationInfo created)
foreach(part RANGE 1 ${parts})
    math(EXPR index "${part} - 1")
    string(JSON name GET "${list}" packages ${index} name)
    string(JSON version GET "${list}" packages ${index} versionInfo)
    list(APPEND names ${name})
endforeach()
math(EXPR related "${parts} + ${files}")
if(NOT "${names}" MATCHES "^VXPrivacy;simdjson;fast_float;sqlite;" OR NOT related EQUAL relations OR
        NOT created MATCHES "^20[0-9-]+T[0-9:]+Z$")
    message(FATAL_ERROR "the list of parts is wrong: ${list}")
endif()

# No installed header includes one that is not.
file(GLOB_RECURSE headers RELATIVE "${work}/moved/include" "${work}/moved/include/*.h")
list(TRANSFORM headers REPLACE "(.+)" "#include <\\1>\n")
list(JOIN headers "" headers)
file(WRITE "${work}/headers.cpp" "${headers}")
run(${CXX} -std=c++20 -fsyntax-only "-I${work}/moved/include" "${work}/headers.cpp")

build_and_run(consumer examples/consumer)
build_and_run(testing examples/testing)
build_and_run(application tests/package/application)
run_readme("build of application/readme")
build_project(in_c tests/package/in_c)
run_readme("build of in_c/in_c")

# build_by_pkg_config(PROGRAM COMPILER SOURCE MODULE...)
find_program(PKG_CONFIG pkg-config REQUIRED)
file(GLOB_RECURSE modules "${work}/moved/vxprivacy-c.pc")
cmake_path(GET modules PARENT_PATH modules)
function(build_by_pkg_config program compiler source)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${modules}"
            ${PKG_CONFIG} --cflags --libs ${ARGN}
        OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${flags}")
    run(${compiler} "${SOURCE_DIR}/${source}" -o "${work}/${program}" ${flags})
endfunction()

cmake_path(GET modules PARENT_PATH libraries)
set(ENV{LD_LIBRARY_PATH} "${libraries}")
build_by_pkg_config("by pkg-config" "${CXX};-std=c++20" examples/embedding/main.cpp vxprivacy-services)
run_readme("by pkg-config")
build_by_pkg_config("in C" ${CC} examples/c/main.c vxprivacy-c)
run_readme("in C")

# A shared library shows what the installed headers declare: no class of its inside, nothing of the libraries in it.
file(GLOB shared "${libraries}/libvxprivacy_*.so")
list(FILTER shared EXCLUDE REGEX "libvxprivacy_c[.]so$") # which tests/c looks at
list(LENGTH shared number)
if(SHARED AND NOT number EQUAL 5)
    message(FATAL_ERROR "the shared libraries are: ${shared}")
endif()
file(GLOB_RECURSE headers RELATIVE "${SOURCE_DIR}" "${SOURCE_DIR}/vxprivacy/*.h")
foreach(header IN LISTS headers)
    if(NOT EXISTS "${work}/moved/include/${header}")
        file(STRINGS "${SOURCE_DIR}/${header}" classes REGEX "^class [^;]*$")
        list(TRANSFORM classes REPLACE "^class (VXPRIVACY_EXPORT )?([A-Za-z]+).*" "\\2")
        list(APPEND inside ${classes})
    endif()
endforeach()
list(JOIN inside "|" inside)
foreach(library IN LISTS shared)
    execute_process(COMMAND ${NM} --dynamic --defined-only --demangle --format=posix "${library}"
        OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
    foreach(symbol IN LISTS symbols)
        if(NOT symbol MATCHES "^([a-z -]+ (for|to) )?vx::" OR symbol MATCHES "^[^<(]*::(${inside})(::| )")
            message(SEND_ERROR "${library} shows ${symbol}")
        endif()
    endforeach()
endforeach()
