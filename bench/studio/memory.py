"""The memory of the studio and of its application after many actions with the largest bodies.

    python3 bench/studio/memory.py VXPRIVACY [ACTIONS [OPTION...]]

The options are the studio's. Says after every tenth of the actions what both processes hold, in MiB, and
in brackets the most that they ever held.
"""
import http.client
import itertools
import json
import pathlib
import subprocess
import sys
import tempfile

LARGEST_BODY = 8 << 20
LARGEST_BEACON = 1 << 20
LARGEST_EVENT = 4 << 10


def filled(size, make):
    """The text that `make` gives of a filler, as long as `size`."""
    return make("x" * (size - len(make(""))))


class Studio:
    def __init__(self, program, store, options):
        self.process = subprocess.Popen(
            [program, "studio", "--no-browser", "--port", "0", "--store", store, *options],
            stdout=subprocess.PIPE, text=True)
        said = {}
        for line in self.process.stdout:
            words = line.split()
            if words and words[0] in ("page", "backend", "token"):
                said[words[0]] = words[1]
            if words and words[0] == "Ctrl-C":
                break
        self.page = said["page"].split("/")[2]
        self.backend = said["backend"].split("/")[2]
        self.token = said["token"]

    def answer(self, server, method, path, body=None):
        connection = http.client.HTTPConnection(server, timeout=120)
        connection.request(method, path, body, {"X-Studio-Token": self.token})
        response = connection.getresponse()
        text = response.read()
        connection.close()
        if response.status >= 500:
            raise SystemExit(f"{method} {path}: {response.status} {text[:200]}")
        return text

    def post(self, action, body=""):
        return self.answer(self.page, "POST", "/api/" + action, body)

    def get(self, path):
        return self.answer(self.page, "GET", path)


def actions(studio):
    sample = json.loads(studio.get("/api/sample"))

    def configuration(filler):
        sample["information"]["content"] = filler
        return json.dumps(sample)

    largest = filled(LARGEST_BODY - 4096, configuration)  # it is published with a line for each member
    hit = filled(LARGEST_BODY, lambda filler: json.dumps({"name": filler}))
    beacon = filled(LARGEST_BEACON, lambda filler: json.dumps({"privacyBeacon": filler}))
    restrictions = filled(LARGEST_BODY, lambda filler: json.dumps({"version": 1, "note": filler}))
    event = filled(LARGEST_EVENT, lambda filler: json.dumps({"page": filler, "set": "v1"}))
    return [
        lambda: studio.post("configuration", largest),
        lambda: studio.post("relaunch"),
        lambda: studio.post("accept"),
        lambda: studio.answer(studio.backend, "POST", "/privacy-consent/", beacon),
        lambda: studio.post("hit", hit),
        lambda: studio.post("lint", largest),
        lambda: studio.get("/api/timeline"),
        lambda: studio.post("center/open", "{}"),
        lambda: studio.get("/center/"),
        lambda: studio.post("center/event", event),
        lambda: studio.post("center/dismiss"),
        lambda: studio.answer(studio.backend, "POST", "/privacy-consent/", beacon),
        lambda: studio.get("/api/configuration"),
        lambda: studio.answer(studio.backend, "GET", "/mobile/12/5/privacy.json"),
        lambda: studio.post("refuse"),
        lambda: studio.post("restrictions", restrictions),
        lambda: studio.post("hit", hit),
        lambda: studio.post("kill"),
        lambda: studio.get("/api/state"),
        lambda: studio.answer(studio.backend, "POST", "/privacy-consent/", beacon),
    ]


def memory(process):
    status = pathlib.Path(f"/proc/{process}/status").read_text()
    sizes = dict(line.split(":\t") for line in status.splitlines() if line.startswith("Vm"))
    mebibytes = [int(sizes[name].split()[0]) / 1024 for name in ("VmRSS", "VmHWM")]
    return "{:6.1f} ({:.1f})".format(*mebibytes)


def application_of(process):
    tasks = pathlib.Path(f"/proc/{process}/task").iterdir()
    return next(child for task in tasks for child in (task / "children").read_text().split())


def main(program, count="10000", *options):
    with tempfile.TemporaryDirectory() as directory:
        studio = Studio(program, directory + "/store.sqlite", options)
        try:
            for done, action in zip(range(1, int(count) + 1), itertools.cycle(actions(studio))):
                action()
                if done % max(1, int(count) // 10) == 0:
                    print(f"{done:6} actions: studio {memory(studio.process.pid)}, application "
                          f"{memory(application_of(studio.process.pid))}", flush=True)
        finally:
            studio.process.terminate()
            studio.process.wait()


if __name__ == "__main__":
    main(*sys.argv[1:])
