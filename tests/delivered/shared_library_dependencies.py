"""The shared library needs nothing but the C++ standard library and what that stands on."""

import argparse
import re
import subprocess
import sys


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--allowed", required=True, help="library names up to .so, separated by commas")
    parser.add_argument("library")
    options = parser.parse_args()

    headers = subprocess.run(
        [options.objdump, "-p", options.library], check=True, capture_output=True, text=True)
    needed = re.findall(r"^\s*NEEDED\s+(\S+)", headers.stdout, flags=re.MULTILINE)
    if not needed:
        sys.exit(f"{options.library}: no NEEDED entry found")
    allowed = set(options.allowed.split(","))
    refused = [name for name in needed if name.split(".so")[0] not in allowed]
    for name in refused:
        print(f"{options.library}: needs {name}")
    sys.exit(1 if refused else 0)


main()
