"""Prints the public headers: those that the CMakeLists.txt files install."""

import pathlib
import re

for listing in sorted(pathlib.Path("vxprivacy").rglob("CMakeLists.txt")):
    for headers in re.findall(r"FILE_SET HEADERS [^)]*?FILES\s+([^)]*)\)", listing.read_text(encoding="utf-8")):
        for header in headers.split():
            print((listing.parent / header).as_posix())
