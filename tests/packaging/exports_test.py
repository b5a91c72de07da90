"""Compares the dynamic symbols of the built module with the reviewed list."""

import re
import subprocess
import sys


def listed(path):
    with open(path, encoding="ascii") as lines:
        return {line.strip() for line in lines if re.match(r"[A-Za-z]", line)}


def exported(nm, module):
    """Names without arguments and without the C++ library's tags; one for all overloads."""
    output = subprocess.run([nm, "-D", "-C", "--defined-only", module], check=True,
                            capture_output=True, text=True).stdout
    names = (line.split(" ", 2)[2] for line in output.splitlines())
    return {re.sub(r"(\[abi:\w+\])?\(.*", "", name) for name in names}


def main(nm, module, list_path):
    wanted, found = listed(list_path), exported(nm, module)
    for name in sorted(wanted - found):
        print(f"missing from the module: {name}")
    for name in sorted(found - wanted):
        print(f"exported but not listed: {name}")
    return 0 if wanted == found else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
