"""The shared library exports the functions of its C header, and nothing else."""

import argparse
import subprocess
import sys

import c_headers


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

    wanted = c_headers.declared_functions(options.header)
    exported = exported_symbols(options.nm, options.library)
    for name in sorted(wanted - exported):
        print(f"{options.library}: {name} is declared but not exported")
    for name in sorted(exported - wanted):
        print(f"{options.library}: {name} is exported but not declared in {options.header}")
    sys.exit(0 if wanted == exported else 1)


main()
