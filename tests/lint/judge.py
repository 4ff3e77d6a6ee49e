"""Lets another JSON Schema implementation judge the linter: wherever that one objects to a
spoilt sample, the linter must have a finding. Argument: the executable."""

import json
import subprocess
import sys

from privacy_schema import ABSENT, ROOT, VALIDATOR, spoilt

SAMPLE = json.loads((ROOT / "samples/category.json").read_text(encoding="utf-8"))
SAMPLE["components"] = {"firstLayerButton": ["Detail", "AcceptAll"], "secondLayerButton": ["Save"]}
SAMPLE["information"] |= {"significantChanges": "1", "vendors": "8,24"}
VALUES = [None, True, 0, 1.5, "", "x", "12", [], ["Save", "Save"], {}, {"x": [1]}, ABSENT]


def places(value, path=()):
    for key, child in value.items() if isinstance(value, dict) else enumerate(value):
        yield path + (key,)
        if isinstance(child, (dict, list)):
            yield from places(child, path + (key,))


def pointers(error):
    """Where the linter may say it: a second element of a list at that element."""
    path = "".join(f"/{step}" for step in error.absolute_path)
    if error.validator == "required":
        return {f"{path}/{name}" for name in error.validator_value if name not in error.instance}
    if error.validator == "uniqueItems":
        return {f"{path}/{index}" for index in range(len(error.instance))}
    return {path}


def main():
    faults = []
    judged = 0
    for number, path in enumerate(places(SAMPLE)):
        # Every value at some places, a third of them at each.
        for value in VALUES[number % 3::3]:
            document = spoilt(SAMPLE, path, value)
            errors = list(VALIDATOR.iter_errors(document))
            run = subprocess.run([sys.argv[1], "lint", "--json"], input=json.dumps(document),
                                 capture_output=True, text=True, check=False)
            found = {finding["path"] for finding in json.loads(run.stdout)}
            judged += len(errors)
            faults += [f"{path} = {value!r}: {error.message}" for error in errors
                       if not pointers(error) & found]
    print("\n".join(faults) or f"agrees with {judged} objections")
    return bool(faults) or not judged


sys.exit(main())
