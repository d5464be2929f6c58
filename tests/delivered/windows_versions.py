"""What is delivered asks for no other Windows than it is made for: its header says so, and the loader believes it."""

import argparse
import re
import sys

import dll_tables

def required_version(text, field):
    halves = [re.search(rf"^{half}{field}\s+(\d+)\s*$", text, flags=re.MULTILINE) for half in ("Major", "Minor")]
    if None in halves:
        sys.exit(f"no {field} found in the header")
    return tuple(int(half.group(1)) for half in halves)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    # A greater number than that of Windows 2000, 5.0, keeps the file from being loaded there at all. What Windows 2000
    # cannot run says so by a smallest one, or its user would be told of some missing function.
    parser.add_argument("--newest", required=True)
    parser.add_argument("--oldest", default="0.0")
    parser.add_argument("file")
    options = parser.parse_args()

    oldest, newest = (tuple(map(int, version.split("."))) for version in (options.oldest, options.newest))
    text = dll_tables.headers(options.objdump, options.file)
    required = {field: required_version(text, field) for field in ("OSystemVersion", "SubsystemVersion")}
    refused = {field: version for field, version in required.items() if not oldest <= version <= newest}
    for field, version in refused.items():
        print(f"{options.file}: {field} is {version}")
    sys.exit(1 if refused else 0)


main()
