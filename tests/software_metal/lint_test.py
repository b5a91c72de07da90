"""The lint's answer to one kernel.

usage: lint_test.py LINT CLANG KERNEL

A kernel whose first line is "// refused: TEXT" must be refused with a finding that holds TEXT, any
other must pass.
"""
import re
import subprocess
import sys


def main(lint, clang, kernel):
    with open(kernel, encoding="ascii") as file:
        wanted = re.match(r"// refused: (.*)\n", file.readline())
    run = subprocess.run([sys.executable, lint, clang, kernel], capture_output=True, text=True,
                         check=False)
    print(run.stdout + run.stderr)
    if wanted is None:
        return run.returncode
    refused = run.returncode == 1 and any(wanted[1] in line for line in run.stdout.splitlines())
    if not refused:
        print(f"expected a finding with: {wanted[1]}")
    return 0 if refused else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
