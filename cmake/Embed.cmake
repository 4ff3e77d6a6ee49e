# Makes files part of a target:
#
#   vxprivacy_embed(TARGET FUNCTION name::of::function HEADER path/of/header.h BASE directory
#                   FILES file...)
#
# defines the function, which the header declares to return vx::web::StaticFiles: the files under
# their paths in BASE, with their media types. They are written into a source when one has changed;
# this file is also the script that writes it. A file "all.css=a.css+b.css" is made of others, one
# behind the other.

function(vxprivacy_embed target)
    cmake_parse_arguments(PARSE_ARGV 1 embed "" "FUNCTION;HEADER;BASE" "FILES")
    string(REGEX REPLACE ".*:" "" name ${embed_FUNCTION})
    set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded/${name}.cpp)
    string(REGEX REPLACE "[^;=]+=" "" parts "${embed_FILES}")
    string(REPLACE "+" ";" paths "${parts}")
    list(TRANSFORM paths PREPEND "${embed_BASE}/")
    list(JOIN embed_FILES "|" files)
    set(script ${CMAKE_CURRENT_FUNCTION_LIST_FILE})
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -DFUNCTION=${embed_FUNCTION} -DHEADER=${embed_HEADER}
                -DBASE=${embed_BASE} -DFILES=${files} -DOUTPUT=${output} -P ${script}
        DEPENDS ${paths} ${script}
        VERBATIM)
    target_sources(${target} PRIVATE ${output})
endfunction()

function(vxprivacy_media_type file result)
    set(types .css text/css .html text/html .js text/javascript .json application/json
        .svg image/svg+xml)
    cmake_path(GET file EXTENSION LAST_ONLY extension)
    list(FIND types "${extension}" index)
    if(index EQUAL -1)
        message(FATAL_ERROR "${file}: no media type is known for this extension")
    endif()
    math(EXPR index "${index} + 1")
    list(GET types ${index} type)
    set(${result} ${type} PARENT_SCOPE)
endfunction()

function(vxprivacy_write_embedded)
    string(REPLACE "|" ";" files "${FILES}")
    foreach(file IN LISTS files)
        string(REGEX REPLACE "^[^=]+=" "" parts "${file}")
        string(REGEX REPLACE "=.*" "" file "${file}")
        vxprivacy_media_type(${file} type)
        string(REPLACE "+" ";" parts "${parts}")
        set(bytes "")
        foreach(part IN LISTS parts)
            file(READ "${BASE}/${part}" part_bytes HEX)
            string(APPEND bytes "${part_bytes}")
        endforeach()
        string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
        list(LENGTH arrays number)
        # The zero at the end is for files that are empty.
        list(APPEND arrays "    static constexpr char kFile${number}[] = {${bytes}'\\0'}\;\n")
        string(APPEND entries "        {\"${file}\", \"${type}\", "
                              "{kFile${number}, sizeof kFile${number} - 1}},\n")
    endforeach()
    list(JOIN arrays "" arrays)
    file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

vx::web::StaticFiles ${FUNCTION}() {
${arrays}    static constexpr vx::web::StaticFile kFiles[] = {
${entries}    };
    return vx::web::StaticFiles(kFiles);
}
")
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
    vxprivacy_write_embedded()
endif()
