"""Holds the shape of the source tree. Each check is a test of its own: structure.py CHECK."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ["vxprivacy", "tools", "tests", "bench", "examples", "fuzz"]
# The module; services and hosts stand beside it and are installed with it.
PLATFORM = [f"vxprivacy/platform/{room}" for room in ("foundation", "core", "iab", "sdk", "ui")]
MODULE = [*PLATFORM, *(f"vxprivacy/{room}" for room in
                       ("configuration", "engine", "category_center", "iab_center"))]
INSTALLED = [*MODULE, "vxprivacy/services/**", "vxprivacy/hosts/**", "vxprivacy/testing", "vxprivacy/c"]

# What each folder may include beside itself: folders, or single headers. "/**" takes in all below;
# otherwise a folder has neither its parent's rights nor its children's.
ARROWS = {
    "vxprivacy/platform/foundation": [],
    "vxprivacy/platform/core": ["vxprivacy/platform/foundation"],
    "vxprivacy/platform/iab": ["vxprivacy/platform/foundation", "vxprivacy/platform/core"],
    "vxprivacy/platform/sdk": ["vxprivacy/platform/foundation"],
    "vxprivacy/platform/ui": ["vxprivacy/platform/foundation", "vxprivacy/platform/core"],
    "vxprivacy/configuration": PLATFORM,
    "vxprivacy/engine": ["vxprivacy/configuration", *PLATFORM],
    "vxprivacy/category_center": ["vxprivacy/engine", "vxprivacy/configuration", *PLATFORM],
    "vxprivacy/iab_center": ["vxprivacy/engine", "vxprivacy/configuration", *PLATFORM],
    "vxprivacy/services/**": MODULE,
    "vxprivacy/hosts/**": MODULE,
    "vxprivacy/testing": [*MODULE, "vxprivacy/services/**"],
    "vxprivacy/c": [*MODULE, "vxprivacy/services/**", "vxprivacy/hosts/**"],
    "tools": [],
    "tools/system": [],
    "tools/samples": ["vxprivacy/hosts/**"],
    "tools/play": ["tools", "tools/system", "vxprivacy/testing", *MODULE],
    "tools/lint": ["tools", "tools/system", *MODULE, "vxprivacy/hosts/**"],
    "tools/gvl": ["tools", "tools/samples", "tools/system", "tools/lint/Lint.h",
                  "tools/lint/FindingsReport.h"],
    "tools/tc": ["tools", "tools/system", "vxprivacy/services/**", "vxprivacy/platform/foundation"],
    "tools/describe": ["tools"],
    "tools/studio/shared": [],
    "tools/studio/page": ["vxprivacy/hosts/**"],
    "tools/studio/world": ["tools/studio/shared", "tools/samples", "tools/system",
                           "tools/play/Script.h", "tools/play/Step.h",
                           "vxprivacy/platform/foundation"],
    "tools/studio/server": ["tools/studio/world", "tools/studio/page", "tools/studio/shared",
                            "tools/lint/Lint.h", "tools/lint/FindingsReport.h", "tools/system",
                            "tools/tc/ModelJSON.h", "vxprivacy/hosts/**"],
    "tools/studio/application": ["tools/studio/shared", "tools/tc/FindingsJSON.h",
                                 "tools/tc/ModelJSON.h", "tools/play/Step.h", "tools/system",
                                 *INSTALLED],
    "tools/studio": ["tools/studio/server", "tools/studio/application", "tools/studio/world",
                     "tools/studio/shared", "tools", "tools/system", "vxprivacy/engine"],
    "bench/**": INSTALLED,
    "fuzz/**": [*INSTALLED, "fuzz", "tools/play", "vxprivacy/testing", "tools/system"],
    "examples/**": [*INSTALLED, "examples/**"],
}
ARROWS["tests/**"] = [folder for folder in ARROWS if folder.startswith(("vxprivacy/", "tools"))]
THIRD_PARTY_IN_MODULE = {
    "vxprivacy/platform/foundation/JSONValue.cpp": ["simdjson.h"],
    "vxprivacy/platform/ui/VisualFormatSyntax.cpp": ["fast_float/fast_float.h"],
}


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


def room(path):
    """The folder of ARROWS in which a file stands; nothing when it stands in none."""
    folder = path.rpartition("/")[0]
    if folder in ARROWS:
        return folder
    around = [f"{parent.as_posix()}/**" for parent in pathlib.PurePosixPath(path).parents]
    return next((each for each in around if each in ARROWS), None)


def arrows():
    """Includes are repository paths and follow the arrows between folders."""
    for source in sources():
        folder = room(source)
        if folder is None:
            yield f"{source}: nothing is said of what its folder may include"
            continue
        for included in ours(source):
            if not (ROOT / included).is_file():
                yield f'{source}: "{included}" is no path in the repository'
            elif not {included, room(included)} & {folder, *ARROWS[folder]}:
                yield f"{source}: {folder} may not include {included}"


def module():
    """The module includes the standard library and itself."""
    for source in sources():
        if any(lies_in(source, folder) for folder in MODULE):
            for included in includes(source, r"<([^>]+)>"):
                standard = re.fullmatch(r"[a-z_]+", included)
                if not standard and included not in THIRD_PARTY_IN_MODULE.get(source, []):
                    yield f"{source}: <{included}> is not of the standard library"


def unit(source):
    """A header and the source of its name are one unit."""
    return source.rsplit(".", 1)[0]


def circles():
    """No include runs in a circle, be it through a header and the source of its name."""
    included = {}
    for source in sources():
        included.setdefault(unit(source), set()).update(unit(i) for i in ours(source) if unit(i) != unit(source))
    done = set()

    def visit(name, trail):
        if name in trail:
            yield " -> ".join([*trail[trail.index(name):], name])
        elif name not in done:
            for below in sorted(included.get(name, ())):
                yield from visit(below, [*trail, name])
            done.add(name)

    for name in included:
        yield from visit(name, [])


def own_header_first():
    """A source includes its own header before anything else, so that the header stands alone."""
    for source in sources():
        header = source.removesuffix(".cpp") + ".h"
        if source.endswith(".cpp") and (ROOT / header).is_file():
            first = includes(source, r'[<"]([^">]+)[">]')[:1]
            if first != [header]:
                yield f"{source}: the first include is not {header}"


def installed_headers():
    """The headers in the FILE_SETs of the libraries of C++."""
    for listing in sorted((ROOT / "vxprivacy").rglob("CMakeLists.txt")):
        for headers in re.findall(r"FILE_SET HEADERS [^)]*?FILES\s+([^)]*)\)", listing.read_text(encoding="utf-8")):
            yield from ((listing.parent / header).relative_to(ROOT).as_posix() for header in headers.split())


def exports():
    """What an installed header declares is marked for export: else a shared library lacks it."""
    for header in installed_headers():
        if lies_in(header, "vxprivacy/c"):
            continue
        text = (ROOT / header).read_text(encoding="utf-8")
        text = re.sub(r"^VXPRIVACY_EXPORT[^;]*;|^template <.*\n.*", "", text, flags=re.M)
        classes = re.findall(r"^(?:class|struct) (\w+)[^\w;]", text, re.M)
        functions = re.findall(r"^(?!inline|constexpr|using)\w[^;{}=\n]*?(\w+)\([^;{}]*\);", text, re.M)
        for name in classes + functions:
            if name != "VXPRIVACY_EXPORT":
                yield f"{header}: {name} is not marked VXPRIVACY_EXPORT"


def lists():
    """Every source, and every header of the module, stands in a CMakeLists.txt."""
    for source in sources():
        if source.endswith(".h") and not any(lies_in(source, folder) for folder in MODULE):
            continue
        listing = (ROOT / source).parent
        while not (listing / "CMakeLists.txt").is_file():
            listing = listing.parent
        name = (ROOT / source).relative_to(listing).as_posix()
        text = (listing / "CMakeLists.txt").read_text(encoding="utf-8")
        if not re.search(rf"(^|[\s(]){re.escape(name)}($|[\s)])", text):
            yield f"{source}: not listed in {(listing / 'CMakeLists.txt').relative_to(ROOT)}"


def examples_in_docs():
    """Every block of code in the documentation stands, letter for letter, in what is compiled or run."""
    suffixes = {"cpp": ".cpp", "c": ".c", "python": ".py", "cmake": "CMakeLists.txt"}
    for page in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        for language, block in re.findall(r"^```(cpp|c|python|cmake)\n(.*?)^```",
                                          page.read_text(encoding="utf-8"), re.M | re.S):
            folder = "tests/package" if language == "cmake" else "examples"
            examples = (ROOT / folder).rglob("*" + suffixes[language])
            if not any(block in example.read_text(encoding="utf-8") for example in examples):
                yield f"{page.name}: not in {folder}/:\n{block}"


def prose(page):
    return re.sub(r"^```.*?^```", "", page.read_text(encoding="utf-8"), flags=re.M | re.S)


def anchors(page):
    """What the headings of a page are linked by."""
    for heading in re.findall(r"^#+ (.*)", prose(page), re.M):
        yield re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def links_in_docs():
    """Relative links of the documentation lead somewhere, to a heading too."""
    for page in [*ROOT.glob("*.md"), *sorted((ROOT / "docs").glob("*.md")), *ROOT.glob("*/README.md")]:
        for link, anchor in re.findall(r"\]\(([^)#:]*)(?:#([^)]*))?\)", prose(page)):
            target = page.parent / link if link else page
            if not target.exists():
                yield f"{page.relative_to(ROOT)}: {link} is not there"
            elif anchor and anchor not in anchors(target):
                yield f"{page.relative_to(ROOT)}: {link}#{anchor} is not there"


def main():
    faults = list(globals()[sys.argv[1]]())
    print("\n".join(faults))
    return bool(faults)


sys.exit(main())
