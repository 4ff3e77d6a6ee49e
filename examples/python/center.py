"""center.py DIRECTORY: the privacy center in a browser, from Python.

DIRECTORY has the application's privacy.json, and keeps its choices. The address is printed; the
program ends, and says what was chosen, when the user has saved.
"""

import http.server
import json
import pathlib
import sys

import vxprivacy

FRAME = """<!doctype html><html lang="en"><meta charset="utf-8"><title>Privacy</title>
<meta name="viewport" content="width=device-width, initial-scale=1">
<style>:root { color-scheme: light dark } body { margin: 0; display: flex; flex-direction: column;
height: 100vh; font: 16px system-ui } iframe { flex: 1; border: 0 } form { padding: 12px;
text-align: center } button { font: inherit; padding: 10px 24px }</style>
<iframe src="center/" title="Privacy center"></iframe>
<form method="post" action="close"><button>Save and close</button></form>"""


class Server(http.server.HTTPServer):
    """One thread, the application's: the module is called on no other."""

    def __init__(self, center):
        super().__init__(("127.0.0.1", 0), Handler)
        self.center = center
        self.files = vxprivacy.static_files()
        self.origin = f"http://127.0.0.1:{self.server_port}"
        self.closed = False


class Handler(http.server.BaseHTTPRequestHandler):
    timeout = 5  # seconds that a silent connection may keep the others waiting

    def do_GET(self):
        name = self.path.removeprefix("/center/")
        if not self.is_ours():
            self.answer(403, "text/plain", "Not from here.")
        elif self.path == "/":
            self.answer(200, "text/html; charset=utf-8", FRAME)
        elif name == "":
            self.answer(200, "text/html; charset=utf-8", self.server.center.page())
        elif name == "layout.css":
            self.answer(200, "text/css", self.server.center.layout())
        elif name in self.server.files:
            self.answer(200, *self.server.files[name])
        else:
            self.answer(404, "text/plain", "There is nothing here.")

    def do_POST(self):
        body = self.rfile.read(min(int(self.headers.get("Content-Length", 0)), 1 << 20))
        if not self.is_ours():
            self.answer(403, "text/plain", "Not from here.")
        elif self.path == "/center/event":
            self.answer(200, "application/json", self.server.center.dispatch(body))
            self.server.closed = self.server.center.done()
        elif self.path == "/close":
            self.answer(200, "text/html; charset=utf-8", "<!doctype html><p>Saved.")
            self.server.closed = True
        else:
            self.answer(404, "text/plain", "There is nothing here.")

    def is_ours(self):
        """No other site's page may read or tap, nor one under a name that leads to this machine."""
        host, origin = self.headers.get("Host"), self.headers.get("Origin", self.server.origin)
        return f"http://{host}" == self.server.origin == origin

    def answer(self, status, media_type, content):
        content = content if isinstance(content, bytes) else content.encode()
        self.send_response(status)
        self.send_header("Content-Type", media_type)
        self.send_header("Content-Length", str(len(content)))
        if self.path == "/center/":
            self.send_header("Content-Security-Policy",
                             vxprivacy.library.vx_content_security_policy().decode())
        self.end_headers()
        self.wfile.write(content)

    def log_message(self, *_):
        pass


def main(directory):
    module = vxprivacy.Module(
        {vxprivacy.STORE: directory / "choices.sqlite", vxprivacy.PACKAGED: directory,
         vxprivacy.OWNER: "An application in Python"},
        {vxprivacy.SITE: 12, vxprivacy.PRIVACY: 5, vxprivacy.LOG_LEVEL: 4,
         vxprivacy.IAB: (directory / "vendor-list.json").exists()})
    center = vxprivacy.Center(module, 390, 844)
    server = Server(center)
    server.timeout = 0.1  # seconds between two polls
    print(f"The privacy center is at {server.origin}/", flush=True)
    while not server.closed:
        server.handle_request()
        module.poll()
    center.close()
    for category in json.loads((directory / "privacy.json").read_text()).get("categories", []):
        accepted = module.category_accepted(int(category["ID"]))
        print(category["name"], "accepted" if accepted else "refused")
    module.close()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]))
