"""Checks the beacons of the recorded sessions against their schema, and that the schema refuses
what a collector should not take."""

import copy
import json
import pathlib

import jsonschema

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCHEMA = json.loads((ROOT / "docs/beacon.schema.json").read_text(encoding="utf-8"))
VALIDATOR = jsonschema.Draft7Validator(SCHEMA)
ABSENT = object()
BAD = [
    ("view", "list_vendors", ""),
    ("save", "list_vendors", ABSENT),
    ("save", "list_categories", [1]),
    ("save", "vxpid", ABSENT),
    ("view", "version", 3),
    ("view", "site", "12"),
    ("view", "id_vx", "1"),
    ("view", "more", ""),
]


def bodies():
    for session in sorted((ROOT / "tests/sessions").glob("*.expected")):
        for line in session.read_text(encoding="utf-8").splitlines():
            # A session may end in a line of text.
            sent = json.loads(line).get("send", {}) if line.startswith("{") else {}
            if sent.get("name") == "VXNotification_HTTPRequest":
                yield session.name, sent["userInfo"]["VXUserInfo_POSTData"]


def spoilt(beacon, name, value):
    beacon = copy.deepcopy(beacon)
    if value is ABSENT:
        del beacon["privacyBeacon"][name]
    else:
        beacon["privacyBeacon"][name] = value
    return beacon


def main():
    VALIDATOR.check_schema(SCHEMA)
    faults = []
    good = {}
    unreadable = 0
    for session, body in bodies():
        try:
            beacon = json.loads(body)
        except json.JSONDecodeError:
            unreadable += 1  # values are put in unescaped, deliberately
            continue
        faults += [f"{session}: {body}: {error.message}" for error in VALIDATOR.iter_errors(beacon)]
        action = beacon["privacyBeacon"]["privacy_action"]
        good["view" if action == "V" else "save"] = beacon
    faults += [f"accepted: {kind} with {name} = {value!r}" for kind, name, value in BAD
               if VALIDATOR.is_valid(spoilt(good[kind], name, value))]
    if unreadable != 2:
        faults.append(f"{unreadable} beacons are no JSON; two with a quote are recorded")
    print("\n".join(faults) or "the beacons are as they should be")
    return bool(faults)


raise SystemExit(main())
