"""assemble.py OUT: the pages of the documentation site, from README.md and docs/. A link to another file
of the repository becomes its name."""

import os.path
import pathlib
import re
import shutil
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def rewritten(text, folder):
    """`text` of a page that stands in `folder` of the repository."""

    def link(match):
        label, target, fragment = match[1], os.path.normpath(os.path.join(folder, match[2])), match[3] or ""
        if target == "README.md":
            return f"[{label}](index.md{fragment})"
        if target.startswith("docs/"):
            return f"[{label}]({target.removeprefix('docs/')}{fragment})"
        return f"`{target}`" if label == target else f"{label} (`{target}`)"

    return re.sub(r"\[([^\]]*)\]\(([^)#:]+)(#[^)]*)?\)", link, text)


out = pathlib.Path(sys.argv[1])
shutil.rmtree(out, ignore_errors=True)
shutil.copytree(ROOT / "docs", out, ignore=shutil.ignore_patterns("site"))
for page in out.rglob("*.md"):
    page.write_text(rewritten(page.read_text(encoding="utf-8"), "docs"), encoding="utf-8")
readme = (ROOT / "README.md").read_text(encoding="utf-8")
(out / "index.md").write_text(rewritten(readme, ""), encoding="utf-8")
