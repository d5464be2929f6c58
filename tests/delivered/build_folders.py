"""What is delivered does not tell where it was built: errors name their source file alone."""

import argparse
import re
import sys


def contains_path(content, folder):
    """Whether a path below the folder stands there, in the texts of the code or in those of Windows. The end
    of some longer path is none."""
    path = f"{folder}/"
    return any(
        re.search(rb"(?<![\w./-]" + wide + rb")" + re.escape(path.encode(encoding)), content)
        for encoding, wide in (("utf-8", b""), ("utf-16-le", b"\0")))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--folders", nargs="+", required=True)
    parser.add_argument("--files", nargs="+", required=True)
    options = parser.parse_args()

    told = False
    for name in options.files:
        with open(name, "rb") as file:
            content = file.read()
        for folder in options.folders:
            if contains_path(content, folder):
                print(f"{name}: contains the path {folder}")
                told = True
    sys.exit(1 if told else 0)


main()
