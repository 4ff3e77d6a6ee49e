"""Runs examples/python/center.py as its user would: opens the page, flips the switch, saves. Then
asks the module by itself."""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import urllib.error
import urllib.request

root = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(root / "examples/python"))
import vxprivacy


def ask(address, data=None, **headers):
    request = urllib.request.Request(address, data, headers)
    with urllib.request.urlopen(request, timeout=20) as answer:
        return answer.read().decode()


with tempfile.TemporaryDirectory() as directory:
    shutil.copy(root / "examples/embedding/resources/privacy.json", directory)
    with subprocess.Popen([sys.executable, "-B", root / "examples/python/center.py", directory],
                          stdout=subprocess.PIPE, text=True) as program:
        try:
            address = program.stdout.readline().split()[-1]
            try:
                ask(f"{address}close", b"", Origin="http://elsewhere.example")
                sys.exit("another site closed the center")
            except urllib.error.HTTPError as refused:
                assert refused.code == 403, refused
            page = ask(f"{address}center/")
            for file in re.findall(r'(?:href|src)="([\w.]+)"', page):
                assert ask(f"{address}center/{file}"), file
            switch = re.search(r'id="(v\d+)" class="switch', page)[1]
            name = re.search(r'data-page="([^"]+)"', page)[1]
            patch = ask(f"{address}center/event",
                        f'{{"page":"{name}","n":1,"set":"{switch}","on":false}}'.encode())
            assert '"off"' in patch, patch
            ask(f"{address}close", b"")
            assert program.stdout.read() == "Measurement refused\n"
        finally:
            program.kill()

    module = vxprivacy.Module({vxprivacy.STORE: pathlib.Path(directory) / "choices.sqlite"},
                              {vxprivacy.SITE: 12, vxprivacy.PRIVACY: 5})
    assert module.must_ask() == 0 and not module.category_accepted(1)
    update = module.tcfapi_update(vxprivacy.TCF_USER_ACTION_COMPLETE)
    assert "useractioncomplete" in update and module.tcfapi_script().endswith(',"tcloaded");')
    try:
        module.tcfapi_update(4)
        sys.exit("there is no such event")
    except vxprivacy.Error as error:
        assert "vx_tcfapi_update: an argument is" in str(error), error
    module.close()
