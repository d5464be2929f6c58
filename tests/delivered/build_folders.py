"""A delivered library does not tell where it was built: errors name their source file alone."""

import sys


def main():
    library, *folders = sys.argv[1:]
    with open(library, "rb") as file:
        content = file.read()
    told = [folder for folder in folders if folder.encode() + b"/" in content]
    for folder in told:
        print(f"{library}: contains the path {folder}")
    sys.exit(1 if told else 0)


main()
