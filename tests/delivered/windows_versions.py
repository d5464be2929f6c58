"""What is delivered asks for no newer Windows than 2000: its header says so, and the loader believes it."""

import argparse
import re
import sys

import dll_tables

# Windows 2000. A greater number keeps the file from being loaded there at all.
NEWEST = (5, 0)


def required_version(text, field):
    halves = [re.search(rf"^{half}{field}\s+(\d+)\s*$", text, flags=re.MULTILINE) for half in ("Major", "Minor")]
    if None in halves:
        sys.exit(f"no {field} found in the header")
    return tuple(int(half.group(1)) for half in halves)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("file")
    options = parser.parse_args()

    text = dll_tables.headers(options.objdump, options.file)
    required = {field: required_version(text, field) for field in ("OSystemVersion", "SubsystemVersion")}
    refused = {field: version for field, version in required.items() if version > NEWEST}
    for field, version in refused.items():
        print(f"{options.file}: {field} is {version}")
    sys.exit(1 if refused else 0)


main()
