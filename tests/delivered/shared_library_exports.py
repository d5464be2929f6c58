"""The shared library exports the functions of its C header, and nothing else."""

import argparse
import re
import subprocess
import sys


def declared_functions(header):
    with open(header, encoding="utf-8") as file:
        text = re.sub(r"/\*.*?\*/", "", file.read(), flags=re.DOTALL)
    return set(re.findall(r"QUILLPRESS_CALL\s+(\w+)\s*\(", text))


def exported_symbols(nm, library):
    listing = subprocess.run(
        [nm, "--dynamic", "--defined-only", "--format=posix", library],
        check=True, capture_output=True, text=True)
    return {line.split()[0] for line in listing.stdout.splitlines()}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--nm", required=True)
    parser.add_argument("--header", required=True)
    parser.add_argument("library")
    options = parser.parse_args()

    wanted = declared_functions(options.header)
    exported = exported_symbols(options.nm, options.library)
    if not wanted:
        sys.exit(f"{options.header}: no function declaration found")
    for name in sorted(wanted - exported):
        print(f"{options.library}: {name} is declared but not exported")
    for name in sorted(exported - wanted):
        print(f"{options.library}: {name} is exported but not declared in {options.header}")
    sys.exit(0 if wanted == exported else 1)


main()
