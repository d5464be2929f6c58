"""A program looks for its libraries where it lies itself, and never in the current folder."""

import argparse
import re
import subprocess
import sys


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("files", nargs="+")
    options = parser.parse_args()
    refused = []
    for file in options.files:
        headers = subprocess.run([options.objdump, "-p", file], check=True, capture_output=True, text=True).stdout
        found = re.search(r"^\s*R(?:UN)?PATH +(.*)$", headers, flags=re.MULTILINE)
        if not found:
            refused.append(f"{file}: says nothing of its libraries")
            continue
        refused += [f"{file}: looks in '{folder}'" for folder in found[1].split(":") if not folder.startswith("$ORIGIN")]
    print("\n".join(refused))
    sys.exit(1 if refused else 0)


main()
