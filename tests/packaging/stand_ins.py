"""Recording stand-ins for the system's programs: each call leaves a line, and one of them may fail."""

import os
import subprocess
from pathlib import Path

# Writes its name and arguments, does what the test says of its name, and fails at call FAIL_AT.
PROGRAM = """#!/bin/bash
name=${0##*/}
{ printf '%s' "$name"; for word; do printf '\\t%s' "$word"; done; echo; } >>"$STAND_INS/calls"
[ "$(wc -l <"$STAND_INS/calls")" != "${FAIL_AT:-}" ] || exit 7
[ ! -f "$STAND_INS/$name.does" ] || . "$STAND_INS/$name.does"
"""


class StandIns:
    """`does`: what a program does beside leaving its line, in bash; None: nothing."""

    def __init__(self, folder, does):
        self.folder = Path(folder)
        (self.folder / "bin").mkdir(parents=True)
        for name, words in does.items():
            program = self.folder / "bin" / name
            program.write_text(PROGRAM)
            program.chmod(0o755)
            self.does(name, words)

    def does(self, name, words):
        if words:
            (self.folder / f"{name}.does").write_text(words)

    def run(self, command, cwd, fail_at=None, **settings):
        """The finished process; its calls lie in self.calls."""
        log = self.folder / "calls"
        log.write_text("")
        environment = {"PATH": f"{self.folder}/bin:{os.environ['PATH']}", "HOME": str(self.folder),
                       "STAND_INS": str(self.folder), **settings}
        if fail_at is not None:
            environment["FAIL_AT"] = str(fail_at)
        done = subprocess.run(command, cwd=cwd, env=environment, capture_output=True, text=True,
                              check=False)
        self.calls = [line.split("\t") for line in log.read_text().splitlines()]
        return done
