"""Completes command lines in real shells: what a tab key offers. And formats the manual page."""

import os
import pty
import select
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = Path(os.environ["VXPRIVACY"])


def printed(*arguments):
    return subprocess.run([PROGRAM, *arguments], check=True, capture_output=True, text=True).stdout


def offered_by_bash(*words):
    """What bash offers for the last word."""
    array = " ".join(f"'{word}'" for word in words)
    script = (f"{printed('completion', 'bash')}\nCOMP_WORDS=({array}) COMP_CWORD={len(words) - 1}\n"
              "_vxprivacy\nprintf '%s\\n' \"${COMPREPLY[@]}\"")
    output = subprocess.run(["bash", "-uc", script], check=True, capture_output=True, text=True)
    return output.stdout.split()


def shown_by_zsh(line):
    """What a terminal with zsh shows after the line and two tabs."""
    with tempfile.TemporaryDirectory() as folder:
        Path(folder, "_vxprivacy").write_text(printed("completion", "zsh"))
        pid, terminal = pty.fork()
        if pid == 0:
            os.environ.update(TERM="dumb", COLUMNS="200", HOME=folder)
            os.execvp("zsh", ["zsh", "-f", "-i"])
        setup = f"fpath=({folder} $fpath); autoload -U compinit; compinit -u -d {folder}/dump; PS1=re''ady"
        os.write(terminal, setup.encode() + b"\n")
        read_until(terminal, "ready")
        os.write(terminal, line.encode() + b"\t\t")
        shown = read_until(terminal, "nothing else comes", patience=2)
        os.kill(pid, 9)
        os.waitpid(pid, 0)
        os.close(terminal)
        return shown.replace("\a", "")


def read_until(terminal, text, patience=20):
    shown = ""
    while text not in shown.replace("\r", ""):
        if not select.select([terminal], [], [], patience)[0]:
            break
        shown += os.read(terminal, 65536).decode(errors="replace")
    return shown


class Completion(unittest.TestCase):
    def test_bash(self):
        cases = {
            ("vxprivacy", ""): ["play", "lint", "gvl", "tc", "studio", "completion", "manual", "help"],
            ("vxprivacy", "st"): ["studio"],
            ("vxprivacy", "lint", "--j"): ["--json"],
            ("vxprivacy", "lint", ""): [],
            ("vxprivacy", "tc", ""): ["decode", "encode", "check"],
            ("vxprivacy", "tc", "decode", "--"): ["--help", "--lines", "--json"],
            ("vxprivacy", "studio", "--vendor"): ["--vendor-list-host"],
            ("vxprivacy", "lint", "tc", "dec"): [],  # files named so
        }
        for words, offered in cases.items():
            with self.subTest(words):
                self.assertEqual(offered_by_bash(*words), offered)

    def test_zsh(self):
        self.assertIn("studio", shown_by_zsh("vxprivacy stu"))
        self.assertRegex(shown_by_zsh("vxprivacy tc "), r"decode[\s\S]*Print what a TC string says")
        self.assertIn("--vendor-list-host", shown_by_zsh("vxprivacy studio --ven"))

    def test_manual(self):
        formatted = subprocess.run(["groff", "-ww", "-man", "-Tascii", "-P-cbou"], input=printed("manual"),
                                   capture_output=True, text=True)
        self.assertEqual(formatted.stderr, "")
        for text in ("vxprivacy lint", "--vendor-list-host URL", '{"do":"acceptAllConsent"}'):
            self.assertIn(text, formatted.stdout)
        self.assertNotRegex(formatted.stdout, "studio-application")


if __name__ == "__main__":
    unittest.main()
