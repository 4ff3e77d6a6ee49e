"""Holds the shape of the source tree. Each check is a test of its own: structure.py CHECK."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ["vxprivacy", "services", "hosts", "tools", "tests", "bench", "examples", "fuzz"]

# What each folder may include beside itself; the longest matching folder speaks.
ARROWS = {
    "vxprivacy/platform/foundation": [],
    "vxprivacy/platform/core": ["vxprivacy/platform/foundation"],
    "vxprivacy/platform": ["vxprivacy/platform"],
    "vxprivacy/configuration": ["vxprivacy/platform"],
    "vxprivacy/engine": ["vxprivacy/configuration", "vxprivacy/platform"],
    "vxprivacy/category_center": ["vxprivacy/engine", "vxprivacy/configuration", "vxprivacy/platform"],
    "vxprivacy/iab_center": ["vxprivacy/engine", "vxprivacy/configuration", "vxprivacy/platform"],
    "services": ["vxprivacy"],
    "hosts": ["vxprivacy"],
    "tools": ["vxprivacy", "services", "hosts"],
    "tests": ["vxprivacy", "services", "hosts", "tools"],
    "bench": ["vxprivacy", "services", "hosts"],
    "fuzz": ["vxprivacy", "services", "hosts", "tools"],
    "examples": ["vxprivacy", "services", "hosts"],
}
THIRD_PARTY_IN_MODULE = {"vxprivacy/platform/foundation/JSONValue.cpp": ["simdjson.h"]}


def sources():
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                yield path.relative_to(ROOT).as_posix()


def includes(source, pattern):
    text = (ROOT / source).read_text(encoding="utf-8")
    return re.findall(rf"^\s*#\s*include\s+{pattern}", text, re.MULTILINE)


def ours(source):
    return includes(source, r'"([^"]+)"')


def lies_in(path, folder):
    return path.startswith(folder + "/")


def arrows():
    """Includes are repository paths and follow the arrows between folders."""
    for source in sources():
        folder = max((f for f in ARROWS if lies_in(source, f)), key=len)
        for included in ours(source):
            if not (ROOT / included).is_file():
                yield f'{source}: "{included}" is no path in the repository'
            elif not any(lies_in(included, f) for f in [folder, *ARROWS[folder]]):
                yield f"{source}: {folder} may not include {included}"


def module():
    """The module includes the standard library and itself."""
    for source in sources():
        if lies_in(source, "vxprivacy"):
            for included in includes(source, r"<([^>]+)>"):
                standard = re.fullmatch(r"[a-z_]+", included)
                if not standard and included not in THIRD_PARTY_IN_MODULE.get(source, []):
                    yield f"{source}: <{included}> is not of the standard library"


def circles():
    """No include runs in a circle."""
    state = {}

    def visit(source, trail):
        if state.get(source) == "done" or not (ROOT / source).is_file():
            return
        if source in trail:
            yield " -> ".join(trail[trail.index(source):] + [source])
            return
        for included in ours(source):
            yield from visit(included, trail + [source])
        state[source] = "done"

    for source in sources():
        yield from visit(source, [])


def own_header_first():
    """A source includes its own header before anything else, so that the header stands alone."""
    for source in sources():
        header = source.removesuffix(".cpp") + ".h"
        if source.endswith(".cpp") and (ROOT / header).is_file():
            first = includes(source, r'[<"]([^">]+)[">]')[:1]
            if first != [header]:
                yield f"{source}: the first include is not {header}"


def lists():
    """Every source, and every header of the libraries, stands in a CMakeLists.txt."""
    for source in sources():
        if source.endswith(".h") and not lies_in(source, "vxprivacy"):
            continue
        listing = (ROOT / source).parent
        while not (listing / "CMakeLists.txt").is_file():
            listing = listing.parent
        name = (ROOT / source).relative_to(listing).as_posix()
        text = (listing / "CMakeLists.txt").read_text(encoding="utf-8")
        if not re.search(rf"(^|[\s(]){re.escape(name)}($|[\s)])", text):
            yield f"{source}: not listed in {(listing / 'CMakeLists.txt').relative_to(ROOT)}"


def examples_in_docs():
    """Every C++ block of the documentation stands, letter for letter, in a compiled example."""
    compiled = [p.read_text(encoding="utf-8") for p in (ROOT / "examples").rglob("*.cpp")]
    for page in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        for block in re.findall(r"^```cpp\n(.*?)^```", page.read_text(encoding="utf-8"), re.M | re.S):
            if not any(block in example for example in compiled):
                yield f"{page.name}: not in examples/:\n{block}"


def links_in_docs():
    """Relative links of the documentation lead somewhere."""
    for page in [*ROOT.glob("*.md"), *sorted((ROOT / "docs").glob("*.md")), ROOT / "bench/README.md"]:
        for link in re.findall(r"\]\(([^)#:]+)\)", page.read_text(encoding="utf-8")):
            if not (page.parent / link).exists():
                yield f"{page.relative_to(ROOT)}: {link} is not there"


def main():
    faults = list(globals()[sys.argv[1]]())
    print("\n".join(faults))
    return bool(faults)


sys.exit(main())
