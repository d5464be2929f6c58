"""What is delivered does not tell where it was built: errors name their source file alone."""

import argparse
import sys


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
            # In the texts of the code, and in those of Windows.
            for encoding in "utf-8", "utf-16-le":
                if f"{folder}/".encode(encoding) in content:
                    print(f"{name}: contains the path {folder}")
                    told = True
    sys.exit(1 if told else 0)


main()
