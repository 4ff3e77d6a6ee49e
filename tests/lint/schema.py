"""Checks the privacy configurations of samples/ against the schema of the document, and that the
schema refuses what the documentation says is wrong."""

import json
import sys

from privacy_schema import ABSENT, ROOT, SCHEMA, VALIDATOR, spoilt

VALIDATOR.check_schema(SCHEMA)

GOOD = {
    "information": {"version": 1, "significantChanges": "false"},
    "categories": [{"ID": "1", "name": "A", "subcategories": [{"ID": "11", "name": "B"}]}],
    "customisation": {"button": {"fontcolor": "#0C66A6"}},
    "components": {"firstLayerButton": ["Detail"], "secondLayerButton": ["Save", "AcceptAll"]},
}
# Path, then the wrong value put there.
BAD = [
    (("information",), ABSENT),
    (("information", "version"), "1"),
    (("information", "version"), 1.5),
    (("information", "significantChanges"), True),
    (("information", "significantChanges"), "TRUE"),
    (("categories", 0, "ID"), 1),
    (("categories", 0, "ID"), "0"),
    (("categories", 0, "ID"), "01"),
    (("categories", 0, "ID"), "1000"),
    (("categories", 0, "name"), ABSENT),
    (("categories", 0, "subcategories", 0, "subcategories"), [{"ID": "111", "name": "C"}]),
    (("customisation", "button", "fontcolor"), "#fff"),
    (("components", "firstLayerButton"), ["AcceptAll"]),
    (("components", "secondLayerButton"), []),
]


def main():
    faults = [f"refused: {error.message}" for error in VALIDATOR.iter_errors(GOOD)]
    faults += [f"accepted: {path} = {value!r}" for path, value in BAD
               if VALIDATOR.is_valid(spoilt(GOOD, path, value))]
    samples = [p for p in sorted((ROOT / "samples").rglob("*.json"))
               if not p.name.startswith(("vendor-list", "purposes-"))]
    for sample in samples:
        for error in VALIDATOR.iter_errors(json.loads(sample.read_text(encoding="utf-8"))):
            faults.append(f"{sample.relative_to(ROOT)}: {list(error.path)}: {error.message}")
    print("\n".join(faults) or f"{len(samples)} samples are as they should be")
    return bool(faults)


sys.exit(main())
