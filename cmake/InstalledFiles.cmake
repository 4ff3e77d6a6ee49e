# Run at the installation: what a list in SPDX 2.3 says of the files installed so far, each with its checksums.
set(files)
set(contains)
set(sums)
set(number 0)
foreach(installed IN LISTS CMAKE_INSTALL_MANIFEST_FILES)
    set(path "$ENV{DESTDIR}${installed}")
    if(IS_SYMLINK "${path}")
        continue()
    endif()
    math(EXPR number "${number} + 1")
    file(RELATIVE_PATH name "${CMAKE_INSTALL_PREFIX}" "${installed}")
    file(SHA1 "${path}" sha1)
    file(SHA256 "${path}" sha256)
    list(APPEND sums ${sha1})
    list(APPEND files "
    {
      \"fileName\": \"./${name}\",
      \"SPDXID\": \"SPDXRef-File-${number}\",
      \"checksums\": [
        { \"algorithm\": \"SHA1\", \"checksumValue\": \"${sha1}\" },
        { \"algorithm\": \"SHA256\", \"checksumValue\": \"${sha256}\" }
      ]
    }")
    string(APPEND contains ",
    {
      \"spdxElementId\": \"SPDXRef-VXPrivacy\",
      \"relationshipType\": \"CONTAINS\",
      \"relatedSpdxElement\": \"SPDXRef-File-${number}\"
    }")
endforeach()
list(JOIN files "," files)
# The code of the whole package, as SPDX defines it.
list(SORT sums)
list(JOIN sums "" sums)
string(SHA1 verification "${sums}")
