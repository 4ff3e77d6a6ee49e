# Run by CPack when the files of the packages are in place.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_DIRECTORY}/*.1")
list(FILTER pages INCLUDE REGEX "/man1/") # not libraries of a version
foreach(page IN LISTS pages)
    execute_process(COMMAND gzip -9n "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
