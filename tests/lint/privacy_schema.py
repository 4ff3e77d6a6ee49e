"""The schema of the privacy configuration, and documents that are spoilt at one place."""

import copy
import json
import pathlib

import jsonschema

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCHEMA = json.loads((ROOT / "docs/privacy-configuration.schema.json").read_text(encoding="utf-8"))
VALIDATOR = jsonschema.Draft7Validator(SCHEMA)
ABSENT = object()


def spoilt(document, path, value):
    """A copy with `value` at `path`; ABSENT takes the member away."""
    document = copy.deepcopy(document)
    place = document
    for step in path[:-1]:
        place = place[step]
    if value is ABSENT:
        del place[path[-1]]
    else:
        place[path[-1]] = value
    return document
