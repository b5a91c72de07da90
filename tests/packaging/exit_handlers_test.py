"""Fails when the built module registers something to be run when the process ends or it is unloaded.

Hosts call the module until their process has ended, so nothing of its state may be destroyed before.
"""

import subprocess
import sys

REGISTERS = {"__cxa_atexit", "__cxa_thread_atexit", "__cxa_thread_atexit_impl", "atexit", "on_exit"}


def main(nm, module):
    output = subprocess.run([nm, "-D", "--undefined-only", module], check=True,
                            capture_output=True, text=True).stdout
    imports = {line.split()[-1].split("@")[0] for line in output.splitlines()}
    if "fopen" not in imports:
        print("does not list what it ought to list")
        return 1
    for name in sorted(imports & REGISTERS):
        print(f"registers a handler: {name}")
    return 1 if imports & REGISTERS else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
