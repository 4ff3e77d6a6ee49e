# The program's exit statuses and what it says on each stream.

set(scratch ${CMAKE_CURRENT_BINARY_DIR}/command_line_session.jsonl)
include(${CMAKE_CURRENT_LIST_DIR}/../expect.cmake)

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
