"""links.py SITE: every link between the pages of SITE leads to a file."""

import html.parser
import pathlib
import sys
import urllib.parse


class Links(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.targets = []

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("href", "src") and value and not urllib.parse.urlparse(value).scheme:
                self.targets.append(urllib.parse.unquote(urllib.parse.urldefrag(value).url))


faults = 0
for page in pathlib.Path(sys.argv[1]).rglob("*.html"):
    links = Links()
    links.feed(page.read_text(encoding="utf-8"))
    for target in links.targets:
        if target.startswith("/"):  # of 404.html, which is shown anywhere
            continue
        if not (page.parent / target).exists():
            print(f"{page}: {target} is not there")
            faults += 1
sys.exit(faults > 0)
